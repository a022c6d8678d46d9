// The number texts against tables of expected results. NumberTextRuntimeTest.cpp compares them with
// the C runtime.
#include "values/NumberScan.h"
#include "values/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>

#include "platform/TextEncoding.h"

namespace {

using namespace lum::detail;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

std::string Narrow(std::wstring_view text) {
  return WideToUtf8(CString(text.data(), static_cast<int>(text.size()))).GetString();
}

std::string TextOf(const CString& text) { return WideToUtf8(text).GetString(); }

std::wstring Repeat(wchar_t ch, std::size_t count) { return std::wstring(count, ch); }

template <typename T>
struct ScanCase {
  std::wstring_view text;
  bool isNumber;
  T expected;
};

template <typename T, std::size_t N>
void ExpectScans(bool (*scan)(std::wstring_view, T&), const ScanCase<T> (&cases)[N]) {
  for (const auto& [text, isNumber, expected] : cases) {
    T value = 77;
    EXPECT_EQ(scan(text, value), isNumber) << Narrow(text);
    EXPECT_EQ(value, isNumber ? expected : T{77}) << Narrow(text);
  }
}

TEST(NumberText, AppendsDecimalIntegersOfEveryType) {
  CString text = L"<";
  AppendDecimal(text, std::numeric_limits<int>::min());
  text.AppendChar(L'|');
  AppendDecimal(text, std::numeric_limits<int>::max());
  text.AppendChar(L'|');
  AppendDecimal(text, 4000000000U);
  text.AppendChar(L'|');
  AppendDecimal(text, std::numeric_limits<std::uint64_t>::max());
  text.AppendChar(L'|');
  AppendDecimal(text, 0);
  EXPECT_EQ(TextOf(text), "<-2147483648|2147483647|4000000000|18446744073709551615|0");
}

TEST(NumberText, AppendsSixDigitsAfterThePointAndNoExponent) {
  const struct {
    double value;
    const char* expected;
  } kCases[] = {
      {0.0, "0.000000"},
      {-0.0, "-0.000000"},
      {2.5, "2.500000"},
      {0.1234567, "0.123457"},
      {-0.0000001, "-0.000000"},
      {0.0000005, "0.000000"},  // The double lies just below the half.
      {0.0000015, "0.000002"},  // This one just below it too, next to 2.
      {0.5 / 1048576, "0.000000"},
      {1e20, "100000000000000000000.000000"},
      {999999.9999999, "1000000.000000"},
      {kSmallest, "0.000000"},
      {kInfinity, "inf"},
      {-kInfinity, "-inf"},
      {std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0), "nan"},
      {std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0), "-nan"},
  };
  for (const auto& [value, expected] : kCases) {
    CString text;
    AppendFixed(text, value);
    EXPECT_EQ(TextOf(text), expected);
  }
}

TEST(NumberText, AppendsTheLargestDoubleWhole) {
  CString text;
  AppendFixed(text, std::numeric_limits<double>::lowest());
  EXPECT_EQ(text.GetLength(), 1 + 309 + 1 + 6);
  EXPECT_EQ(TextOf(text.Left(18)), "-17976931348623157");
  EXPECT_EQ(TextOf(text.Right(8)), "8.000000");
}

TEST(NumberText, ScansIntsAndCutsWhatIsBeyond) {
  constexpr ScanCase<int> kCases[] = {
      {L"7", true, 7},
      {L" \t\n\v\f\r-5", true, -5},
      {L"+5", true, 5},
      {L"12abc", true, 12},
      {L"3.7", true, 3},
      {L"0x10", true, 0},
      {L"007", true, 7},
      {L"2147483648", true, std::numeric_limits<int>::min()},
      {L"4294967296", true, 0},
      {L"9223372036854775808", true, -1},
      {L"99999999999999999999", true, -1},
      {L"-9223372036854775808", true, 0},
      {L"-99999999999999999999", true, 0},
      {L"", false, 0},
      {L"   ", false, 0},
      {L"-", false, 0},
      {L"+-1", false, 0},
      {L"- 1", false, 0},
      {L"abc", false, 0},
      {L".5", false, 0},
      {std::wstring_view(L"\0"
                         L"7",
                         2),
       false, 0},
      {std::wstring_view(L"7\0"
                         L"7",
                         3),
       true, 7},
      {L"\u00A07", false, 0},
      {L"\u0667", false, 0},
  };
  ExpectScans(ScanInt, kCases);
}

TEST(NumberText, ScansUnsignedNumbersWithASignThatWraps) {
  constexpr ScanCase<unsigned int> kCases[] = {
      {L"4294967295", true, 4294967295U},
      {L"-1", true, 4294967295U},
      {L"4294967296", true, 0U},
      {L"-4294967296", true, 0U},
      {L"-99999999999999999999", true, 4294967295U},
      {L"x", false, 0U},
  };
  ExpectScans(ScanUInt, kCases);
  constexpr ScanCase<std::uint64_t> kLongCases[] = {
      {L"18446744073709551615", true, 18446744073709551615U},
      {L"18446744073709551616", true, 18446744073709551615U},
      {L"-1", true, 18446744073709551615U},
      {L"-18446744073709551615", true, 1U},
      {L"-18446744073709551616", true, 18446744073709551615U},
      {L"12,13", true, 12U},
      {L"12abc", true, 12U},
      {L"", false, 0U},
  };
  ExpectScans(ScanULongLong, kLongCases);
}

TEST(NumberText, ScansHexadecimalWithOrWithoutPrefix) {
  constexpr ScanCase<unsigned int> kCases[] = {
      {L"ff", true, 255U},
      {L"0xFF", true, 255U},
      {L"0Xff", true, 255U},
      {L"-1", true, 4294967295U},
      {L"+0x10", true, 16U},
      {L"0x", true, 0U},
      {L"0xg", true, 0U},
      {L"0x 1", true, 0U},
      {L"00x1", true, 0U},
      {L"100000000", true, 0U},
      {L"123456789", true, 0x23456789U},
      {L"fffffffffffffffff", true, 4294967295U},
      {L"-fffffffffffffffff", true, 4294967295U},
      {L"x1", false, 0U},
      {L"g", false, 0U},
      {L"-", false, 0U},
      {L"", false, 0U},
  };
  ExpectScans(ScanHex, kCases);
}

TEST(NumberText, ScansDecimalFloatingPoint) {
  constexpr ScanCase<double> kCases[] = {
      {L"3.7", true, 3.7},
      {L" \n+2.", true, 2.0},
      {L"-.5", true, -0.5},
      {L"1,5", true, 1.0},
      {L"1.5.5", true, 1.5},
      {L"1e3", true, 1000.0},
      {L"1E-3x", true, 0.001},
      {L"1e", true, 1.0},
      {L"1e+", true, 1.0},
      {L"1e+x", true, 1.0},
      {L"1e309", true, kInfinity},
      {L"-1e309", true, -kInfinity},
      {L"1e99999999999999999999", true, kInfinity},
      {L"1e-99999999999999999999", true, 0.0},
      {L"0e99999999999999999999", true, 0.0},
      {L"5e-324", true, kSmallest},
      {L"2.4703282292062327e-324", true, 0.0},
      {L"2.4703282292062328e-324", true, kSmallest},
      {L"1.7976931348623157e308", true, std::numeric_limits<double>::max()},
      {L"1.7976931348623158e308", true, std::numeric_limits<double>::max()},
      {L"1.7976931348623159e308", true, kInfinity},
      {L"9007199254740993", true, 9007199254740992.0},
      {L"9007199254740993.0000000000000000000000000000001", true, 9007199254740994.0},
      {L"", false, 0.0},
      {L"  ", false, 0.0},
      {L".", false, 0.0},
      {L"-.", false, 0.0},
      {L"+", false, 0.0},
      {L"--1", false, 0.0},
      {L".e5", false, 0.0},
      {L"e5", false, 0.0},
      {L"abc", false, 0.0},
  };
  ExpectScans(ScanDouble, kCases);
}

TEST(NumberText, ScansHexadecimalFloatingPoint) {
  constexpr ScanCase<double> kCases[] = {
      {L"0x1p3", true, 8.0},
      {L"-0X.8P1", true, -1.0},
      {L"0x1.8", true, 1.5},
      {L"0xap", true, 10.0},
      {L"0x1e+3", true, 30.0},
      {L"0x.", true, 0.0},
      {L"0x.g", true, 0.0},
      {L"0x.p3", true, 0.0},
      {L"0x1p-1074", true, kSmallest},
      {L"0x1p-1075", true, 0.0},
      {L"0x1.8p-1075", true, kSmallest},
      {L"0x1p1024", true, kInfinity},
      {L"0x1.fffffffffffff7p1023", true, std::numeric_limits<double>::max()},
      {L"0x1.fffffffffffff8p1023", true, kInfinity},
      {L"0x1.00000000000008", true, 1.0},
      {L"0x1.00000000000008000000000000000000001", true, 1.0000000000000002},
      {L"0x", false, 0.0},
      {L"0xg", false, 0.0},
      {L"-0x", false, 0.0},
      {L"0xp3", false, 0.0},
  };
  ExpectScans(ScanDouble, kCases);
}

TEST(NumberText, ScansInfinitiesInAnyCaseAndRefusesBrokenOnes) {
  constexpr ScanCase<double> kCases[] = {
      {L"inf", true, kInfinity},
      {L"-INF", true, -kInfinity},
      {L"+iNfInItY", true, kInfinity},
      {L"infinityx", true, kInfinity},
      {L"infx", true, kInfinity},
      {L"infi", false, 0.0},
      {L"infin", false, 0.0},
      {L"infinitx", false, 0.0},
      {L"in", false, 0.0},
      {L"i", false, 0.0},
  };
  ExpectScans(ScanDouble, kCases);
}

TEST(NumberText, ScansNotANumberWithItsSign) {
  for (const wchar_t* text : {L"nan", L"NaN(abc)", L"nanx", L"-nan", L"+nan("}) {
    double value = 7.0;
    EXPECT_TRUE(ScanDouble(text, value)) << Narrow(text);
    EXPECT_TRUE(std::isnan(value)) << Narrow(text);
    EXPECT_EQ(std::signbit(value), text[0] == L'-') << Narrow(text);
  }
  for (const wchar_t* text : {L"n", L"na", L"nax"}) {
    double value = 7.0;
    EXPECT_FALSE(ScanDouble(text, value)) << Narrow(text);
    EXPECT_EQ(value, 7.0) << Narrow(text);
  }
}

TEST(NumberText, KeepsTheSignOfZero) {
  for (const wchar_t* text : {L"-0", L"-0.0e5", L"-1e-400", L"-0x.", L"-0x0p1"}) {
    double value = 7.0;
    EXPECT_TRUE(ScanDouble(text, value)) << Narrow(text);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(-0.0))
        << Narrow(text);
  }
}

TEST(NumberText, ScansTextsOfAnyLength) {
  constexpr std::size_t kMany = 1000000;
  const std::wstring zeros = Repeat(L'0', kMany);
  double value = 7.0;
  EXPECT_TRUE(ScanDouble(Repeat(L'9', kMany), value));
  EXPECT_EQ(value, kInfinity);
  EXPECT_TRUE(ScanDouble(L"0." + zeros + L"25e1000001", value));
  EXPECT_EQ(value, 2.5);
  EXPECT_TRUE(ScanDouble(L"25" + zeros + L"e-1000001", value));
  EXPECT_EQ(value, 2.5);
  EXPECT_TRUE(ScanDouble(zeros + L"2.5" + zeros, value));
  EXPECT_EQ(value, 2.5);
  EXPECT_TRUE(ScanDouble(L"9007199254740993." + zeros + L"1", value));
  EXPECT_EQ(value, 9007199254740994.0);
  EXPECT_TRUE(ScanDouble(L"0x1.00000000000008" + zeros + L"1", value));
  EXPECT_EQ(value, 1.0000000000000002);
  int number = 7;
  EXPECT_TRUE(ScanInt(Repeat(L' ', kMany) + zeros + L"42", number));
  EXPECT_EQ(number, 42);
}

}  // namespace
