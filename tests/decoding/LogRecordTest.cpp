// Tests of decoding/LogRecord.h: the names of the formats.
#include "decoding/LogRecord.h"

#include <gtest/gtest.h>

using lum::decoding::FindLogFormat;
using lum::decoding::LogFormat;
using lum::decoding::LogFormatName;

TEST(LogFormats, NamesAndFormatsFindEachOther) {
  for (const LogFormat format :
       {LogFormat::Plain, LogFormat::Candump, LogFormat::J1939, LogFormat::Nmea, LogFormat::Csv}) {
    EXPECT_EQ(FindLogFormat(LogFormatName(format)), format);
  }
  EXPECT_EQ(LogFormatName(LogFormat::J1939), "j1939");
}

TEST(LogFormats, OtherNamesAreNone) {
  for (const char* name : {"", "CSV", "can", "plain "}) {
    EXPECT_EQ(FindLogFormat(name), std::nullopt) << name;
  }
}
