// Profiles of formulas alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/decoding/ProfileTesting.h"

namespace lum::decoding {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(FormulaProfile, HasAColumnForEachFormula) {
  std::vector<ProfileFault> faults(1);
  const Profile profile = ProfileOfFormulas(
      {"Speed = CanVal(frame, 7, 0)", "number * 2", " Val(\"a=b\") ", "Text=Val('=')"}, faults);
  EXPECT_TRUE(faults.empty());
  EXPECT_EQ(profile.format, std::nullopt);
  ASSERT_EQ(profile.messages.size(), 1u);
  EXPECT_TRUE(profile.messages[0].match.empty());
  const std::vector<ColumnRule>& columns = profile.messages[0].columns;
  ASSERT_EQ(columns.size(), 4u);
  const struct {
    std::string name;
    std::string formula;
  } rows[] = {{"Speed", "CanVal(frame, 7, 0)"},
              {"number * 2", "number * 2"},
              {"Val(\"a=b\")", "Val(\"a=b\")"},
              {"Text", "Val('=')"}};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    EXPECT_EQ(columns[i].name, rows[i].name);
    EXPECT_EQ(columns[i].displayName, rows[i].name);
    EXPECT_EQ(columns[i].formula->Text(), rows[i].formula);
    EXPECT_EQ(columns[i].line, static_cast<int>(i) + 1);
    EXPECT_FALSE(columns[i].raw);
  }
}

TEST(FormulaProfile, TellsFaultsByTheFormulasNumber) {
  const struct {
    std::vector<std::string> formulas;
    const char* fault;
  } rows[] = {
      {{}, "1:1: no formula | at least one | "},
      {{"1", "=2"}, "2:1: no name before '=' | NAME=FORMULA or the formula alone | "},
      {{"1", " =2"}, "2:2: no name before '=' | NAME=FORMULA or the formula alone | "},
      {{"A=1", "A = 2"}, "2:1: the column 'A' again | another name | "},
      {{"number", "number"}, "2:1: the column 'number' again | another name | "},
      {{"A=raw + 1"},
       "1:3: 'raw' in a column without a raw formula | a formula of the record's parts | "},
  };
  for (const auto& row : rows) {
    std::vector<ProfileFault> faults;
    ProfileOfFormulas(row.formulas, faults);
    EXPECT_THAT(FaultLines(faults), ElementsAre(row.fault));
  }
}

TEST(FormulaProfile, TellsPlacesFromTheBeginningOfTheWholeText) {
  const struct {
    const char* formula;
    int column;
  } rows[] = {
      {"fram", 1},          {"A = fram", 5},       {"\xC3\xA4=fram", 3},
      {"A=1 +\n  fram", 9}, {"A=\n\n1 + fram", 9}, {"", 1},
  };
  for (const auto& row : rows) {
    std::vector<ProfileFault> faults;
    ProfileOfFormulas({row.formula}, faults);
    ASSERT_EQ(faults.size(), 1u) << row.formula;
    EXPECT_EQ(faults[0].line, 1);
    EXPECT_EQ(faults[0].column, row.column) << row.formula << FaultLine(faults[0]);
  }
}

TEST(FormulaProfile, TakesAsManyFormulasAsAMessageHasColumns) {
  std::vector<std::string> formulas;
  for (std::size_t i = 0; i < kMaxMessageColumns; ++i) {
    formulas.push_back(std::to_string(i));
  }
  std::vector<ProfileFault> faults;
  EXPECT_EQ(ProfileOfFormulas(formulas, faults).messages[0].columns.size(), kMaxMessageColumns);
  EXPECT_TRUE(faults.empty());
  formulas.push_back("1000");
  ProfileOfFormulas(formulas, faults);
  EXPECT_THAT(FaultLines(faults),
              ElementsAre("257:1: one formula too many | at most 256 formulas | "));
}

}  // namespace
}  // namespace lum::decoding
