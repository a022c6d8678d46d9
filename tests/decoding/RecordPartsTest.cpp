// What conditions and formulas see of a record.
#include "decoding/RecordParts.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "decoding/Decoder.h"
#include "tests/decoding/Records.h"

namespace lum::decoding {
namespace {

using Part = MatchTerm::Part;

MatchTerm Numbered(Part part, std::uint32_t number) {
  MatchTerm term;
  term.part = part;
  term.number = number;
  return term;
}

MatchTerm Patterned(Part part, std::string_view pattern, std::uint32_t number = 0) {
  MatchTerm term = Numbered(part, number);
  term.pattern = pattern;
  return term;
}

MatchTerm WithId(std::uint32_t id, bool isExtended, std::uint32_t mask = 0xFFFFFFFF) {
  MatchTerm term = Numbered(Part::Id, id);
  term.isExtended = isExtended;
  term.mask = mask;
  return term;
}

TEST(MatchTerms, OfABusHoldForItsParts) {
  const struct {
    MatchTerm term;
    LogRecord record;
    bool holds;
  } rows[] = {
      {WithId(0x123, false), BusRecord(0x123, false), true},
      {WithId(0x123, false), BusRecord(0x123, true), false},
      {WithId(0x123, true), BusRecord(0x123, false), false},
      {WithId(0x123, false), BusRecord(0x124, false), false},
      {WithId(0x123, false, 0x7F0), BusRecord(0x12F, false), true},
      {WithId(0x123, false, 0x7F0), BusRecord(0x133, false), false},
      {WithId(0x18F00400, true, 0x03FFFF00), BusRecord(0x0CF004AA, true), true},
      {WithId(0, false), LogRecord(), false},
      {Numbered(Part::Pgn, 61444), BusRecord(0x0CF00400, true), true},
      {Numbered(Part::Pgn, 61444), BusRecord(0x0CF00500, true), false},
      {Numbered(Part::Pgn, 0xEE00), BusRecord(0x18EEFF17, true), true},
      {Numbered(Part::Pgn, 0), BusRecord(0x0000FF00, true), true},
      {Numbered(Part::Pgn, 0), BusRecord(0x0CF004AA & 0x7FF, false), false},
      {Numbered(Part::Source, 0x17), BusRecord(0x18EEFF17, true), true},
      {Numbered(Part::Source, 0x18), BusRecord(0x18EEFF17, true), false},
      {Numbered(Part::Destination, 0xFF), BusRecord(0x18EEFF17, true), true},
      {Numbered(Part::Destination, 0x20), BusRecord(0x18EA2017, true), true},
      {Numbered(Part::Destination, 0x21), BusRecord(0x18EA2017, true), false},
      {Numbered(Part::Destination, 0xFF), BusRecord(0x18F, false), false},
      {Numbered(Part::Priority, 6), BusRecord(0x18EEFF17, true), true},
      {Numbered(Part::Priority, 3), BusRecord(0x18EEFF17, true), false},
      {Numbered(Part::Priority, 0), BusRecord(0x18E, false), false},
      {Patterned(Part::Channel, "can?"), BusRecord(1, false, "can0"), true},
      {Patterned(Part::Channel, "can"), BusRecord(1, false, "can0"), false},
      {Patterned(Part::Channel, "*"), LogRecord(), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Holds(row.term, row.record), row.holds)
        << static_cast<int>(row.term.part) << " " << row.term.number << " " << row.record.bus.id;
  }
}

TEST(MatchTerms, OfTextsHoldForWholeTexts) {
  const std::array<std::string_view, 3> fields = {"$GPGGA", "", "A"};
  LogRecord record;
  record.line = "$GPGGA,,A";
  record.address = "GPGGA";
  record.fields = fields;
  const struct {
    MatchTerm term;
    bool holds;
  } rows[] = {
      {Patterned(Part::Sentence, "??GGA"), true}, {Patterned(Part::Sentence, "??gga"), false},
      {Patterned(Part::Sentence, "GGA"), false},  {Numbered(Part::FieldCount, 3), true},
      {Numbered(Part::FieldCount, 2), false},     {Numbered(Part::FieldCount, 0), false},
      {Patterned(Part::Field, "A", 2), true},     {Patterned(Part::Field, "*", 1), true},
      {Patterned(Part::Field, "?*", 1), false},   {Patterned(Part::Field, "*", 3), false},
      {Patterned(Part::Line, "$*A"), true},       {Patterned(Part::Line, "$GPGGA"), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Holds(row.term, record), row.holds) << row.term.pattern << row.term.number;
  }
  EXPECT_FALSE(Holds(Patterned(Part::Sentence, "*"), BusRecord(1, false)));
}

TEST(RecordParts, OfJ1939AreThereOnlyWhereTheReaderTookTheIdentifierApart) {
  LogRecord plainCan = BusRecord(0x0CF00400, true);
  plainCan.bus.pgn = 0;
  plainCan.bus.source = 0;
  plainCan.bus.destination = 0xFF;
  plainCan.bus.priority = 0;
  EXPECT_FALSE(HasJ1939Parts(plainCan.bus));
  EXPECT_TRUE(HasJ1939Parts(BusRecord(0x0CF00400, true).bus));
  EXPECT_TRUE(HasJ1939Parts(BusRecord(0x0000FF00, true).bus));
  EXPECT_FALSE(HasJ1939Parts(BusRecord(0x123, false).bus));
  // One part that is not the default is enough.
  for (const std::uint32_t id : {0x0000FF17U, 0x00002000U, 0x0400FF00U, 0x00F00400U}) {
    EXPECT_TRUE(HasJ1939Parts(BusRecord(id, true).bus)) << id;
  }
}

constexpr Input kAllInputs[] = {Input::Line,    Input::Frame,  Input::Message,     Input::Channel,
                                Input::Address, Input::Time,   Input::Number,      Input::Id,
                                Input::Pgn,     Input::Source, Input::Destination, Input::Priority,
                                Input::Length,  Input::Raw};

void ExpectPresent(const CFormulaInputs& inputs, const std::vector<Input>& present) {
  for (const Input input : kAllInputs) {
    const bool isOne = std::find(present.begin(), present.end(), input) != present.end();
    EXPECT_EQ(inputs.State(input), isOne ? InputState::Present : InputState::Missing)
        << InputTable()[static_cast<std::size_t>(input)].name;
  }
}

TEST(RecordInputs, OfABusRecordAreItsParts) {
  const std::array<std::uint8_t, 3> data = {1, 2, 3};
  LogRecord record = BusRecord(0x18EA2017, true, "vcan0");
  record.line = "a line";
  record.number = 17;
  record.time = 2.5;
  record.bus.data = data;
  record.bus.frame = "98EA20173010203";
  record.bus.message = ">1720000EA6010203;";
  CFormulaInputs inputs;
  inputs.SetNumber(Input::Raw, 1);
  SetInputs(inputs, record);
  ExpectPresent(inputs, {Input::Line, Input::Frame, Input::Message, Input::Channel, Input::Time,
                         Input::Number, Input::Id, Input::Pgn, Input::Source, Input::Destination,
                         Input::Priority, Input::Length});
  EXPECT_EQ(inputs.Text(Input::Line), "a line");
  EXPECT_EQ(inputs.Text(Input::Frame), "98EA20173010203");
  EXPECT_EQ(inputs.Text(Input::Message), ">1720000EA6010203;");
  EXPECT_EQ(inputs.Text(Input::Channel), "vcan0");
  EXPECT_EQ(inputs.ReadNumber(Input::Time), 2.5);
  EXPECT_EQ(inputs.ReadNumber(Input::Number), 17);
  EXPECT_EQ(inputs.ReadNumber(Input::Id), 0x18EA2017);
  EXPECT_EQ(inputs.ReadNumber(Input::Pgn), 0xEA00);
  EXPECT_EQ(inputs.ReadNumber(Input::Source), 0x17);
  EXPECT_EQ(inputs.ReadNumber(Input::Destination), 0x20);
  EXPECT_EQ(inputs.ReadNumber(Input::Priority), 6);
  EXPECT_EQ(inputs.ReadNumber(Input::Length), 3);
}

TEST(RecordInputs, ThatARecordDoesNotHaveAreMissingAndNotEmpty) {
  CFormulaInputs inputs;
  LogRecord standard = BusRecord(0x123, false, "");
  standard.line = "x";
  SetInputs(inputs, standard);
  ExpectPresent(inputs, {Input::Line, Input::Number, Input::Id, Input::Length});
  LogRecord plain;
  SetInputs(inputs, plain);
  EXPECT_EQ(inputs.State(Input::Line), InputState::Empty);
  EXPECT_EQ(inputs.State(Input::Id), InputState::Missing);
}

TEST(RecordInputs, LeaveOutFieldsBehindTheLastThatHasANumber) {
  const std::vector<std::string_view> fields(CFormulaInputs::kMaxFields + 1, "x");
  LogRecord record;
  record.fields = fields;
  CFormulaInputs inputs;
  SetInputs(inputs, record);
  EXPECT_EQ(inputs.FieldState(CFormulaInputs::kMaxFields - 1), InputState::Present);
  EXPECT_EQ(inputs.FieldState(CFormulaInputs::kMaxFields), InputState::Missing);
}

TEST(RecordInputs, OfASentenceAreItsAddressAndFields) {
  const std::array<std::string_view, 2> fields = {"GPGGA", ""};
  LogRecord record;
  record.line = "$GPGGA,*00";
  record.address = "GPGGA";
  record.fields = fields;
  CFormulaInputs inputs;
  SetInputs(inputs, record);
  ExpectPresent(inputs, {Input::Line, Input::Number, Input::Address});
  EXPECT_EQ(inputs.FieldState(0), InputState::Present);
  EXPECT_EQ(inputs.FieldState(1), InputState::Empty);
  EXPECT_EQ(inputs.FieldState(2), InputState::Missing);
}

}  // namespace
}  // namespace lum::decoding
