// The decoding operations of CLumDouble against the literal versions: code, result bits and results
// to be kept, over many random inputs and over every combination of codes, places and lengths.
//
// LUM_DIFFERENTIAL_INPUTS says how many random inputs each operation gets; the seed is fixed.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "tests/RuntimeComparison.h"
#include "tests/formulas/Decoders.h"

namespace lum::test {
namespace {

constexpr std::uint64_t kSeed = 20240229;
constexpr int kMostFailures = 10;

// How many random inputs; nothing when the environment asks for no positive number.
std::optional<std::uint64_t> CountOfInputs() {
  constexpr std::uint64_t kDefault = 100000;
  const char* const asked = std::getenv("LUM_DIFFERENTIAL_INPUTS");
  if (asked == nullptr) {
    return kDefault;
  }
  std::uint64_t count = 0;
  const char* const end = asked + std::strlen(asked);
  const auto [last, error] = std::from_chars(asked, end, count);
  return error == std::errc() && last == end && count > 0 ? std::optional(count) : std::nullopt;
}

// Runs one operation in both versions and counts what comes out.
class CComparison {
 public:
  explicit CComparison(const Decoder& decoder) : m_decoder(decoder), m_arguments(m_input) {}
  CComparison(const CComparison&) = delete;
  CComparison& operator=(const CComparison&) = delete;

  // Changed texts need SetTexts.
  DecoderInput& Input() { return m_input; }
  void SetTexts() { (m_arguments.*m_decoder.setTexts)(); }

  // Calls both with the input as it is.
  void Compare() {
    m_arguments.SetNumbers();
    m_arguments.SetPrevious();
    const LiteralOutcome expected = m_decoder.literal(m_input);
    const int code = m_decoder.call(m_arguments, m_input.isLenient);
    double result = 0.0;
    m_arguments.Result().GetDouble(result);
    ++m_count;
    m_decoded += expected.isDecoded && expected.code == 1 ? 1 : 0;
    m_failed += expected.code == 0 ? 1 : 0;
    if (code != expected.code || !IsSame(result, expected.result)) {
      AddFailure(code, result, expected);
    }
  }

  bool HasFailedTooOften() const { return m_failures >= kMostFailures; }

  // The inputs must neither all fail nor all be sound, or they would compare nothing.
  void ExpectGoodMix() const {
    EXPECT_GE(m_decoded * 100, m_count * 20) << m_decoder.name << ": too few values";
    EXPECT_GE(m_failed * 100, m_count * 5) << m_decoder.name << ": too few failures";
    ::testing::Test::RecordProperty("inputs", std::to_string(m_count));
    ::testing::Test::RecordProperty("decoded", std::to_string(m_decoded));
    ::testing::Test::RecordProperty("failed", std::to_string(m_failed));
  }

 private:
  void AddFailure(int code, double result, const LiteralOutcome& expected) {
    ++m_failures;
    char outcomes[200];
    std::snprintf(outcomes, sizeof outcomes, "code %d and %.17g (%a) instead of %d and %.17g (%a)",
                  code, result, result, expected.code, expected.result, expected.result);
    ADD_FAILURE() << m_decoder.name << ": " << outcomes << "\n"
                  << ToText(m_input) << "\ninput " << m_count << ", seed " << kSeed;
  }

  const Decoder& m_decoder;
  DecoderInput m_input;
  CDecoderArguments m_arguments;
  std::uint64_t m_count = 0;
  std::uint64_t m_decoded = 0;
  std::uint64_t m_failed = 0;
  int m_failures = 0;
};

void CompareRandom(const Decoder& decoder) {
  const std::optional<std::uint64_t> count = CountOfInputs();
  ASSERT_TRUE(count) << "LUM_DIFFERENTIAL_INPUTS must be a positive number";
  CDecoderInputs inputs(kSeed);
  CComparison comparison(decoder);
  for (std::uint64_t i = 0; i < *count && !comparison.HasFailedTooOften(); ++i) {
    (inputs.*decoder.fill)(comparison.Input());
    comparison.SetTexts();
    comparison.Compare();
  }
  constexpr std::uint64_t kEnoughForShares = 1000;
  if (*count >= kEnoughForShares) {
    comparison.ExpectGoodMix();
  }
}

// ---- Random inputs

TEST(DecoderDifferential, CanVal) { CompareRandom(kCanVal); }
TEST(DecoderDifferential, J1939Val) { CompareRandom(kJ1939Val); }
TEST(DecoderDifferential, J1939BitsVal) { CompareRandom(kJ1939BitsVal); }
TEST(DecoderDifferential, BitVal) { CompareRandom(kBitVal); }
TEST(DecoderDifferential, HmsToMsec) { CompareRandom(kHmsToMsec); }

// Those that scan as the C runtime does.
class DecoderDifferentialScans : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!kHasPromisedScans) {
      GTEST_SKIP() << "only glibc reads every text as the operations promise";
    }
  }
};

TEST_F(DecoderDifferentialScans, BinVal) { CompareRandom(kBinVal); }
TEST_F(DecoderDifferentialScans, AdamVal) { CompareRandom(kAdamVal); }
TEST_F(DecoderDifferentialScans, TimeConv) { CompareRandom(kTimeConv); }
TEST_F(DecoderDifferentialScans, Val) { CompareRandom(kVal); }
TEST_F(DecoderDifferentialScans, NMEAPos) { CompareRandom(kNMEAPos); }

// ---- Every combination

// Calls the operation with every type code, without and with a fraction, strict and lenient.
void CompareTypeCodes(CComparison& comparison) {
  for (const double fraction : {0.0, 0.75}) {
    for (int code = -13; code <= 13; ++code) {
      comparison.Input().numbers[0] = code + std::copysign(fraction, code);
      for (const bool isLenient : {false, true}) {
        comparison.Input().isLenient = isLenient;
        comparison.Compare();
      }
    }
  }
}

TEST(DecoderCombinations, CanValTakesEveryCodePlaceAndDataLength) {
  CDecoderInputs inputs(kSeed);
  CComparison comparison(kCanVal);
  for (std::size_t dataLength = 0; dataLength < 16; ++dataLength) {
    for (int start = -2; start <= 9; ++start) {
      inputs.CanFrame(comparison.Input().text, dataLength);
      comparison.SetTexts();
      comparison.Input().numbers[1] = start;
      comparison.Input().previous = inputs.AnyDouble();
      CompareTypeCodes(comparison);
      ASSERT_FALSE(comparison.HasFailedTooOften());
    }
  }
}

TEST(DecoderCombinations, J1939ValTakesEveryCodePlaceAndDataLength) {
  CDecoderInputs inputs(kSeed);
  CComparison comparison(kJ1939Val);
  for (std::size_t dataBytes = 0; dataBytes < 20; ++dataBytes) {
    for (int start = -2; start <= 20; ++start) {
      inputs.J1939Message(comparison.Input().text, dataBytes);
      comparison.SetTexts();
      comparison.Input().numbers[1] = start;
      comparison.Input().previous = inputs.AnyDouble();
      CompareTypeCodes(comparison);
      ASSERT_FALSE(comparison.HasFailedTooOften());
    }
  }
}

TEST(DecoderCombinations, J1939BitsValTakesEveryCodeStartAndLength) {
  CDecoderInputs inputs(kSeed);
  CComparison comparison(kJ1939BitsVal);
  for (int start = -9; start <= 70; ++start) {
    for (int length = -1; length <= 65; ++length) {
      inputs.J1939Message(comparison.Input().text, length % 5 == 0 ? 3 : 8);
      comparison.SetTexts();
      comparison.Input().numbers[1] = start;
      comparison.Input().numbers[2] = length;
      comparison.Input().previous = inputs.AnyDouble();
      CompareTypeCodes(comparison);
      ASSERT_FALSE(comparison.HasFailedTooOften());
    }
  }
}

}  // namespace
}  // namespace lum::test
