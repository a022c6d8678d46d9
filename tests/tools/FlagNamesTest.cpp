// Flags by name, as numbers, as changes, and in the form a file had.
#include "tools/lumattr/FlagNames.h"

#include <gtest/gtest.h>

#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

TEST(FlagNames, NamesKnownBitsAndKeepsUnknownOnesInHexadecimal) {
  EXPECT_EQ(FlagNamesText(0), "-");
  EXPECT_EQ(FlagNamesText(0x94D1 & ~0x0000u),
            "editable|group|disabled|skip-on-load|keep-value|keep-value-strict|transient");
  EXPECT_EQ(FlagNamesText(0x0203), "editable|0x202");
  EXPECT_EQ(FlagNamesText(0x80000000), "0x80000000");
  EXPECT_TRUE(FlagNames(0).empty());
}

TEST(FlagNames, EveryWordOfFlagsReadsBackFromItsNames) {
  for (unsigned int flags = 0; flags <= 0xFFFF; ++flags) {
    const std::string text = flags == 0 ? "none" : FlagNamesText(flags);
    ASSERT_EQ(ParseFlagsArgument(text, 0xABCD), flags) << text;
  }
}

TEST(FlagNames, ReadsNumbersNamesAndChanges) {
  const struct {
    const char* argument;
    unsigned int current;
    unsigned int expected;
  } rows[] = {
      {"16", 1, 0x10},
      {"0x10", 1, 0x10},
      {"0X1f", 1, 0x1F},
      {"4294967295", 0, 0xFFFFFFFF},
      {"none", 0xFFFF, 0},
      {"editable,group", 0x40, 0x11},
      {"editable|0x200", 0x40, 0x201},
      {"+disabled", 0x01, 0x41},
      {"-editable", 0x41, 0x40},
      {"+group,-editable", 0x01, 0x10},
      {"+0x200|-1", 0x01, 0x200},
      {"-transient", 0x01, 0x01},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ParseFlagsArgument(row.argument, row.current), row.expected) << row.argument;
  }
}

TEST(FlagNames, RefusesWhatIsNoFlag) {
  for (const char* argument : {"", "editabel", "16x", "0x", "0xG", "-", "+", "editable,",
                               "editable,+group", "+group,editable", "4294967296", " 1", "+-1"}) {
    EXPECT_THROW(ParseFlagsArgument(argument, 0), ToolError) << argument;
  }
}

TEST(FlagNames, SuggestsTheNearName) {
  try {
    ParseFlagsArgument("+editabel", 0);
    FAIL();
  } catch (const ToolError& error) {
    EXPECT_STREQ(error.what(), "unknown flag 'editabel'; did you mean 'editable'?");
  }
}

TEST(FlagNames, KeepsTheFormOfTheFile) {
  const struct {
    const wchar_t* like;
    const wchar_t* expected;
  } rows[] = {
      {L"1", L"171"},     {L"0x1", L"0xab"},  {L"0X1", L"0Xab"}, {L"0x0001", L"0x00ab"},
      {L"0x0A", L"0xAB"}, {L"0xaf", L"0xab"}, {L"", L"171"},     {L"007", L"171"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FormatFlagsLike(171, row.like), row.expected) << ToUtf8(row.like);
  }
}

}  // namespace
}  // namespace lum::tool
