// Tests of decoding/CandumpReader.h: lines of both forms, right and wrong ones.
#include "decoding/CandumpReader.h"

#include <gtest/gtest.h>

#include <string>

#include "decoding/LogReader.h"
#include "tests/decoding/ReaderTesting.h"

using lum::decoding::kMaxChannelName;
using lum::decoding::LogFormat;
using lum::test::CheckReader;
using lum::test::CTestReader;
using lum::test::ReaderCase;

TEST(CandumpReader, ReadsCompactLines) {
  const ReaderCase rows[] = {
      {"(1436509052.249713) vcan0 123#1122334455667788",
       "data 1436509052.249713 vcan0 123 1122334455667788 frame 12381122334455667788"},
      {"vcan0 123#11", "data vcan0 123 11 frame 123111"},
      {"vcan0 7ff#", "data vcan0 7FF  frame 7FF0"},
      {"can0 123#aabBcC", "data can0 123 AABBCC frame 1233AABBCC"},
      {"can0 123#11.22.33", "data can0 123 112233 frame 1233112233"},
      {"can0 123#1122.33", "data can0 123 112233 frame 1233112233"},
      {"  can0\t123#11  ", "data can0 123 11 frame 123111"},
      {"(1.5) can0 123#1122 R", "data 1.500000 can0 123 1122 frame 12321122"},
      {"can0 123#1122 T", "data can0 123 1122 frame 12321122"},
      {"can0 18FEF100#0102",
       "data can0 18FEF100 0102 frame 98FEF10020102 message >00FF0FEF160102;"},
      {"can0 0cf00400#ffffff6813ffffff",
       "data can0 0CF00400 FFFFFF6813FFFFFF frame 8CF004008FFFFFF6813FFFFFF "
       "message >00FF0F0043FFFFFF6813FFFFFF;"},
      {"can0 18EF1020#", "data can0 18EF1020  frame 98EF10200 message >20100EF006;"},
      {"can0 1FFFFFFF#00", "data can0 1FFFFFFF 00 frame 9FFFFFFF100 message >FFFF3FFFF700;"},
      {"(2015-07-10 06:17:32.249713) can0 123#00",
       "data 1436509052.249713 can0 123 00 frame 123100"},
  };
  CheckReader(LogFormat::Candump, rows);
}

TEST(CandumpReader, TellsFramesWithoutDataApart) {
  const ReaderCase rows[] = {
      {"can0 123#R", "remote can0 123 "},
      {"can0 123#R8", "remote can0 123 "},
      {"can0 18FEF100#r0", "remote can0 18FEF100 "},
      {"can0 123#R T", "remote can0 123 "},
      {"can0 123#  ", "data can0 123  frame 1230"},
      {"can0 20000004#0001000000000000", "bus error can0 004 0001000000000000"},
      {"can0 123##1112233", "unusable can0 123 "},
      {"can0 12345678##0", "unusable can0 12345678 "},
      {"", "remark"},
      {" \t", "remark"},
      {"# a log", "remark"},
  };
  CheckReader(LogFormat::Candump, rows);
}

TEST(CandumpReader, ReadsColumns) {
  const ReaderCase rows[] = {
      {"  can0  123   [8]  11 22 33 44 55 66 77 88",
       "data can0 123 1122334455667788 frame 12381122334455667788"},
      {" (000.000123)  can0  123   [8]  11 22 33 44 55 66 77 88   '.\"3DUfw.'",
       "data 0.000123 can0 123 1122334455667788 frame 12381122334455667788"},
      {"can0  18FEF100  [3] 01 02 ff",
       "data can0 18FEF100 0102FF frame 98FEF10030102FF message >00FF0FEF160102FF;"},
      {"vcan0  RX - -  123   [3]  11 22 33", "data vcan0 123 112233 frame 1233112233"},
      {"vcan0  TX B E  123   [03]  11 22 33", "unusable vcan0 123 "},
      {"can0  123   [0]", "data can0 123  frame 1230"},
      {"can0  123   [0]  remote request", "remote can0 123 "},
      {"can0  123   [4]  remote request", "remote can0 123 "},
      {"can0  20000080   [8]  00 00 00 00 00 00 00 00   ERRORFRAME",
       "bus error can0 080 0000000000000000"},
      {"can0  123  [12]  11 22 33 44 55 66 77 88 99 AA BB CC", "unusable can0 123 "},
  };
  CheckReader(LogFormat::Candump, rows);
}

TEST(CandumpReader, SaysWhereACompactLineIsWrong) {
  const ReaderCase rows[] = {
      {"can0 123#112", "column 13: odd number of hexadecimal digits"},
      {"can0 123#1g", "column 11: no hexadecimal digit in the data"},
      {"can0 123#112233445566778899", "column 26: more than 8 data bytes"},
      {"can0 123#.11", "column 10: no hexadecimal digit in the data"},
      {"can0 123#1.122", "column 11: no hexadecimal digit in the data"},
      {"can0 123#11 22", "column 12: no hexadecimal digit in the data"},
      {"can0 800#11", "column 6: identifier is larger than 7FF"},
      {"can0 FFF#11", "column 6: identifier is larger than 7FF"},
      {"can0 40000000#11", "column 6: identifier is larger than 1FFFFFFF"},
      {"can0 80000000#11", "column 6: identifier is larger than 1FFFFFFF"},
      {"can0 12#11", "column 6: identifier has neither 3 nor 8 hexadecimal digits"},
      {"can0 1234#11", "column 6: identifier has neither 3 nor 8 hexadecimal digits"},
      {"can0 #11", "column 6: identifier has neither 3 nor 8 hexadecimal digits"},
      {"can0 12x#11", "column 8: no hexadecimal digit in the identifier"},
      {"can0 1234567x#11", "column 13: no hexadecimal digit in the identifier"},
      {"can0 123#R9", "column 11: expected a data length of 0 to 8 behind R, or nothing"},
      {"can0 123#R/", "column 11: expected a data length of 0 to 8 behind R, or nothing"},
      {"can0 123#R12", "column 11: expected a data length of 0 to 8 behind R, or nothing"},
      {"can0 123##", "column 11: no flags of a CAN FD frame"},
      {"can0 123##g", "column 11: no flags of a CAN FD frame"},
      {"can0 123##01", "column 13: odd number of hexadecimal digits"},
      {"can0 123##0" + std::string(130, '0'), "column 140: more than 64 data bytes"},
      {"can0", "column 5: no frame behind the interface"},
      {"(1.5)", "column 6: no blank behind the time stamp"},
      {"(1.5)can0 123#", "column 6: no blank behind the time stamp"},
      {"(1.5) ", "column 7: no name of an interface"},
      {" (x) can0 123#", "column 2: no time stamp within the parentheses"},
  };
  CheckReader(LogFormat::Candump, rows);
}

TEST(CandumpReader, SaysWhereALineOfColumnsIsWrong) {
  const ReaderCase rows[] = {
      {"can0  123   [3]  11 22", "column 23: fewer data bytes than the data length says"},
      {"can0  123   [3]  11 22  '..'", "column 25: fewer data bytes than the data length says"},
      {"can0  123   [1]  11 22", "column 21: more behind the data than the data length says"},
      {"can0  123   [9]  11 22", "column 14: more than 8 data bytes"},
      {"can0  123   [65] 11 22", "column 14: more than 64 data bytes"},
      {"can0  123   [x]  11 22",
       "column 14: data length is no number of one or two digits in brackets"},
      {"can0  123   [123]  11",
       "column 16: data length is no number of one or two digits in brackets"},
      {"can0  123   11 22", "column 13: no data length in brackets behind the identifier"},
      {"can0  123   [2]  11 2", "column 21: a data byte has two hexadecimal digits"},
      {"can0  123   [2]  11`22", "column 20: no hexadecimal digit in the data"},
      {"can0  123   [2]  112 2", "column 18: a data byte has two hexadecimal digits"},
      {"can0  1234  [1]  11", "column 7: identifier has neither 3 nor 8 hexadecimal digits"},
      {"can0  123   [2]  remote request 11",
       "column 33: more behind the data than the data length says"},
      {"can0  RX x -  123  [1] 11", "column 10: expected the flags B or -, E or - behind RX or TX"},
      {"can0  RX - -", "column 13: no identifier behind the flags"},
      {"hello world", "column 7: identifier has neither 3 nor 8 hexadecimal digits"},
  };
  CheckReader(LogFormat::Candump, rows);
}

TEST(CandumpReader, TakesInterfaceNamesUpToTheLimit) {
  CTestReader reader(LogFormat::Candump);
  const std::string longest(kMaxChannelName, 'c');
  EXPECT_EQ(reader.Read(longest + " 123#"), "data " + longest + " 123  frame 1230");
  EXPECT_EQ(reader.Read(longest + "c 123#"),
            "column 1: name of an interface is longer than 64 bytes");
}

TEST(CandumpReader, RefusesALineThatWasCut) {
  CTestReader reader(LogFormat::Candump);
  EXPECT_EQ(reader.ReadTooLong("can0 123#11"), "column 12: line is longer than 65536 bytes");
}

TEST(CandumpReader, GivesTheLineAndItsPlaceWithTheRecord) {
  const auto reader = lum::decoding::MakeLogReader(LogFormat::Candump, {});
  lum::decoding::LogLine line{"can0 123#11", 7, 99, 111, false};
  lum::decoding::LogRecord record;
  lum::decoding::LineProblem problem;
  reader->Take(line, record, problem);
  EXPECT_EQ(record.line, "can0 123#11");
  EXPECT_EQ(record.number, 7U);
  EXPECT_EQ(record.offset, 99U);
}

TEST(CandumpReader, SplitsExtendedIdentifiers) {
  CTestReader reader(LogFormat::Candump);
  reader.Take("can0 19EF1020#");
  EXPECT_EQ(reader.record.bus.pgn, 0x1EF00U);
  EXPECT_EQ(reader.record.bus.source, 0x20);
  EXPECT_EQ(reader.record.bus.destination, 0x10);
  EXPECT_EQ(reader.record.bus.priority, 6);
  reader.Take("can0 0CF00400#");
  EXPECT_EQ(reader.record.bus.pgn, 61444U);
  EXPECT_EQ(reader.record.bus.destination, 255);
  EXPECT_EQ(reader.record.bus.priority, 3);
}
