// The language of formulas: what is a formula, what it gives, and when it gives nothing.
#include "decoding/Expression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/decoding/Formulas.h"

namespace lum::decoding {
namespace {

using lum::test::Compiled;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A record that has some of the inputs.
class Expression : public testing::Test {
 protected:
  Expression() {
    m_inputs.SetText(Input::Frame, "98FEF1008FFFF3412AABBCCDD");
    m_inputs.SetText(Input::Channel, "");
    m_inputs.SetText(Input::Line, "12.5 m");
    m_inputs.SetNumber(Input::Pgn, 65265.0);
    m_inputs.SetNumber(Input::Length, 8.0);
    m_inputs.SetNumber(Input::Raw, -2.0);
    m_inputs.SetFields(m_fields);
  }

  Evaluation EvaluationOf(std::string_view text) { return Compiled(text).Evaluate(m_inputs); }

  const std::vector<std::string_view> m_fields = {"4", "4807.038", "S", "", "abc"};
  CFormulaInputs m_inputs;
};

TEST_F(Expression, GivesTheNumberThatItsPartsSay) {
  const struct {
    std::string_view text;
    double expected;
  } rows[] = {
      // Numbers.
      {"5", 5.0},
      {"0.125", 0.125},
      {".5", 0.5},
      {"5.", 5.0},
      {"1e3", 1000.0},
      {"25e-1", 2.5},
      {"0x1F", 31.0},
      {"inf", kInfinity},
      {"-inf", -kInfinity},
      {"-7", -7.0},
      {"+7", 7.0},
      {"- 7", -7.0},
      {" \t\r\n5\n", 5.0},
      // Precedence and association.
      {"2+3*4", 14.0},
      {"2*3+4", 10.0},
      {"(2+3)*4", 20.0},
      {"10-4-3", 3.0},
      {"10-(4-3)", 9.0},
      {"64/4/2", 8.0},
      {"64/(4/2)", 32.0},
      {"2*6/4", 3.0},
      {"12/6*2", 4.0},
      {"1-2*3-4", -9.0},
      {"1+2+3*4*5+6", 69.0},
      {"-2*3", -6.0},
      {"2*-3", -6.0},
      {"2--3", 5.0},
      {"2-+3", -1.0},
      {"--3", 3.0},
      {"-(2+3)", -5.0},
      {"-raw", 2.0},
      {"+raw", -2.0},
      {"-raw*3", 6.0},
      {"-raw-3", -1.0},
      {"-+-raw", -2.0},
      {"((((5))))", 5.0},
      {"1/0", kInfinity},
      {"1e+2", 100.0},
      {"1E-2", 0.01},
      {"0x1e+2", 32.0},
      {"0X1E-2", 28.0},
      // Inputs and fields.
      {"pgn", 65265.0},
      {"length*2", 16.0},
      {"raw * 0.5 + 1", 0.0},
      {"field(0)", 4.0},
      {"field(0x0)", 4.0},
      {"field( 0 ) ", 4.0},
      {"field(0) + field(0)", 8.0},
      {"line", 12.5},
      {"line * 2", 25.0},
      {"-line", -12.5},
      {"+line", 12.5},
      {"(line)", 12.5},
      // Texts.
      {"'12'", 12.0},
      {R"("3.5" + '1')", 4.5},
      {R"(Val('7 m'))", 7.0},
      {"Val(7)", 7.0},
      {"Val(raw)", -2.0},
      {"Val(line)", 12.5},
      {R"(BinVal('\x34\x12', 7))", 0x1234},
      {R"(BinVal("\x34\x00", 7))", 0x34},
      {R"(BinVal('\\\'', 7))", 0x275C},
      {R"(BinVal("\"\n", 7))", 0x0A22},
      {R"(BinVal("\t'", 7))", 0x2709},
      {"BinVal('\xC3\xA4', 7)", 0xA4C3},
      {"BinVal('\n(', 7)", 0x280A},
      // Operations.
      {"CanVal(frame, 7, 2)", 0x1234},
      {"CanVal(frame, -7, 2)", 0x3412},
      {"CanVal((frame), 7, 2)", 0x1234},
      {"CanVal (\nframe\n,\n7\n,\n2\n)", 0x1234},
      {"CanVal(frame, field(0) + 3, 2)", 0x1234},
      {"CanVal(frame, 7, 2) * 0.125 + 5", 4660 * 0.125 + 5},
      {"CanVal('1230', 7, 0, lenient)", 0.0},
      {"CanVal('1230', 7, 0, true) + 1", 1.0},
      {"CanVal(frame, 7, 2, false)", 0x1234},
      {"Val('x', lenient)", 0.0},
      {"NMEAPos(field(1), field(2))", -(7.038 / 60 + 48)},
      {"ClipValue(Sqr1D(raw * raw), 0, 1)", 1.0},
      {"SelectValue(1, 2, IsGreater(pgn, 3))", 2.0},
      {"Asin(2) + Asin(2)", 180.0},
  };
  for (const auto& row : rows) {
    const Evaluation evaluation = EvaluationOf(row.text);
    EXPECT_TRUE(evaluation.HasValue()) << row.text;
    EXPECT_DOUBLE_EQ(evaluation.value, row.expected) << row.text;
    EXPECT_EQ(evaluation.step, 0U) << row.text;
  }
}

TEST_F(Expression, TakesNotANumberForAValue) {
  for (const std::string_view text : {"nan", "-nan", "nan + pgn", "Modulo(5, 0)", "0 / 0"}) {
    const Evaluation evaluation = EvaluationOf(text);
    EXPECT_TRUE(evaluation.HasValue()) << text;
    EXPECT_TRUE(std::isnan(evaluation.value)) << text;
  }
}

TEST_F(Expression, IsAbsentWithTheReasonAndTheStep) {
  const struct {
    std::string_view text;
    AbsenceReason reason;
    std::string_view step;
  } rows[] = {
      {"message", AbsenceReason::MissingInput, "message"},
      {"time + 1", AbsenceReason::MissingInput, "time"},
      {"field(9)", AbsenceReason::MissingInput, "field(9)"},
      {"Val( field(255), lenient)", AbsenceReason::MissingInput, "field(255)"},
      {"channel", AbsenceReason::EmptyInput, "channel"},
      {"Val(field(3), lenient)", AbsenceReason::EmptyInput, "field(3)"},
      {"NMEAPos(field(1), field(3))", AbsenceReason::EmptyInput, "field(3)"},
      {"field(3) * 0.1", AbsenceReason::EmptyInput, "field(3)"},
      {"field(4) * 0.1", AbsenceReason::NoValue, "Val(field(4))"},
      {"1 + 'x'", AbsenceReason::NoValue, "Val('x')"},
      {"'' + 1", AbsenceReason::NoValue, "Val('')"},
      {"CanVal('', 7, 0)", AbsenceReason::NoValue, "CanVal('', 7, 0)"},
      {"1 + CanVal(frame, 7, 7) * 2", AbsenceReason::NoValue, "CanVal(frame, 7, 7)"},
      {"Sqr1D(raw)", AbsenceReason::NoValue, "Sqr1D(raw)"},
      {"GateValue(5, 1, 3)", AbsenceReason::NoValue, "GateValue(5, 1, 3)"},
      {"CheckInValid(raw, -2)", AbsenceReason::NoValue, "CheckInValid(raw, -2)"},
      // Both choices are evaluated, whichever is taken.
      {"SelectValue(1, time, 0)", AbsenceReason::MissingInput, "time"},
      // The first that fails counts: the order is that of the text.
      {"field(4) + time", AbsenceReason::NoValue, "Val(field(4))"},
      {"time + field(4)", AbsenceReason::MissingInput, "time"},
      {"CanVal(field(3), field(4), time)", AbsenceReason::EmptyInput, "field(3)"},
      {"CanVal(frame, field(4), time)", AbsenceReason::NoValue, "Val(field(4))"},
      {"Sqr1D(raw) + (Log1D(0) + channel)", AbsenceReason::NoValue, "Sqr1D(raw)"},
  };
  for (const auto& row : rows) {
    const CExpression expression = Compiled(row.text);
    const Evaluation evaluation = expression.Evaluate(m_inputs);
    EXPECT_EQ(evaluation.absence, row.reason) << row.text;
    EXPECT_EQ(expression.StepText(evaluation.step), row.step) << row.text;
    EXPECT_EQ(evaluation.value, 0.0) << row.text;
  }
}

TEST_F(Expression, StartsEachEvaluationAfresh) {
  const CExpression expression = Compiled("Acos(raw) + CanVal(frame, 7, 2)");
  EXPECT_EQ(expression.Evaluate(m_inputs).value, 180.0 + 0x1234);
  EXPECT_EQ(m_inputs.ReadNumber(Input::Raw), -2.0);
  m_inputs.SetText(Input::Frame, "1230");
  EXPECT_EQ(expression.Evaluate(m_inputs).absence, AbsenceReason::NoValue);
  m_inputs.SetText(Input::Frame, "98FEF1004FFFF3512");
  EXPECT_EQ(expression.Evaluate(m_inputs).value, 180.0 + 0x1235);
  CFormulaInputs others;
  others.SetText(Input::Frame, "12320100");
  others.SetNumber(Input::Raw, 1.0);
  EXPECT_EQ(expression.Evaluate(others).absence, AbsenceReason::NoValue);
  EXPECT_EQ(expression.Evaluate(m_inputs).value, 180.0 + 0x1235);
}

TEST_F(Expression, LeavesAClampedInputAsItWas) {
  m_inputs.SetNumber(Input::Raw, 2.0);
  EXPECT_EQ(EvaluationOf("Asin(raw)").value, 90.0);
  double number = 0.0;
  EXPECT_NE(m_inputs.Value(Input::Raw).GetDouble(number), 0);
  EXPECT_EQ(number, 2.0);
  const CExpression constant = Compiled("Asin(3) + 3");
  EXPECT_EQ(constant.Evaluate(m_inputs).value, 93.0);
  EXPECT_EQ(constant.Evaluate(m_inputs).value, 93.0);
}

TEST_F(Expression, MovesWithItsProgram) {
  CExpression expression = Compiled("CanVal(frame, 7, 2) * 2");
  CExpression moved = std::move(expression);
  EXPECT_EQ(moved.Evaluate(m_inputs).value, 2.0 * 0x1234);
  moved = Compiled("raw");
  EXPECT_EQ(moved.Evaluate(m_inputs).value, -2.0);
  EXPECT_EQ(moved.Text(), "raw");
}

TEST_F(Expression, TellsWhichInputsItUses) {
  const CExpression expression = Compiled("CanVal(frame, 7, 0) * raw + field(3) + 'pgn'");
  for (std::size_t i = 0; i < kInputCount; ++i) {
    const auto input = static_cast<Input>(i);
    EXPECT_EQ(expression.Uses(input), input == Input::Frame || input == Input::Raw) << i;
  }
}

}  // namespace
}  // namespace lum::decoding
