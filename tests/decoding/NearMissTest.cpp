// "Did you mean".
#include "decoding/NearMiss.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

CString BestOf(const wchar_t* wanted, const std::vector<CString>& candidates) {
  CNearMiss nearMiss(wanted);
  for (const CString& candidate : candidates) {
    nearMiss.Offer(candidate);
  }
  return nearMiss.Best().value_or(CString(L"-"));
}

TEST(NearMiss, FindsTheNearestWord) {
  const std::vector<CString> words = {L"MaxDepth", L"MinDepth", L"Unit", L"Units", L"unix"};
  const struct {
    const wchar_t* wanted;
    const wchar_t* expected;
  } rows[] = {
      {L"MaxDepht", L"MaxDepth"},   // swapped
      {L"MaxDept", L"MaxDepth"},    // missing
      {L"MaxxDepth", L"MaxDepth"},  // too many
      {L"MixDepth", L"MaxDepth"},   // as near to both: the first
      {L"maxdepth", L"MaxDepth"},   // case
      {L"unit", L"Unit"},           // case is nearer than another letter
      {L"Unitz", L"Unit"},          // as near to both: the first
      {L"Completely", L"-"},       {L"X", L"-"}, {L"", L"-"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(BestOf(row.wanted, words), row.expected);
  }
}

TEST(NearMiss, KeepsTheFirstOfWordsThatAreAsNear) {
  EXPECT_EQ(BestOf(L"unit", {L"Unix", L"Unis"}), L"Unix");
  EXPECT_EQ(BestOf(L"unit", {L"Unis", L"Unix"}), L"Unis");
}

TEST(NearMiss, AllowsAThirdOfTheLengthAndThreeAtMost) {
  EXPECT_EQ(BestOf(L"abc", {L"abd"}), L"abd");
  EXPECT_EQ(BestOf(L"abc", {L"aed"}), L"-");
  EXPECT_EQ(BestOf(L"ab", {L"ac"}), L"-");
  EXPECT_EQ(BestOf(L"s", {L"t", L"S"}), L"S");
  EXPECT_EQ(BestOf(L"", {L""}), L"-");
  EXPECT_EQ(BestOf(L"abcdefghi", {L"abcdefxyz"}), L"abcdefxyz");
  EXPECT_EQ(BestOf(L"abcdefghi", {L"abcdewxyz"}), L"-");
  EXPECT_EQ(BestOf(L"abcdefghijklmno", {L"abcdefghijkwxyz"}), L"-");
}

TEST(NearMiss, LeavesVeryLongWordsAlone) {
  const CString longWord(L'a', CNearMiss::kMaxLength);
  EXPECT_EQ(BestOf(longWord + L"", {longWord.Mid(1)}), longWord.Mid(1));
  EXPECT_EQ(BestOf(longWord + L"a", {longWord}), L"-");
  EXPECT_EQ(BestOf(longWord, {longWord + L"a"}), L"-");
}

/// The whole table of distances: inserted, removed, replaced and swapped characters.
int NaiveDistance(const std::wstring& a, const std::wstring& b) {
  std::vector<std::vector<int>> table(a.size() + 1, std::vector<int>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        table[i][j] = static_cast<int>(i + j);
        continue;
      }
      table[i][j] = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1,
                              table[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
      }
    }
  }
  return table[a.size()][b.size()];
}

TEST(NearMiss, TakesAWordExactlyWhenItsDistanceIsNearEnough) {
  std::mt19937 random(11);
  int near = 0;
  for (int round = 0; round < 20'000; ++round) {
    std::wstring a(3 + random() % 12, L'a');
    std::wstring b = a;
    for (wchar_t& ch : a) {
      ch = static_cast<wchar_t>(L'a' + random() % 3);
    }
    b = a;
    for (unsigned int edits = static_cast<unsigned int>(random() % 6); edits > 0; --edits) {
      const std::size_t place = random() % b.size();
      switch (random() % 4) {
        case 0:
          b.insert(place, 1, L'b');
          break;
        case 1:
          b.erase(place, b.size() > 1 ? 1 : 0);
          break;
        case 2:
          b[place] = L'c';
          break;
        default:
          std::swap(b[place], b[random() % b.size()]);
      }
    }
    CNearMiss nearMiss(ToCString(a));
    nearMiss.Offer(ToCString(b));
    const bool isNear =
        NaiveDistance(a, b) <= std::min(static_cast<int>(a.size()) / 3, CNearMiss::kMaxDistance);
    ASSERT_EQ(nearMiss.Best().has_value(), isNear) << round;
    near += isNear ? 1 : 0;
  }
  EXPECT_GT(near, 5000);
}

TEST(NearMiss, MakesTheEndOfAMessage) {
  EXPECT_EQ(DidYouMean(CString(L"Srvey"), std::vector<CString>{L"Survey"}),
            "; did you mean 'Survey'?");
  EXPECT_EQ(DidYouMean(CString(L"Srvey"), std::vector<CString>{L"Vessel"}), "");
}

}  // namespace
}  // namespace lum::decoding
