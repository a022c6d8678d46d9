// Records like those before are decoded without an allocation.
#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "decoding/ColumnStatistics.h"
#include "decoding/Decoder.h"
#include "tests/Allocations.h"
#include "tests/decoding/ProfileTesting.h"
#include "tests/decoding/Records.h"

namespace lum::decoding {
namespace {

std::size_t DecodeAll(CDecoder& decoder, const LogRecord& record, CColumnStatistics& statistics) {
  std::size_t rows = 0;
  for (const std::size_t message : decoder.Match(record)) {
    for (const Cell& cell : decoder.Decode(record, message).cells) {
      statistics.Add(cell);
    }
    ++rows;
  }
  return rows;
}

TEST(DecoderMemory, StaysAsItIsForRecordsOfTheSameKind) {
  const Profile profile = GoodProfile(
      "[Message A]\nMatch.Id=0CF00400\nMatch.Channel=can?\n"
      "X.Raw=J1939Val(message, 7, 3)\nX.Formula=raw * 0.125\nX.Sentinels=J1939\nX.Range=0..9000\n"
      "Y.Formula=CanVal(frame, 6, 0) + 1\n"
      "[Message B]\nMatch.Line=*a line*\nMatch.FieldCount=2\nX.Formula=field(0) + field(1)\n"
      "[Message C]\nX.Formula=CanVal(frame, 6, 7)\n");
  CDecoder decoder(profile);
  const std::array<std::string_view, 2> fields = {"17.5", "2"};
  std::array<LogRecord, 3> records = {BusRecord(0x0CF00400, true), BusRecord(0x0CF00401, true),
                                      LogRecord()};
  for (LogRecord& record : records) {
    record.bus.frame = "8CF0040087D87681300F000FF";
    record.bus.message = ">00FF0F0043F07D87681300F000FF;";
    record.line = "this is a line of some length, more than a short text has";
    record.fields = fields;
  }
  CColumnStatistics statistics;
  for (const LogRecord& record : records) {
    DecodeAll(decoder, record, statistics);
  }
  std::size_t rows = 0;
  const int before = CountedAllocations();
  for (int i = 0; i < 1000; ++i) {
    rows += DecodeAll(decoder, records[static_cast<std::size_t>(i) % 3], statistics);
  }
  EXPECT_EQ(CountedAllocations() - before, 0);
  EXPECT_EQ(rows, 334u * 3 + 333u * 2 + 333u * 2);
}

}  // namespace
}  // namespace lum::decoding
