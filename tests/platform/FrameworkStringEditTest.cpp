// Editing of CString: inserting, deleting, replacing, buffers and growth.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <stdexcept>
#include <string>

#include "platform/FrameworkString.h"
#include "tests/TextPrinting.h"

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();

std::wstring StdOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

CString TextOf(const std::wstring& text) { return {text.data(), static_cast<int>(text.size())}; }

}  // namespace

TEST(FrameworkStringEdit, DeletesWithinTheText) {
  const struct {
    int index;
    int count;
    const wchar_t* expected;
  } rows[] = {
      {0, 1, L"bcde"},  {1, 2, L"ade"},          {4, 1, L"abcd"},   {4, 100, L"abcd"},
      {5, 1, L"abcde"}, {0, 0, L"abcde"},        {0, -1, L"abcde"}, {1, kLargest, L"a"},
      {-3, 2, L"cde"},  {kLargest, 1, L"abcde"},
  };
  for (const auto& row : rows) {
    CString text(L"abcde");
    const int length = text.Delete(row.index, row.count);
    EXPECT_EQ(length, text.GetLength());
    EXPECT_EQ(text, row.expected) << row.index << " " << row.count;
  }
}

TEST(FrameworkStringEdit, InsertsAtACutPlace) {
  CString text(L"ad");
  EXPECT_EQ(text.Insert(1, L"bc"), 4);
  EXPECT_EQ(text, L"abcd");
  text.Insert(-5, L"<");
  text.Insert(kLargest, L">");
  EXPECT_EQ(text, L"<abcd>");
}

TEST(FrameworkStringEdit, ReplacesAndRemoves) {
  CString text(L"aXbXc");
  EXPECT_EQ(text.Replace(L"X", L"--"), 2);
  EXPECT_EQ(text, L"a--b--c");
  EXPECT_EQ(text.Replace(L"--", L""), 2);
  EXPECT_EQ(text, L"abc");
  EXPECT_EQ(text.Replace(L"", L"x"), 0);
  EXPECT_EQ(text.Replace(L"z", L"x"), 0);
  EXPECT_EQ(text.Replace(L'b', L'x'), 1);
  EXPECT_EQ(text.Replace(L'q', L'x'), 0);
  EXPECT_EQ(text.Replace(L'x', L'x'), 0);
  EXPECT_EQ(text, L"axc");
  EXPECT_EQ(text.Remove(L'x'), 1);
  EXPECT_EQ(text.Remove(L'x'), 0);
  EXPECT_EQ(text, L"ac");
  CString overlapping(L"aaa");
  EXPECT_EQ(overlapping.Replace(L"aa", L"b"), 1);
  EXPECT_EQ(overlapping, L"ba");
}

TEST(FrameworkStringEdit, BufferIsWritableAndMeasuredOnRelease) {
  CString text(L"abc");
  wchar_t* buffer = text.GetBuffer(10);
  EXPECT_STREQ(buffer, L"abc");
  std::copy_n(L"0123456789", 11, buffer);
  text.ReleaseBuffer();
  EXPECT_EQ(text, L"0123456789");
  text.GetBuffer(3);
  text.ReleaseBuffer(4);
  EXPECT_EQ(text, L"0123");
}

TEST(FrameworkStringEdit, PreallocatedRoomIsUsed) {
  CString text;
  text.Preallocate(1000);
  const wchar_t* place = text.GetString();
  text.Append(CString(L"abc"));
  for (int i = 3; i < 1000; ++i) {
    text.AppendChar(L'x');
  }
  EXPECT_EQ(text.GetString(), place);
  EXPECT_EQ(text.GetLength(), 1000);
}

TEST(FrameworkStringEdit, AppendingGrowsGeometrically) {
  CString text;
  const wchar_t* place = nullptr;
  int moves = 0;
  for (int i = 0; i < 1'000'000; ++i) {
    text.AppendChar(L'x');
    moves += text.GetString() != place ? 1 : 0;
    place = text.GetString();
  }
  EXPECT_EQ(text.GetLength(), 1'000'000);
  EXPECT_LT(moves, 40);
}

TEST(FrameworkStringEdit, ImpossibleLengthsAreRefusedAndChangeNothing) {
  CString text(L"abc");
  EXPECT_THROW(text.GetBuffer(kLargest), std::length_error);
  EXPECT_THROW(text.Append(L"x", kLargest), std::length_error);
  EXPECT_THROW(text.Append(L"x", kLargest - 3), std::length_error);
  EXPECT_THROW(text.Preallocate(kLargest), std::length_error);
  EXPECT_THROW(text.Append(L"x", kMaxTextLength), std::length_error);
  EXPECT_EQ(text, L"abc");
}

TEST(FrameworkStringEdit, SwapsTexts) {
  CString a(L"a");
  CString b(L"bb");
  a.Swap(b);
  EXPECT_EQ(a, L"bb");
  EXPECT_EQ(b, L"a");
}

TEST(FrameworkStringEdit, EditsLikeAStandardStringUnderRandomCalls) {
  std::mt19937 random(20240501);
  const auto below = [&](int limit) { return static_cast<int>(random() % unsigned(limit)); };
  CString text;
  CString witness;
  std::wstring expected;
  std::wstring expectedWitness;
  for (int step = 0; step < 200'000; ++step) {
    const int place = below(static_cast<int>(expected.size()) + 1);
    const std::wstring piece(static_cast<std::size_t>(below(5)),
                             static_cast<wchar_t>(L'a' + below(3)));
    switch (below(7)) {
      case 0:
        text.Append(TextOf(piece));
        expected += piece;
        break;
      case 1:
        text.Insert(place, piece.c_str());
        expected.insert(static_cast<std::size_t>(place), piece);
        break;
      case 2:
        text.Delete(place, 4);
        expected.erase(static_cast<std::size_t>(place), 4);
        break;
      case 3:
        if (!expected.empty()) {
          text.SetAt(place / 2, L'z');
          expected[static_cast<std::size_t>(place / 2)] = L'z';
        }
        break;
      case 4:
        witness = text;
        expectedWitness = expected;
        break;
      case 5:
        text = text.Mid(place / 4);
        expected.erase(0, static_cast<std::size_t>(place / 4));
        break;
      default:
        ASSERT_EQ(text.Find(piece.c_str()) < 0, expected.find(piece) == std::wstring::npos);
        break;
    }
    ASSERT_EQ(StdOf(text), expected);
    ASSERT_EQ(StdOf(witness), expectedWitness);
    ASSERT_EQ(text.GetString()[text.GetLength()], L'\0');
  }
}
