// operator<< for CString.
#include "platform/StringAppend.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include "tests/TextPrinting.h"

namespace {

template <typename T>
CString Appended(T value) {
  CString text(L"<");
  text << value;
  return text.Mid(1);
}

// The length of the C runtime's shortest exponent form that reads back to the same double.
int ShortestExponentForm(double value) {
  char buffer[64];
  int length = 0;
  for (int places = 0; places <= 16; ++places) {
    length = std::snprintf(buffer, sizeof buffer, "%.*e", places, value);
    if (std::strtod(buffer, nullptr) == value) {
      break;
    }
  }
  return length;
}

}  // namespace

TEST(StringAppend, WritesIntegersInDecimal) {
  EXPECT_EQ(Appended(0), L"0");
  EXPECT_EQ(Appended(-7), L"-7");
  EXPECT_EQ(Appended(INT_MAX), L"2147483647");
  EXPECT_EQ(Appended(INT_MIN), L"-2147483648");
  EXPECT_EQ(Appended(UINT_MAX), L"4294967295");
}

TEST(StringAppend, WritesTheShortestTextOfADouble) {
  const struct {
    double value;
    const wchar_t* expected;
  } rows[] = {
      {0.0, L"0"},
      {-0.0, L"-0"},
      {1.0, L"1"},
      {0.1, L"0.1"},
      {-2.5, L"-2.5"},
      {100.0, L"100"},
      {1e20, L"1e+20"},
      {1e-7, L"1e-07"},
      {5e-324, L"5e-324"},
      {DBL_MAX, L"1.7976931348623157e+308"},
      {1.0 / 3, L"0.3333333333333333"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Appended(row.value), row.expected);
  }
}

TEST(StringAppend, NamesWhatIsNoNumber) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Appended(kInfinity), L"inf");
  EXPECT_EQ(Appended(-kInfinity), L"-inf");
  EXPECT_EQ(Appended(std::copysign(kNan, 1.0)), L"nan");
  EXPECT_EQ(Appended(std::copysign(kNan, -1.0)), L"-nan");
}

TEST(StringAppend, RandomDoublesReadBackFromNoLongerTextThanNeeded) {
  std::mt19937_64 random(5);
  for (int round = 0; round < 20'000; ++round) {
    const double value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) {
      continue;
    }
    const CString text = Appended(value);
    ASSERT_EQ(std::strtod(CStringA(text).GetString(), nullptr), value);
    ASSERT_LE(text.GetLength(), ShortestExponentForm(value)) << CStringA(text).GetString();
  }
}

TEST(StringAppend, AppendsCharactersAndTexts) {
  CString text;
  text << L'a' << L"bc" << CString(L"d\0e", 3) << 1 << 2U << 0.5;
  EXPECT_EQ(text, CString(L"abcd\0e120.5", 11));
}

TEST(StringAppend, NullTextAppendsNothing) {
  CString text(L"a");
  text << static_cast<const wchar_t*>(nullptr) << L"b";
  EXPECT_EQ(text, L"ab");
}

TEST(StringAppend, AppendsATextToItself) {
  CString text(L"ab");
  text << text << text.GetString();
  EXPECT_EQ(text, L"abababab");
}

TEST(StringAppend, LeavesOtherCopiesAlone) {
  CString text(L"a");
  const CString copy = text;
  text << 1;
  EXPECT_EQ(copy, L"a");
  EXPECT_EQ(text, L"a1");
}
