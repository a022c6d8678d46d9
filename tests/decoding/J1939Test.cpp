// Tests of decoding/J1939.h, by lines of a log: what is put together, and what is wrong with the
// rest.
#include "decoding/J1939.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/decoding/ReaderTesting.h"

using lum::decoding::CJ1939Assembler;
using lum::decoding::LogFormat;
using lum::decoding::SplitJ1939Id;
using lum::test::CTestReader;
using lum::test::ReaderCase;

namespace {

// A message of 9 bytes, parameter group 65259, in two packets.
const char* const kBam = "can0 18ECFF00#20090002FFEBFE00";
const char* const kFirst = "can0 18EBFF00#0101020304050607";
const char* const kSecond = "can0 18EBFF00#020809FFFFFFFFFF";
const char* const kWhole =
    "data can0 18FEEB00 010203040506070809 message >00FF0FEEB6010203040506070809;";

const char* const kRequest = "can0 18EC2010#10090002FFEBFE00";
const char* const kClear = "can0 18EC1020#110201FFFFEBFE00";
const char* const kDone = "can0 18EC1020#13090002FFEBFE00";
const char* const kFirstToOne = "can0 18EB2010#0101020304050607";
const char* const kSecondToOne = "can0 18EB2010#020809FFFFFFFFFF";
const char* const kWholeToOne =
    "data can0 18FEEB10 010203040506070809 message >10200FEEB6010203040506070809;";

/// Only what the assembly adds: the frames' own parts are candump's matter.
std::string ReadShort(CTestReader& reader, const std::string& line) {
  const std::string all = reader.Read(line);
  if (!all.starts_with("part")) {
    return all;
  }
  const std::size_t problem = all.find("; ");
  return problem == all.npos ? "part" : "part" + all.substr(problem);
}

void Check(const std::vector<ReaderCase>& rows, const std::string& atEnd = "") {
  CTestReader reader(LogFormat::J1939);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(ReadShort(reader, rows[i].line), rows[i].outcome) << i + 1 << ": " << rows[i].line;
  }
  EXPECT_EQ(reader.Finish(), atEnd);
}

std::string Bytes(std::size_t count, const std::string& byte) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += byte;
  }
  return text;
}

}  // namespace

TEST(J1939Id, PartsAreThoseOfTheStandard) {
  const auto broadcast = SplitJ1939Id(0x0CF00400);
  EXPECT_EQ(broadcast.pgn, 61444U);
  EXPECT_EQ(broadcast.priority, 3);
  EXPECT_EQ(broadcast.source, 0);
  EXPECT_EQ(broadcast.destination, 255);
  const auto toOne = SplitJ1939Id(0x1BEF2A17);
  EXPECT_EQ(toOne.pgn, 0x3EF00U);
  EXPECT_EQ(toOne.priority, 6);
  EXPECT_EQ(toOne.source, 0x17);
  EXPECT_EQ(toOne.destination, 0x2A);
}

TEST(J1939Reader, PassesOtherFramesAsTheyAre) {
  Check({
      {"can0 0CF00400#01", "data can0 0CF00400 01 frame 8CF00400101 message >00FF0F004301;"},
      {"can0 123#11", "data can0 123 11 frame 123111"},
      {"can0 18ECFF00#R", "remote can0 18ECFF00 "},
      {"can0 123#1", "column 11: odd number of hexadecimal digits"},
      {"", "remark"},
  });
}

TEST(J1939Reader, PutsBroadcastsTogether) {
  Check({{kBam, "part"}, {kFirst, "part"}, {kSecond, kWhole}, {kSecond, "part"}});
}

TEST(J1939Reader, GivesThePlaceOfTheLastFrameAndThePackets) {
  CTestReader reader(LogFormat::J1939);
  reader.Take("(7.25) " + std::string(kBam));
  reader.Take("(7.25) " + std::string(kFirst));
  reader.Take("(7.5) " + std::string(kSecond));
  EXPECT_EQ(reader.record.number, 3U);
  EXPECT_EQ(reader.record.time, 7.5);
  EXPECT_EQ(reader.record.bus.frames, 2U);
  EXPECT_EQ(reader.record.bus.pgn, 65259U);
}

TEST(J1939Reader, KeepsSendersAndChannelsApart) {
  Check({
      {kBam, "part"},
      {"can1 18ECFF00#20090002FFEBFE00", "part"},
      {"can0 18ECFF01#20090002FFEBFE00", "part"},
      {"can1 18EBFF00#01AAAAAAAAAAAAAA", "part"},
      {kFirst, "part"},
      {"can0 18EBFF01#01BBBBBBBBBBBBBB", "part"},
      {"can1 18EBFF00#02AAAAFFFFFFFFFF",
       "data can1 18FEEB00 AAAAAAAAAAAAAAAAAA message >00FF0FEEB6AAAAAAAAAAAAAAAAAA;"},
      {kSecond, kWhole},
      {"can0 18EBFF01#02BBBBFFFFFFFFFF",
       "data can0 18FEEB01 BBBBBBBBBBBBBBBBBB message >01FF0FEEB6BBBBBBBBBBBBBBBBBB;"},
  });
}

TEST(J1939Reader, PutsHandshakesTogether) {
  Check({{kRequest, "part"},
         {kClear, "part"},
         {kFirstToOne, "part"},
         {kSecondToOne, kWholeToOne},
         {kDone, "part"},
         {kDone, "part"}});
}

TEST(J1939Reader, AMessageOfPdu1KeepsItsDestinationInTheIdentifier) {
  Check({{"can0 18EC2010#10090002FF00EF00", "part"},
         {"can0 18EC1020#110201FFFF00EF00", "part"},
         {kFirstToOne, "part"},
         {kSecondToOne,
          "data can0 18EF2010 010203040506070809 message >10200EF006010203040506070809;"},
         {"can0 18EC1020#13090002FF00EF00", "part"}});
}

TEST(J1939Reader, AMessageWithoutItsAcknowledgementIsWholeAllTheSame) {
  Check({{kRequest, "part"},
         {kClear, "part"},
         {kFirstToOne, "part"},
         {kSecondToOne, kWholeToOne},
         {kBam, "part"}},
        "line 5, column 1: log ends before the message is complete");
}

TEST(J1939Reader, PassesWhatIsSaidOfMessagesThatAreNotUnderWay) {
  const std::vector<ReaderCase> others = {{"can0 18EC1020#110101FFFFEAFE00", "part"},
                                          {"can0 18EC1020#13090002FFEAFE00", "part"},
                                          {"can0 18EC1020#FF01FFFFFFEAFE00", "part"},
                                          {"can0 18EC2010#FF01FFFFFFEAFE00", "part"}};
  Check(others);
  Check({{kClear, "part"}, {kDone, "part"}});
  std::vector<ReaderCase> rows = others;
  rows.insert(rows.begin(), {kRequest, "part"});
  rows.push_back({kFirstToOne, "part"});
  rows.push_back({kSecondToOne, kWholeToOne});
  Check(rows);
}

TEST(J1939Reader, SendsPacketsOnceMoreWhenTheReceiverAsks) {
  CTestReader reader(LogFormat::J1939);
  for (const char* line : {kRequest, kClear, kFirstToOne, "can0 18EC1020#110101FFFFEBFE00"}) {
    EXPECT_EQ(ReadShort(reader, line), "part");
  }
  EXPECT_EQ(ReadShort(reader, "can0 18EB2010#01AABBCCDDEEFF00"), "part");
  EXPECT_EQ(ReadShort(reader, kSecondToOne),
            "data can0 18FEEB10 AABBCCDDEEFF000809 message >10200FEEB6AABBCCDDEEFF000809;");
  // It was complete; the receiver missed a packet all the same.
  for (const char* line : {"can0 18EC1020#110102FFFFEBFE00", kSecondToOne, kDone}) {
    EXPECT_EQ(ReadShort(reader, line), "part");
  }
  EXPECT_EQ(reader.Finish(), "");
}

TEST(J1939Reader, AHeldHandshakeGoesOn) {
  Check({{kRequest, "part"},
         {"can0 18EC1020#1100FFFFFFEBFE00", "part"},
         {kClear, "part"},
         {kFirstToOne, "part"}},
        "line 4, column 1: log ends before the message is complete");
}

TEST(J1939Reader, TellsPacketsThatDoNotFit) {
  const std::string missing = "part; column 1: a packet before this one is missing";
  const std::string again = "part; column 1: packet came again or too late";
  const std::string none = "part; column 1: packet has a number that was not announced";
  const std::string shorter = "part; column 1: packet has fewer bytes than the message needs of it";
  Check({{kBam, "part"}, {kSecond, missing}, {kFirst, "part"}});
  Check({{kBam, "part"}, {kFirst, "part"}, {kFirst, again}, {kSecond, "part"}});
  Check({{kBam, "part"}, {"can0 18EBFF00#0001020304050607", none}});
  Check({{kBam, "part"}, {"can0 18EBFF00#0301020304050607", none}});
  Check({{kBam, "part"}, {"can0 18EBFF00#", none}});
  Check({{kBam, "part"}, {"can0 18EBFF00#01010203040506", shorter}});
  Check({{kBam, "part"}, {kFirst, "part"}, {"can0 18EBFF00#0208", shorter}});
  Check({{kBam, "part"}, {kFirst, "part"}, {"can0 18EBFF00#020809", kWhole}});
}

TEST(J1939Reader, TellsMessagesThatBreakOff) {
  Check({{kBam, "part"},
         {kBam, "part; column 1: message is announced while one is not complete"},
         {kFirst, "part"},
         {kSecond, kWhole}});
  Check({{kRequest, "part"},
         {"can0 18EC1020#FF01FFFFFFEBFE00", "part; column 1: message is aborted"}});
  Check({{kRequest, "part"},
         {"can0 18EC2010#FF01FFFFFFEBFE00", "part; column 1: message is aborted"}});
  Check({{kRequest, "part"}, {"can0 18EC2010#FF01FFFFFFEAFE00", "part"}},
        "line 1, column 1: log ends before the message is complete");
  Check({{kRequest, "part"},
         {kDone, "part; column 1: message is acknowledged, but packets are missing"}});
  Check({{kRequest, "part"},
         {"can0 18EC1020#110102FFFFEBFE00",
          "part; column 1: packets before those that are asked for are missing"}});
  Check({{kRequest, "part"},
         {"can0 18EC1020#110103FFFFEBFE00",
          "part; column 1: packets are asked for that were not announced"}});
  Check({{kRequest, "part"},
         {"can0 18EC1020#110100FFFFEBFE00",
          "part; column 1: packets are asked for that were not announced"}});
}

TEST(J1939Reader, RefusesAnnouncementsThatDoNotAgree) {
  const std::string sizes =
      "part; column 1: announced message has fewer than 9 or more than 1785 bytes";
  const std::string packets = "part; column 1: announced numbers of bytes and packets do not fit";
  const std::string group = "part; column 1: announced parameter group is none";
  Check(
      {{"can0 18ECFF00#20080002FFEBFE00", sizes},
       {"can0 18ECFF00#20FA06FFFFEBFE00", sizes},
       {"can0 18ECFF00#20090003FFEBFE00", packets},
       {"can0 18ECFF00#20090001FFEBFE00", packets},
       {"can0 18ECFF00#20090002FFEBFE04", group},
       {"can0 18ECFF00#20090002FF01EF00", group},
       {"can0 18EC2000#20090002FFEBFE00",
        "part; column 1: broadcast is announced to one address only"},
       {"can0 18ECFF00#10090002FFEBFE00", "part; column 1: request to send goes to all addresses"},
       {"can0 18ECFF00#20090002FFEBFE",
        "part; column 1: frame of the transport protocol has fewer than 8 bytes"},
       {"can0 18ECFF00#21090002FFEBFE00", "part"},
       {kFirst, "part"}});
}

TEST(J1939Reader, TimesOutByTheTimeStampsOfTheLog) {
  const std::string late = "part; column 1: message was not continued in time";
  const auto at = [](const char* time, const char* line) {
    return "(" + std::string(time) + ") " + line;
  };
  Check({{at("1436509052.100000", kBam), "part"},
         {at("1436509052.850000", kFirst), "part"},
         {at("1436509053.600001", kSecond), late}});
  Check({{at("1436509052.100000", kRequest), "part"},
         {at("1436509053.350000", kClear), "part"},
         {at("1436509054.600000", kFirstToOne), "part"},
         {at("1436509055.850001", kSecondToOne), late}});
  Check({{at("10", kRequest), "part"}, {at("11.250001", kClear), late}});
  Check({{at("10", kBam), "part"}, {at("20", kBam), late}, {at("20", kFirst), "part"}},
        "line 3, column 1: log ends before the message is complete");
  // A clock that was set back makes nobody late.
  Check({{at("10", kBam), "part"},
         {at("9", kFirst), "part"},
         {at("9.5", kSecond), "data 9.500000" + std::string(kWhole).substr(4)}});
}

TEST(J1939Reader, CarriesMessagesOfEverySizeAllowed) {
  for (std::size_t size = CJ1939Assembler::kMinBytes; size <= CJ1939Assembler::kMaxBytes; ++size) {
    CTestReader reader(LogFormat::J1939);
    const std::size_t packets = (size + 6) / 7;
    char announcement[64];
    std::snprintf(announcement, sizeof(announcement), "can0 18ECFF00#20%02X%02X%02XFFEBFE00",
                  static_cast<unsigned int>(size & 0xFF), static_cast<unsigned int>(size >> 8),
                  static_cast<unsigned int>(packets));
    reader.Take(announcement);
    for (std::size_t packet = 1; packet <= packets; ++packet) {
      char number[3];
      std::snprintf(number, sizeof(number), "%02X", static_cast<unsigned int>(packet));
      EXPECT_FALSE(
          reader.Take("can0 18EBFF00#" + std::string(number) + Bytes(7, number)).hasProblem);
    }
    ASSERT_EQ(reader.record.bus.data.size(), size);
    ASSERT_EQ(reader.record.bus.message.size(), 12 + 2 * size);
    ASSERT_EQ(reader.record.bus.data.back(), packets);
  }
}

TEST(J1939Reader, GivesTheOldestUpWhenThereAreTooMany) {
  CTestReader reader(LogFormat::J1939);
  const auto announce = [&](std::size_t index) {
    char line[64];
    std::snprintf(line, sizeof(line), "can%u 18ECFF%02X#20090002FFEBFE00",
                  static_cast<unsigned int>(index / 256), static_cast<unsigned int>(index % 256));
    return ReadShort(reader, line);
  };
  for (std::size_t i = 0; i < CJ1939Assembler::kMaxSessions; ++i) {
    ASSERT_EQ(announce(i), "part");
  }
  // The first is continued, so that the second has waited longest.
  EXPECT_EQ(ReadShort(reader, kFirst), "part");
  EXPECT_EQ(announce(CJ1939Assembler::kMaxSessions),
            "part; column 1: too many messages at a time: the oldest is given up");
  EXPECT_EQ(ReadShort(reader, kSecond), kWhole);
  EXPECT_EQ(ReadShort(reader, "can0 18EBFF01#0101020304050607"), "part");
  std::size_t left = 0;
  const std::string atEnd = reader.Finish();
  for (std::size_t place = 0; (place = atEnd.find("line ", place)) != atEnd.npos; ++place) {
    ++left;
  }
  EXPECT_EQ(left, CJ1939Assembler::kMaxSessions - 1);
}
