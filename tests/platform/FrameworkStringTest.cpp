// Building, sharing, taking apart, searching and comparing of CString and CStringA.
#include "platform/FrameworkString.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/TextPrinting.h"

namespace {

LUM_CONSTINIT_TEXT const CString kConstantText(L"abc");
LUM_CONSTINIT_TEXT const CStringA kConstantBytes("abc");
LUM_CONSTINIT_TEXT const CString kConstantEmpty(L"");
#if defined(_WIN32)
const CString kConstantDefault;  // The empty text lies in the library, at an address yet unknown.
#else
LUM_CONSTINIT_TEXT const CString kConstantDefault;
#endif

constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

std::wstring StdOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

}  // namespace

TEST(FrameworkString, ConstantsAreBuiltByTheCompiler) {
  EXPECT_EQ(kConstantText, L"abc");
  EXPECT_EQ(kConstantText.GetLength(), 3);
  EXPECT_EQ(kConstantBytes, "abc");
  EXPECT_TRUE(kConstantEmpty.IsEmpty());
  EXPECT_TRUE(kConstantDefault.IsEmpty());
}

TEST(FrameworkString, CopyOfConstantOwnsItsCharacters) {
  const CString copy(kConstantText);
  EXPECT_EQ(copy, kConstantText);
  EXPECT_NE(copy.GetString(), kConstantText.GetString());
}

TEST(FrameworkString, BorrowedTextIsCopiedWhenItIsAppendedToAnEmptyOne) {
  static constexpr CString kBorrowed = L"abc";
  CString text;
  text.Append(kBorrowed);
  EXPECT_EQ(text, L"abc");
  EXPECT_NE(text.GetString(), kBorrowed.GetString());
}

TEST(FrameworkString, BorrowedTextThatIsAppendedToKeepsItsCharacters) {
  static constinit CString text = L"abc";
  text.Append(CString(L"d"));
  EXPECT_EQ(text, L"abcd");
}

TEST(FrameworkString, BorrowedTextIsCopiedBeforeItChanges) {
  static LUM_CONSTINIT_TEXT CString text(L"abc");
  text.SetAt(0, L'x');
  EXPECT_EQ(text, L"xbc");
  EXPECT_EQ(kConstantText, L"abc");
}

TEST(FrameworkString, DefaultIsEmptyAndTerminated) {
  const CString text;
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text.GetLength(), 0);
  EXPECT_EQ(text.GetString()[0], L'\0');
  EXPECT_EQ(text.GetAt(0), L'\0');
}

TEST(FrameworkString, NullPointerGivesEmptyText) {
  const wchar_t* null = nullptr;
  EXPECT_TRUE(CString(null).IsEmpty());
  EXPECT_TRUE(CString(null, 3).IsEmpty());
  EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
  CString text(L"x");
  text = null;
  EXPECT_TRUE(text.IsEmpty());
  text.Append(null);
  text += null;
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text.Compare(null), 0);
  EXPECT_EQ(text.Find(null), -1);
  EXPECT_EQ(text.FindOneOf(null), -1);
  EXPECT_EQ(text.Insert(0, null), 0);
  EXPECT_EQ(text.Replace(null, L"a"), 0);
}

TEST(FrameworkString, PointerAndLengthKeepNuls) {
  const CStringA record("a\0b\0", 4);
  EXPECT_EQ(record.GetLength(), 4);
  EXPECT_EQ(record[1], '\0');
  EXPECT_EQ(record[2], 'b');
  const CStringA copy = record;
  EXPECT_EQ(copy, record);
  EXPECT_NE(record, CStringA("a"));
  EXPECT_NE(record, CStringA("a\0c\0", 4));
  EXPECT_EQ((record + record).GetLength(), 8);
  EXPECT_EQ(record.Find('b'), 2);
  EXPECT_EQ(record.Mid(1, 2), CStringA("\0b", 2));
}

TEST(FrameworkString, NegativeLengthGivesEmptyText) {
  EXPECT_TRUE(CString(L"abc", -1).IsEmpty());
  EXPECT_TRUE(CString(L'x', 0).IsEmpty());
  EXPECT_TRUE(CString(L'x', -5).IsEmpty());
}

TEST(FrameworkString, RepeatsCharacter) {
  EXPECT_EQ(CString(L'x', 3), L"xxx");
  EXPECT_EQ(CString(L'x'), L"x");
  EXPECT_EQ(CStringA('y', 2), "yy");
}

TEST(FrameworkString, ConvertsBetweenWidths) {
  EXPECT_EQ(CString("abc"), L"abc");
  EXPECT_EQ(CStringA(L"abc"), "abc");
  EXPECT_EQ(CString(CStringA("abc")), L"abc");
  EXPECT_EQ(CStringA(CString(L"abc")), "abc");
}

TEST(FrameworkString, CopiesShareUntilOneChanges) {
  CString first(L"abc");
  CString second = first;
  EXPECT_EQ(first.GetString(), second.GetString());
  second.AppendChar(L'd');
  EXPECT_EQ(first, L"abc");
  EXPECT_EQ(second, L"abcd");
}

TEST(FrameworkString, EveryChangingCallLeavesTheOtherCopyAlone) {
  using Change = void (*)(CString&);
  const Change changes[] = {
      [](CString& t) { t.SetAt(0, L'x'); },
      [](CString& t) { t.MakeUpper(); },
      [](CString& t) { t.MakeLower(); },
      [](CString& t) { t.Insert(1, L"xy"); },
      [](CString& t) { t.Delete(1, 2); },
      [](CString& t) { t.Replace(L"B", L"xyz"); },
      [](CString& t) { t.Replace(L'B', L'x'); },
      [](CString& t) { t.Remove(L'B'); },
      [](CString& t) { t.Trim(); },
      [](CString& t) { t.TrimLeft(L" a"); },
      [](CString& t) { t.TrimRight(L"c "); },
      [](CString& t) { t.Append(L"x"); },
      [](CString& t) { t.Empty(); },
      [](CString& t) { t.Format(L"%d", 5); },
      [](CString& t) { t.AppendFormat(L"%d", 5); },
      [](CString& t) {
        t.GetBuffer(3)[0] = L'x';
        t.ReleaseBuffer();
      },
  };
  for (std::size_t i = 0; i < std::size(changes); ++i) {
    const CString original(L" aBc ");
    CString copy = original;
    changes[i](copy);
    EXPECT_EQ(original, L" aBc ") << "change " << i;
    EXPECT_NE(copy, original) << "change " << i;
  }
}

TEST(FrameworkString, MoveLeavesSourceEmpty) {
  CString source(L"abc");
  CString target(std::move(source));
  EXPECT_EQ(target, L"abc");
  EXPECT_TRUE(source.IsEmpty());  // NOLINT(bugprone-use-after-move): promised
  source = std::move(target);
  EXPECT_EQ(source, L"abc");
  EXPECT_TRUE(target.IsEmpty());  // NOLINT(bugprone-use-after-move): promised
}

TEST(FrameworkString, SelfAssignmentKeepsText) {
  CString text(L"abc");
  CString& same = text;
  text = same;
  EXPECT_EQ(text, L"abc");
  text = text.GetString();
  EXPECT_EQ(text, L"abc");
  text = text.GetString() + 1;
  EXPECT_EQ(text, L"bc");
}

TEST(FrameworkString, SelfAppendIsSafeAtEveryGrowth) {
  CString text(L"ab");
  std::wstring expected = L"ab";
  for (int i = 0; i < 12; ++i) {
    text += text;
    expected += expected;
    ASSERT_EQ(StdOf(text), expected);
    text += text.GetString() + 1;
    expected += expected.substr(1);
    ASSERT_EQ(StdOf(text), expected);
  }
  CString shared = text;
  shared.Append(shared.GetString() + 2, 3);
  EXPECT_EQ(StdOf(shared), expected + expected.substr(2, 3));
}

TEST(FrameworkString, InsertAndReplaceTakeTheirOwnText) {
  CString text(L"abc");
  text.Insert(1, text.GetString());
  EXPECT_EQ(text, L"aabcbc");
  text.Replace(L"bc", text);
  EXPECT_EQ(text, L"aaaabcbcaabcbc");
}

TEST(FrameworkString, ConcatenatesEveryKind) {
  const CString text(L"b");
  EXPECT_EQ(text + text, L"bb");
  EXPECT_EQ(text + L"c", L"bc");
  EXPECT_EQ(L"a" + text, L"ab");
  EXPECT_EQ(text + L'c', L"bc");
  EXPECT_EQ(L'a' + text, L"ab");
  CString sum;
  sum += text;
  sum += L"c";
  sum += L'd';
  EXPECT_EQ(sum, L"bcd");
}

TEST(FrameworkString, PartsAreCutToTheText) {
  const CString text(L"abcde");
  const struct {
    CString part;
    const wchar_t* expected;
  } rows[] = {
      {text.Left(2), L"ab"},
      {text.Left(0), L""},
      {text.Left(-1), L""},
      {text.Left(5), L"abcde"},
      {text.Left(kLargest), L"abcde"},
      {text.Right(2), L"de"},
      {text.Right(-3), L""},
      {text.Right(kLargest), L"abcde"},
      {text.Right(kSmallest), L""},
      {text.Mid(2), L"cde"},
      {text.Mid(5), L""},
      {text.Mid(6), L""},
      {text.Mid(-2), L"abcde"},
      {text.Mid(1, 2), L"bc"},
      {text.Mid(1, -1), L""},
      {text.Mid(1, kLargest), L"bcde"},
      {text.Mid(kLargest, kLargest), L""},
      {text.Mid(kSmallest, 2), L"ab"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.part, row.expected);
  }
}

TEST(FrameworkString, FindsCharactersAndTexts) {
  const CString text(L"abcabc");
  EXPECT_EQ(text.Find(L'b'), 1);
  EXPECT_EQ(text.Find(L'b', 2), 4);
  EXPECT_EQ(text.Find(L'x'), -1);
  EXPECT_EQ(text.Find(L'a', -1), -1);
  EXPECT_EQ(text.Find(L'a', 6), -1);
  EXPECT_EQ(text.Find(L'a', kLargest), -1);
  EXPECT_EQ(text.Find(L"ca"), 2);
  EXPECT_EQ(text.Find(L"bc", 2), 4);
  EXPECT_EQ(text.Find(L"bcx"), -1);
  EXPECT_EQ(text.Find(L"", 3), 3);
  EXPECT_EQ(text.Find(L"", 6), 6);
  EXPECT_EQ(text.Find(L"", 7), -1);
  EXPECT_EQ(text.Find(L"a", -1), -1);
  EXPECT_EQ(text.ReverseFind(L'b'), 4);
  EXPECT_EQ(text.ReverseFind(L'x'), -1);
  EXPECT_EQ(text.FindOneOf(L"xcb"), 1);
  EXPECT_EQ(text.FindOneOf(L""), -1);
  EXPECT_EQ(CString().Find(L'a'), -1);
}

TEST(FrameworkString, TrimsWhiteSpaceOrGivenCharacters) {
  EXPECT_EQ(CString(L" \t\n\v\f\ra b \r\n").Trim(), L"a b");
  EXPECT_EQ(CString(L"  a ").TrimLeft(), L"a ");
  EXPECT_EQ(CString(L" a  ").TrimRight(), L" a");
  EXPECT_EQ(CString(L" \t ").Trim(), L"");
  EXPECT_EQ(CString(L"").Trim(), L"");
  EXPECT_EQ(CString(L"xyaxy").Trim(L"yx"), L"a");
  EXPECT_EQ(CString(L"xax").TrimLeft(L"x"), L"ax");
  EXPECT_EQ(CString(L"xax").TrimRight(L"x"), L"xa");
  EXPECT_EQ(CString(L" a ").Trim(L""), L" a ");
  EXPECT_EQ(CStringA(" a ").Trim(), "a");
  // A no-break space is a character of the text.
  EXPECT_EQ(CString(L"\u00A0a").Trim().GetLength(), 2);
}

TEST(FrameworkString, ComparesOrdinally) {
  EXPECT_LT(CString(L"a").Compare(L"b"), 0);
  EXPECT_GT(CString(L"b").Compare(L"a"), 0);
  EXPECT_EQ(CString(L"a").Compare(L"a"), 0);
  EXPECT_LT(CString(L"a").Compare(L"aa"), 0);
  EXPECT_GT(CString(L"a").Compare(L"A"), 0);
  EXPECT_LT(CString(L"Z").Compare(L"a"), 0);
  EXPECT_GT(CStringA("\xFF").Compare("a"), 0);
  EXPECT_TRUE(CString(L"a") < CString(L"b"));
  EXPECT_TRUE(CString(L"a") < L"b");
  EXPECT_TRUE(L"a" < CString(L"b"));
  EXPECT_TRUE(CString(L"b") > L"a");
  EXPECT_TRUE(L"b" >= CString(L"b"));
  EXPECT_TRUE(CString(L"a") <= L"a");
  EXPECT_TRUE(L"a" == CString(L"a"));
  EXPECT_TRUE(L"a" != CString(L"b"));
}

// The standard library's pairs and lists compare by "<=>", which without one of ours compares the
// addresses of the characters.
TEST(FrameworkString, PairsAndListsOfStringsDidNotCompareTheirAddresses) {
  const CString a(L"same", 4);
  const CString b(L"same", 4);
  ASSERT_NE(a.GetString(), b.GetString());
  EXPECT_LT(std::make_pair(a, 1), std::make_pair(b, 2));
  EXPECT_LT(std::make_pair(b, 1), std::make_pair(a, 2));
  EXPECT_FALSE(std::vector{a} < std::vector{b});
  EXPECT_FALSE(std::vector{b} < std::vector{a});
  const CStringA first("a", 1);
  const CStringA second("b", 1);
  EXPECT_TRUE(first <=> second < 0 && second <=> first > 0);
  EXPECT_TRUE(first <=> "a" == 0 && "b" <=> first > 0);
}

TEST(FrameworkString, ComparesTheWholeTextAcrossNuls) {
  const CString a(L"a\0b", 3);
  const CString b(L"a\0c", 3);
  EXPECT_NE(a, b);
  EXPECT_LT(a, b);
  EXPECT_GT(a, CString(L"a"));
  EXPECT_FALSE(a == L"a");
  EXPECT_GT(a.Compare(L"a"), 0);
}

TEST(FrameworkString, CopiesOfOneTextMayLiveInSeveralThreads) {
  const CString original(L"shared by all threads");
  std::vector<std::thread> threads;
  std::vector<int> wrong(4, -1);
  for (std::size_t t = 0; t < wrong.size(); ++t) {
    threads.emplace_back([&wrong, t, mine = original]() mutable {
      int bad = 0;
      for (int i = 0; i < 50'000; ++i) {
        CString copy = mine;
        const CString second = copy;
        copy.AppendChar(L'!');
        bad += copy.GetLength() != second.GetLength() + 1 || second != mine ? 1 : 0;
        mine = second;
      }
      wrong[t] = bad;
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong, std::vector<int>(4, 0));
  EXPECT_EQ(original, L"shared by all threads");
}
