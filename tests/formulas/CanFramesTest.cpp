#include <gtest/gtest.h>

#include <limits>

#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A J1939 message: 11 header characters, the data, one more.
std::string Message(const std::string& data) { return "?FF??18FEF?" + data + "."; }

struct FieldCase {
  std::string text;
  double typeCode;
  double start;
  double expected;
};

const std::string kStandard = "12383412000000000000";

TEST(CanFrames, CanValReadsItsField) {
  const FieldCase cases[] = {
      {"1238"
       "3412000000000000",
       7, 0, 4660},
      {kStandard, 7, 0, 4660},
      {kStandard, -7, 0, 13330},
      {kStandard, 2, 1, 18},
      {kStandard, 7.99, 0.99, 4660},
      {kStandard, 7, -0.99, 4660},
      {"12380102030405060708", 3, 0, 67305985},
      {"12380102030405060708", -3, 0, 16909060},
      {"12380102030405060708", -3, 4, 84281096},
      {"12380102030405060708", 1, 7, 8},
      {"1238FFFFFFFFFFFFFFFF", 1, 7, -1},
      {"1238FFFFFFFFFFFFFFFF", 6, 7, 255},
      {"1238FFFFFFFFFFFFFFFF", 2, 6, -1},
      {"1238FFFFFFFFFFFFFFFF", 3, 4, -1},
      {"1238ffffffffffffffff", 8, 4, 4294967295.0},
      {"12340000803F", 4, 0, 1.0},
      {"12343F800000", -4, 0, 1.0},
      {"1238000000000000F83F", 5, 0, 1.5},
      {"12383FF8000000000000", -5, 0, 1.5},
      // Identifiers: 3 digits below 8, 8 digits from 8 on, and 3 for what is no digit.
      {"18F23412", 7, 0, 4660},
      {"98FEF10023412", 7, 0, 4660},
      {"8000000023412", 7, 0, 4660},
      {"fEDCBA9823412", 7, 0, 4660},
      {"7FF23412", 7, 0, 4660},
      {"xyz23412", 7, 0, 4660},
      {"\xE4\xF6\xFC"
       "23412",
       7, 0, 4660},
      {" 9AB23412", 7, 0, 4660},  // The blank is the first character.
      // Runs end at blanks.
      {"123 8 34 12 00 00 00 00 00 00", 7, 0, 4660},
      {"1 2 3 4 5 6", 2, 0, 1027},  // Identifier 1, data length 2, data 3 and 4.
      {"12 2\t34\n12", 7, 0, 4660},
      {"98FEF100 2 34 12", 7, 0, 4660},
      // Data runs that are not hexadecimal all through.
      {"1232ZZ12", 7, 0, 4608},
      {"12321G-F", 7, 0, 61697},
      {"1232+1-2", 7, 0, 65025},
      {"12320xx0", 7, 0, 0},
      {"1232\xFF\xFE"
       "12",
       7, 0, 4608},
      {Record("1232\0\00012"), 7, 0, 4608},
      // A data length code above 8 reads 8 bytes.
      {"123F0102030405060708", 6, 7, 8},
      {"123801020304050607F", 6, 7, 15},  // The last byte has one digit only.
      {"123901020304050607080A", 5, 0, 5.447603722011605e-270},
  };
  for (const FieldCase& row : cases) {
    for (const bool lenient : {false, true}) {
      EXPECT_EQ(Evaluate(&CLumType::CanVal, row.text, row.typeCode, row.start, lenient),
                Gives(row.expected))
          << row.text << " type " << row.typeCode << " from " << row.start;
    }
  }
}

TEST(CanFrames, CanValFailsOnMissingDataUnknownTypesAndFieldsOutside) {
  const FieldCase cases[] = {
      {"12323412", 3, 0, 0},
      {"12323412", 7, 1, 0},
      {"12323412", 1, 2, 0},
      {"123801020304050607", 7, 0, 0},
      {"1238", 1, 0, 0},
      {"123701020304050607", 5, 0, 0},
      {"12380102030405060708", 5, 1, 0},
      {"123F0102030405060708", 5, 1, 0},
      {"123F0102030405060708", 1, 8, 0},
      {"123F0102030405060708", 3, 5, 0},
      {"12380102030405060708", 1, -1, 0},
      {"12380102030405060708", 5, -1, 0},
      {"12380102030405060708", 0, 0, 0},
      {"12380102030405060708", 9, 0, 0},
      {"12380102030405060708", 10, 0, 0},
      {"12380102030405060708", 11, 0, 0},
      {"12380102030405060708", 12, 0, 0},
      {"12380102030405060708", -12, 0, 0},
      {"12380102030405060708", 13, 0, 0},
      {"12380102030405060708", kNaN, 0, 0},
      {"12380102030405060708", kInfinity, 0, 0},
      {"12380102030405060708", 7, kNaN, 0},
      {"12380102030405060708", 7, kInfinity, 0},
      {"12380102030405060708", 7, -kInfinity, 0},
      {"12380102030405060708", 7, 1e300, 0},
      {"12380102030405060708", 7, 4294967296.0, 0},
      {"1230", 1, 0, 0},
      {"123G0102", 1, 0, 0},
      {"123-0102", 1, 0, 0},
      {"1231-1", 1, 0, 0},  // "-1" reads like nothing.
      {"123", 1, 0, 0},
      {"", 1, 0, 0},
      {"   ", 1, 0, 0},
  };
  for (const FieldCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::CanVal, row.text, row.typeCode, row.start, false), kKept)
        << row.text << " type " << row.typeCode << " from " << row.start;
    EXPECT_EQ(Evaluate(&CLumType::CanVal, row.text, row.typeCode, row.start, true), kLenientZero)
        << row.text << " type " << row.typeCode << " from " << row.start;
  }
}

TEST(CanFrames, J1939ValReadsItsField) {
  const FieldCase cases[] = {
      {Message("3412000000000000"), 7, 0, 4660},
      {Message("3412000000000000"), -7, 0, 13330},
      {Message("FFFFFFFFFFFFFFFF"), 12, 0, -1},
      {Message("0102030405060708"), 12, 0, 578437695752307201.0},
      {Message("0102030405060708"), -12, 0, 72623859790382856.0},
      {Message("000000000000008000"), 12, 0, -9223372036854775808.0},
      {Message("AA0102030405060708"), 12, 1, 578437695752307201.0},
      {Message("000000000000F83F"), 5, 0, 1.5},
      {Message("AABB000000000000F83F"), 5, 2, 1.5},
      {Message("3FF8000000000000AA"), -5, 0, 1.5},
      {Message("0000803F"), 4, 0, 1.0},
      {Message("AA"), 6, 0, 170},
      {Message("AA"), 1, 0, -86},
      {Message("FFFFFFFF"), 8, 0, 4294967295.0},
      {Message("000102030405060708090A0B0C0D0E0F"), 6, 15, 15},
      // 28 characters have 8 data bytes, 27 have 7.
      {"12345678901"
       "0102030405060708"
       "x",
       6, 7, 8},
      {"12345678901"
       "0102030405060708",
       6, 6, 7},
      // Runs end at blanks: the header takes fewer characters, the data stands elsewhere.
      {"1 2 3 4 5 AB CD", 6, 0, 171},
      {"1 2 3 4 5 AB C D", 7, 0, 3243},
      {"?FF??18FEF?ZZ1G.", 7, 0, 256},
  };
  for (const FieldCase& row : cases) {
    for (const bool lenient : {false, true}) {
      EXPECT_EQ(Evaluate(&CLumType::J1939Val, row.text, row.typeCode, row.start, lenient),
                Gives(row.expected))
          << row.text << " type " << row.typeCode << " from " << row.start;
    }
  }
}

TEST(CanFrames, J1939ValFailsOnMissingDataUnknownTypesAndFieldsOutside) {
  const std::string sevenBytes =
      "12345678901"
      "0102030405060708";
  const FieldCase cases[] = {
      {sevenBytes, 6, 7, 0},
      {sevenBytes, 5, 0, 0},
      {sevenBytes, 12, 0, 0},
      {Message("0102030405060708"), 12, 1, 0},
      {Message("0102030405060708"), 5, 1, 0},
      {Message("0102030405060708"), 5, -1, 0},
      {Message("0102030405060708"), 3, 5, 0},
      {Message("0102030405060708"), 6, 8, 0},
      {Message("0102030405060708"), 6, -1, 0},
      {Message("0102030405060708"), 0, 0, 0},
      {Message("0102030405060708"), 9, 0, 0},
      {Message("0102030405060708"), 10, 0, 0},
      {Message("0102030405060708"), 11, 0, 0},
      {Message("0102030405060708"), 13, 0, 0},
      {Message("0102030405060708"), kNaN, 0, 0},
      {Message("0102030405060708"), 6, kNaN, 0},
      {Message("0102030405060708"), 6, kInfinity, 0},
      {"1234567890123", 6, 0, 0},  // 13 characters have no data.
      {"123456789012", 6, 0, 0},
      {"12345678901", 6, 0, 0},
      {"", 6, 0, 0},
      {"1 2 3 4 5 6 7 8 9 10 11 12  ", 6, 0, 0},  // Its length promises 8 bytes; 7 runs are left.
      {Message("01    030405060708"), 6, 0, 0},
  };
  for (const FieldCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::J1939Val, row.text, row.typeCode, row.start, false), kKept)
        << row.text << " type " << row.typeCode << " from " << row.start;
    EXPECT_EQ(Evaluate(&CLumType::J1939Val, row.text, row.typeCode, row.start, true), kLenientZero)
        << row.text << " type " << row.typeCode << " from " << row.start;
  }
}

struct BitFieldCase {
  std::string data;
  double typeCode;
  double start;
  double length;
  double expected;
};

TEST(CanFrames, J1939BitsValReadsItsBits) {
  const BitFieldCase cases[] = {
      {"ABCD", 7, 4, 12, 3290},
      {"ABCD", 2, 4, 12, -806},
      {"ABCD", 1, 4, 12, 218},
      {"ABCD", 6, 4, 12, 218},
      {"ABCD", 3, 4, 12, -806},
      {"ABCD", 8, 4, 12, 3290},
      {"ABCD", 7.9, 4.9, 12.9, 3290},
      {"ABCD", 7, -0.9, 16, 52651},
      {"FFFFFFFF", 8, 0, 32, -1},
      {"FFFFFFFF", 3, 0, 32, -1},
      {"FFFFFFFF", 3, 0, 31, -1},
      {"FFFFFF7F", 3, 0, 32, 2147483647},
      {"FFFFFF7F", 8, 0, 33, 2147483647},
      {"0F", 1, 0, 4, 255},  // The sign is extended to 0xFF, which is then taken unsigned.
      {"07", 1, 0, 4, 7},
      {"0F", 2, 0, 4, -1},
      {"0F", 6, 0, 4, 15},
      {"01", 2, 0, 1, -1},
      {"01", 7, 0, 1, 1},
      {"02", 7, 1, 1, 1},
      {"80", 7, 7, 1, 1},
      {"8001", 7, 7, 2, 3},
      {"0000803F", 4, 0, 32, 1.0},
      {"000000803F", 4, 8, 32, 1.0},
      {"000000000000F83F", 5, 0, 63, 1.5},
      {"FFFFFFFFFFFFFFFF", 7, 63, 1, 1},
      {"FFFFFFFFFFFFFFFF", 3, 1, 63, -1},
      {"FFFFFFFFFFFFFFFF", 7, 0, 63, 65535},
      // A field ends with the data, and with the 8th byte from its first: zeros follow.
      {"FF", 7, 4, 8, 15},
      {"FF", 2, 4, 8, 15},
      {"00000000000000FFFF", 7, 63, 2, 3},
      {"0000000000000080FF", 7, 7, 58, 0},
  };
  for (const BitFieldCase& row : cases) {
    for (const bool lenient : {false, true}) {
      EXPECT_EQ(Evaluate(&CLumType::J1939BitsVal, Message(row.data), row.typeCode, row.start,
                         row.length, lenient),
                Gives(row.expected))
          << row.data << " type " << row.typeCode << " bits " << row.start << " + " << row.length;
    }
  }
}

TEST(CanFrames, J1939BitsValGivesNoValueForNoBitsEvenWhenLenient) {
  const BitFieldCase cases[] = {
      {"ABCD", 7, 16, 4, 0},  {"ABCD", 7, 1000, 4, 0}, {"ABCD", 7, 1e300, 4, 0},
      {"ABCD", 7, 0, 0, 0},   {"ABCD", 7, 0, 0.9, 0},  {"ABCD", 7, 0, -0.9, 0},
      {"ABCD", 7, -1, 4, 0},  {"ABCD", 7, -8, 4, 0},   {"ABCD", 7, -1e300, 4, 0},
      {"ABCD", 99, 16, 4, 0}, {"ABCD", 99, 0, 0, 0},   {"ABCD", 7, 16, -1, 0},
      {"ABCD", 7, 16, 64, 0},
  };
  for (const BitFieldCase& row : cases) {
    for (const bool lenient : {false, true}) {
      EXPECT_EQ(Evaluate(&CLumType::J1939BitsVal, Message(row.data), row.typeCode, row.start,
                         row.length, lenient),
                kKept)
          << row.data << " type " << row.typeCode << " bits " << row.start << " + " << row.length;
    }
  }
}

TEST(CanFrames, J1939BitsValFailsOnMissingDataLengthsAndTypes) {
  const BitFieldCase cases[] = {
      {"", 7, 0, 4, 0},
      {"AB      ", 7, 0, 4, 0},
      {"ABCD", 7, 0, 64, 0},
      {"ABCD", 7, 0, 1e300, 0},
      {"ABCD", 7, 0, -1, 0},
      {"ABCD", 0, 0, 4, 0},
      {"ABCD", -7, 0, 4, 0},
      {"ABCD", -1, 0, 4, 0},
      {"ABCD", 9, 0, 4, 0},
      {"ABCD", 10, 0, 4, 0},
      {"ABCD", 11, 0, 4, 0},
      {"ABCD", 12, 0, 4, 0},
      {"ABCD", kNaN, 0, 4, 0},
      {"ABCD", 7, kNaN, 4, 0},
      {"ABCD", 7, 0, kNaN, 0},
      {"ABCD", 7, 0, kInfinity, 0},
      {"ABCD", 7, kInfinity, 4, 0},
      {"ABCD", kInfinity, 0, 4, 0},
      {"", 7, 0, 0, 0},  // Missing data comes before the length.
  };
  for (const BitFieldCase& row : cases) {
    const std::string text = Message(row.data);
    EXPECT_EQ(Evaluate(&CLumType::J1939BitsVal, text, row.typeCode, row.start, row.length, false),
              kKept)
        << row.data << " type " << row.typeCode << " bits " << row.start << " + " << row.length;
    EXPECT_EQ(Evaluate(&CLumType::J1939BitsVal, text, row.typeCode, row.start, row.length, true),
              kLenientZero)
        << row.data << " type " << row.typeCode << " bits " << row.start << " + " << row.length;
  }
}

}  // namespace
