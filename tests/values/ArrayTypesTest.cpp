#include "values/ArrayTypes.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Narrow;
using lum::test::TextOf;

TEST(ArrayTypes, PrintTheirElementsJoinedByCommas) {
  EXPECT_EQ(TextOf(CLumIntArray()), "");
  EXPECT_EQ(TextOf(CLumIntArray(std::vector<int>{5})), "5");
  EXPECT_EQ(TextOf(CLumIntArray(std::vector<int>{-1, 0, 2147483647})), "-1,0,2147483647");
  EXPECT_EQ(TextOf(CLumDoubleArray()), "");
  EXPECT_EQ(TextOf(CLumDoubleArray(std::vector<double>{0.1, -2.0, 1.5})), "0.1,-2,1.5");
  EXPECT_EQ(TextOf(CLumNameArray()), "");
  EXPECT_EQ(TextOf(CLumNameArray(std::vector<CString>{L"a", L"", L" b "})), "a,, b ");
}

TEST(ArrayTypes, IntsAreReadUpToTheFirstUnreadable) {
  const struct {
    const wchar_t* text;
    const char* expected;
  } kCases[] = {
      {L"1,2,x,4", "1,2"}, {L" 1 ,\t-2", "1,-2"},  {L"x,1", ""},    {L"", ""},
      {L"1,,2", "1"},      {L"1,2147483648", "1"}, {L"1,2.5", "1"}, {L",", ""},
  };
  for (const auto& [text, expected] : kCases) {
    CLumIntArray value(std::vector<int>{9, 9, 9});
    EXPECT_TRUE(value.SetValueStr(CString(text))) << Narrow(text);
    EXPECT_EQ(TextOf(value), expected) << Narrow(text);
  }
}

TEST(ArrayTypes, DoublesAreReadUpToTheFirstUnreadable) {
  const struct {
    const wchar_t* text;
    const char* expected;
  } kCases[] = {
      {L"1.5,2e3,x,4", "1.5,2000"}, {L"inf,-inf,nan", "inf,-inf,nan"}, {L"x", ""}, {L"", ""},
      {L"1,1e400,2", "1"},
  };
  for (const auto& [text, expected] : kCases) {
    CLumDoubleArray value(std::vector<double>{9.0, 9.0});
    EXPECT_TRUE(value.SetValueStr(CString(text))) << Narrow(text);
    EXPECT_EQ(TextOf(value), expected) << Narrow(text);
  }
}

TEST(ArrayTypes, NamesAreReadAsTheyStand) {
  CLumNameArray value;
  EXPECT_TRUE(value.SetValueStr(CString(L"a,b")));
  std::vector<CString> names;
  EXPECT_EQ(value.GetNameArray(names), 1);
  EXPECT_EQ(names, (std::vector<CString>{L"a", L"b"}));
  EXPECT_TRUE(value.SetValueStr(CString(L" a ,, b")));
  EXPECT_EQ(value.GetNameArray(names), 1);
  EXPECT_EQ(names, (std::vector<CString>{L" a ", L"", L" b"}));
  EXPECT_TRUE(value.SetValueStr(CString()));
  EXPECT_EQ(value.GetNameArray(names), 1);
  EXPECT_TRUE(names.empty());
}

TEST(ArrayTypes, ANameWithACommaReadsBackAsTwo) {
  CLumNameArray value(std::vector<CString>{L"a,b", L"c"});
  EXPECT_TRUE(value.SetValueStr(CString(TextOf(value).c_str())));
  std::vector<CString> names;
  EXPECT_EQ(value.GetNameArray(names), 1);
  EXPECT_EQ(names.size(), 3U);
}

TEST(ArrayTypes, DoublesReadBackExactly) {
  const std::vector<double> kNumbers = {0.1,
                                        1.0 / 3.0,
                                        -0.0,
                                        std::numeric_limits<double>::max(),
                                        std::numeric_limits<double>::denorm_min(),
                                        123456789.123456789,
                                        std::numeric_limits<double>::infinity()};
  CLumDoubleArray value;
  EXPECT_TRUE(value.SetValueStr(CString(TextOf(CLumDoubleArray(kNumbers)).c_str())));
  std::vector<double> numbers;
  EXPECT_EQ(value.GetDoubleArray(numbers), 1);
  EXPECT_EQ(numbers, kNumbers);
}

TEST(ArrayTypes, LongListsReadBack) {
  std::vector<int> numbers(100000);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    numbers[i] = static_cast<int>(i) - 50000;
  }
  CLumIntArray value;
  EXPECT_TRUE(value.SetValueStr(CString(TextOf(CLumIntArray(numbers)).c_str())));
  std::vector<int> output;
  EXPECT_EQ(value.GetIntArray(output), 1);
  EXPECT_EQ(output, numbers);
}

TEST(ArrayTypes, ListsOfEveryLengthAreWrittenAndReadWhole) {
  std::vector<double> reals;
  std::vector<int> numbers;
  std::string realText;
  std::string numberText;
  // Past the lengths at which texts and lists are put together from parts.
  for (int i = 0; i < 300; ++i) {
    const char* const comma = i == 0 ? "" : ",";
    reals.push_back(-std::ldexp(1.0, -1020 - i % 50));
    numbers.push_back(std::numeric_limits<int>::min() + i);
    char text[40];
    realText += comma + std::string(text, std::to_chars(text, std::end(text), reals.back()).ptr);
    numberText += comma + std::to_string(numbers.back());
    CLumDoubleArray realArray(static_cast<const std::vector<double>&>(reals));
    CLumIntArray numberArray(static_cast<const std::vector<int>&>(numbers));
    ASSERT_EQ(TextOf(realArray), realText);
    ASSERT_EQ(TextOf(numberArray), numberText);
    std::vector<double> readReals;
    std::vector<int> readNumbers;
    ASSERT_TRUE(realArray.SetValueStr(CString(realText.c_str())));
    ASSERT_TRUE(numberArray.SetValueStr(CString(numberText.c_str())));
    realArray.GetDoubleArray(readReals);
    numberArray.GetIntArray(readNumbers);
    ASSERT_EQ(readReals, reals);
    ASSERT_EQ(readNumbers, numbers);
  }
}

TEST(ArrayTypes, TheirContentsAreCopiedInAndOut) {
  std::vector<int> numbers = {1, 2};
  CLumIntArray value(numbers);
  numbers[0] = 9;
  EXPECT_EQ(TextOf(value), "1,2");
  EXPECT_EQ(value.SetIntArray(numbers), 1);
  std::vector<int> output;
  EXPECT_EQ(value.GetIntArray(output), 1);
  output[1] = 7;
  EXPECT_EQ(TextOf(value), "9,2");
}

template <typename Kind, typename T>
void ExpectTakesStorage(std::vector<T> values, const char* text) {
  Kind value(std::move(values));
  EXPECT_TRUE(values.empty());  // NOLINT(bugprone-use-after-move)
  Kind taken(std::move(value));
  EXPECT_EQ(TextOf(taken), text);
  EXPECT_EQ(TextOf(value), "");  // NOLINT(bugprone-use-after-move)
  value = std::move(taken);
  EXPECT_EQ(TextOf(value), text);
  EXPECT_TRUE(taken.SetValueStr(CString(L"1")));  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(TextOf(taken), "1");
}

TEST(ArrayTypes, MovingTakesTheStorageAndLeavesAnEmptyList) {
  ExpectTakesStorage<CLumIntArray, int>({1, 2}, "1,2");
  ExpectTakesStorage<CLumDoubleArray, double>({1.5, 2.0}, "1.5,2");
  ExpectTakesStorage<CLumNameArray, CString>({L"a", L"b"}, "a,b");
}

TEST(ArrayTypes, OtherListsDoNotConvert) {
  CLumDoubleArray value(std::vector<double>{1.5});
  static_cast<CLumType&>(value) = CLumIntArray(std::vector<int>{1, 2});
  EXPECT_EQ(TextOf(value), "1.5");
  static_cast<CLumType&>(value) = CLumAnything(L"2.5,3");
  EXPECT_EQ(TextOf(value), "2.5,3");
  static_cast<CLumType&>(value) = CLumAnything(L"none");
  EXPECT_EQ(TextOf(value), "");
}

}  // namespace
