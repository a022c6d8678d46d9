// CString::Format: what every conversion writes, and that it agrees with the C runtime's where both
// know a conversion.
#include <gtest/gtest.h>

#include <algorithm>

#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "platform/FrameworkString.h"
#include "platform/TextEncoding.h"
#include "tests/TextPrinting.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

template <typename... T>
CString Wide(const wchar_t* format, T... arguments) {
  CString text(L"wrong");
  text.Format(format, arguments...);
  return text;
}

template <typename... T>
CStringA Narrow(const char* format, T... arguments) {
  CStringA text("wrong");
  text.Format(format, arguments...);
  return text;
}

std::string RuntimeText(const char* format, ...) {
  va_list arguments;
  va_list again;
  va_start(arguments, format);
  va_copy(again, arguments);
  std::string text(static_cast<std::size_t>(std::vsnprintf(nullptr, 0, format, arguments)) + 1, 0);
  std::vsnprintf(text.data(), text.size(), format, again);
  va_end(again);
  va_end(arguments);
  text.pop_back();
  return text;
}

// "%" + flags + width/precision + letters, for every mix of flags and fields.
std::vector<std::string> FormatsOf(const std::vector<std::string>& letters) {
  std::vector<std::string> formats;
  for (unsigned int flags = 0; flags < 32; ++flags) {
    std::string flagText;
    for (unsigned int i = 0; i < 5; ++i) {
      flagText += (flags >> i) & 1U ? std::string(1, "-+ #0"[i]) : "";
    }
    for (const char* field : {"", "1", "14", ".0", ".", ".3", "9.4", "12.12", ".30"}) {
      for (const std::string& letter : letters) {
        formats.push_back("%" + flagText + field + letter);
      }
    }
  }
  return formats;
}

}  // namespace

TEST(FrameworkStringFormat, WritesTheTextFormsOfTheValues) {
  EXPECT_EQ(Wide(L"%d", -5), L"-5");
  EXPECT_EQ(Wide(L"%u", 4'000'000'000U), L"4000000000");
  EXPECT_EQ(Wide(L"%I64u", std::uint64_t{18'446'744'073'709'551'615U}), L"18446744073709551615");
  EXPECT_EQ(Wide(L"%f", 2.5), L"2.500000");
  EXPECT_EQ(Wide(L"%f", -0.0000001), L"-0.000000");
  EXPECT_EQ(Wide(L"%f", 0.1234567), L"0.123457");
  EXPECT_EQ(Wide(L"%f", 1e20), L"100000000000000000000.000000");
  EXPECT_EQ(Wide(L"%f", static_cast<double>(0.1F)), L"0.100000");
  EXPECT_EQ(Wide(L"%f,%f,%f", 1.0, 2.0, 3.0), L"1.000000,2.000000,3.000000");
  EXPECT_EQ(Wide(L",%hu,%hu", 65535, 7), L",65535,7");
}

TEST(FrameworkStringFormat, WritesInfinitiesAndNotANumber) {
  EXPECT_EQ(Wide(L"%f", kInfinity), L"inf");
  EXPECT_EQ(Wide(L"%f", -kInfinity), L"-inf");
  EXPECT_EQ(Wide(L"%f", kNan), L"nan");
  EXPECT_EQ(Wide(L"%f", std::copysign(kNan, -1.0)), L"-nan");
  EXPECT_EQ(Wide(L"%F", kInfinity), L"INF");
  EXPECT_EQ(Wide(L"%+08.2f", kInfinity), L"    +inf");
}

TEST(FrameworkStringFormat, LargestDoubleIsWrittenInFull) {
  const CString text = Wide(L"%f", DBL_MAX);
  EXPECT_EQ(text.GetLength(), 316);
  EXPECT_EQ(text.Left(17), L"17976931348623157");
}

// On Windows the runtime writes a blank before numbers that have no sign, and nothing for a zero of
// base 8 without digits.
bool RuntimeKeepsTheStandard([[maybe_unused]] const std::string& format) {
#if defined(_WIN32)
  const auto has = [&](char ch) { return format.find(ch) != std::string::npos; };
  const bool isSigned = has('d') || has('i');
  return (isSigned || !has(' ')) && !(has('#') && has('o'));
#else
  return true;
#endif
}

TEST(FrameworkStringFormat, IntegersAgreeWithTheRuntime) {
  const int values[] = {0, 1, -1, 7, 42, -12345, INT_MAX, INT_MIN};
  for (const std::string& format : FormatsOf({"d", "i", "u", "x", "X", "o"})) {
    if (!RuntimeKeepsTheStandard(format)) {
      continue;
    }
    for (const int value : values) {
      ASSERT_EQ(Narrow(format.c_str(), value), RuntimeText(format.c_str(), value).c_str())
          << format << " " << value;
    }
  }
}

TEST(FrameworkStringFormat, IntegerSizesAgreeWithTheRuntime) {
  for (const char* letter : {"d", "u", "x"}) {
    for (const long long value : {0LL, 1LL, -1LL, 300LL, -70000LL, LLONG_MAX, LLONG_MIN}) {
      const auto check = [&](const std::string& size, auto argument) {
        const std::string format = "%" + size + letter;
        EXPECT_EQ(Narrow(format.c_str(), argument), RuntimeText(format.c_str(), argument).c_str())
            << format << " " << value;
      };
      check("hh", static_cast<int>(value));
      check("h", static_cast<int>(value));
      check("l", static_cast<long>(value));
      check("ll", value);
      check("z", static_cast<std::size_t>(value));
      check("t", static_cast<std::ptrdiff_t>(value));
      check("j", static_cast<std::intmax_t>(value));
    }
  }
}

TEST(FrameworkStringFormat, FrameworkSizesAreKnown) {
  EXPECT_EQ(Wide(L"%I64d", std::int64_t{-9'000'000'000}), L"-9000000000");
  EXPECT_EQ(Wide(L"%I64x", std::uint64_t{0xABCDEF0123U}), L"abcdef0123");
  EXPECT_EQ(Wide(L"%I32d", -3), L"-3");
  EXPECT_EQ(Wide(L"%I32u", 0xFFFFFFFFU), L"4294967295");
  EXPECT_EQ(Wide(L"%Iu", std::size_t{7}), L"7");
}

TEST(FrameworkStringFormat, FloatingPointAgreesWithTheRuntime) {
  const double values[] = {0.0,  -0.0,  1.0,   -1.5,   0.5,     2.5,        9.9999999, 123456.789,
                           1e-5, 1e-4,  1e15,  1e16,   1e100,   -3.25e-300, DBL_MAX,   DBL_MIN,
                           0.1,  99.95, 1e300, 5e-324, 1234567, kInfinity,  -kInfinity};
  for (const std::string& format : FormatsOf({"f", "F", "e", "E", "g", "G"})) {
    for (const double value : values) {
      ASSERT_EQ(Narrow(format.c_str(), value), RuntimeText(format.c_str(), value).c_str())
          << format << " " << value;
    }
  }
}

TEST(FrameworkStringFormat, RandomDoublesAgreeWithTheRuntime) {
  std::mt19937_64 random(11);
  for (int round = 0; round < 50'000; ++round) {
    const double value = std::bit_cast<double>(random());
    if (std::isnan(value)) {
      continue;
    }
    for (const char* format : {"%f", "%.17g", "%e", "%.3f"}) {
      ASSERT_EQ(Narrow(format, value), RuntimeText(format, value).c_str()) << format;
    }
  }
}

TEST(FrameworkStringFormat, HexadecimalFloatsAreWrittenExactly) {
  EXPECT_EQ(Wide(L"%a", 1.0), L"0x1p+0");
  EXPECT_EQ(Wide(L"%a", -1.5), L"-0x1.8p+0");
  EXPECT_EQ(Wide(L"%A", 0.1), L"0X1.999999999999AP-4");
  EXPECT_EQ(Wide(L"%.2a", 1.0), L"0x1.00p+0");
}

TEST(FrameworkStringFormat, PlacesBeyondThoseOfADoubleAreZeros) {
  const CString text = Wide(L"%.3000f", 0.1);
  ASSERT_EQ(text.GetLength(), 3002);
  EXPECT_EQ(text.Right(1900), CString(L'0', 1900));
  EXPECT_EQ(text.Left(22), L"0.10000000000000000555");
  const CString scientific = Wide(L"%.2000e", 0.1);
  EXPECT_EQ(scientific.Right(5), L"0e-01");
  EXPECT_EQ(scientific.GetLength(), 2006);
}

TEST(FrameworkStringFormat, TextsSayTheirWidth) {
  EXPECT_EQ(Wide(L"%s|%S|%hs|%ls|%ws", L"own", "other", "narrow", L"wide", L"wide"),
            L"own|other|narrow|wide|wide");
  EXPECT_EQ(Narrow("%s|%S|%hs|%ls|%ws", "own", L"other", "narrow", L"wide", L"wide"),
            "own|other|narrow|wide|wide");
  EXPECT_EQ(Wide(L"%hS%lS", "narrow", L"wide"), L"narrowwide");
}

TEST(FrameworkStringFormat, CharactersSayTheirWidth) {
  EXPECT_EQ(Wide(L"%c%C%hc%lc", L'\u20AC', 'b', 'c', L'\u00E4'), L"\u20ACbc\u00E4");
  EXPECT_EQ(Narrow("%c%C%hc%lc", 'a', L'b', 'c', L'd'), "abcd");
  EXPECT_EQ(Wide(L"%3c|%-3c|", L'a', L'b'), L"  a|b  |");
  EXPECT_EQ(Wide(L"a%cb", 0), CString(L"a\0b", 3));
}

TEST(FrameworkStringFormat, OtherWidthIsConvertedAsAnsi) {
  const CStringA euro = WideToAnsi(L"\u20AC");
  EXPECT_EQ(AnsiToWide(euro), L"\u20AC");
  EXPECT_EQ(Wide(L"%S", euro.GetString()), L"\u20AC");
  EXPECT_EQ(Narrow("%S", L"\u20AC"), euro);
  EXPECT_EQ(Narrow("%C", L'\u00E4'), WideToAnsi(L"\u00E4"));
}

TEST(FrameworkStringFormat, NullTextIsNamed) {
  const wchar_t* wide = nullptr;
  const char* narrow = nullptr;
  EXPECT_EQ(Wide(L"%s|%S", wide, narrow), L"(null)|(null)");
  EXPECT_EQ(Narrow("%s|%S", narrow, wide), "(null)|(null)");
  EXPECT_EQ(Wide(L"%8s", wide), L"  (null)");
}

TEST(FrameworkStringFormat, WidthAndPrecisionCutAndPadTexts) {
  EXPECT_EQ(Wide(L"[%5s][%-5s][%.2s][%5.1s]", L"abc", L"abc", L"abc", L"abc"),
            L"[  abc][abc  ][ab][    a]");
  EXPECT_EQ(Wide(L"[%5.2S]", "abc"), L"[   ab]");
  const wchar_t unterminated[] = {L'a', L'b', L'c'};
  EXPECT_EQ(Wide(L"%.3s", unterminated), L"abc");
  EXPECT_EQ(Wide(L"%.0s", L"abc"), L"");
}

TEST(FrameworkStringFormat, FieldsFromArguments) {
  EXPECT_EQ(Wide(L"[%*d][%-*d][%*d]", 4, 7, 4, 7, -4, 7), L"[   7][7   ][7   ]");
  EXPECT_EQ(Wide(L"%.*f|%.*f", 2, 1.0, -1, 1.0), L"1.00|1.000000");
  EXPECT_EQ(Wide(L"%.*s", 2, L"abc"), L"ab");
  EXPECT_EQ(Wide(L"%.*d", INT_MIN, 3), L"3");
}

TEST(FrameworkStringFormat, PointersShowAllDigits) {
  const auto address = reinterpret_cast<const void*>(std::uintptr_t{0xAB12});
  const CString text = Wide(L"%p", address);
  EXPECT_EQ(text.GetLength(), 2 * static_cast<int>(sizeof(void*)));
  EXPECT_EQ(text.Right(6), L"00AB12");
}

TEST(FrameworkStringFormat, PercentSignsAndUnknownConversions) {
  EXPECT_EQ(Wide(L"100%%"), L"100%");
  EXPECT_EQ(Wide(L"%"), L"%");
  EXPECT_EQ(Wide(L"%5"), L"%5");
  EXPECT_EQ(Wide(L"%y%d", 3), L"%y3");
  EXPECT_EQ(Wide(L"%ll"), L"%ll");
  EXPECT_EQ(Wide(L"%dl", 3), L"3l");
  EXPECT_EQ(Wide(L"%Lf", 1.5L), L"1.500000");
  EXPECT_EQ(Wide(L""), L"");
  EXPECT_EQ(Wide(nullptr), L"");
}

TEST(FrameworkStringFormat, WritingToMemoryIsRefused) {
  int untouched = -77;
  EXPECT_EQ(Wide(L"ab%n%d", &untouched, 5), L"ab5");
  EXPECT_EQ(untouched, -77);
}

TEST(FrameworkStringFormat, MayTakeItsOwnText) {
  CString text(L"abc");
  text.Format(L"%s-%s", text.GetString(), text.GetString());
  EXPECT_EQ(text, L"abc-abc");
  text = L"%d";
  text.Format(text.GetString(), 5);
  EXPECT_EQ(text, L"5");
}

TEST(FrameworkStringFormat, FieldsBeyondTheLargestCountAsThat) {
  CString text;
  for (const int field : {kMaxFormatField - 1, kMaxFormatField, kMaxFormatField + 1, 2147483647}) {
    const int expected = std::min(field, kMaxFormatField);
    text.Format(L"%*d", field, 5);
    ASSERT_EQ(text.GetLength(), expected);
    EXPECT_EQ(text.Right(2), L" 5");
    text.Format(L"%.*d", field, 5);
    ASSERT_EQ(text.GetLength(), expected);
    EXPECT_EQ(text.Right(2), L"05");
  }
  text.Format(L"%1000000d|%99999999999999999999d", 1, 2);
  EXPECT_EQ(text.GetLength(), 2 * kMaxFormatField + 1);
}

TEST(FrameworkStringFormat, AppendFormatKeepsWhatIsThere) {
  CString text(L"a");
  text.AppendFormat(L"%d", 1);
  text.AppendFormat(L"%s", text.GetString());
  EXPECT_EQ(text, L"a1a1");
}

TEST(FrameworkStringFormat, NulsOfOtherTextsAreKept) {
  CStringA text("a\0b", 3);
  text.AppendFormat("%d", 1);
  EXPECT_EQ(text, CStringA("a\0b1", 4));
}
