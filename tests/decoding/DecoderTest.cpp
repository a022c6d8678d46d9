// Which messages a record is, and what its cells hold.
#include "decoding/Decoder.h"
#include "decoding/NumberText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/decoding/ProfileTesting.h"
#include "tests/decoding/Records.h"

namespace lum::decoding {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<std::size_t> Matches(CDecoder& decoder, const LogRecord& record) {
  const std::span<const std::size_t> matches = decoder.Match(record);
  return {matches.begin(), matches.end()};
}

/// By the definition: each message in turn, all of its conditions.
std::vector<std::size_t> PlainMatches(const Profile& profile, const LogRecord& record) {
  std::vector<std::size_t> matches;
  for (std::size_t i = 0; i < profile.messages.size(); ++i) {
    const std::vector<MatchTerm>& terms = profile.messages[i].match;
    const bool isOne = std::all_of(terms.begin(), terms.end(),
                                   [&](const MatchTerm& term) { return Holds(term, record); });
    if (isOne && record.kind == RecordKind::Data) {
      matches.push_back(i);
    }
  }
  return matches;
}

TEST(DecoderMatch, GivesAllMessagesInTheProfilesOrder) {
  const Profile profile = GoodProfile(
      "[Message All]\nX.Formula=1\n"
      "[Message Id]\nX.Formula=1\nMatch.Id=0CF00400\n"
      "[Message Pgn]\nX.Formula=1\nMatch.Pgn=61444\nMatch.Channel=can1\n"
      "[Message Never]\nX.Formula=1\nMatch.Id=123\nMatch.Source=7\n");
  CDecoder decoder(profile);
  EXPECT_THAT(Matches(decoder, BusRecord(0x0CF00400, true, "can1")), ElementsAre(0, 1, 2));
  EXPECT_THAT(Matches(decoder, BusRecord(0x0CF00400, true, "can0")), ElementsAre(0, 1));
  EXPECT_THAT(Matches(decoder, BusRecord(0x0CF00401, true, "can1")), ElementsAre(0, 2));
  EXPECT_THAT(Matches(decoder, BusRecord(0x0CF00400, true, "can1")), ElementsAre(0, 1, 2));
  EXPECT_THAT(Matches(decoder, BusRecord(0x123, false)), ElementsAre(0));
}

TEST(DecoderMatch, TakesDataAlone) {
  const Profile profile = GoodProfile("[Message All]\nX.Formula=1\n");
  CDecoder decoder(profile);
  for (const RecordKind kind : {RecordKind::Remote, RecordKind::BusError, RecordKind::Unusable,
                                RecordKind::Remark, RecordKind::Part}) {
    LogRecord record = BusRecord(0x123, false);
    record.kind = kind;
    EXPECT_THAT(Matches(decoder, record), ElementsAre()) << static_cast<int>(kind);
  }
  EXPECT_THAT(Matches(decoder, LogRecord()), ElementsAre(0));
}

TEST(DecoderMatch, AsksForFieldsAndLinesEachTime) {
  const Profile profile = GoodProfile(
      "[Message One]\nX.Formula=1\nMatch.Sentence=??GGA\nMatch.Field.1=A\n"
      "[Message Two]\nX.Formula=1\nMatch.FieldCount=2\n"
      "[Message Three]\nX.Formula=1\nMatch.Line=*end\n");
  CDecoder decoder(profile);
  const std::array<std::string_view, 2> good = {"GPGGA", "A"};
  const std::array<std::string_view, 3> other = {"GPGGA", "V", ""};
  LogRecord record;
  record.address = "GPGGA";
  record.fields = good;
  EXPECT_THAT(Matches(decoder, record), ElementsAre(0, 1));
  record.fields = other;
  EXPECT_THAT(Matches(decoder, record), ElementsAre());
  record.line = "the end";
  EXPECT_THAT(Matches(decoder, record), ElementsAre(2));
  record.fields = good;
  EXPECT_THAT(Matches(decoder, record), ElementsAre(0, 1, 2));
}

TEST(DecoderMatch, TellsRecordsApartThatAreAlikeInTheirFirstSixteenBytes) {
  const Profile profile = GoodProfile(
      "[Message A]\nX.Formula=1\nMatch.Channel=a-name-of-17-byte\n"
      "[Message B]\nX.Formula=1\nMatch.Channel=a-name-of-17-bytf\n"
      "[Message C]\nX.Formula=1\nMatch.Channel=a-name-of-17-byt\n");
  CDecoder decoder(profile);
  for (int i = 0; i < 2; ++i) {
    EXPECT_THAT(Matches(decoder, BusRecord(1, false, "a-name-of-17-byte")), ElementsAre(0));
    EXPECT_THAT(Matches(decoder, BusRecord(1, false, "a-name-of-17-bytf")), ElementsAre(1));
    EXPECT_THAT(Matches(decoder, BusRecord(1, false, "a-name-of-17-byt")), ElementsAre(2));
    EXPECT_THAT(Matches(decoder, LogRecord()), ElementsAre());
  }
}

TEST(DecoderMatch, TellsSentencesApartThatAreAlikeInTheirFirstSixteenBytes) {
  const Profile profile = GoodProfile(
      "[Message A]\nX.Formula=1\nMatch.Sentence=a-name-of-17-byte\n"
      "[Message B]\nX.Formula=1\nMatch.Sentence=a-name-of-17-byt\n");
  CDecoder decoder(profile);
  const struct {
    std::string_view address;
    std::vector<std::size_t> matches;
  } rows[] = {
      {"a-name-of-17-byte", {0}}, {"a-name-of-17-bytf", {}}, {"a-name-of-17-byt", {1}}, {"", {}}};
  for (int i = 0; i < 2; ++i) {
    for (const auto& row : rows) {
      LogRecord record;
      record.address = row.address;
      EXPECT_THAT(Matches(decoder, record), ElementsAreArray(row.matches)) << row.address;
    }
  }
}

TEST(DecoderMatch, TellsTextsApartThatDifferInNulsAtTheirEnd) {
  const Profile profile = GoodProfile("[Message A]\nX.Formula=1\nMatch.Channel=can\n");
  CDecoder decoder(profile);
  EXPECT_THAT(Matches(decoder, BusRecord(1, false, "can")), ElementsAre(0));
  EXPECT_THAT(Matches(decoder, BusRecord(1, false, std::string_view("can\0", 4))), ElementsAre());
}

/// A profile of random conditions; formats apart, so that each kind can meet the others.
Profile RandomProfile(std::mt19937& random) {
  const auto choose = [&random](std::size_t count) { return random() % count; };
  constexpr std::uint32_t kNumbers[] = {0,    1,          2,          3,      6,      0x17,
                                        0xFF, 0x18FEF100, 0x0CF00400, 0xEE00, 0xF004, 0x123};
  constexpr const char* kPatterns[] = {"*", "can0", "can?", "??GGA", "G*", "a-name*", "1.5", "?*e"};
  Profile profile;
  profile.messages.resize(1 + choose(12));
  for (MessageRule& message : profile.messages) {
    message.match.resize(choose(4));
    for (MatchTerm& term : message.match) {
      term.part = static_cast<MatchTerm::Part>(choose(10));
      term.number = kNumbers[choose(std::size(kNumbers))];
      term.mask = choose(2) == 0 ? 0xFFFFFFFF : 0x00FFFF00;
      term.isExtended = choose(2) == 0;
      term.pattern = kPatterns[choose(std::size(kPatterns))];
    }
  }
  return profile;
}

TEST(DecoderMatch, AgreesWithTheConditionsOfRandomRecords) {
  std::mt19937 random(11);
  std::size_t matched = 0;
  for (int round = 0; round < 300; ++round) {
    const Profile profile = RandomProfile(random);
    CDecoder decoder(profile);
    CRecordMaker maker;
    for (int i = 0; i < 200; ++i) {
      LogRecord record = maker.Make([&random](std::size_t count) { return random() % count; });
      if (random() % 4 == 0) {
        record.bus.pgn = static_cast<std::uint32_t>(random() % 3);
        record.bus.source = static_cast<std::uint8_t>(random() % 3);
        record.bus.destination = static_cast<std::uint8_t>(0xFF - random() % 3);
        record.bus.priority = static_cast<std::uint8_t>(random() % 2);
      }
      const std::vector<std::size_t> matches = Matches(decoder, record);
      ASSERT_THAT(matches, ElementsAreArray(PlainMatches(profile, record))) << round << " " << i;
      matched += matches.size();
    }
  }
  EXPECT_GT(matched, 30'000u);
}

// ---- Cells

Cell OnlyCell(const std::string& items, const LogRecord& record) {
  const Profile profile = GoodProfile("[Message A]\n" + items);
  CDecoder decoder(profile);
  const Row row = decoder.Decode(record, 0);
  EXPECT_EQ(row.record, &record);
  EXPECT_EQ(row.message, &profile.messages[0]);
  EXPECT_EQ(row.messageIndex, 0u);
  EXPECT_EQ(row.cells.size(), 1u);
  return row.cells[0];
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

TEST(DecoderCells, AreDecidedInOrder) {
  const struct {
    const char* items;
    double number;  // field(0)
    CellState state;
    CellReason reason;
    double value;
  } rows[] = {
      // Without a raw formula: of the value.
      {"X.Formula=field(0) * 2\n", 4, CellState::Value, CellReason::None, 8},
      {"X.Formula=field(0) * 2\nX.NotAvailable=8\n", 4, CellState::NotAvailable,
       CellReason::NotAvailableNumber, 8},
      {"X.Formula=field(0) * 2\nX.NotAvailable=4\n", 4, CellState::Value, CellReason::None, 8},
      {"X.Formula=field(0) * 2\nX.Error=8\n", 4, CellState::Error, CellReason::ErrorNumber, 8},
      {"X.Formula=field(0)\nX.Range=0..10\n", 10, CellState::Value, CellReason::None, 10},
      {"X.Formula=field(0)\nX.Range=0..10\n", 10.5, CellState::Error, CellReason::OutOfRange, 10.5},
      {"X.Formula=field(0)\nX.Range=0..10\n", -0.5, CellState::Error, CellReason::OutOfRange, -0.5},
      {"X.Formula=field(0)\nX.Range=0..10\nX.Error=12\n", 12, CellState::Error,
       CellReason::ErrorNumber, 12},
      // With one: of the raw number.
      {"X.Raw=field(0)\nX.Formula=raw * 2\n", 4, CellState::Value, CellReason::None, 8},
      {"X.Raw=field(0)\n", 4, CellState::Value, CellReason::None, 4},
      {"X.Raw=field(0)\nX.Range=0..3\n", 4, CellState::Error, CellReason::OutOfRange, 4},
      {"X.Raw=field(0)\nX.Formula=raw * 2\nX.NotAvailable=4\n", 4, CellState::NotAvailable,
       CellReason::NotAvailableNumber, 4},
      {"X.Raw=field(0)\nX.Formula=raw * 2\nX.NotAvailable=8\n", 4, CellState::Value,
       CellReason::None, 8},
      {"X.Raw=field(0)\nX.Formula=raw * 2\nX.NotAvailable=3..5\nX.Error=4\n", 4,
       CellState::NotAvailable, CellReason::NotAvailableNumber, 4},
      {"X.Raw=field(0)\nX.Formula=raw * 2\nX.NotAvailable=5, 6\nX.Error=3..4\n", 4,
       CellState::Error, CellReason::ErrorNumber, 4},
      {"X.Raw=field(0)\nX.Formula=1 / 0\nX.NotAvailable=4\n", 4, CellState::NotAvailable,
       CellReason::NotAvailableNumber, 4},
      {"X.Raw=field(0)\nX.Formula=raw * 2\nX.Range=0..8\n", 4, CellState::Value, CellReason::None,
       8},
      {"X.Raw=field(0)\nX.Formula=raw * 2\nX.Range=0..7.9\n", 4, CellState::Error,
       CellReason::OutOfRange, 8},
      // What is no finite number.
      {"X.Formula=field(0) / 0\n", 4, CellState::Error, CellReason::NotANumber, kInfinity},
      {"X.Formula=-field(0) / 0\n", 4, CellState::Error, CellReason::NotANumber, -kInfinity},
      {"X.Formula=Modulo(field(0), 0)\n", 4, CellState::Error, CellReason::NotANumber, kNoNumber},
      {"X.Formula=Modulo(field(0), 0)\nX.Range=-inf..inf\n", 4, CellState::Error,
       CellReason::NotANumber, kNoNumber},
      {"X.Formula=field(0) / 0\nX.Range=0..inf\n", 4, CellState::Error, CellReason::NotANumber,
       kInfinity},
      {"X.Raw=field(0) / 0\n", 4, CellState::Error, CellReason::NotANumber, kInfinity},
      {"X.Raw=field(0) / 0\nX.NotAvailable=inf\n", 4, CellState::NotAvailable,
       CellReason::NotAvailableNumber, kInfinity},
      {"X.Raw=field(0) / 0\nX.Formula=1 / raw\n", 4, CellState::Value, CellReason::None, 0},
      // Ends of ranges.
      {"X.Formula=field(0)\nX.Range=-inf..0\n", -1e308, CellState::Value, CellReason::None, -1e308},
      {"X.Formula=field(0)\nX.Range=0..inf\n", 1e308, CellState::Value, CellReason::None, 1e308},
      {"X.Formula=field(0)\nX.Range=0..inf\n", -1, CellState::Error, CellReason::OutOfRange, -1},
  };
  for (const auto& row : rows) {
    std::string text;
    AppendShortest(text, row.number);
    const std::array<std::string_view, 1> fields = {text};
    LogRecord record;
    record.fields = fields;
    const Cell cell = OnlyCell(row.items, record);
    EXPECT_EQ(cell.state, row.state) << row.items;
    EXPECT_EQ(cell.reason, row.reason) << row.items;
    EXPECT_THAT(cell.value, testing::NanSensitiveDoubleEq(row.value)) << row.items;
  }
}

TEST(DecoderCells, TakeNegativeZeroForZero) {
  const std::array<std::string_view, 1> fields = {"0"};
  LogRecord record;
  record.fields = fields;
  const Cell value = OnlyCell("X.Formula=-field(0)\nX.Range=0..1\n", record);
  EXPECT_EQ(value.state, CellState::Value);
  EXPECT_TRUE(std::signbit(value.value));
  EXPECT_EQ(OnlyCell("X.Raw=-field(0)\nX.NotAvailable=0\n", record).reason,
            CellReason::NotAvailableNumber);
  EXPECT_EQ(OnlyCell("X.Formula=-field(0)\nX.Range=-1..-0\n", record).state, CellState::Value);
}

TEST(DecoderCells, SayWhyNothingWasComputed) {
  const std::array<std::string_view, 3> fields = {"", "deep", "7"};
  LogRecord record = BusRecord(0x123, false);
  record.fields = fields;
  record.bus.frame = "1232AABB";
  const struct {
    const char* items;
    CellState state;
    CellReason reason;
    bool isOfRaw;
  } rows[] = {
      {"X.Formula=field(0)\n", CellState::NotAvailable, CellReason::EmptyInput, false},
      {"X.Formula=2 * field(0)\n", CellState::NotAvailable, CellReason::EmptyInput, false},
      {"X.Formula=field(3)\n", CellState::Undecodable, CellReason::MissingInput, false},
      {"X.Formula=J1939Val(message, 6, 0)\n", CellState::Undecodable, CellReason::MissingInput,
       false},
      {"X.Formula=pgn\n", CellState::Undecodable, CellReason::MissingInput, false},
      {"X.Formula=field(1)\n", CellState::Undecodable, CellReason::NoValue, false},
      {"X.Formula=CanVal(frame, 7, 1)\n", CellState::Undecodable, CellReason::NoValue, false},
      {"X.Raw=CanVal(frame, 7, 1)\nX.Formula=raw\n", CellState::Undecodable, CellReason::NoValue,
       true},
      {"X.Raw=field(0)\nX.Formula=raw\n", CellState::NotAvailable, CellReason::EmptyInput, true},
      {"X.Raw=field(2)\nX.Formula=raw + pgn\n", CellState::Undecodable, CellReason::MissingInput,
       false},
      {"X.Raw=field(3)\nX.Formula=1\n", CellState::Undecodable, CellReason::MissingInput, true},
  };
  for (const auto& row : rows) {
    const Cell cell = OnlyCell(row.items, record);
    EXPECT_EQ(cell.state, row.state) << row.items;
    EXPECT_EQ(cell.reason, row.reason) << row.items;
    EXPECT_EQ(cell.isOfRaw, row.isOfRaw) << row.items;
    EXPECT_EQ(cell.value, 0.0) << row.items;
  }
}

TEST(DecoderCells, NameTheStepThatEndedTheFormula) {
  const Profile profile = GoodProfile("[Message A]\nX.Formula=1 + CanVal(frame, 7, 1)\n");
  CDecoder decoder(profile);
  LogRecord record = BusRecord(0x123, false);
  record.bus.frame = "1232AABB";
  const Cell cell = decoder.Decode(record, 0).cells[0];
  EXPECT_EQ(profile.messages[0].columns[0].formula->StepText(cell.step), "CanVal(frame, 7, 1)");
}

TEST(DecoderCells, OfOneColumnDoNotDependOnAnothers) {
  const Profile profile = GoodProfile(
      "[Message A]\nA.Raw=field(0)\nA.Formula=raw * 10\nB.Raw=field(1)\nB.Formula=raw * 10\n"
      "C.Formula=field(0) + field(1)\n");
  CDecoder decoder(profile);
  const std::array<std::string_view, 2> first = {"1", "2"};
  const std::array<std::string_view, 2> second = {"3", ""};
  LogRecord record;
  record.fields = first;
  const auto values = [&] {
    std::vector<double> found;
    for (const Cell& cell : decoder.Decode(record, 0).cells) {
      found.push_back(cell.state == CellState::Value ? cell.value : -1);
    }
    return found;
  };
  EXPECT_THAT(values(), ElementsAre(10, 20, 3));
  record.fields = second;
  EXPECT_THAT(values(), ElementsAre(30, -1, -1));
  record.fields = first;
  EXPECT_THAT(values(), ElementsAre(10, 20, 3));
}

TEST(DecoderCells, OfAnEngineAreThoseOfItsMessage) {
  const Profile profile = GoodProfile(
      "[Profile]\nFormat=j1939\n[Message EEC1]\nMatch.Pgn=61444\n"
      "Speed.Raw=J1939Val(message, 7, 3)\nSpeed.Formula=raw * 0.125\nSpeed.Range=0..8031.875\n"
      "Speed.Sentinels=J1939\n"
      "Torque.Formula=J1939BitsVal(message, 6, 16, 8) - 125\n");
  CDecoder decoder(profile);
  const struct {
    const char* message;
    CellState speedState;
    double speed;
    double torque;
  } rows[] = {
      {">00FF0F0043F07D87681300F000;", CellState::Value, 621, 10},
      {">00FF0F0043F07D87FFFF00F000;", CellState::NotAvailable, 0xFFFF, 10},
      {">00FF0F0043F07D8700FF00F000;", CellState::NotAvailable, 0xFF00, 10},
      {">00FF0F0043F07D87FFFE00F000;", CellState::Error, 0xFEFF, 10},
      {">00FF0F0043F07D8700FE00F000;", CellState::Error, 0xFE00, 10},
      {">00FF0F0043F07D87FFFB00F000;", CellState::Error, 8063.875, 10},
      {">00FF0F0043F07D87FFFA00F000;", CellState::Value, 8031.875, 10},
  };
  for (const auto& row : rows) {
    LogRecord record = BusRecord(0x0CF00400, true);
    record.bus.message = row.message;
    ASSERT_THAT(Matches(decoder, record), ElementsAre(0));
    const Row decoded = decoder.Decode(record, 0);
    EXPECT_EQ(decoded.cells[0].state, row.speedState) << row.message;
    EXPECT_EQ(decoded.cells[0].value, row.speed) << row.message;
    EXPECT_EQ(decoded.cells[1].value, row.torque) << row.message;
  }
}

}  // namespace
}  // namespace lum::decoding
