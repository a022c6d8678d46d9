#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/formulas/Evaluate.h"

namespace {

using namespace lum::test;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct RecordCase {
  std::string record;
  double typeCode;
  double expected;
};

TEST(BinaryFields, BinValReadsEveryTypeInBothByteOrders) {
  const RecordCase cases[] = {
      {Record("\x34\x12"), 7, 4660},
      {Record("\x34\x12"), -7, 13330},
      {Record("\xFF\xFF"), 2, -1},
      {Record("\xFF\xFF"), 7, 65535},
      {Record("\x00\x80"), 2, -32768},
      {Record("\x00\x80"), -2, 128},
      {Record("\x80"), 1, -128},
      {Record("\x80"), -1, -128},
      {Record("\x80"), 6, 128},
      {Record("\x80"), -6, 128},
      {Record("\x7F"), 1, 127},
      {Record("\x01\x02\x03\x04"), 3, 67305985},
      {Record("\x01\x02\x03\x04"), -3, 16909060},
      {Record("\x00\x00\x00\x80"), 3, -2147483648.0},
      {Record("\x00\x00\x00\x80"), 8, 2147483648.0},
      {Record("\x00\x00\x00\x80"), -8, 128},
      {Record("\xFF\xFF\xFF\xFF"), 8, 4294967295.0},
      {Record("\x00\x00\x80\x3F"), 4, 1.0},
      {Record("\x3F\x80\x00\x00"), -4, 1.0},
      {Record("\xCD\xCC\x4C\x3E"), 4, static_cast<double>(0.2F)},
      {Record("\x00\x00\x80\x7F"), 4, kInfinity},
      {Record("\x01\x00\x00\x00"), 4, 0x1p-149},
      {Record("\x00\x00\x00\x00\x00\x00\xF8\x3F"), 5, 1.5},
      {Record("\x3F\xF8\x00\x00\x00\x00\x00\x00"), -5, 1.5},
      {Record("\x00\x00\x00\x00\x00\x00\x00\x80"), 5, -0.0},
      {"1A2B", 10, 6699},
      {"1A2B", -10, 11034},
      {"1a2b3c4d", 9, 439041101},
      {"1A2B3C4D", -9, 1295788826},
      {"3F800000", 11, 1.0},
      {"0000803F", -11, 1.0},
      {"  0x12", 9, 18},
      {"12 34", 9, 18},
      {"12G4", 9, 18},
      {"-1", 9, 4294967295.0},
      {"-1", 10, 65535},
      {"+FF", 10, 255},
      {"12345", 10, 9029},
      {"FFFFFFFFFFFFFFFFF", 9, 4294967295.0},
      {"0x", 9, 0},
      {Record("12\0345"), 9, 18},
  };
  for (const RecordCase& row : cases) {
    for (const bool lenient : {false, true}) {
      EXPECT_EQ(Evaluate(&CLumType::BinVal, row.record, row.typeCode, lenient), Gives(row.expected))
          << row.record << " as " << row.typeCode;
    }
  }
}

TEST(BinaryFields, BinValIgnoresTheFractionOfTheCodeAndBytesBehindTheField) {
  EXPECT_EQ(Evaluate(&CLumType::BinVal, Record("\x34\x12\x99"), 7.9, false), Gives(4660));
  EXPECT_EQ(Evaluate(&CLumType::BinVal, Record("\x34\x12\x99"), -7.9, false), Gives(13330));
}

TEST(BinaryFields, BinValKeepsTheResultWhenItFails) {
  const RecordCase cases[] = {
      {Record("\x01\x02\x03"), 3, 0},
      {Record("\x01\x02\x03"), -4, 0},
      {Record("\x01\x02\x03\x04\x05\x06\x07"), 5, 0},
      {Record("\x01\x02\x03"), 8, 0},
      {Record("\x01"), 2, 0},
      {Record("\x01"), 7, 0},
      {"", 1, 0},
      {"", 6, 0},
      {"", 9, 0},
      {"GH", 9, 0},
      {"-", 10, 0},
      {"  ", 11, 0},
      {Record("\x00\x31"), 9, 0},
      {"12345678", 0, 0},
      {"12345678", -0.5, 0},
      {"12345678", 0.99, 0},
      {"12345678", 12, 0},
      {"12345678", -12, 0},
      {"12345678", 13, 0},
      {"12345678", kNaN, 0},
      {"12345678", kInfinity, 0},
      {"12345678", -kInfinity, 0},
      {"12345678", 1e300, 0},
      {"12345678", 4294967303.0, 0},
  };
  for (const RecordCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::BinVal, row.record, row.typeCode, false), kKept)
        << row.record << " as " << row.typeCode;
    EXPECT_EQ(Evaluate(&CLumType::BinVal, row.record, row.typeCode, true), Gives(kPrevious))
        << row.record << " as " << row.typeCode;
  }
}

TEST(BinaryFields, BinValWidensAnyNotANumber) {
  const Outcome outcome = Evaluate(&CLumType::BinVal, Record("\x01\x00\xA0\xFF"), 4, false);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(std::isnan(outcome.result));
  EXPECT_TRUE(std::signbit(outcome.result));
}

TEST(BinaryFields, EveryByteHasItsPlaceInEveryTypeAndOrder) {
  const std::string record = Record("\x01\x02\x03\x04\x05\x06\x07\x08");
  for (const int type : {2, 3, 7, 8}) {
    const std::size_t size = type == 2 || type == 7 ? 2 : 4;
    double little = 0.0;
    double big = 0.0;
    for (std::size_t i = 0; i < size; ++i) {
      little += static_cast<double>(i + 1) * std::pow(256.0, static_cast<double>(i));
      big = big * 256.0 + static_cast<double>(i + 1);
    }
    EXPECT_EQ(Evaluate(&CLumType::BinVal, record, type, false), Gives(little)) << type;
    EXPECT_EQ(Evaluate(&CLumType::BinVal, record, -type, false), Gives(big)) << type;
  }
}

struct BitCase {
  double value;
  double bit;
  Outcome expected;
};

TEST(BinaryFields, BitValTakesOneBit) {
  const BitCase cases[] = {
      {5, 0, Gives(1)},
      {5, 1, Gives(0)},
      {5, 2, Gives(1)},
      {5, 3, Gives(0)},
      {5.9, 0, Gives(1)},
      {-1, 0, Gives(-1)},
      {-2, 0, Gives(0)},
      {-2, 1, Gives(-1)},
      {-0.5, 0, Gives(0)},
      {0, 0, Gives(0)},
      {6, 1.5, Gives(0)},
      {3, 0.5, Gives(0)},
      {1, -1, Gives(0)},
      {0.5, -1, Gives(1)},
      {2147483647, 0, Gives(1)},
      {2147483647.9, 0, Gives(1)},
      {2147483648.0, 0, kKept},
      {2147483648.0, 31, Gives(1)},
      {4294967295.0, 1, Gives(1)},
      {-2147483648.0, 0, Gives(0)},
      {-2147483648.9, 0, Gives(0)},
      {-2147483649.0, 0, kKept},
      {1e300, 0, kKept},
      {1, -31, kKept},
      {1, -30, Gives(0)},
      {5, 2000, Gives(0)},
      {5, -2000, kKept},
      {kNaN, 0, kKept},
      {5, kNaN, kKept},
      {kInfinity, 0, kKept},
      {-kInfinity, 3, kKept},
      {5, kInfinity, Gives(0)},
      {5, -kInfinity, kKept},
  };
  for (const BitCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::BitVal, row.value, row.bit), row.expected)
        << "bit " << row.bit << " of " << row.value;
  }
}

TEST(BinaryFields, BitValFindsEveryBitOfAWord) {
  for (int bit = 0; bit < 32; ++bit) {
    const double value = 2863311530.0;  // 10101010...
    // The quotient of bit 0 is beyond 32 bits with a sign.
    const Outcome expected = bit == 0 ? kKept : Gives(bit % 2);
    EXPECT_EQ(Evaluate(&CLumType::BitVal, value, bit), expected) << bit;
  }
}

const char* const kResponse = ">0123+00.001+01.234-02.500+3.0e+1+04.000 5.5   6.6\t\t junk!7.7";

struct ChannelCase {
  std::string response;
  double channel;
  Outcome expected;
};

TEST(BinaryFields, AdamValReadsItsChannel) {
  const ChannelCase cases[] = {
      {kResponse, 0, Gives(0.001)},
      {kResponse, 1, Gives(1.234)},
      {kResponse, 2, Gives(-2.5)},
      {kResponse, 3, Gives(30.0)},
      {kResponse, 4, Gives(4.0)},
      {kResponse, 5, Gives(5.5)},
      {kResponse, 6, Gives(6.6)},
      {kResponse, 7, {0, 0.0}},
      {kResponse, 1.99, Gives(1.234)},
      {kResponse, -0.99, Gives(0.001)},
      {kResponse, 8, kKept},
      {kResponse, -1, kKept},
      {kResponse, 4294967296.0, kKept},
      {kResponse, 1e300, kKept},
      {kResponse, kNaN, kKept},
      {kResponse, kInfinity, kKept},
      {kResponse, -kInfinity, kKept},
      {">0123+00.001+01.234", 2, {0, 0.0}},
      {">0123+00.001+01.234", 7, {0, 0.0}},
      {">0123+00.001+01", 1, Gives(1.0)},
      {">0123", 0, {0, 0.0}},
      {"", 0, {0, 0.0}},
      {">0123+00.0015", 0, Gives(0.001)},  // The eighth character belongs to the next channel.
      {">0123  +  5  ", 0, {0, 0.0}},
      {">01231e3", 0, Gives(1000.0)},
      {">0123-inf   ", 0, Gives(-kInfinity)},
      {Record(">01231\0002345"), 0, Gives(1.0)},
  };
  for (const ChannelCase& row : cases) {
    EXPECT_EQ(Evaluate(&CLumType::AdamVal, row.response, row.channel), row.expected)
        << row.response << " channel " << row.channel;
  }
}

}  // namespace
