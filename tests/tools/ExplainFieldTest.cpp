// Which bytes and bits an operation read, in words, beside the number that it made of them.
#include "tools/lumattr/ExplainField.h"

#include <gtest/gtest.h>

#include <span>
#include <variant>

#include "decoding/Decoder.h"
#include "decoding/NumberText.h"
#include "tests/decoding/ReaderTesting.h"

namespace lum::tool {
namespace {

using decoding::LogFormat;

/// "words = number" of the formula's last step; "words: no value" when it gave none.
std::string Explained(LogFormat format, const std::string& line, const std::string& formula) {
  test::CTestReader reader(format);
  EXPECT_TRUE(reader.Take(line).hasRecord) << line;
  auto compiled = decoding::CExpression::Compile(formula);
  if (!std::holds_alternative<decoding::CExpression>(compiled)) {
    return "no formula: " + std::get<decoding::ExpressionError>(compiled).Message();
  }
  decoding::CFormulaInputs inputs;
  inputs.Clear();
  decoding::SetInputs(inputs, reader.record);
  std::vector<decoding::EvaluationStep> steps;
  const auto result = std::get<decoding::CExpression>(compiled).Trace(inputs, steps);
  std::string text = ExplainField(steps.back(), reader.record);
  if (!result.HasValue()) {
    return text + " = no value";
  }
  decoding::AppendShortest(text += " = ", result.value);
  return text;
}

struct FieldCase {
  const char* formula;
  const char* expected;
};

void CheckMessage(const char* line, std::span<const FieldCase> cases) {
  for (const FieldCase& field : cases) {
    EXPECT_EQ(Explained(LogFormat::J1939, line, field.formula), field.expected) << field.formula;
  }
}

TEST(ExplainField, TellsBytesTheirOrderAndKind) {
  constexpr const char* kLine = "(1.5) can0 18F00400#F17D8DE02EFF8040";
  constexpr FieldCase kCases[] = {
      {"J1939Val(message, 6, 0)", "byte 0 = F1: 0xF1, an unsigned 8-bit integer = 241"},
      {"J1939Val(message, 1, 0)", "byte 0 = F1: 0xF1, a signed 8-bit integer = -15"},
      {"J1939Val(message, 7, 3)",
       "bytes 3..4 = E0 2E, least significant first: 0x2EE0, an unsigned 16-bit integer = 12000"},
      {"J1939Val(message, -7, 3)",
       "bytes 3..4 = E0 2E, most significant first: 0xE02E, an unsigned 16-bit integer = 57390"},
      {"J1939Val(message, 2, 1.9)",
       "bytes 1..2 = 7D 8D, least significant first: 0x8D7D, a signed 16-bit integer = -29315"},
      {"J1939Val(message, 8, 4)",
       "bytes 4..7 = 2E FF 80 40, least significant first: 0x4080FF2E, an unsigned 32-bit integer "
       "= 1082195758"},
      {"J1939Val(message, -3, 4)",
       "bytes 4..7 = 2E FF 80 40, most significant first: 0x2EFF8040, a signed 32-bit integer "
       "= 788496448"},
      {"J1939Val(message, -12, 0)",
       "bytes 0..7 = F1 7D 8D E0 2E FF 80 40, most significant first: 0xF17D8DE02EFF8040, a signed "
       "64-bit integer = -1045523544479399936"},
      {"J1939Val(message, 7, 7)", "bytes 7..8; the data end with byte 7 = no value"},
      {"J1939Val(message, 6, 8)", "byte 8; the data end with byte 7 = no value"},
      {"J1939Val(message, 6, -1)", "no field begins at byte -1 = no value"},
      {"J1939Val(message, 9, 0)", "there is no field of type code 9 = no value"},
  };
  CheckMessage(kLine, kCases);
}

TEST(ExplainField, TellsBitsFromTheHighestToTheLowest) {
  constexpr const char* kLine = "(1.5) can0 18F00400#ABCD8DE02EFFFFF1";
  constexpr FieldCase kCases[] = {
      {"J1939BitsVal(message, 6, 0, 4)",
       "bits 0..3 of byte 0 = AB, bit 0 the lowest of byte 0: 1011 = 11"},
      {"J1939BitsVal(message, 6, 2, 1)", "bit 2 of byte 0 = AB, bit 0 the lowest of byte 0: 0 = 0"},
      {"J1939BitsVal(message, 7, 4, 12)",
       "bits 4..15 of bytes 0..1 = AB CD, bit 0 the lowest of byte 0: 110011011010 = 3290"},
      {"J1939BitsVal(message, 2, 4, 12)",
       "bits 4..15 of bytes 0..1 = AB CD, bit 0 the lowest of byte 0: 110011011010, the highest is "
       "the sign = -806"},
      {"J1939BitsVal(message, 6, 64, 2)", "bits 64..65; the data end with byte 7 = no value"},
      {"J1939BitsVal(message, 6, -1, 2)", " = no value"},
      {"J1939BitsVal(message, 6, 0, 0)", " = no value"},
  };
  CheckMessage(kLine, kCases);
}

TEST(ExplainField, OfAFrameHasNoIntegersOf64Bits) {
  constexpr const char* kLine = "(1.5) can0 181#15FF7B0000000000";
  EXPECT_EQ(Explained(LogFormat::Candump, kLine, "CanVal(frame, 12, 0)"),
            "there is no field of type code 12 = no value");
  EXPECT_EQ(Explained(LogFormat::Candump, kLine, "CanVal(frame, 2, 0)"),
            "bytes 0..1 = 15 FF, least significant first: 0xFF15, a signed 16-bit integer = -235");
  EXPECT_EQ(Explained(LogFormat::Candump, "(1.5) can0 181#", "CanVal(frame, 6, 0)"),
            "byte 0; there are no data = no value");
}

TEST(ExplainField, OfTextsThatAreNotTheRecordsIsLeftOut) {
  constexpr const char* kLine = "(1.5) can0 181#15FF7B0000000000";
  EXPECT_EQ(Explained(LogFormat::Candump, kLine, "CanVal(\"18180102030405060708\", 2, 0)"),
            " = 513");
  EXPECT_EQ(Explained(LogFormat::Candump, kLine, "CanVal(frame, 2, 0) * 2"), " = -470");
}

TEST(ExplainField, OfOtherDevicesTellsPlaces) {
  EXPECT_EQ(Explained(LogFormat::Plain, ">012+04.06+05.80", "AdamVal(line, 0)"),
            "characters 5..11 = '04.06+0' = 4.06");
  EXPECT_EQ(Explained(LogFormat::Plain, "!0100+04.06x+05.80y", "AdamVal(line, 1)"),
            "characters 12..18 = '+05.80y' = 5.8");
  EXPECT_EQ(Explained(LogFormat::Plain, "!0100+04.06", "AdamVal(line, 2)"),
            "characters 19..25 = none = no value");
  EXPECT_EQ(Explained(LogFormat::Plain, "!0100+04.06", "AdamVal(line, 8)"),
            "channels are 0 to 7 = no value");
  EXPECT_EQ(Explained(LogFormat::Csv, "4916.5,N", "NMEAPos(field(0), field(1))"),
            "49 degrees and 16.5 minutes, hemisphere \"N\" = 49.275");
  EXPECT_EQ(Explained(LogFormat::Csv, "\xC0\x3F,x", "BinVal(field(0), 1)"),
            "byte 0 = C0: 0xC0, a signed 8-bit integer = -64");
}

}  // namespace
}  // namespace lum::tool
