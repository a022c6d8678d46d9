// Tests of DetectLogFormat.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "decoding/LogReader.h"

using lum::decoding::DetectLogFormat;
using lum::decoding::LogFormat;

namespace {

struct DetectionCase {
  std::vector<std::string> lines;
  LogFormat format;
};

const char* const kFrame = "(1.5) can0 123#1122";
const char* const kColumns = "  can0  123   [2]  11 22";
const char* const kSentence = "$GPHDT,1*52";

}  // namespace

TEST(FormatDetection, MostLinesWin) {
  const DetectionCase rows[] = {
      {{}, LogFormat::Plain},
      {{"", "# text"}, LogFormat::Plain},
      {{"a log"}, LogFormat::Plain},
      {{"$5"}, LogFormat::Plain},
      {{kFrame}, LogFormat::Candump},
      {{kColumns}, LogFormat::Candump},
      {{"can0 123#R", "can0 123##0"}, LogFormat::Candump},
      {{kSentence}, LogFormat::Nmea},
      {{"$GPHDT,1"}, LogFormat::Nmea},
      {{"(1.5) $GPHDT,1*52"}, LogFormat::Nmea},
      {{"time,depth", "1,2"}, LogFormat::Csv},
      {{"some words", "here", kFrame}, LogFormat::Plain},
      {{"a word", kFrame, "can0 123#1", kFrame}, LogFormat::Candump},
      {{"", "# text", "#", kFrame}, LogFormat::Candump},
      {{"a,b", kSentence, kSentence}, LogFormat::Nmea},
      {{"one", "a,b"}, LogFormat::Csv},
      {{"a,b", kSentence}, LogFormat::Nmea},
      {{"18FEF100#00"}, LogFormat::Plain},
      {{"\"a,b"}, LogFormat::Plain},
  };
  for (const DetectionCase& row : rows) {
    EXPECT_EQ(DetectLogFormat(row.lines), row.format) << (row.lines.empty() ? "" : row.lines[0]);
  }
}
