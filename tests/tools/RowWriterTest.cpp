// Rows as text.
#include "tools/lumattr/RowWriter.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/decoding/ProfileTesting.h"

namespace lum::tool {
namespace {

using decoding::Cell;
using decoding::CellReason;
using decoding::CellState;
using decoding::GoodProfile;
using decoding::LogRecord;
using decoding::Profile;
using decoding::Row;

constexpr const char* kTwoMessages =
    "[Message First]\nA.Formula=1\nA.Unit=m\nA.Digits=2\nB.Formula=2\n"
    "[Message Second]\nC.Formula=3\n";

/// A profile's rows, written one after the other.
class CRows {
 public:
  CRows(const char* profile, const RowLayout& layout)
      : m_profile(GoodProfile(profile)), m_writer(MakeRowWriter(m_profile, layout)) {
    m_record.number = 7;
  }

  std::string Titles() const {
    std::string text;
    m_writer->AppendTitles(text);
    return text;
  }
  std::string Line(std::size_t message, const std::vector<Cell>& cells) const {
    std::string text;
    m_writer->AppendRow(text, {&m_record, &m_profile.messages[message], message, cells});
    return text;
  }
  LogRecord& Record() { return m_record; }
  CRowWriter& Writer() { return *m_writer; }

 private:
  Profile m_profile;
  std::unique_ptr<CRowWriter> m_writer;
  LogRecord m_record;
};

Cell Number(double value) { return {CellState::Value, CellReason::None, value}; }

TEST(RowWriter, WritesCsvWithAColumnForEachOfAllMessages) {
  CRows rows(kTwoMessages, {RowFormat::Csv});
  EXPECT_EQ(rows.Titles(), "line,time,message,A,B,C\r\n");
  EXPECT_EQ(rows.Line(0, {Number(1.005), Number(0.1)}), "7,,First,1.00,0.1,\r\n");
  EXPECT_EQ(rows.Line(1, {Number(3.0)}), "7,,Second,,,3\r\n");
  rows.Record().time = 1436509052.249713;
  EXPECT_EQ(rows.Line(1, {Number(3.0)}), "7,1436509052.249713,Second,,,3\r\n");
}

TEST(RowWriter, WritesCsvCellsWhereTheirColumnsStand) {
  CRows rows(
      "[Message M]\nA.Formula=1\nB.Formula=1\nC.Formula=1\n"
      "[Message N]\nC.Formula=2\nD.Formula=2\nA.Formula=2\nA.Digits=1\n",
      {RowFormat::Csv, false});
  EXPECT_EQ(rows.Titles(), "line,message,A,B,C,D\r\n");
  EXPECT_EQ(rows.Line(1, {Number(3.0), Number(4.0), Number(1.0)}), "7,N,1.0,,3,4\r\n");
  EXPECT_EQ(
      rows.Line(1, {{CellState::Error, CellReason::OutOfRange, 9.0}, Number(4.0), Number(1.0)}),
      "7,N,1.0,,,4\r\n");
}

TEST(RowWriter, LeavesOutTheMessageWhenThereIsOne) {
  CRows rows("[Message M]\nA.Formula=1\n", {RowFormat::Csv, false});
  EXPECT_EQ(rows.Titles(), "line,A\r\n");
  EXPECT_EQ(rows.Line(0, {Number(1.0)}), "7,1\r\n");
}

TEST(RowWriter, QuotesWhatCsvMustQuote) {
  CRows rows("[Message a,b]\nA\"x.Formula=1\n[Message M]\nB.Formula=1\n",
             {RowFormat::Csv, false, true});
  rows.Writer().SetFile("x,y.log");
  EXPECT_EQ(rows.Titles(), "file,line,message,\"A\"\"x\",B\r\n");
  EXPECT_EQ(rows.Line(0, {Number(1.0)}), "\"x,y.log\",7,\"a,b\",1,\r\n");
}

TEST(RowWriter, WritesAnObjectOfWhatTheMessageHas) {
  CRows rows(kTwoMessages, {RowFormat::Json});
  EXPECT_EQ(rows.Titles(), "");
  EXPECT_EQ(rows.Line(0, {Number(1.005), Number(1e22)}),
            "{\"line\":7,\"message\":\"First\",\"values\":{\"A\":1.005,\"B\":1e+22}}\n");
  rows.Record().time = 12.5;
  EXPECT_EQ(rows.Line(1, {Number(-0.5)}),
            "{\"line\":7,\"time\":12.500000,\"message\":\"Second\",\"values\":{\"C\":-0.5}}\n");
}

TEST(RowWriter, TellsWhyACellHasNoValueInJson) {
  const struct {
    Cell cell;
    const char* text;
  } table[] = {
      {{CellState::NotAvailable, CellReason::EmptyInput},
       R"({"state":"not available","reason":"an empty field"})"},
      {{CellState::NotAvailable, CellReason::NotAvailableNumber, 255.0},
       R"({"state":"not available","reason":"the number for not available","value":255})"},
      {{CellState::Error, CellReason::ErrorNumber, 254.0},
       R"({"state":"error","reason":"a number for errors","value":254})"},
      {{CellState::Error, CellReason::OutOfRange, -1.5},
       R"({"state":"error","reason":"out of range","value":-1.5})"},
      {{CellState::Error, CellReason::NotANumber},
       R"({"state":"error","reason":"not a finite number"})"},
      {{CellState::Undecodable, CellReason::MissingInput},
       R"({"state":"undecodable","reason":"no such field"})"},
      {{CellState::Undecodable, CellReason::NoValue},
       R"({"state":"undecodable","reason":"the operation has no value"})"},
  };
  const CRows rows("[Message M]\nA.Formula=1\n", {RowFormat::Json});
  for (const auto& row : table) {
    EXPECT_EQ(rows.Line(0, {row.cell}),
              std::string("{\"line\":7,\"message\":\"M\",\"values\":{\"A\":") + row.text + "}}\n");
  }
}

TEST(RowWriter, LeavesCellsWithoutAValueEmptyInCsv) {
  const CRows rows("[Message M]\nA.Formula=1\nB.Formula=1\n", {RowFormat::Csv, false});
  EXPECT_EQ(rows.Line(0, {{CellState::Error, CellReason::OutOfRange, 5.0}, Number(1.0)}),
            "7,,1\r\n");
}

TEST(RowWriter, AlignsTheTable) {
  CRows rows(kTwoMessages, {RowFormat::Table});
  EXPECT_EQ(rows.Titles(),
            "    LINE               TIME  MESSAGE      A (m)          B          C\n");
  EXPECT_EQ(rows.Line(0, {Number(1.0), {CellState::NotAvailable, CellReason::EmptyInput}}),
            "       7                     First         1.00        n/a\n");
  rows.Record().time = 1436509052.249713;
  EXPECT_EQ(rows.Line(1, {{CellState::Undecodable, CellReason::NoValue}}),
            "       7  1436509052.249713  Second                                 ?\n");
}

TEST(RowWriter, KeepsCellsApartThatAreWiderThanTheirColumns) {
  CRows rows("[Message M]\nA.Formula=1\nB.Formula=1\n", {RowFormat::Table, false, true});
  rows.Writer().SetFile("a-rather-long-name-of-a-file.log");
  rows.Record().number = 123456789;
  EXPECT_EQ(rows.Line(0, {Number(-0.1234567890123456), Number(1234567890.25)}),
            "a-rather-long-name-of-a-file.log  123456789  -0.1234567890123456  1234567890.25\n");
}

TEST(RowWriter, MeasuresTitlesAsATerminalShowsThem) {
  Profile profile = GoodProfile("[Message M]\nA.Formula=1\n");
  profile.messages[0].columns[0].displayName = "\xe6\xb7\xb1\xe5\xba\xa6\xe6\xb7\xb1\xe5\xba\xa6";
  std::string text;
  MakeRowWriter(profile, {RowFormat::Table, false})->AppendTitles(text);
  EXPECT_EQ(text, "    LINE   \xe6\xb7\xb1\xe5\xba\xa6\xe6\xb7\xb1\xe5\xba\xa6\n");
}

TEST(RowWriter, ShowsATerminalNothingThatSteersIt) {
  constexpr const char* kProfile =
      "[Message \x1b[1mM]\nA\x1b[2m.Formula=1\n[Message N]\nB.Formula=1\n";
  for (const RowFormat format : {RowFormat::Table, RowFormat::Csv, RowFormat::Json}) {
    CRows rows(kProfile, {format, true, true, true});
    rows.Writer().SetFile("\x1b[3m.log");
    const std::string text = rows.Titles() + rows.Line(0, {Number(1.0)});
    EXPECT_EQ(text.find('\x1b'), std::string::npos) << text;
  }
  CRows rows(kProfile, {RowFormat::Csv, false});
  EXPECT_EQ(rows.Line(0, {Number(1.0)}), "7,\x1b[1mM,1,\r\n");
}

TEST(RowWriter, WritesNamesThatAreNoUtf8AsSomeInJson) {
  CRows rows("[Message M]\nA.Formula=1\n", {RowFormat::Json, false, true});
  rows.Writer().SetFile("\xff.log");
  EXPECT_EQ(rows.Line(0, {Number(1.0)}),
            "{\"file\":\"\xc3\xbf.log\",\"line\":7,\"message\":\"M\",\"values\":{\"A\":1}}\n");
}

TEST(RowWriter, HasAWordForEachStateAndReason) {
  EXPECT_STREQ(CellStateName(CellState::Value), "value");
  EXPECT_STREQ(CellStateName(CellState::Undecodable), "undecodable");
  EXPECT_STREQ(CellReasonName(CellReason::None), "");
  EXPECT_STREQ(CellReasonName(CellReason::NotANumber), "not a finite number");
}

}  // namespace
}  // namespace lum::tool
