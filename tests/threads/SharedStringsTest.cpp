// Copies of a string share its characters until one of them is changed: the copies are used in
// different threads. A string that is the only owner of its characters is changed in place, which
// shows that no owner was forgotten and none counted twice.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "tests/attributes/TreeTesting.h"
#include "tests/threads/Together.h"

namespace {

using testing::Each;
using testing::ElementsAreArray;

constexpr int kTimes = 20000;

template <typename Text>
bool IsOnlyOwner(Text& text) {
  const auto* before = text.GetString();
  text.SetAt(0, text[0]);
  return text.GetString() == before;
}

TEST(StringsInThreads, AreCopiedFromOneAtOnce) {
  CString text(L"a text that all threads copy");
  const auto lengths = ResultsOf<int>([&](int) {
    int length = 0;
    for (int i = 0; i < kTimes; ++i) {
      const CString copy = text;
      const CString second = copy;
      length += second.GetLength();
    }
    return length;
  });
  EXPECT_THAT(lengths, Each(kTimes * text.GetLength()));
  EXPECT_TRUE(IsOnlyOwner(text));
}

TEST(StringsInThreads, ChangeTheirOwnCopyOnly) {
  const CString text(L"abc");
  const auto change = [](CString copy, int number) {
    copy.SetAt(0, static_cast<wchar_t>(L'0' + number));
    copy.MakeUpper();
    copy.Append(L"d");
    copy.Insert(1, L"-");
    copy.Replace(L"B", L"bb");
    copy.AppendFormat(L"%d", number);
    return Narrow(copy);
  };
  const auto texts = TextsOf([&](int number) { return change(text, number); });
  EXPECT_THAT(
      texts,
      ElementsAreArray(TextsOneByOne([&](int number) { return change(CString(L"abc"), number); })));
  EXPECT_EQ(texts[3], "3-bbCd3");
  EXPECT_EQ(text, L"abc");
}

/// Of all sharers, the last one to change finds itself the only owner: nobody may still read.
template <typename Text>
std::vector<std::string> ChangeSharedCopies(const Text& first) {
  std::vector<Text> copies(kThreads, first);
  RunTogether([&](int number) {
    Text& mine = copies[static_cast<std::size_t>(number)];
    mine.SetAt(0, static_cast<typename Text::CharType>('0' + number));
    mine.AppendChar('!');
  });
  std::vector<std::string> texts;
  for (const Text& copy : copies) {
    texts.push_back(Narrow(CString(copy)));
  }
  return texts;
}

TEST(StringsInThreads, ChangeWithoutAnOwnerThatStays) {
  const auto expected = TextsOneByOne([](int number) { return std::to_string(number) + "bc!"; });
  for (int round = 0; round < 50; ++round) {
    ASSERT_THAT(ChangeSharedCopies(CString(L"abc")), ElementsAreArray(expected));
    ASSERT_THAT(ChangeSharedCopies(CStringA("abc")), ElementsAreArray(expected));
  }
}

/// In a process of its own the copies are counted before there is a second thread.
TEST(StringsInThreads, DropWhatWasSharedBeforeThereWereThreads) {
  CString text(L"shared early");
  std::vector<std::vector<CString>> copies(kThreads, std::vector<CString>(100, text));
  RunTogether([&](int number) { copies[static_cast<std::size_t>(number)].clear(); });
  EXPECT_EQ(text, L"shared early");
  EXPECT_TRUE(IsOnlyOwner(text));
}

TEST(StringsInThreads, FreeTheTextWithItsLastOwnerWhicheverThatIs) {
  for (int round = 0; round < 50; ++round) {
    const auto text = std::make_unique<CString>(L"freed by one of the threads");
    std::vector<std::optional<CString>> copies(kThreads, *text);
    text->Empty();
    const auto lengths = ResultsOf<int>([&](int number) {
      std::optional<CString>& mine = copies[static_cast<std::size_t>(number)];
      const int length = mine->GetLength() + (mine->GetAt(0) == L'f' ? 1000 : 0);
      mine.reset();
      return length;
    });
    ASSERT_THAT(lengths, Each(1027));
  }
}

TEST(StringsInThreads, AreTakenOutOfSharedValues) {
  const CLumName value(L"the name of all");
  const auto texts = TextsOf([&](int number) {
    CString name;
    for (int i = 0; i < kTimes; ++i) {
      value.GetName(name);
      name.SetAt(0, static_cast<wchar_t>(L'0' + number));
    }
    return Narrow(name);
  });
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(
                         [](int number) { return std::to_string(number) + "he name of all"; })));
  EXPECT_EQ(TextOf(value), "the name of all");
}

TEST(StringsInThreads, OfConstantsAreCopiedAndChanged) {
  static constinit const CString kText(L"constant");
  const auto texts = TextsOf([](int number) {
    CString copy;
    for (int i = 0; i < kTimes; ++i) {
      copy = kText;
      copy.SetAt(0, static_cast<wchar_t>(L'0' + number));
    }
    return Narrow(copy);
  });
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(
                         [](int number) { return std::to_string(number) + "onstant"; })));
  EXPECT_EQ(kText, L"constant");
}

}  // namespace
