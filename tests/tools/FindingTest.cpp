// The table of rules and the bounded list of findings.
#include "tools/lumattr/Finding.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace lum::tool {
namespace {

CFinding At(int line, int column, const std::string& found = {}) {
  return {line, column, CheckRule::UnknownLine, found, "e", {}};
}

TEST(CheckRules, HaveUniqueNamesAndFullSentences) {
  std::set<std::string> names;
  for (const CCheckRule& rule : CheckRules()) {
    EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
    EXPECT_STREQ(CheckRuleName(rule.rule), rule.name);
    EXPECT_EQ(std::string(rule.meaning).back(), '.') << rule.name;
  }
  EXPECT_EQ(names.size(), static_cast<std::size_t>(CheckRule::DuplicateControl) + 1);
}

TEST(FindingList, SortsByPlaceAndKeepsTheOrderOfAddingAtOnePlace) {
  CFindingList list(10);
  list.Add(At(2, 1, "c"));
  list.Add(At(1, 5, "b1"));
  list.Add(At(1, 5, "b2"));
  list.Add(At(1, 2, "a"));
  const std::vector<CFinding> sorted = list.TakeSorted();
  ASSERT_EQ(sorted.size(), 4U);
  EXPECT_EQ(sorted[0].found, "a");
  EXPECT_EQ(sorted[1].found, "b1");
  EXPECT_EQ(sorted[2].found, "b2");
  EXPECT_EQ(sorted[3].found, "c");
}

TEST(FindingList, KeepsTheFirstPlacesWhateverTheOrderOfAdding) {
  std::mt19937 random(7);
  for (const std::size_t max : {0U, 1U, 3U, 50U, 1000U}) {
    CFindingList list(max);
    std::vector<int> lines;
    for (int line = 1; line <= 200; ++line) {
      lines.push_back(line);
    }
    std::shuffle(lines.begin(), lines.end(), random);
    for (const int line : lines) {
      list.Add(At(line, 1));
    }
    EXPECT_EQ(list.Total(), 200U);
    const std::vector<CFinding> kept = list.TakeSorted();
    ASSERT_EQ(kept.size(), std::min<std::size_t>(max, 200));
    for (std::size_t place = 0; place < kept.size(); ++place) {
      EXPECT_EQ(kept[place].line, static_cast<int>(place) + 1);
    }
  }
}

TEST(FindingList, AllowsSoManyComparisonsAndNoneOnceTheyWereNotEnough) {
  CFindingList findings(1);
  EXPECT_TRUE(findings.MayCompare(CFindingList::kMaxComparisons - 1));
  EXPECT_TRUE(findings.MayCompare(1));
  EXPECT_FALSE(findings.MayCompare(1));
  CFindingList others(1);
  EXPECT_FALSE(others.MayCompare(CFindingList::kMaxComparisons + 1));
  EXPECT_FALSE(others.MayCompare(1));
}

TEST(QuotedShort, CutsAfterSixtyCharactersAndEscapesControls) {
  const CString sixty(L'x', 60);
  EXPECT_EQ(QuotedShort(sixty), "'" + std::string(60, 'x') + "'");
  EXPECT_EQ(QuotedShort(sixty + L"y"), "'" + std::string(60, 'x') + "'...");
  EXPECT_EQ(QuotedShort(L"a\x1b\n"), "'a\\x1b\\n'");
  EXPECT_EQ(QuotedShort(L""), "''");
}

}  // namespace
}  // namespace lum::tool
