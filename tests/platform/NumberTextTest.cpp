// Reading of floating-point items: spellings, edges, lengths, and agreement with the C runtime.
#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "platform/FrameworkString.h"
#include "platform/StringAppend.h"
#include "platform/Tokenizer.h"
#include "tests/TextPrinting.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <typename T>
bool Read(const CString& text, T& value) {
  return CLumString(text, L',', true, false).GetItem(0, value);
}

CString TextOf(const std::string& ascii) { return CString(ascii.c_str()); }

template <typename T>
void ExpectReads(const std::string& text, T expected) {
  T value = T(77);
  EXPECT_TRUE(Read(TextOf(text), value)) << text.substr(0, 60);
  EXPECT_EQ(value, expected) << text.substr(0, 60);
  EXPECT_EQ(std::signbit(value), std::signbit(expected)) << text.substr(0, 60);
}

template <typename T>
void ExpectRefuses(const std::string& text) {
  T value = T(77);
  EXPECT_FALSE(Read(TextOf(text), value)) << text.substr(0, 60);
  EXPECT_EQ(value, T(77)) << text.substr(0, 60);
}

std::string Zeros(int count) { return std::string(static_cast<std::size_t>(count), '0'); }
std::string Nines(int count) { return std::string(static_cast<std::size_t>(count), '9'); }

}  // namespace

TEST(NumberText, ReadsEverySpelling) {
  const struct {
    const char* text;
    double expected;
  } rows[] = {
      {"0", 0.0},
      {"-0", -0.0},
      {"+0.0", 0.0},
      {"1", 1.0},
      {"+1.5", 1.5},
      {"-1.5", -1.5},
      {".5", 0.5},
      {"5.", 5.0},
      {"-.5e1", -5.0},
      {"1e5", 1e5},
      {"1E+05", 1e5},
      {"1e-5", 1e-5},
      {"00012", 12.0},
      {"0.1", 0.1},
      {" 2.5\t", 2.5},
      {"0e999999999999999999999", 0.0},
      {"-0e-99999", -0.0},
      {"2.500000", 2.5},
      {"100000000000000000000.000000", 1e20},
  };
  for (const auto& row : rows) {
    ExpectReads<double>(row.text, row.expected);
    ExpectReads<float>(row.text, static_cast<float>(row.expected));
  }
}

TEST(NumberText, RefusesWhatIsNoNumber) {
  for (const char* text :
       {"",       " ",        ".",      "-",     "+",     "e5",      ".e5",  "1e",
        "1e+",    "1e-",      "1e5.",   "1.2.3", "1..2",  "--1",     "+-1",  "1 2",
        "1e 5",   "0x1p3",    "0x10",   "infin", "infx",  "na",      "nanx", "nan(",
        "nan()x", "nan(a b)", "1.#INF", "in f",  "1_000", "nan(a{)", "nanxy"}) {
    ExpectRefuses<double>(text);
    ExpectRefuses<float>(text);
  }
}

TEST(NumberText, RefusesDigitsOfOtherScripts) {
  double value = 77;
  EXPECT_FALSE(Read(CString(L"\u0661"), value));
  EXPECT_FALSE(Read(CString(L"1\uFF0E5"), value));
  EXPECT_FALSE(Read(CString(L"\u22121"), value));
  EXPECT_EQ(value, 77);
}

TEST(NumberText, ReadsInfinitiesInAnyCase) {
  for (const char* text : {"inf", "INF", "Inf", "infinity", "INFINITY", "+inf"}) {
    ExpectReads<double>(text, kInfinity);
    ExpectReads<float>(text, std::numeric_limits<float>::infinity());
  }
  ExpectReads<double>("-inf", -kInfinity);
  ExpectReads<double>("-Infinity", -kInfinity);
}

TEST(NumberText, ReadsNotANumberWithItsSign) {
  for (const char* text :
       {"nan", "NaN", "nan(ind)", "nan(snan)", "NAN(IND)", "nan()", "nan(0x7_f)"}) {
    for (const bool isNegative : {false, true}) {
      double value = 77;
      float single = 77;
      const std::string signedText = std::string(isNegative ? "-" : "") + text;
      EXPECT_TRUE(Read(TextOf(signedText), value)) << signedText;
      EXPECT_TRUE(Read(TextOf(signedText), single)) << signedText;
      EXPECT_TRUE(std::isnan(value) && std::isnan(single)) << signedText;
      EXPECT_EQ(std::signbit(value), isNegative) << signedText;
      EXPECT_EQ(std::signbit(single), isNegative) << signedText;
    }
  }
}

TEST(NumberText, TooLargeIsRefused) {
  for (const char* text : {"1e309", "-1e309", "1.8e308", "1e999999999999999999999"}) {
    ExpectRefuses<double>(text);
  }
  for (const char* text : {"1e39", "-3.5e38", "1e309"}) {
    ExpectRefuses<float>(text);
  }
  ExpectRefuses<double>(Nines(400));
  ExpectRefuses<double>(Nines(5000));
}

TEST(NumberText, TooSmallReadsAsZeroOfItsSign) {
  ExpectReads<double>("1e-400", 0.0);
  ExpectReads<double>("-1e-400", -0.0);
  ExpectReads<double>("2e-324", 0.0);
  ExpectReads<double>("1e-999999999999999999999", 0.0);
  ExpectReads<double>("0." + Zeros(5000) + "1", 0.0);
  ExpectReads<float>("1e-60", 0.0F);
  ExpectReads<float>("-1e-60", -0.0F);
}

TEST(NumberText, DenormalsReadToTheNearest) {
  ExpectReads<double>("4.9406564584124654e-324", 5e-324);
  ExpectReads<double>("3e-324", 5e-324);
  ExpectReads<double>("2.2250738585072011e-308", 2.2250738585072011e-308);
  ExpectReads<float>("1e-45", std::numeric_limits<float>::denorm_min());
}

TEST(NumberText, EdgesOfTheTypesReadBack) {
  CString text;
  text.Format(L"%f", DBL_MAX);
  ASSERT_EQ(text.GetLength(), 316);
  double value = 77;
  EXPECT_TRUE(Read(text, value));
  EXPECT_EQ(value, DBL_MAX);
  text.Format(L"%f", static_cast<double>(FLT_MAX));
  float single = 77;
  EXPECT_TRUE(Read(text, single));
  EXPECT_EQ(single, FLT_MAX);
}

TEST(NumberText, LengthDoesNotMatter) {
  ExpectReads<double>(Zeros(400) + "7", 7.0);
  ExpectReads<double>(Zeros(5000) + "7." + Zeros(5000), 7.0);
  ExpectReads<double>("0." + Zeros(300) + "1", 1e-301);
  ExpectReads<double>("0." + Zeros(5000) + "1e5000", 0.1);
  ExpectReads<double>("1" + Zeros(5000) + "e-5000", 1.0);
  ExpectReads<double>("1e" + Zeros(5000) + "2", 100.0);
  ExpectReads<double>("0." + Nines(5000), 1.0);
  ExpectReads<double>(Zeros(5000), 0.0);
  int number = 77;
  EXPECT_TRUE(Read(TextOf(Zeros(5000) + "7"), number));
  EXPECT_EQ(number, 7);
}

TEST(NumberText, DigitsFarBehindDecideATie) {
  // Halfway between 1 and its upper neighbour, with every digit.
  const std::string halfway = "1.00000000000000011102230246251565404236316680908203125";
  const double next = std::nextafter(1.0, 2.0);
  ExpectReads<double>(halfway, 1.0);
  ExpectReads<double>(halfway + Zeros(3000), 1.0);
  ExpectReads<double>(halfway + Zeros(3000) + "1", next);
  ExpectReads<double>(halfway + Zeros(700) + "1", next);
  // The same for floats, where rounding to double first would round twice.
  ExpectReads<float>("1.00000005960464477539062500001", std::nextafter(1.0F, 2.0F));
}

TEST(NumberText, RandomDoublesReadBackFromTheirShortestText) {
  std::mt19937_64 random(42);
  for (int round = 0; round < 200'000; ++round) {
    const double value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) {
      continue;
    }
    CString text;
    text << value;
    double back = 77;
    ASSERT_TRUE(Read(text, back));
    ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value));
    ASSERT_EQ(std::strtod(CStringA(text).GetString(), nullptr), value);
  }
}

TEST(NumberText, RandomTextsReadAsTheRuntimeReadsThem) {
  std::mt19937_64 random(43);
  const auto below = [&](unsigned int limit) {
    return static_cast<unsigned int>(random() % limit);
  };
  for (int round = 0; round < 200'000; ++round) {
    std::string text;
    for (unsigned int left = 1 + below(30); left > 0; --left) {
      text += static_cast<char>('0' + below(10));
    }
    text.insert(below(static_cast<unsigned int>(text.size()) + 1), 1, '.');
    text += "e" + std::to_string(static_cast<int>(below(680)) - 340);
    const double expected = std::strtod(text.c_str(), nullptr);
    double value = 77;
    const bool isRead = Read(TextOf(text), value);
    ASSERT_EQ(isRead, std::isfinite(expected)) << text;
    ASSERT_EQ(value, isRead ? expected : 77) << text;
    const float expectedSingle = std::strtof(text.c_str(), nullptr);
    float single = 77;
    const bool isSingleRead = Read(TextOf(text), single);
    ASSERT_EQ(isSingleRead, std::isfinite(expectedSingle)) << text;
    ASSERT_EQ(single, isSingleRead ? expectedSingle : 77) << text;
  }
}

// Digits with a point among them, also around what the types hold exactly.
TEST(NumberText, RandomDecimalsReadAsTheRuntimeReadsThem) {
  constexpr std::uint64_t kLimits[] = {1U << 24, std::uint64_t{1} << 53, 10'000'000'000'000'000};
  std::mt19937_64 random(45);
  for (int round = 0; round < 200'000; ++round) {
    const std::uint64_t any = random();
    std::string text = std::to_string(round % 2 == 0 ? any >> (random() % 64)
                                                     : kLimits[any % 3] + random() % 9 - 4);
    text.append(round % 5 == 0 ? random() % 5 : 0, '0');
    text.insert(random() % (text.size() + 1), round % 11 == 0 ? 0 : 1, '.');
    text.insert(0, round % 7 == 0 ? random() % 12 : 0, '0');
    double value = 77;
    float single = 77;
    ASSERT_TRUE(Read(TextOf(text), value)) << text;
    ASSERT_EQ(value, std::strtod(text.c_str(), nullptr)) << text;
    ASSERT_TRUE(Read(TextOf(text), single)) << text;
    ASSERT_EQ(single, std::strtof(text.c_str(), nullptr)) << text;
  }
}

TEST(NumberText, RandomGarbageIsJudgedAsTheRuntimeJudgesIt) {
  std::mt19937 random(44);
  constexpr char kLetters[] = "0123456789.eE+-";
  int accepted = 0;
  for (int round = 0; round < 200'000; ++round) {
    std::string text;
    for (auto left = 1 + random() % 7; left > 0; --left) {
      text += kLetters[random() % (sizeof kLetters - 1)];
    }
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const bool isNumber = *end == '\0' && end != text.c_str() && std::isfinite(expected);
    double value = 77;
    ASSERT_EQ(Read(TextOf(text), value), isNumber) << text;
    ASSERT_EQ(value, isNumber ? expected : 77) << text;
    accepted += isNumber ? 1 : 0;
  }
  EXPECT_GT(accepted, 1000);
}
