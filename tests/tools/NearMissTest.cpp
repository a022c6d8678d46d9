// "Did you mean".
#include "tools/lumattr/NearMiss.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lum::tool {
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

TEST(NearMiss, AllowsAThirdOfTheLengthAndThreeAtMost) {
  EXPECT_EQ(BestOf(L"abc", {L"abd"}), L"abd");
  EXPECT_EQ(BestOf(L"abc", {L"aed"}), L"-");
  EXPECT_EQ(BestOf(L"ab", {L"ac"}), L"-");
  EXPECT_EQ(BestOf(L"s", {L"t", L"S"}), L"S");
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

TEST(NearMiss, MakesTheEndOfAMessage) {
  EXPECT_EQ(DidYouMean(CString(L"Srvey"), std::vector<CString>{L"Survey"}),
            "; did you mean 'Survey'?");
  EXPECT_EQ(DidYouMean(CString(L"Srvey"), std::vector<CString>{L"Vessel"}), "");
}

}  // namespace
}  // namespace lum::tool
