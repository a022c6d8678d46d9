// The number texts against the C runtime in the "C" locale, which they have to agree with. Other
// runtimes than glibc scan some of these texts differently, so only that one is compared with.
#include <gtest/gtest.h>
#include <stdlib.h>

#if defined(__GLIBC__)

#include <bit>
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "tests/RuntimeComparison.h"
#include "values/NumberScan.h"
#include "values/NumberText.h"

namespace {

using namespace lum::detail;
using lum::test::ForEachText;
using lum::test::IsSame;

constexpr unsigned int kSeed = 20240229;

constexpr const wchar_t* kUInt64Format = sizeof(long) == sizeof(std::uint64_t) ? L"%lu" : L"%llu";

std::string Narrow(std::wstring_view text) {
  return std::string(text.begin(), text.end());  // NOLINT: ASCII only.
}

std::wstring Widen(std::string_view text) { return std::wstring(text.begin(), text.end()); }

// Compares one scan with the runtime's. A wrong value in both outputs shows one that is not
// written.
template <typename T>
void ExpectSameScan(const std::wstring& text, const wchar_t* format,
                    bool (*scan)(std::wstring_view, T&)) {
  T expected = 77;
  T value = 77;
  const bool isExpected = std::swscanf(text.c_str(), format, &expected) == 1;
  const bool isScanned = scan(text, value);
  if (isScanned != isExpected || !IsSame(value, expected)) {
    ADD_FAILURE() << '"' << Narrow(text) << "\" as " << Narrow(format) << ": " << isScanned << ' '
                  << value << ", the runtime: " << isExpected << ' ' << expected;
  }
}

void ExpectSameIntegerScans(const std::wstring& text) {
  ExpectSameScan<int>(text, L"%d", ScanInt);
  ExpectSameScan<unsigned int>(text, L"%u", ScanUInt);
  ExpectSameScan<std::uint64_t>(text, kUInt64Format, ScanULongLong);
  ExpectSameScan<unsigned int>(text, L"%x", ScanHex);
}

void ExpectSameDoubleScan(const std::wstring& text) {
  ExpectSameScan<double>(text, L"%lf", ScanDouble);
}

// Calls `check` with the word, its beginnings, and the word with every character replaced or
// followed by each of the alphabet.
template <typename Check>
void ForEachVariation(const std::wstring& word, std::wstring_view alphabet, const Check& check) {
  for (std::size_t place = 0; place <= word.size(); ++place) {
    check(word.substr(0, place));
    for (const wchar_t ch : alphabet) {
      std::wstring inserted = word;
      inserted.insert(place, 1, ch);
      check(inserted);
      if (place < word.size()) {
        std::wstring replaced = word;
        replaced[place] = ch;
        check(replaced);
      }
    }
  }
}

double RandomDouble(std::mt19937_64& random) { return std::bit_cast<double>(random()); }

template <typename... Arguments>
std::string Print(const char* format, Arguments... arguments) {
  std::string text(4000, '\0');
  const int length = std::snprintf(text.data(), text.size(), format, arguments...);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

TEST(NumberTextRuntime, AgreesOnEveryShortNumberText) {
  ForEachText(L" +-.019eExXpPa", 5, ExpectSameDoubleScan);
}

TEST(NumberTextRuntime, AgreesOnEveryShortTextWithWords) {
  ForEachText(L" +-.0159eExXpPinfaty(", 5, ExpectSameDoubleScan);
}

TEST(NumberTextRuntime, AgreesOnEveryExponentText) {
  ForEachText(L"+-.1exp", 6, ExpectSameDoubleScan);
}

TEST(NumberTextRuntime, AgreesOnEveryShortIntegerText) {
  ForEachText(L" \t+-0197afFgxX.", 4, ExpectSameIntegerScans);
}

TEST(NumberTextRuntime, AgreesOnVariationsOfWords) {
  for (const wchar_t* word :
       {L"infinity", L"-INFINITY", L"+Infinity", L"nan(abc)", L"-NAN(0x12)", L" inf", L"0x1.8p-3",
        L"-0X.Fp+10", L"123.456e-7", L"1e+400", L"0x1p-1080", L"\t\n\v\f\r1"}) {
    ForEachVariation(word, L" +-.0159eExXpPinfatyNFIY(),\t", ExpectSameDoubleScan);
  }
}

TEST(NumberTextRuntime, AgreesOnTheCharactersThatAreSkipped) {
  for (wchar_t ch = 1; ch < 0xFFFF; ++ch) {
    const std::wstring text = {ch, L'7'};
    int expected = 77;
    int value = 77;
    const bool isExpected = std::swscanf(text.c_str(), L"%d", &expected) == 1;
    ASSERT_EQ(ScanInt(text, value), isExpected) << static_cast<unsigned int>(ch);
    ASSERT_EQ(value, expected) << static_cast<unsigned int>(ch);
    double expectedDouble = 77;
    double number = 77;
    const bool isDouble = std::swscanf(text.c_str(), L"%lf", &expectedDouble) == 1;
    ASSERT_EQ(ScanDouble(text, number), isDouble) << static_cast<unsigned int>(ch);
    ASSERT_EQ(number, expectedDouble) << static_cast<unsigned int>(ch);
  }
}

TEST(NumberTextRuntime, AgreesOnIntegersOfEveryLength) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 100000; ++i) {
    std::wstring text(random() % 3, L' ');
    text += std::wstring_view(L"+-\0", 3).substr(random() % 4, 1);
    for (std::size_t length = random() % 24; length > 0; --length) {
      text += static_cast<wchar_t>(L'0' + random() % 10);
    }
    ExpectSameIntegerScans(text.c_str());
  }
}

TEST(NumberTextRuntime, AgreesAroundPowersOfTwo) {
  for (int bit = 0; bit < 64; ++bit) {
    const std::uint64_t power = std::uint64_t{1} << bit;
    for (const std::uint64_t number : {power - 1, power, power + 1, 0 - power}) {
      for (const char* sign : {"", "-", "+"}) {
        const auto decimal = Print("%s%llu", sign, static_cast<unsigned long long>(number));
        ExpectSameIntegerScans(Widen(decimal));
        ExpectSameDoubleScan(Widen(decimal));
        ExpectSameIntegerScans(
            Widen(Print("%s0x%llx", sign, static_cast<unsigned long long>(number))));
      }
    }
  }
}

TEST(NumberTextRuntime, AgreesOnDoublesInEveryNotation) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 20000; ++i) {
    const double value = RandomDouble(random);
    for (const char* format : {"%.17g", "%.15g", "%.3e", "%.40e", "%a", "%.5a", "%A"}) {
      ExpectSameDoubleScan(Widen(Print(format, value)));
    }
  }
}

TEST(NumberTextRuntime, AgreesOnRandomDigitsAndExponents) {
  std::mt19937_64 random(kSeed);
  const auto addDigits = [&random](std::wstring& text, std::size_t most, std::uint64_t base) {
    for (std::size_t length = random() % most; length > 0; --length) {
      text += L"0123456789abcdef"[random() % base];
    }
  };
  for (int i = 0; i < 60000; ++i) {
    const bool isHexadecimal = i % 2 == 0;
    const std::uint64_t base = isHexadecimal ? 16 : 10;
    std::wstring text = isHexadecimal ? L"-0x" : L"-";
    addDigits(text, 40, base);
    text += L'.';
    addDigits(text, 40, base);
    text += isHexadecimal ? L'p' : L'e';
    text += std::to_wstring(static_cast<int>(random() % 2400) - 1200);
    ExpectSameDoubleScan(text);
  }
}

// Texts of numbers halfway between two doubles, and just beside: they show every wrong rounding.
TEST(NumberTextRuntime, AgreesHalfwayBetweenNeighbours) {
  if (std::numeric_limits<long double>::digits <= std::numeric_limits<double>::digits) {
    GTEST_SKIP() << "long double cannot hold what is halfway between two doubles";
  }
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 3000; ++i) {
    // Every third of them is denormal.
    const std::uint64_t bits = random() & 0x7FFFFFFFFFFFFFFFU;
    const double value = std::bit_cast<double>(i % 3 == 0 ? bits >> 12 : bits);
    const double next = std::nextafter(value, std::numeric_limits<double>::infinity());
    if (!std::isfinite(next)) {
      continue;
    }
    const long double half = (static_cast<long double>(value) + static_cast<long double>(next)) / 2;
    const std::string exact = Print("%.1080Le", half);
    const std::size_t mark = exact.find('e');
    ExpectSameDoubleScan(Widen(exact));
    ExpectSameDoubleScan(Widen(exact.substr(0, mark) + "1" + exact.substr(mark)));
    ExpectSameDoubleScan(Widen(Print("%.18Le", half)));
    ExpectSameDoubleScan(Widen(Print("%La", half)));
  }
}

TEST(NumberTextRuntime, AgreesAtTheEdgesOfTheType) {
  for (const double value :
       {std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
        std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::epsilon(), 0.0,
        std::nextafter(std::numeric_limits<double>::min(), 0.0)}) {
    for (const char* format :
         {"%.1100f", "-%.1100f", "%.20e", "%a", "%.0f", "%.17ge1", "%.17ge-1"}) {
      ExpectSameDoubleScan(Widen(Print(format, value)));
    }
  }
}

TEST(NumberTextRuntime, AgreesOnLongTexts) {
  constexpr std::size_t kMany = 100000;
  const std::wstring zeros(kMany, L'0');
  const std::wstring nines(kMany, L'9');
  for (const std::wstring& text :
       {nines, zeros, nines + L"e-100000", L"0." + zeros + L"15e100001", L"1" + zeros + L"e-100000",
        L"0x" + nines + L"p-400000", L"0x." + zeros + L"1p400004", L"." + nines,
        L"4503599627370496.5" + zeros + L"1", L"1e" + nines, L"1e-" + nines,
        L"1e" + zeros + L"5"}) {
    ExpectSameDoubleScan(text);
    ExpectSameIntegerScans(text);
  }
}

TEST(NumberTextRuntime, WritesFixedAsPrintfDoes) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 100000; ++i) {
    // Half of them of everyday size, where rounding to six digits matters.
    const double any = RandomDouble(random);
    const double value = i % 2 == 0 ? any : std::fmod(any, 1e6);
    CString text;
    AppendFixed(text, value);
    ASSERT_EQ(Narrow(text.GetString()), Print("%f", value));
  }
}

TEST(NumberTextRuntime, WritesTiesAsPrintfDoes) {
  for (int i = -20000; i < 20000; ++i) {
    const double value = i / 128.0 + i / 1048576.0;  // Many end in a 5 after the sixth digit.
    CString text;
    AppendFixed(text, value);
    ASSERT_EQ(Narrow(text.GetString()), Print("%f", value));
  }
}

}  // namespace

#endif
