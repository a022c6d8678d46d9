// What is wrong in a profile, and where.
#include "decoding/ProfileFaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "decoding/DecodingError.h"
#include "tests/decoding/ProfileTesting.h"

namespace lum::decoding {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> FaultsOf(std::string_view text) {
  std::vector<ProfileFault> faults;
  LoadText(text, faults);
  return FaultLines(faults);
}

const std::string kMessage = "[Message A]\n";
const std::string kColumn = "X.Formula=1\n";
const std::string kCondition = "a condition such as Match.Pgn";
const std::string kKeys = kCondition + " or a column's item such as NAME.Formula";
const std::string kIds =
    "3 hexadecimal digits up to 7FF or 8 up to 1FFFFFFF, as candump writes them";

TEST(ProfileFaults, EachIsToldAtItsPlace) {
  const struct {
    std::string text;
    std::string fault;
  } rows[] = {
      // Sections.
      {"", "1:1: no message | a section [Message NAME] | "},
      {"[Profile]\nFormat=csv\n", "1:1: no message | a section [Message NAME] | "},
      {"Format=csv\n" + kMessage + kColumn,
       "1:1: the item 'Format' above the first section | [Profile] or [Message NAME] above it | "},
      {" [Profil]\n" + kMessage + kColumn,
       "1:2: unknown section 'Profil' | [Profile] or [Message NAME] | Profile"},
      {"[profile]\n" + kMessage + kColumn,
       "1:1: unknown section 'profile' | [Profile] or [Message NAME] | Profile"},
      {kMessage + kColumn + "[Mesage B]\n" + kColumn,
       "3:1: unknown section 'Mesage B' | [Profile] or [Message NAME] | Message B"},
      {kMessage + kColumn + "[Quite else]\nany=thing\n",
       "3:1: unknown section 'Quite else' | [Profile] or [Message NAME] | "},
      {kMessage + kColumn + "[MessageB]\n" + kColumn,
       "3:1: unknown section 'MessageB' | [Profile] or [Message NAME] | Message"},
      {kMessage + kColumn + "[Message]\n" + kColumn,
       "3:1: a message without a name | [Message NAME] | "},
      {kMessage + kColumn + "[Message \t]\n" + kColumn,
       "3:1: a message without a name | [Message NAME] | "},
      {kMessage + kColumn + "\n" + kMessage + kColumn,
       "4:1: the message 'A' again | it once; it stands in line 1 | "},
      {kMessage + kColumn + "[Message  A ]\n" + kColumn,
       "3:1: the message 'A' again | it once; it stands in line 1 | "},
      {"[Profile]\n[Profile]\n" + kMessage + kColumn,
       "2:1: the section [Profile] again | it once; it stands in line 1 | "},
      {kMessage + "; nothing\n",
       "1:1: the message 'A' has no columns | an item such as NAME.Formula | "},
      {kMessage + "Match.Pgn=61444\n",
       "1:1: the message 'A' has no columns | an item such as NAME.Formula | "},
      // Lines.
      {kMessage + kColumn + " what is this\n",
       "3:2: expected key=value, [section] or a comment after \";\" or \"//\" |  | "},
      {kMessage + kColumn + "[Message B\n", "3:1: a section's name must end with \"]\" |  | "},
      {kMessage + kColumn + "X.Unit=\xFF\n", "3:8: a byte that is no UTF-8 |  | "},
      // Keys.
      {"[Profile]\nFormt=csv\n" + kMessage + kColumn,
       "2:1: unknown key 'Formt' | Format or Separator | Format"},
      {kMessage + kColumn + "X.Formla=2\n",
       "3:1: unknown key 'X.Formla' | " + kKeys + " | X.Formula"},
      {kMessage + kColumn + "  X.unit = m\n", "3:3: unknown key 'X.unit' | " + kKeys + " | X.Unit"},
      {kMessage + kColumn + "Formula=2\n", "3:1: unknown key 'Formula' | " + kKeys + " | "},
      {kMessage + kColumn + ".Formula=2\n", "3:1: unknown key '.Formula' | " + kKeys + " | "},
      {kMessage + kColumn + "X .Unit=m\n", "3:1: unknown key 'X .Unit' | " + kKeys + " | X.Unit"},
      {kMessage + kColumn + "Match.Pgm=1\n",
       "3:1: unknown key 'Match.Pgm' | " + kCondition + " | Match.Pgn"},
      {kMessage + kColumn + "match.Pgn=1\n",
       "3:1: unknown key 'match.Pgn' | " + kKeys + " | Match.Pgn"},
      {kMessage + kColumn + "Match.Field=x\n",
       "3:1: unknown key 'Match.Field' | " + kCondition + " | Match.Field.N"},
      {kMessage + kColumn + kColumn,
       "3:1: the key 'X.Formula' again | it once; it stands in line 2 | "},
      {kMessage + kColumn + "Match.Line=a\nMatch.Line=b\n",
       "4:1: the key 'Match.Line' again | it once; it stands in line 3 | "},
      {"[Profile]\nFormat=csv\nFormat=csv\n" + kMessage + kColumn,
       "3:1: the key 'Format' again | it once; it stands in line 2 | "},
      // The profile's own items.
      {"[Profile]\nFormat=nmae\n" + kMessage + kColumn,
       "2:8: unknown format 'nmae' | one of plain, candump, j1939, nmea, csv | nmea"},
      {"[Profile]\nFormat= CSV\n" + kMessage + kColumn,
       "2:9: unknown format 'CSV' | one of plain, candump, j1939, nmea, csv | csv"},
      {"[Profile]\nSeparator=ab\n" + kMessage + kColumn,
       "2:11: 'ab' | tab, blank or one of , ; : | and the like | "},
      {"[Profile]\nSeparator=\n" + kMessage + kColumn,
       "2:11: '' | tab, blank or one of , ; : | and the like | "},
      {"[Profile]\nSeparator=5\n" + kMessage + kColumn,
       "2:11: '5' | tab, blank or one of , ; : | and the like | "},
      {"[Profile]\nSeparator=\"\n" + kMessage + kColumn,
       "2:11: '\"' | tab, blank or one of , ; : | and the like | "},
      {"[Profile]\nSeparator=;\nFormat=nmea\n" + kMessage + kColumn,
       "2:1: a separator in the format 'nmea' | one in the formats plain and csv alone | "},
      // Conditions.
      {kMessage + kColumn + "Match.Pgn=abc\n", "3:11: 'abc' | a whole number from 0 to 262143 | "},
      {kMessage + kColumn + "Match.Pgn=262144\n",
       "3:11: '262144' | a whole number from 0 to 262143 | "},
      {kMessage + kColumn + "Match.Pgn=0xEE01\n",
       "3:11: no message has the parameter group number '0xEE01' | one whose last byte is 0, since "
       "the byte before is below 240 | "},
      {kMessage + kColumn + "Match.Source=256\n", "3:14: '256' | a whole number from 0 to 255 | "},
      {kMessage + kColumn + "Match.Destination=-1\n",
       "3:19: '-1' | a whole number from 0 to 255 | "},
      {kMessage + kColumn + "Match.Priority=8\n", "3:16: '8' | a whole number from 0 to 7 | "},
      {kMessage + kColumn + "Match.FieldCount=257\n",
       "3:18: '257' | a whole number from 0 to 256 | "},
      {kMessage + kColumn + "Match.Field.256=x\n",
       "3:13: the field number '256' | a whole number from 0 to 255 | "},
      {kMessage + kColumn + "Match.Field.=x\n",
       "3:13: the field number '' | a whole number from 0 to 255 | "},
      {kMessage + kColumn + "Match.Id=12\n", "3:10: '12' | " + kIds + " | "},
      {kMessage + kColumn + "Match.Id=800\n", "3:10: '800' | " + kIds + " | "},
      {kMessage + kColumn + "Match.Id=20000000\n", "3:10: '20000000' | " + kIds + " | "},
      {kMessage + kColumn + "Match.Id=0x18F\n", "3:10: '0x18F' | " + kIds + " | "},
      {kMessage + kColumn + "Match.Id=123\nMatch.IdMask=7G0\n", "4:14: '7G0' | " + kIds + " | "},
      {kMessage + kColumn + "Match.Id=123456789\n", "3:10: '123456789' | " + kIds + " | "},
      {kMessage + kColumn + "Match.Id=12\nMatch.IdMask=7FF\n", "3:10: '12' | " + kIds + " | "},
      {kMessage + kColumn + "Match.IdMask=12\n", "3:14: '12' | " + kIds + " | "},
      {kMessage + kColumn + "Match.IdMask=7F0\n",
       "3:1: a mask without an identifier | Match.Id | "},
      {kMessage + kColumn + "Match.IdMask=00FFFF00\nMatch.Id=123\n",
       "3:1: a mask of another length than the identifier | 3 digits | "},
      {kMessage + kColumn + "Match.Id=18FEF100\nMatch.IdMask=7FF\n",
       "4:1: a mask of another length than the identifier | 8 digits | "},
      {kMessage + kColumn + "Match.Channel=\n",
       "3:15: no pattern | a pattern of 1 to 256 bytes | "},
      {kMessage + kColumn + "Match.Line=" + std::string(257, '*') + "\n",
       "3:12: a pattern of 257 bytes | a pattern of 1 to 256 bytes | "},
      // Columns.
      {kMessage + "X.Unit=m\n",
       "2:1: the column 'X' without a formula | 'X.Formula' or 'X.Raw' | "},
      {kMessage + "X.Formula=raw * 2\n",
       "2:11: 'raw' in a column without a raw formula | 'X.Raw' | "},
      {kMessage + "X.Raw=raw + 1\n",
       "2:7: 'raw' in the raw formula itself | a formula of the record's parts | "},
      {kMessage + kColumn + "X.Digits=18\n", "3:10: '18' | a whole number from 0 to 17 | "},
      {kMessage + kColumn + "X.Digits=-1\n", "3:10: '-1' | a whole number from 0 to 17 | "},
      {kMessage + kColumn + "X.Digits=1.5\n", "3:10: '1.5' | a whole number from 0 to 17 | "},
      {kMessage + kColumn + "X.Range=1\n", "3:9: '1' | a range such as 0..250 | "},
      {kMessage + kColumn + "X.Range=5..1\n",
       "3:9: the range '5..1' ends before it begins | the smaller number first | "},
      {kMessage + kColumn + "X.Range=a..1\n", "3:9: 'a' | a number | "},
      {kMessage + kColumn + "X.Range=0..5.\n", "3:12: '5.' | a number | "},
      {kMessage + kColumn + "X.Range=0..nan\n", "3:12: 'nan' | a number | "},
      {kMessage + kColumn + "X.Range=0..1e999\n", "3:12: '1e999' | a number | "},
      {kMessage + kColumn + "X.Range=1...5\n", "3:12: '.5' | a number | "},
      {kMessage + kColumn + "X.NotAvailable=255, 2x, 3\n", "3:21: '2x' | a number | "},
      {kMessage + kColumn + "X.NotAvailable=\n", "3:16: '' | a number | "},
      {kMessage + kColumn + "X.Error=1,,2\n", "3:11: '' | a number | "},
      {kMessage + kColumn + "X.Error=0xFG\n", "3:9: '0xFG' | a number | "},
      {kMessage + kColumn + "X.Error=1, 0x20..0x10\n",
       "3:12: the range '0x20..0x10' ends before it begins | the smaller number first | "},
      {kMessage + kColumn + "X.Sentinels=j1939\n", "3:13: 'j1939' | J1939 | J1939"},
  };
  for (const auto& row : rows) {
    EXPECT_THAT(FaultsOf(row.text), ElementsAre(row.fault)) << row.text;
  }
}

TEST(ProfileFaults, OfAFormulaStandAtTheirPlaceInTheLine) {
  const struct {
    std::string text;
    int line;
    int column;
    std::string found;
    std::string suggestion;
  } rows[] = {
      {"X.Formula=1 + \n", 2, 14, "", ""},
      {"  X.Formula =  lin + 1\n", 2, 16, "'lin'", "line"},
      {"X.Formula=1\nY.Raw=CanVall(frame, 7, 0)\n", 3, 7, "'CanVall'", "CanVal"},
      {"\xC3\xA4.Formula=1 + fram\n", 2, 15, "'fram'", "frame"},
      {"X.Formula=\n", 2, 11, "", ""},
  };
  for (const auto& row : rows) {
    std::vector<ProfileFault> faults;
    LoadText(kMessage + row.text, faults);
    ASSERT_EQ(faults.size(), 1u) << row.text;
    EXPECT_EQ(faults[0].line, row.line) << row.text;
    EXPECT_EQ(faults[0].column, row.column) << row.text << FaultLine(faults[0]);
    EXPECT_THAT(faults[0].found, HasSubstr(row.found));
    EXPECT_EQ(faults[0].suggestion, row.suggestion);
  }
}

TEST(ProfileFaults, OfConditionsThatCannotBeMet) {
  const struct {
    const char* format;
    const char* condition;
    bool canOccur;
  } rows[] = {
      {"plain", "Match.Id=123", false},       {"plain", "Match.Pgn=61444", false},
      {"plain", "Match.Source=1", false},     {"plain", "Match.Destination=1", false},
      {"plain", "Match.Priority=1", false},   {"plain", "Match.Channel=can0", false},
      {"plain", "Match.Sentence=*", false},   {"plain", "Match.FieldCount=3", true},
      {"plain", "Match.Field.0=x", true},     {"plain", "Match.Line=x", true},
      {"csv", "Match.Id=123", false},         {"csv", "Match.Field.0=x", true},
      {"csv", "Match.Sentence=*", false},     {"nmea", "Match.Id=123", false},
      {"nmea", "Match.Channel=x", false},     {"nmea", "Match.Pgn=61444", false},
      {"nmea", "Match.Sentence=*", true},     {"nmea", "Match.FieldCount=3", true},
      {"nmea", "Match.Field.0=x", true},      {"nmea", "Match.Line=x", true},
      {"candump", "Match.Id=123", true},      {"candump", "Match.Channel=x", true},
      {"candump", "Match.Pgn=61444", false},  {"candump", "Match.Priority=3", false},
      {"candump", "Match.Sentence=*", false}, {"candump", "Match.FieldCount=3", false},
      {"candump", "Match.Field.0=x", false},  {"candump", "Match.Line=x", true},
      {"j1939", "Match.Id=123", true},        {"j1939", "Match.Channel=x", true},
      {"j1939", "Match.Pgn=61444", true},     {"j1939", "Match.Source=1", true},
      {"j1939", "Match.Destination=1", true}, {"j1939", "Match.Priority=1", true},
      {"j1939", "Match.Sentence=*", false},   {"j1939", "Match.FieldCount=3", false},
      {"j1939", "Match.Field.0=x", false},    {"j1939", "Match.Line=x", true},
  };
  for (const auto& row : rows) {
    const std::string condition = row.condition;
    const std::vector<std::string> faults =
        FaultsOf(kMessage + kColumn + condition + "\n[Profile]\nFormat=" + row.format + "\n");
    if (row.canOccur) {
      EXPECT_THAT(faults, ElementsAre()) << row.format << " " << condition;
      continue;
    }
    EXPECT_THAT(
        faults,
        ElementsAre("3:1: the condition " + condition.substr(0, condition.find('=')) +
                    " | a condition that lines of the format '" + row.format + "' can meet | "));
  }
}

TEST(ProfileFaults, OfAFileAreToldTogetherInTheOrderOfTheirPlaces) {
  EXPECT_THAT(
      FaultsOf("[Profile]\nFormat=nmae\n[Message A]\nMatch.Id=1\n[Message B]\nX.Digits=99\n"
               "nonsense\n[Message A]\nX.Range=2..1\nX.Formula=1\n"),
      ElementsAre(HasSubstr("2:8: unknown format"), HasSubstr("3:1: the message 'A' has no"),
                  HasSubstr("4:10: '1'"), HasSubstr("6:1: the column 'X' without"),
                  HasSubstr("6:10: '99'"), HasSubstr("7:1: expected key=value"),
                  HasSubstr("8:1: the message 'A' again"), HasSubstr("9:9: the range")));
}

TEST(ProfileFaults, TellOneConditionWithoutAFormatThatOthersRuleOut) {
  EXPECT_THAT(FaultsOf("[Message A]\nX.Formula=1\nMatch.Pgn=61444\n[Message B]\nX.Formula=1\n"
                       "Match.Sentence=??GGA\n"),
              ElementsAre(HasSubstr("6:1: the condition Match.Sentence")));
}

TEST(ProfileFaults, AreQuotedShortAndHarmless) {
  const std::vector<std::string> faults =
      FaultsOf(kMessage + kColumn + "\x1B[31m" + std::string(100, 'y') + "=1\n");
  ASSERT_EQ(faults.size(), 1u);
  EXPECT_THAT(faults[0],
              HasSubstr("unknown key '\\x1b[31m" + std::string(55, 'y') + "\xE2\x80\xA6' |"));
  EXPECT_EQ(faults[0].find('\x1B'), std::string::npos);
}

TEST(ProfileFaults, MoreThanTheLimitAreNotKept) {
  for (const bool isBeyond : {false, true}) {
    std::string text = kMessage + kColumn;
    for (std::size_t i = 0; i < kMaxProfileFaults + (isBeyond ? 1 : 0); ++i) {
      text += "bad" + std::to_string(i) + "=\n";
    }
    const std::vector<std::string> faults = FaultsOf(text);
    ASSERT_EQ(faults.size(), kMaxProfileFaults);
    EXPECT_THAT(faults.back(), HasSubstr(isBeyond ? "too many faults" : "unknown key 'bad9999'"));
  }
}

TEST(ProfileFaults, MoreLinesWithoutMeaningThanTheLimitAreNotKept) {
  std::string text = kMessage + kColumn;
  for (std::size_t i = 0; i <= kMaxProfileFaults; ++i) {
    text += "bad\n";
  }
  const std::vector<std::string> faults = FaultsOf(text);
  ASSERT_EQ(faults.size(), kMaxProfileFaults);
  EXPECT_THAT(faults.back(), HasSubstr("too many faults"));
}

TEST(ProfileLimits, MessagesAreCountedUpToTheLimit) {
  std::string text;
  for (std::size_t i = 0; i < kMaxProfileMessages; ++i) {
    text += "[Message M" + std::to_string(i) + "]\nX.Formula=1\n";
  }
  EXPECT_THAT(FaultsOf(text), ElementsAre());
  text += "[Message One]\nX.Formula=1\n[Message Two]\nX.Formula=1\n";
  EXPECT_THAT(FaultsOf(text),
              ElementsAre("20001:1: one message too many | at most 10000 messages | "));
}

TEST(ProfileLimits, ColumnsAreCountedUpToTheLimit) {
  std::string text = kMessage;
  for (std::size_t i = 0; i < kMaxMessageColumns; ++i) {
    text += "C" + std::to_string(i) + ".Formula=1\n";
  }
  EXPECT_THAT(FaultsOf(text), ElementsAre());
  text += "One.Formula=1\nTwo.Formula=1\n";
  EXPECT_THAT(FaultsOf(text),
              ElementsAre("258:1: one column too many | at most 256 columns in a message | "));
}

TEST(ProfileLimits, BytesAreReadUpToTheLimit) {
  std::string text = kMessage + kColumn + ";";
  text.append(kMaxProfileBytes - text.size(), 'x');
  EXPECT_THAT(FaultsOf(text), ElementsAre());
}

TEST(ProfileLimits, BytesBeyondTheLimitAreNotRead) {
  try {
    FaultsOf(std::string(kMaxProfileBytes + 1, ';'));
    FAIL() << "a larger file was read";
  } catch (const DecodingError& error) {
    EXPECT_THAT(error.what(), HasSubstr("has 16777217 bytes; expected at most 16777216"));
  }
}

TEST(ProfileLimits, PatternsAreAsLongAsTheLimit) {
  EXPECT_THAT(FaultsOf(kMessage + kColumn + "Match.Line=" + std::string(256, '*') + "\n"),
              ElementsAre());
}

TEST(ProfileLoad, ThrowsForAFileThatCannotBeRead) {
  const CTemporaryFolder folder;
  const std::u8string missing = folder.File("missing").u8string();
  const std::u8string directory = folder.Path().u8string();
  for (const std::u8string& path : {missing, directory}) {
    std::vector<ProfileFault> faults;
    try {
      LoadProfile(std::string(path.begin(), path.end()), faults);
      FAIL() << "it was read";
    } catch (const DecodingError& error) {
      EXPECT_THAT(error.what(), HasSubstr("lum-test-"));
    }
  }
}

}  // namespace
}  // namespace lum::decoding
