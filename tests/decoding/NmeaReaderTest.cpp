// Tests of decoding/NmeaReader.h: sentences, what may stand in front of them, and what is wrong.
#include "decoding/NmeaReader.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "decoding/FormulaInputs.h"
#include "tests/decoding/ReaderTesting.h"

using lum::decoding::CFormulaInputs;
using lum::decoding::kMaxSentence;
using lum::decoding::LogFormat;
using lum::test::CheckReader;
using lum::test::CTestReader;
using lum::test::ReaderCase;

namespace {

/// "*hh" for the text.
std::string Sum(const std::string& body) {
  unsigned int sum = 0;
  for (const char c : body) {
    sum ^= static_cast<unsigned char>(c);
  }
  char text[8];
  std::snprintf(text, sizeof(text), "*%02X", sum);
  return text;
}

std::string Sentence(const std::string& body) { return "$" + body + Sum(body); }

}  // namespace

TEST(NmeaReader, ReadsSentences) {
  const ReaderCase rows[] = {
      {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47",
       "data GPGGA [GPGGA|123519|4807.038|N|01131.000|E|1|08|0.9|545.4|M|46.9|M||]"},
      {"!AIVDM,1,1,,B,177KQJ5000G?tO`K>RA1wUbN0TKH,0*5C",
       "data AIVDM [AIVDM|1|1||B|177KQJ5000G?tO`K>RA1wUbN0TKH|0]"},
      {"$GPHDT,1*52", "data GPHDT [GPHDT|1]"},
      {"  $GPHDT,1*52", "data GPHDT [GPHDT|1]"},
      {"(1436509052.249713) $GPHDT,1*52", "data 1436509052.249713 GPHDT [GPHDT|1]"},
      {"2015-07-10T06:17:32.5Z $GPHDT,1*52", "data 1436509052.500000 GPHDT [GPHDT|1]"},
      {"2015-07-10 06:17:32\t$GPHDT,1*52", "data 1436509052.000000 GPHDT [GPHDT|1]"},
      {"\\s:r3,c:1241544035*78\\$GPHDT,1*52", "data GPHDT [GPHDT|1]"},
      {"\\s:r3,c:1241544035*78\\\\s:r3,c:1241544035*78\\$GPHDT,1*52", "data GPHDT [GPHDT|1]"},
      {"", "remark"},
      {"# a log", "remark"},
  };
  CheckReader(LogFormat::Nmea, rows);
}

TEST(NmeaReader, SaysWhereALineIsWrong) {
  const ReaderCase rows[] = {
      {"$GPHDT,1*1E", "column 10: checksum is wrong"},
      {"$GPHDT,2*52", "column 10: checksum is wrong"},
      {"$GPHDT,1*1", "column 10: checksum is not two hexadecimal digits at the end"},
      {"$GPHDT,1*1G", "column 10: checksum is not two hexadecimal digits at the end"},
      {"$GPHDT,1*G1", "column 10: checksum is not two hexadecimal digits at the end"},
      {"$GP\x7F,1*52", "column 4: character that no sentence may have"},
      {"$GPHDT,1*", "column 10: checksum is not two hexadecimal digits at the end"},
      {"$GPHDT,1*52 ", "column 10: checksum is not two hexadecimal digits at the end"},
      {"$GPHDT,1", "column 9: checksum is missing"},
      {"$", "column 2: checksum is missing"},
      {"$*00", "column 2: sentence has no address"},
      {"$GP\x01,1*00", "column 4: character that no sentence may have"},
      {"$GP\xE9,1*00", "column 4: character that no sentence may have"},
      {"GPHDT,1*52", "column 1: sentence begins with neither $ nor !"},
      {"12:00 $GPHDT,1*52", "column 1: neither a time stamp nor a sentence"},
      {"(1.5)$GPHDT,1*52", "column 1: neither a time stamp nor a sentence"},
      {"(1.5) ", "column 7: sentence begins with neither $ nor !"},
      {"\\s:r3*00\\$GPHDT,1*52", "column 7: checksum is wrong"},
      {"\\s:r3\\$GPHDT,1*52", "column 6: tag block has no checksum"},
      {"\\s:r3*08$GPHDT,1*52", "column 1: tag block has no end"},
  };
  CheckReader(LogFormat::Nmea, rows);
}

TEST(NmeaReader, GoesWithoutAChecksumWhereThatIsAllowed) {
  const ReaderCase rows[] = {
      {"$GPHDT,1", "data GPHDT [GPHDT|1]"},
      {"$GPHDT,1*52", "data GPHDT [GPHDT|1]"},
      {"$GPHDT,1*1E", "column 10: checksum is wrong"},
      {"$GPHDT,1*", "column 10: checksum is not two hexadecimal digits at the end"},
      {"$GPHDT,1$GPHDT,2", "column 9: a sentence begins within another"},
      {"$GPHDT,1!AIVDM,2", "column 9: a sentence begins within another"},
  };
  CheckReader(LogFormat::Nmea, rows, {.allowMissingChecksum = true});
}

TEST(NmeaReader, TakesSentencesUpToTheLimit) {
  CTestReader reader(LogFormat::Nmea);
  const std::string longest = Sentence("GPTXT," + std::string(kMaxSentence - 10, 'x'));
  ASSERT_EQ(longest.size(), kMaxSentence);
  EXPECT_TRUE(reader.Take("(1.5) " + longest).hasRecord);
  EXPECT_EQ(reader.Read(Sentence("GPTXT," + std::string(kMaxSentence - 9, 'x'))),
            "column 1025: sentence is longer than 1024 characters");
}

TEST(NmeaReader, TakesFieldsUpToTheLimit) {
  CTestReader reader(LogFormat::Nmea);
  const std::string most = "GPTXT" + std::string(CFormulaInputs::kMaxFields - 1, ',');
  EXPECT_TRUE(reader.Take(Sentence(most)).hasRecord);
  EXPECT_EQ(reader.record.fields.size(), CFormulaInputs::kMaxFields);
  EXPECT_EQ(reader.Read(Sentence(most + ",")), "column 263: more than 256 fields");
}

TEST(NmeaReader, RefusesALineThatWasCut) {
  CTestReader reader(LogFormat::Nmea);
  EXPECT_EQ(reader.ReadTooLong("$GPHDT,1*52"), "column 12: line is longer than 65536 bytes");
}
