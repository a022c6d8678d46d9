// The scans of 8-bit texts, and those with a width, against the C runtime in the "C" locale. Other
// runtimes than glibc scan some of these texts differently, so only that one is compared with.
#include <gtest/gtest.h>
#include <stdlib.h>

#if defined(__GLIBC__)

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "platform/Framework.h"
#include "tests/RuntimeComparison.h"
#include "tests/TextPrinting.h"
#include "values/NumberScan.h"

namespace lum::detail {
namespace {

using lum::test::ForEachText;
using lum::test::IsSame;

constexpr unsigned int kSeed = 20240229;

// A NUL-terminated text with its unprintable characters escaped.
std::string Quoted(const std::string& text) {
  return ::testing::PrintToString(CStringA(text.c_str()));
}

// Compares one scan with the runtime's. A wrong value in both outputs shows one that is not
// written.
template <typename T>
void ExpectSameScan(const std::string& text, const char* format,
                    bool (*scan)(std::string_view, T&)) {
  T expected = 77;
  T value = 77;
  const bool isExpected = std::sscanf(text.c_str(), format, &expected) == 1;
  const bool isScanned = scan(text, value);
  if (isScanned != isExpected || !IsSame(value, expected)) {
    ADD_FAILURE() << Quoted(text) << " as " << format << ": " << isScanned << ' ' << value
                  << ", the runtime: " << isExpected << ' ' << expected;
  }
}

void ExpectSameHexScans(const std::string& text) {
  ExpectSameScan<unsigned int>(text, "%x", ScanHex);
  ExpectSameScan<unsigned short>(text, "%hx", ScanHex);
}

void ExpectSameDoubleScan(const std::string& text) {
  ExpectSameScan<double>(text, "%lf", ScanDouble);
}

// The runtime's %Nlf for N from 4 to 9.
void ExpectSameDoubleScanOfWidth(const std::string& text, std::size_t width) {
  static const char* const kFormats[] = {"",     "",     "",     "",     "%4lf",
                                         "%5lf", "%6lf", "%7lf", "%8lf", "%9lf"};
  double expected = 77;
  double value = 77;
  const bool isExpected = std::sscanf(text.c_str(), kFormats[width], &expected) == 1;
  const bool isScanned = ScanDouble(text, width, value);
  if (isScanned != isExpected || !IsSame(value, expected)) {
    ADD_FAILURE() << Quoted(text) << " as " << kFormats[width] << ": " << isScanned << ' ' << value
                  << ", the runtime: " << isExpected << ' ' << expected;
  }
}

// A time of day as its three fields.
struct Fields {
  int count = 0;  // How many of them were read.
  int hours = 77;
  int minutes = 77;
  double seconds = 77;
};

Fields FieldsByRuntime(const std::string& text) {
  Fields fields;
  fields.count =
      std::sscanf(text.c_str(), "%2d%2d%5lf", &fields.hours, &fields.minutes, &fields.seconds);
  fields.count = fields.count == EOF ? 0 : fields.count;
  return fields;
}

Fields FieldsByScans(std::string_view text) {
  Fields fields;
  if (TakeInt(text, 2, fields.hours)) {
    ++fields.count;
    if (TakeInt(text, 2, fields.minutes)) {
      ++fields.count;
      fields.count += ScanDouble(text, 5, fields.seconds) ? 1 : 0;
    }
  }
  return fields;
}

void ExpectSameFields(const std::string& text) {
  const Fields expected = FieldsByRuntime(text);
  const Fields fields = FieldsByScans(text);
  if (fields.count != expected.count || fields.hours != expected.hours ||
      fields.minutes != expected.minutes || !IsSame(fields.seconds, expected.seconds)) {
    ADD_FAILURE() << Quoted(text) << ": " << fields.count << " fields " << fields.hours << ' '
                  << fields.minutes << ' ' << fields.seconds << ", the runtime: " << expected.count
                  << " fields " << expected.hours << ' ' << expected.minutes << ' '
                  << expected.seconds;
  }
}

void AddDigits(std::string& text, std::size_t count, std::mt19937_64& random) {
  for (; count > 0; --count) {
    text += static_cast<char>('0' + random() % 10);
  }
}

TEST(NumberScanRuntime, AgreesOnEveryShortTimeText) {
  ForEachText("17 +-.e", 7, ExpectSameFields);
  ForEachText("10 \t+-.eExXpPinfaNI(\x80\xFF", 4, ExpectSameFields);
}

// After the two integers the floating-point field has its five characters to itself.
TEST(NumberScanRuntime, AgreesOnEveryShortLastFieldOfATimeText) {
  const auto check = [](const std::string& text) { ExpectSameFields("1234" + text); };
  ForEachText("10 +-.eExXpP", 5, check);
  ForEachText("1 -.exinfatyINFNATY(\xA0", 4, check);
  for (const char* word :
       {"infinity", "INFIN", " infi", "+inf5", "+infi", "nan(1)", "-nan(", "0x1p5", "0x.1p-5",
        "1e+10", "1e400", "+1e-9", ".12345", "\t\n\v\f\r12345678"}) {
    check(word);
  }
}

TEST(NumberScanRuntime, AgreesOnRandomTimeTexts) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 300000; ++i) {
    std::string text;
    AddDigits(text, 4 + random() % 4, random);
    text += '.';
    AddDigits(text, random() % 4, random);
    text[random() % text.size()] = " +-.e0123456789\xA0"[random() % 16];
    ExpectSameFields(text);
  }
}

TEST(NumberScanRuntime, AgreesOnEveryShortDoubleTextOfAWidth) {
  const auto check = [](const std::string& text) {
    for (const std::size_t width : {4U, 5U, 6U, 7U, 8U, 9U}) {
      ExpectSameDoubleScanOfWidth(text, width);
    }
  };
  ForEachText("10 -.exp", 5, check);
  for (const char* word : {"infinity", "-INFINITY", "nan(abc)", "+NAN(0x1", "0x1.8p-3", "1.25e-007",
                           "  123456789", "000000000001", "1234567890.5", ".000000001"}) {
    check(word);
  }
}

TEST(NumberScanRuntime, AgreesOnEveryShortHexadecimalText) {
  ForEachText(" \t+-0179afAFgxX.\x80", 5, ExpectSameHexScans);
}

TEST(NumberScanRuntime, AgreesOnHexadecimalTextsOfEveryLength) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 200000; ++i) {
    std::string text(random() % 3, ' ');
    text += std::string_view("+-\0", 3).substr(random() % 4, 1);
    text += random() % 4 == 0 ? "0x" : "";
    for (std::size_t length = random() % 24; length > 0; --length) {
      text += "0123456789abcdefABCDEF"[random() % 22];
    }
    ExpectSameHexScans(text.c_str());
  }
}

TEST(NumberScanRuntime, AgreesOnEveryShortDoubleText) {
  ForEachText(" +-.019eExXpPa\xA0", 5, ExpectSameDoubleScan);
  ForEachText(" -.15exXpPinfatyINFATY(", 4, ExpectSameDoubleScan);
}

// Every byte in front of, within and behind a number. Those above 127 are neither blanks nor
// digits.
TEST(NumberScanRuntime, AgreesOnEveryByte) {
  for (int code = 1; code < 256; ++code) {
    const std::string byte(1, static_cast<char>(code));
    for (const std::string& text :
         {byte, byte + "12", "1" + byte + "2", "12" + byte, byte + byte, "0x" + byte,
          "1." + byte + "5", "-" + byte + "1", "12" + byte + "34.5", "1234" + byte + "5.6"}) {
      ExpectSameHexScans(text);
      ExpectSameDoubleScan(text);
      ExpectSameFields(text);
    }
  }
}

TEST(NumberScanRuntime, AgreesOnPlainDecimalsOfEveryLength) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 500000; ++i) {
    std::string text = random() % 8 == 0 ? "-" : "";
    const std::size_t length = 1 + random() % 25;
    AddDigits(text, length, random);
    // Few, one or two points, and often leading zeros.
    for (std::size_t points = random() % 3; points > 0; --points) {
      text.insert(random() % (text.size() + 1), 1, '.');
    }
    if (random() % 4 == 0) {
      text.insert(0, random() % 20, '0');
    }
    ExpectSameDoubleScan(text);
  }
}

// The largest integers that doubles hold one by one, and the first that they do not: with every
// place of the point, and with digits behind that decide how to round.
TEST(NumberScanRuntime, AgreesOnPlainDecimalsAroundTheLastExactInteger) {
  constexpr std::uint64_t kLastExact = std::uint64_t{1} << std::numeric_limits<double>::digits;
  for (std::uint64_t number = kLastExact - 300; number < kLastExact + 300; ++number) {
    for (const char* tail : {"", "0", "00", "5", "50", "500000000000001", "49999999999999", "9"}) {
      const std::string digits = std::to_string(number) + tail;
      ExpectSameDoubleScan(digits);
      ExpectSameDoubleScan("000" + digits);
      for (std::size_t place = 0; place <= digits.size(); ++place) {
        ExpectSameDoubleScan(digits.substr(0, place) + "." + digits.substr(place));
      }
    }
  }
}

// Twice and four times the exact integers, plus what lies halfway to the next and just beside it.
TEST(NumberScanRuntime, AgreesOnPlainDecimalsHalfwayBetweenNeighbours) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 100000; ++i) {
    const std::size_t shift = 1 + random() % 10;
    const std::uint64_t mantissa = (std::uint64_t{1} << 52) + (random() >> 12);
    const std::uint64_t half = (mantissa << shift) + (std::uint64_t{1} << (shift - 1));
    for (const std::uint64_t number : {half - 1, half, half + 1}) {
      const std::string digits = std::to_string(number);
      ExpectSameDoubleScan(digits);
      ExpectSameDoubleScan(digits + ".0");
      ExpectSameDoubleScan(digits + ".00000001");
      ExpectSameDoubleScan(digits.substr(0, 5) + "." + digits.substr(5));
    }
  }
}

// Not compared: some versions of glibc take the first of these for halfway and give 0x0.8p-1022.
TEST(NumberScanRuntime, RoundsSubnormalsToTheNearest) {
  double value = 77;
  EXPECT_TRUE(ScanDouble("0x0.8000000000000cp-1022", value));
  EXPECT_EQ(value, 0x0.8000000000001p-1022);
  EXPECT_TRUE(ScanDouble("0x0.80000000000008p-1022", value));
  EXPECT_EQ(value, 0x0.8p-1022);
  EXPECT_TRUE(ScanDouble("0x0.80000000000018p-1022", value));
  EXPECT_EQ(value, 0x0.8000000000002p-1022);
}

}  // namespace
}  // namespace lum::detail

#else

TEST(NumberScanRuntime, AgreesWithTheRuntime) {
  GTEST_SKIP() << "only glibc reads every text as the scans promise";
}

#endif
