// The scans of plain numbers against those that read every text: what the former take, the latter
// read alike, to the last bit. That these agree with the C runtime is checked beside.
#include "values/PlainScan.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "platform/Framework.h"
#include "tests/RuntimeComparison.h"
#include "tests/TextPrinting.h"
#include "values/NumberScan.h"

namespace lum::detail {
namespace {

using lum::test::ForEachText;
using lum::test::IsSame;

constexpr unsigned int kSeed = 20240229;

template <typename Ch>
std::string Quoted(std::basic_string_view<Ch> text) {
  using String = std::conditional_t<std::is_same_v<Ch, char>, CStringA, CString>;
  return ::testing::PrintToString(String(text.data(), static_cast<int>(text.size())));
}

// Compares a plain scan with the scan of every text and counts how many texts were plain.
class CPlainComparison {
 public:
  template <typename Ch, typename T>
  void Compare(std::basic_string_view<Ch> text, bool (*plain)(std::basic_string_view<Ch>, T&),
               bool (*any)(std::basic_string_view<Ch>, T&)) {
    T value = 77;
    ++m_count;
    if (!plain(text, value)) {
      EXPECT_EQ(value, T{77}) << Quoted(text);
      return;
    }
    ++m_plain;
    T expected = 78;
    if (!any(text, expected) || !IsSame(value, expected)) {
      ADD_FAILURE() << Quoted(text) << ": " << value << " instead of " << expected;
    }
  }

  // A comparison of next to nothing would prove nothing.
  void ExpectManyPlain(std::uint64_t percent) const { EXPECT_GE(m_plain * 100, m_count * percent); }

 private:
  std::uint64_t m_count = 0;
  std::uint64_t m_plain = 0;
};

// Every plain scan there is, of one text in both widths.
void CompareAll(CPlainComparison& comparison, const std::string& text) {
  const std::string_view narrow = text;
  const std::wstring copy(text.begin(), text.end());
  const std::wstring_view wide = copy;
  comparison.Compare<wchar_t, int>(wide, ScanPlainInteger, ScanAnyInt);
  comparison.Compare<wchar_t, unsigned int>(wide, ScanPlainInteger, ScanAnyUInt);
  comparison.Compare<wchar_t, std::uint64_t>(wide, ScanPlainInteger, ScanAnyULongLong);
  comparison.Compare<wchar_t, unsigned int>(wide, ScanPlainHex, ScanAnyHex);
  comparison.Compare<char, unsigned int>(narrow, ScanPlainHex, ScanAnyHex);
  comparison.Compare<wchar_t, double>(wide, ScanPlainDouble, ScanAnyDouble);
  comparison.Compare<char, double>(narrow, ScanPlainDouble, ScanAnyDouble);
}

TEST(PlainScan, ReadsEveryShortTextAsTheOtherScansDo) {
  CPlainComparison comparison;
  const auto check = [&](const std::string& text) { CompareAll(comparison, text); };
  ForEachText(" +-.019eExXpPa\xA0", 5, check);
  ForEachText("10\t-.exXF", 6, check);
  comparison.ExpectManyPlain(10);
}

TEST(PlainScan, ReadsNumbersOfEveryLengthAsTheOtherScansDo) {
  std::mt19937_64 random(kSeed);
  CPlainComparison comparison;
  for (int i = 0; i < 300000; ++i) {
    const bool isHexadecimal = random() % 4 == 0;
    std::string text(random() % 3, ' ');
    text += std::string_view("+-").substr(random() % 3, 1);
    for (std::size_t length = random() % 24; length > 0; --length) {
      text += "0123456789abcdefABCDEF"[random() % (isHexadecimal ? 22 : 10)];
    }
    if (random() % 2 == 0) {
      text.insert(random() % (text.size() + 1), 1, ". -+eExX\0,"[random() % 10]);
    }
    CompareAll(comparison, text);
  }
  comparison.ExpectManyPlain(30);
}

// The bounds of the types, where a scan saturates and where it wraps.
TEST(PlainScan, ReadsTheBoundsOfTheTypesAsTheOtherScansDo) {
  CPlainComparison comparison;
  for (int bit = 0; bit < 64; ++bit) {
    const std::uint64_t power = std::uint64_t{1} << bit;
    for (const std::uint64_t number : {power - 1, power, power + 1, 0 - power}) {
      for (const char* sign : {"", "-", "+", " -"}) {
        for (const char* tail : {"", "0", ".", ".0", " "}) {
          CompareAll(comparison, sign + std::to_string(number) + tail);
        }
      }
    }
  }
  comparison.ExpectManyPlain(30);
}

// A wide character is a digit only as a whole: L'\x130' is none although its low byte is '0'.
TEST(PlainScan, TakesNoOtherCharacterForADigit) {
  for (unsigned int code = 0x80; code < 0x10000; ++code) {
    const std::wstring text = {L'1', static_cast<wchar_t>(code), L'2'};
    double number = 0.0;
    unsigned int hex = 0;
    EXPECT_TRUE(ScanPlainDouble(std::wstring_view(text), number));
    EXPECT_TRUE(ScanPlainHex(std::wstring_view(text), hex));
    EXPECT_EQ(number, 1.0) << code;
    EXPECT_EQ(hex, 1U) << code;
  }
}

struct Taken {
  bool isTaken = false;
  int value = 77;
  std::string rest;

  friend bool operator==(const Taken&, const Taken&) = default;
};

Taken Take(bool (*take)(std::string_view&, std::size_t, int&), std::string_view text,
           std::size_t width) {
  Taken taken;
  taken.isTaken = take(text, width, taken.value);
  taken.rest = text;
  return taken;
}

TEST(PlainScan, TakesFieldsOfClocksAsTheOtherScanDoes) {
  std::uint64_t plain = 0;
  ForEachText("0179 +-.\xB0", 4, [&plain](const std::string& text) {
    for (const std::size_t width : {0U, 1U, 2U, 3U, 9U, 10U}) {
      const Taken taken = Take(TakePlainInt, text, width);
      plain += taken.isTaken ? 1 : 0;
      const Taken untouched = {false, 77, text};
      EXPECT_EQ(taken, taken.isTaken ? Take(TakeAnyInt, text, width) : untouched) << text;
    }
  });
  EXPECT_GE(plain, 1000U);
}

TEST(PlainScan, TakesNoMoreDigitsOfAFieldThanAnIntHolds) {
  EXPECT_EQ(Take(TakePlainInt, "9999999991", 9), (Taken{true, 999999999, "1"}));
  EXPECT_FALSE(Take(TakePlainInt, "9999999991", 10).isTaken);
}

}  // namespace
}  // namespace lum::detail
