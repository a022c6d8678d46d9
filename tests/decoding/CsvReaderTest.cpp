// Tests of decoding/CsvReader.h: fields with quotes and without.
#include "decoding/CsvReader.h"

#include <gtest/gtest.h>

#include <string>

#include "decoding/FormulaInputs.h"
#include "tests/decoding/ReaderTesting.h"

using lum::decoding::CFormulaInputs;
using lum::decoding::kMaxLogLine;
using lum::decoding::LogFormat;
using lum::test::CheckReader;
using lum::test::CTestReader;
using lum::test::ReaderCase;

TEST(CsvReader, SplitsAtCommas) {
  const ReaderCase rows[] = {
      {"1,2.5,x", "data [1|2.5|x]"},
      {"one", "data [one]"},
      {",", "data [|]"},
      {"a,,", "data [a||]"},
      {" a , b ", "data [ a | b ]"},
      {R"("a,b",c)", "data [a,b|c]"},
      {R"("a ""b""",""""),"")", "column 15: text behind the closing quotation mark"},
      {R"("a ""b""","""","")", R"(data [a "b"|"|])"},
      {R"("")", "data []"},
      {"", "remark"},
      {"#", "data [#]"},
  };
  CheckReader(LogFormat::Csv, rows);
}

TEST(CsvReader, SplitsAtAnotherSeparator) {
  const ReaderCase rows[] = {
      {"1,5;2,5", "data [1,5|2,5]"},
      {R"("a;b";c)", "data [a;b|c]"},
  };
  CheckReader(LogFormat::Csv, rows, {.separator = ';'});
}

TEST(CsvReader, SaysWhereALineIsWrong) {
  const ReaderCase rows[] = {
      {R"(1,"open)", "column 3: quotation mark is not closed on this line"},
      {R"(1,"open"")", "column 3: quotation mark is not closed on this line"},
      {R"(")", "column 1: quotation mark is not closed on this line"},
      {R"(1,5" pipe)", "column 4: quotation mark in a field without quotation marks"},
      {R"("a"b,c)", "column 4: text behind the closing quotation mark"},
      {R"("a" ,c)", "column 4: text behind the closing quotation mark"},
  };
  CheckReader(LogFormat::Csv, rows);
}

TEST(CsvReader, TakesFieldsUpToTheLimit) {
  CTestReader reader(LogFormat::Csv);
  const std::string most(CFormulaInputs::kMaxFields - 1, ',');
  EXPECT_TRUE(reader.Take(most).hasRecord);
  EXPECT_EQ(reader.record.fields.size(), CFormulaInputs::kMaxFields);
  EXPECT_EQ(reader.Read(most + ","), "column 257: more than 256 fields");
}

TEST(CsvReader, KeepsTheTextsOfAllQuotedFieldsOfALine) {
  CTestReader reader(LogFormat::Csv);
  reader.Take(R"("a""b")");
  std::string line = R"("""")";
  for (int i = 1; i < 200; ++i) {
    line += ",\"" + std::to_string(i) + "\"\"\"";
  }
  ASSERT_TRUE(reader.Take(line).hasRecord);
  EXPECT_EQ(reader.record.fields[0], "\"");
  EXPECT_EQ(reader.record.fields[199], "199\"");
  EXPECT_TRUE(reader.Take("\"" + std::string(kMaxLogLine - 2, '"') + "\"").hasRecord);
  EXPECT_EQ(reader.record.fields[0].size(), (kMaxLogLine - 2) / 2);
}

TEST(CsvReader, RefusesALineThatWasCut) {
  CTestReader reader(LogFormat::Csv);
  EXPECT_EQ(reader.ReadTooLong("1,2"), "column 4: line is longer than 65536 bytes");
}
