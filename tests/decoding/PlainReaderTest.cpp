// Tests of decoding/PlainReader.h: fields between blanks or a separator, time stamps, remarks.
#include "decoding/PlainReader.h"

#include <gtest/gtest.h>

#include <string>

#include "decoding/FormulaInputs.h"
#include "tests/decoding/ReaderTesting.h"

using lum::decoding::CFormulaInputs;
using lum::decoding::LogFormat;
using lum::test::CheckReader;
using lum::test::CTestReader;
using lum::test::ReaderCase;

TEST(PlainReader, SplitsAtBlanks) {
  const ReaderCase rows[] = {
      {"1 2.5 x", "data [1|2.5|x]"},
      {" \t a \t b\t", "data [a|b]"},
      {"(1.5) a b", "data 1.500000 [a|b]"},
      {"(1.5)", "data 1.500000 []"},
      {"(1.5)a b", "data [(1.5)a|b]"},
      {"(x) a", "data [(x)|a]"},
      {"1,2", "data [1,2]"},
      {"", "remark"},
      {"  ", "remark"},
      {" # 1 2", "remark"},
  };
  CheckReader(LogFormat::Plain, rows);
}

TEST(PlainReader, SplitsAtASeparator) {
  const ReaderCase rows[] = {
      {"1;2,5;", "data [1|2,5|]"},
      {";", "data [|]"},
      {"(1.5) a;b", "data 1.500000 [a|b]"},
      {" a ;b", "data [ a |b]"},
  };
  CheckReader(LogFormat::Plain, rows, {.separator = ';'});
}

TEST(PlainReader, ATabSeparatesEmptyFieldsToo) {
  const ReaderCase rows[] = {
      {"\ta\t\tb", "data [|a||b]"},
      {"(1.5)\t\ta", "data 1.500000 [|a]"},
  };
  CheckReader(LogFormat::Plain, rows, {.separator = '\t'});
}

TEST(PlainReader, TakesFieldsUpToTheLimit) {
  CTestReader reader(LogFormat::Plain);
  std::string most;
  for (std::size_t i = 0; i < CFormulaInputs::kMaxFields; ++i) {
    most += "x ";
  }
  EXPECT_TRUE(reader.Take(most).hasRecord);
  EXPECT_EQ(reader.record.fields.size(), CFormulaInputs::kMaxFields);
  EXPECT_EQ(reader.Read(most + "y"), "column 513: more than 256 fields");
  EXPECT_EQ(reader.Read(most + "y z"), "column 513: more than 256 fields");
}

TEST(PlainReader, TakesFieldsBetweenSeparatorsUpToTheLimit) {
  CTestReader reader(LogFormat::Plain, {.separator = ';'});
  const std::string most(CFormulaInputs::kMaxFields - 1, ';');
  EXPECT_TRUE(reader.Take(most).hasRecord);
  EXPECT_EQ(reader.record.fields.size(), CFormulaInputs::kMaxFields);
  EXPECT_EQ(reader.Read(most + ";"), "column 257: more than 256 fields");
  EXPECT_EQ(reader.Read(most + ";y;z"), "column 257: more than 256 fields");
}

TEST(PlainReader, RefusesALineThatWasCut) {
  CTestReader reader(LogFormat::Plain);
  EXPECT_EQ(reader.ReadTooLong("1 2"), "column 4: line is longer than 65536 bytes");
}
