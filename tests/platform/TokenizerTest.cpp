// CLumString: splitting, joining and typed reading of items. The numbers are compared to the C
// runtime's reading in NumberTextTest.
#include "platform/Tokenizer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <vector>

#include "tests/TextPrinting.h"

namespace {

using Texts = std::vector<CString>;

struct SplitRow {
  const wchar_t* text;
  bool trim;
  bool merge;
  Texts items;
};

const SplitRow kSplits[] = {
    {L"", false, false, {}},
    {L"a", false, false, {L"a"}},
    {L",", false, false, {L"", L""}},
    {L"a,b", false, false, {L"a", L"b"}},
    {L"a,,b,", false, false, {L"a", L"", L"b", L""}},
    {L",a", false, false, {L"", L"a"}},
    {L" a , b ", false, false, {L" a ", L" b "}},
    {L" a ,\tb\t", true, false, {L"a", L"b"}},
    {L"a b, ,c", true, false, {L"a b", L"", L"c"}},
    {L"  ", true, false, {L""}},
    {L"  ", false, false, {L"  "}},
    {L"\na\r,b", true, false, {L"\na\r", L"b"}},
    {L"a,,,b", false, true, {L"a", L"b"}},
    {L",,a,,", false, true, {L"", L"a", L""}},
    {L",,,", false, true, {L"", L""}},
    {L"a, ,b", true, true, {L"a", L"", L"b"}},
};

CLumString ItemOf(const wchar_t* item) { return {CString(item), L',', true, false}; }

template <typename T>
struct NumberRow {
  const wchar_t* text;
  T expected;
};

template <typename T, std::size_t N>
void ExpectAccepted(const NumberRow<T> (&rows)[N]) {
  for (const NumberRow<T>& row : rows) {
    T value = static_cast<T>(99);
    EXPECT_TRUE(ItemOf(row.text).GetItem(0, value)) << CStringA(row.text).GetString();
    EXPECT_EQ(value, row.expected) << CStringA(row.text).GetString();
  }
}

template <typename T, std::size_t N>
void ExpectRefused(const wchar_t* const (&texts)[N]) {
  for (const wchar_t* text : texts) {
    T value = static_cast<T>(77);
    EXPECT_FALSE(ItemOf(text).GetItem(0, value)) << CStringA(text).GetString();
    EXPECT_EQ(value, static_cast<T>(77)) << CStringA(text).GetString();
  }
}

// What no integer type reads.
constexpr const wchar_t* kNoIntegers[] = {
    L"",
    L" ",
    L"abc",
    L"12abc",
    L"1 2",
    L"1.0",
    L"1e3",
    L"0x10",
    L"+",
    L"-",
    L"--1",
    L"+-1",
    L"-+1",
    L"++1",
    L"1-",
    L"+ 1",
    L"- 1",
    L"inf",
    L"\u0661",
    L"1\n",
    L"99999999999999999999999999",
    L"-99999999999999999999999999",
};

}  // namespace

TEST(Tokenizer, SplitsByItsRules) {
  for (const SplitRow& row : kSplits) {
    const CLumString list(row.text, L',', row.trim, row.merge);
    EXPECT_EQ(list.Items(), row.items) << CStringA(row.text).GetString();
    EXPECT_EQ(list.Count(), static_cast<int>(row.items.size()));
  }
}

TEST(Tokenizer, LoadReplacesTheList) {
  CLumString list(L';');
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.String(), L"");
  list.LoadStringW(L"a; b", true, false);
  EXPECT_EQ(list.Items(), (Texts{L"a", L"b"}));
  list.LoadStringW(L"c", false, false);
  EXPECT_EQ(list.Items(), Texts{L"c"});
  list.LoadStringW(L"", false, false);
  EXPECT_EQ(list.Count(), 0);
}

TEST(Tokenizer, KeepsItsTextWhenTheCallersChanges) {
  CString text(L"a,b");
  const CLumString list(text, L',', true, false);
  text.SetAt(0, L'x');
  EXPECT_EQ(list.Items(), (Texts{L"a", L"b"}));
}

TEST(Tokenizer, SeparatorMayBeABlankOrATab) {
  EXPECT_EQ(CLumString(L"a  b", L' ', true, true).Items(), (Texts{L"a", L"b"}));
  EXPECT_EQ(CLumString(L"a\t\tb", L'\t', true, false).Items(), (Texts{L"a", L"", L"b"}));
}

TEST(Tokenizer, TextItemsAreAlwaysReadable) {
  const CLumString list(L"a,,c", L',', true, false);
  CString text(L"wrong");
  EXPECT_TRUE(list.GetItem(1, text));
  EXPECT_EQ(text, L"");
  EXPECT_TRUE(list.GetItem(2, text));
  EXPECT_EQ(text, L"c");
}

TEST(Tokenizer, MissingItemsLeaveTheOutputUntouched) {
  const CLumString list(L"1,2", L',', true, false);
  for (const int index :
       {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    CString text(L"wrong");
    int number = 77;
    double real = 7.5;
    bool truth = true;
    EXPECT_FALSE(list.GetItem(index, text));
    EXPECT_FALSE(list.GetItem(index, number));
    EXPECT_FALSE(list.GetItem(index, real));
    EXPECT_FALSE(list.GetItem(index, truth));
    EXPECT_EQ(text, L"wrong");
    EXPECT_EQ(number, 77);
    EXPECT_EQ(real, 7.5);
    EXPECT_TRUE(truth);
  }
}

TEST(Tokenizer, ReadsIntegersUpToTheTypesEdges) {
  ExpectAccepted<int>({{L"0", 0},
                       {L"-5", -5},
                       {L"+7", 7},
                       {L"-0", 0},
                       {L"007", 7},
                       {L" \t12 ", 12},
                       {L"2147483647", 2147483647},
                       {L"-2147483648", std::numeric_limits<int>::min()}});
  ExpectAccepted<unsigned int>({{L"4294967295", 4294967295U}, {L"+1", 1}, {L"-0", 0}});
  ExpectAccepted<unsigned short>({{L"65535", 65535}, {L"0", 0}});
  ExpectAccepted<std::uint64_t>({{L"18446744073709551615", 18446744073709551615U}, {L"7", 7}});
}

TEST(Tokenizer, RefusesNumbersBeyondTheType) {
  ExpectRefused<int>({L"2147483648", L"-2147483649", L"4294967296"});
  ExpectRefused<unsigned int>({L"4294967296", L"-1"});
  ExpectRefused<unsigned short>({L"65536", L"70000", L"-1"});
  ExpectRefused<std::uint64_t>({L"18446744073709551616", L"18446744073709551620", L"-1"});
}

TEST(Tokenizer, RefusesWhatIsNoWholeNumber) {
  ExpectRefused<int>(kNoIntegers);
  ExpectRefused<unsigned int>(kNoIntegers);
  ExpectRefused<unsigned short>(kNoIntegers);
  ExpectRefused<std::uint64_t>(kNoIntegers);
}

TEST(Tokenizer, RefusesNumberFollowedByLetters) {
  ExpectRefused<double>({L"12abc", L"1.5m", L"1e5x", L"0x10", L"1f"});
  ExpectRefused<bool>({L"1x", L"trueish"});
}

TEST(Tokenizer, NumbersAreTrimmedAlsoWhereItemsAreNot) {
  const CLumString list(L" 1 , 2.5\t", L',', false, false);
  int number = 77;
  double real = 77;
  EXPECT_TRUE(list.GetItem(0, number));
  EXPECT_TRUE(list.GetItem(1, real));
  EXPECT_EQ(number, 1);
  EXPECT_EQ(real, 2.5);
}

TEST(Tokenizer, ReadsBoolsInAnyCase) {
  for (const wchar_t* text : {L"1", L"true", L"TRUE", L"True", L" 1 "}) {
    bool value = false;
    EXPECT_TRUE(ItemOf(text).GetItem(0, value));
    EXPECT_TRUE(value);
  }
  for (const wchar_t* text : {L"0", L"false", L"FALSE", L"fAlSe"}) {
    bool value = true;
    EXPECT_TRUE(ItemOf(text).GetItem(0, value));
    EXPECT_FALSE(value);
  }
}

TEST(Tokenizer, RefusesOtherBoolsAndLeavesTheOutput) {
  for (const wchar_t* text : {L"", L"2", L"-1", L"01", L"+1", L"yes", L"t", L"truth", L"on"}) {
    for (const bool before : {false, true}) {
      bool value = before;
      EXPECT_FALSE(ItemOf(text).GetItem(0, value));
      EXPECT_EQ(value, before);
    }
  }
}

TEST(Tokenizer, ErasesWithinTheList) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  constexpr int kSmallest = std::numeric_limits<int>::min();
  const struct {
    int first;
    int count;
    const wchar_t* left;
  } rows[] = {
      {0, 1, L"b,c,d"},
      {1, 2, L"a,d"},
      {0, 4, L""},
      {3, 100, L"a,b,c"},
      {4, 1, L"a,b,c,d"},
      {-1, 2, L"b,c,d"},
      {-5, 5, L"a,b,c,d"},
      {0, 0, L"a,b,c,d"},
      {2, -1, L"a,b,c,d"},
      {1, kLargest, L"a"},
      {kLargest, kLargest, L"a,b,c,d"},
      {kSmallest, kLargest, L"a,b,c,d"},
      {0, kSmallest, L"a,b,c,d"},
  };
  for (const auto& row : rows) {
    CLumString list(L"a,b,c,d", L',', true, false);
    list.Erase(row.first, row.count);
    EXPECT_EQ(list.String(), row.left) << row.first << " " << row.count;
  }
}

TEST(Tokenizer, JoinsItemsAsTheyStandInTheList) {
  EXPECT_EQ(CLumString(L" a ,, b", L',', true, false).String(), L"a,,b");
  EXPECT_EQ(CLumString(L" a ,, b", L',', false, false).String(), L" a ,, b");
  EXPECT_EQ(CLumString(L"a,,b", L',', true, true).String(), L"a,b");
  EXPECT_EQ(CLumString(L",", L',', true, false).String(), L",");
}

TEST(Tokenizer, ErasingFromACopyLeavesTheOriginal) {
  const CLumString original(L"a,b,c", L',', true, false);
  CLumString copy = original;
  copy.Erase(0, 2);
  EXPECT_EQ(copy.String(), L"c");
  EXPECT_EQ(original.Count(), 3);
}

TEST(Tokenizer, KeepsNulsInItems) {
  const CLumString list(CString(L"a\0b,c", 5), L',', true, false);
  ASSERT_EQ(list.Count(), 2);
  EXPECT_EQ(list.Items()[0], CString(L"a\0b", 3));
  int number = 77;
  EXPECT_FALSE(CLumString(CString(L"1\0", 2), L',', true, false).GetItem(0, number));
  EXPECT_EQ(number, 77);
}

TEST(Tokenizer, LongTextsAreSplitInLinearTime) {
  constexpr int kCharacters = 25'000'000;
  CString blanks(L' ', kCharacters);
  blanks.SetAt(kCharacters / 2, L',');
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(CLumString(blanks, L',', true, true).Items(), (Texts{L"", L""}));
  EXPECT_EQ(CLumString(CString(L',', kCharacters), L',', true, true).Count(), 2);
  EXPECT_EQ(CLumString(CString(L'x', kCharacters), L',', true, true).Count(), 1);
  EXPECT_EQ(CLumString(CString(L',', 1'000'000), L',', true, false).Count(), 1'000'001);
  // A time that only work growing with the square of the length can exceed.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}
