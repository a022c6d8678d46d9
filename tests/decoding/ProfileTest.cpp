// Profiles as they are written.
#include "decoding/Profile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "decoding/Decoder.h"
#include "definitions/AttribDefMap.h"
#include "tests/decoding/ProfileTesting.h"

namespace lum::decoding {

bool operator==(const NumberRange& a, const NumberRange& b) {
  return a.first == b.first && a.last == b.last;
}

namespace {

using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr std::string_view kEngine =
    "; an engine\n"
    "[Profile]\n"
    "Format=j1939\n"
    "\n"
    "[Message EEC1]\n"
    "Match.Pgn=0xF004\n"
    "Match.Source = 0\n"
    "Speed.Raw=J1939Val(message, 7, 3)\n"
    "Torque.Formula=J1939BitsVal(message, 6, 16, 8) - 125\n"
    "Speed.Formula=raw * 0.125\n"
    "Speed.Unit=rpm \n"
    "Speed.Digits=1\n"
    "Speed.Range=-0.5..8031.875\n"
    "Speed.NotAvailable=0xFF00..0xFFFF, 7\n"
    "Speed.Error=0xFE00 .. 0xFEFF\n"
    "// the second\n"
    "[ Message  Dash Display ]\n"
    "Level.One.Formula=J1939Val(message, 6, 1) * 0.4\n";

TEST(ProfileLoad, ReadsMessagesAndColumnsInTheOrderOfTheFile) {
  const Profile profile = GoodProfile(kEngine);
  EXPECT_EQ(profile.format, LogFormat::J1939);
  EXPECT_TRUE(profile.path.ends_with("test.profile"));
  ASSERT_EQ(profile.messages.size(), 2u);
  EXPECT_EQ(profile.messages[0].name, "EEC1");
  EXPECT_EQ(profile.messages[0].line, 5);
  EXPECT_EQ(profile.messages[1].name, "Dash Display");
  EXPECT_TRUE(profile.messages[1].match.empty());
  ASSERT_EQ(profile.messages[0].columns.size(), 2u);
  EXPECT_EQ(profile.messages[0].columns[0].name, "Speed");
  EXPECT_EQ(profile.messages[0].columns[1].name, "Torque");
  EXPECT_EQ(profile.messages[1].columns[0].name, "Level.One");
}

TEST(ProfileLoad, ReadsEverythingOfAColumn) {
  const Profile profile = GoodProfile(kEngine);
  const ColumnRule& speed = profile.messages[0].columns[0];
  EXPECT_EQ(speed.displayName, "Speed");
  EXPECT_EQ(speed.unit, "rpm");
  EXPECT_EQ(speed.digits, 1);
  EXPECT_EQ(speed.line, 8);
  ASSERT_TRUE(speed.raw && speed.formula);
  EXPECT_EQ(speed.raw->Text(), "J1939Val(message, 7, 3)");
  EXPECT_EQ(speed.formula->Text(), "raw * 0.125");
  EXPECT_EQ(speed.range, (NumberRange{-0.5, 8031.875}));
  EXPECT_THAT(speed.notAvailable, ElementsAre(NumberRange{65280, 65535}, NumberRange{7, 7}));
  EXPECT_THAT(speed.error, ElementsAre(NumberRange{65024, 65279}));
  const ColumnRule& torque = profile.messages[0].columns[1];
  EXPECT_FALSE(torque.raw || torque.digits || torque.range);
  EXPECT_EQ(torque.unit, "");
  EXPECT_TRUE(torque.notAvailable.empty() && torque.error.empty());
}

TEST(ProfileLoad, ReadsEveryCondition) {
  using Part = MatchTerm::Part;
  const struct {
    const char* item;
    Part part;
    std::uint32_t number;
    std::uint32_t mask;
    bool isExtended;
    const char* pattern;
    const char* text;
  } rows[] = {
      {"Match.Id=7fF", Part::Id, 0x7FF, 0xFFFFFFFF, false, "", "Match.Id=7fF"},
      {"Match.Id=1FFFFFFF", Part::Id, 0x1FFFFFFF, 0xFFFFFFFF, true, "", "Match.Id=1FFFFFFF"},
      {"Match.Id=00000123\nMatch.IdMask=00FFFF00", Part::Id, 0x123, 0xFFFF00, true, "",
       "Match.Id=00000123"},
      {"Match.IdMask=7F0\nMatch.Id=123", Part::Id, 0x123, 0x7F0, false, "", "Match.Id=123"},
      {"Match.Pgn=61444", Part::Pgn, 61444, 0xFFFFFFFF, false, "", "Match.Pgn=61444"},
      {"Match.Pgn=0x3FFFF", Part::Pgn, 0x3FFFF, 0xFFFFFFFF, false, "", "Match.Pgn=0x3FFFF"},
      {"Match.Pgn=0xEE00", Part::Pgn, 0xEE00, 0xFFFFFFFF, false, "", "Match.Pgn=0xEE00"},
      {"Match.Source=255", Part::Source, 255, 0xFFFFFFFF, false, "", "Match.Source=255"},
      {"Match.Destination=0x21", Part::Destination, 33, 0xFFFFFFFF, false, "",
       "Match.Destination=0x21"},
      {"Match.Source=0X2a", Part::Source, 42, 0xFFFFFFFF, false, "", "Match.Source=0X2a"},
      {"Match.Source=007", Part::Source, 7, 0xFFFFFFFF, false, "", "Match.Source=007"},
      {"Match.Priority=7", Part::Priority, 7, 0xFFFFFFFF, false, "", "Match.Priority=7"},
      {"Match.Channel=*can?", Part::Channel, 0, 0xFFFFFFFF, false, "*can?", "Match.Channel=*can?"},
      {"Match.Sentence=??GGA", Part::Sentence, 0, 0xFFFFFFFF, false, "??GGA",
       "Match.Sentence=??GGA"},
      {"Match.FieldCount=256", Part::FieldCount, 256, 0xFFFFFFFF, false, "",
       "Match.FieldCount=256"},
      {"Match.Field.255=a=b", Part::Field, 255, 0xFFFFFFFF, false, "a=b", "Match.Field.255=a=b"},
      {"Match.Line=x y*", Part::Line, 0, 0xFFFFFFFF, false, "x y*", "Match.Line=x y*"},
  };
  for (const auto& row : rows) {
    const Profile profile =
        GoodProfile(std::string("[Message A]\n") + row.item + "\nX.Formula=1\n");
    const std::vector<MatchTerm>& match = profile.messages[0].match;
    ASSERT_EQ(match.size(), 1u) << row.item;
    EXPECT_EQ(match[0].part, row.part) << row.item;
    EXPECT_EQ(match[0].number, row.number) << row.item;
    EXPECT_EQ(match[0].mask, row.mask) << row.item;
    EXPECT_EQ(match[0].isExtended, row.isExtended) << row.item;
    EXPECT_EQ(match[0].pattern, row.pattern) << row.item;
    EXPECT_EQ(match[0].text, row.text);
  }
}

TEST(ProfileLoad, ReadsFormatAndSeparator) {
  const struct {
    const char* items;
    std::optional<LogFormat> format;
    char separator;
  } rows[] = {
      {"", std::nullopt, '\0'},
      {"Format=plain\nSeparator=;\n", LogFormat::Plain, ';'},
      {"Separator=tab\nFormat=csv\n", LogFormat::Csv, '\t'},
      {"Separator=blank\n", std::nullopt, ' '},
      {"Format=candump\n", LogFormat::Candump, '\0'},
      {"Format=nmea\n", LogFormat::Nmea, '\0'},
      {"Format=j1939  \n", LogFormat::J1939, '\0'},
  };
  for (const auto& row : rows) {
    const Profile profile =
        GoodProfile(std::string("[Profile]\n") + row.items + "[Message A]\nX.Formula=1\n");
    EXPECT_EQ(profile.format, row.format) << row.items;
    EXPECT_EQ(profile.reader.separator, row.separator) << row.items;
  }
}

TEST(ProfileLoad, TakesConditionsOfJ1939ForItsFormat) {
  for (const char* item :
       {"Match.Pgn=61444", "Match.Source=1", "Match.Destination=1", "Match.Priority=1"}) {
    const Profile profile = GoodProfile(std::string("[Message A]\nX.Formula=1\n") + item + "\n");
    EXPECT_EQ(profile.format, LogFormat::J1939) << item;
  }
  EXPECT_EQ(GoodProfile("[Message A]\nX.Formula=1\nMatch.Id=123\n").format, std::nullopt);
}

TEST(ProfileLoad, ReadsFilesOfEveryEncoding) {
  const std::string text = "[Message \xC3\x84]\r\nX.Formula=1\r\nX.Unit=\xC2\xB0";
  std::string wide = "\xFF\xFE";
  for (const char16_t ch : std::u16string(u"[Message \u00C4]\r\nX.Formula=1\r\nX.Unit=\u00B0")) {
    wide += static_cast<char>(ch & 0xFF);
    wide += static_cast<char>(ch >> 8);
  }
  for (const std::string& file : {text, "\xEF\xBB\xBF" + text, wide}) {
    const Profile profile = GoodProfile(file);
    ASSERT_EQ(profile.messages.size(), 1u);
    EXPECT_EQ(profile.messages[0].name, "\xC3\x84");
    EXPECT_EQ(profile.messages[0].columns[0].unit, "\xC2\xB0");
  }
}

TEST(ProfileLoad, ReadsOpenRangesAndNumbersOfEveryForm) {
  const Profile profile = GoodProfile(
      "[Message\tA]\nX.Formula=1\nX.Range=-inf..inf\n"
      "X.NotAvailable=-1,0.5,1e3 , 0xFFFFFFFFFFFFFFFF,-2..-1,-0x10\nX.Error=inf,2..2\n");
  const ColumnRule& column = profile.messages[0].columns[0];
  EXPECT_EQ(column.range, (NumberRange{-kInfinity, kInfinity}));
  EXPECT_THAT(column.notAvailable,
              ElementsAre(NumberRange{-1, -1}, NumberRange{0.5, 0.5}, NumberRange{1000, 1000},
                          NumberRange{18446744073709551616.0, 18446744073709551616.0},
                          NumberRange{-2, -1}, NumberRange{-16, -16}));
  EXPECT_THAT(column.error, ElementsAre(NumberRange{kInfinity, kInfinity}, NumberRange{2, 2}));
}

TEST(ProfileLoad, NewFaultsTakeTheOldOnesPlace) {
  std::vector<ProfileFault> faults(3);
  LoadText("[Message A]\nX.Formula=1\n", faults);
  EXPECT_TRUE(faults.empty());
}

TEST(ProfileDisplayNames, ComeFromTheDefinitionsOfTheSameName) {
  Profile profile = GoodProfile("[Message A]\nDepthLimit.Formula=1\nOther.Formula=2\n");
  const CTemporaryFolder folder;
  WriteBytes(folder.File("defs"), "DepthLimit,17,Depth limit,103,2,,12.5\n");
  CAttribDefMap definitions;
  ASSERT_TRUE(definitions.LoadDefFile(PathText(folder.File("defs")), false));
  ApplyDisplayNames(profile, definitions);
  EXPECT_EQ(profile.messages[0].columns[0].displayName, "Depth limit");
  EXPECT_EQ(profile.messages[0].columns[0].name, "DepthLimit");
  EXPECT_EQ(profile.messages[0].columns[1].displayName, "Other");
}

}  // namespace
}  // namespace lum::decoding
