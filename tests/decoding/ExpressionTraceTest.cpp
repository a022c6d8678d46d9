// Evaluations told step by step.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/NumberText.h"
#include "tests/decoding/Formulas.h"

namespace lum::decoding {
namespace {

using lum::test::Compiled;

/// "CanVal(frame, 7, 2): CanVal["98…", 7, 2] 1 4660"
std::string Told(const EvaluationStep& step) {
  std::string text = step.text + ": " + std::string(step.operation) + "[";
  for (const std::string& argument : step.arguments) {
    text += (text.back() == '[' ? "" : ", ") + argument;
  }
  text += "] " + std::to_string(step.code);
  if (step.absence != AbsenceReason::None) {
    return text;
  }
  text += ' ';
  if (std::isnan(step.result)) {
    return text + "text";
  }
  AppendFixed(text, step.result, 6);
  return text;
}

std::vector<std::string> TraceOf(std::string_view formula, CFormulaInputs& inputs) {
  const CExpression expression = Compiled(formula);
  std::vector<EvaluationStep> steps;
  const Evaluation traced = expression.Trace(inputs, steps);
  const Evaluation evaluated = expression.Evaluate(inputs);
  EXPECT_EQ(traced.absence, evaluated.absence);
  EXPECT_EQ(traced.step, evaluated.step);
  EXPECT_EQ(traced.value, evaluated.value);
  std::vector<std::string> told;
  for (const EvaluationStep& step : steps) {
    EXPECT_EQ(step.arguments.size(), step.numbers.size());
    told.push_back(Told(step));
  }
  return told;
}

using Steps = std::vector<std::string>;

TEST(ExpressionTrace, TellsEachStepInOrder) {
  CFormulaInputs inputs;
  const std::vector<std::string_view> fields = {"7", "a\"\x01"};
  inputs.SetText(Input::Frame, "12341122");
  inputs.SetNumber(Input::Raw, 2.0);
  inputs.SetFields(fields);
  EXPECT_EQ(TraceOf("-(CanVal(frame, field(0), 0x0 ) * 0.5) + raw", inputs),
            (Steps{"frame: frame[\"12341122\"] 1 text", "field(0): field[\"7\"] 1 text",
                   "Val(field(0)): Val[\"7\"] 1 7.000000",
                   "CanVal(frame, field(0), 0x0 ): CanVal[\"12341122\", 7, 0] 0"}));
  EXPECT_EQ(TraceOf("-(CanVal(frame, field(0) - 1, 1) * 0.5) + raw", inputs),
            (Steps{"frame: frame[\"12341122\"] 1 text", "field(0): field[\"7\"] 1 text",
                   "Val(field(0)): Val[\"7\"] 1 7.000000", "field(0) - 1: -[7, 1] 1 6.000000",
                   "CanVal(frame, field(0) - 1, 1): CanVal[\"12341122\", 6, 1] 0"}));
  EXPECT_EQ(TraceOf("-(BinVal('\\x02', 6) / 4) + raw", inputs),
            (Steps{"BinVal('\\x02', 6): BinVal[\"\\x02\", 6] 1 2.000000",
                   "BinVal('\\x02', 6) / 4: /[2, 4] 1 0.500000",
                   "-(BinVal('\\x02', 6) / 4): -[0.5] 1 -0.500000", "raw: raw[2] 1 2.000000",
                   "-(BinVal('\\x02', 6) / 4) + raw: +[-0.5, 2] 1 1.500000"}));
  EXPECT_EQ(TraceOf("Asin(raw)", inputs),
            (Steps{"raw: raw[2] 1 2.000000", "Asin(raw): Asin[2] 1 90.000000"}));
  EXPECT_EQ(TraceOf(" -7", inputs), (Steps{"-7: -7[] 1 -7.000000"}));
  EXPECT_EQ(TraceOf("pgn", inputs), (Steps{"pgn: pgn[] 0"}));
  EXPECT_EQ(TraceOf("field(1)", inputs), (Steps{"field(1): field[\"a\\\"\\x01\"] 1 text",
                                                "Val(field(1)): Val[\"a\\\"\\x01\"] 0"}));
  const std::vector<std::string_view> escaped = {"\\ ~\x7F\xC3"};
  inputs.SetFields(escaped);
  EXPECT_EQ(TraceOf("field(0)", inputs).front(), "field(0): field[\"\\\\ ~\\x7F\\xC3\"] 1 text");
  inputs.SetText(Input::Frame, "");
  EXPECT_EQ(TraceOf("CanVal(frame, 7, 0)", inputs), (Steps{"frame: frame[\"\"] 0"}));
}

TEST(ExpressionTrace, HoldsTheNumbersOfTheArguments) {
  CFormulaInputs inputs;
  inputs.SetText(Input::Frame, "12321122");
  std::vector<EvaluationStep> steps;
  EXPECT_EQ(Compiled("CanVal(frame, 6, 1) * 2").Trace(inputs, steps).value, 2.0 * 0x22);
  ASSERT_EQ(steps.size(), 3U);
  ASSERT_EQ(steps[1].numbers.size(), 3U);
  EXPECT_TRUE(std::isnan(steps[1].numbers[0]));
  EXPECT_EQ(steps[1].numbers[1], 6.0);
  EXPECT_EQ(steps[2].numbers, (std::vector<double>{0x22, 2.0}));
  EXPECT_EQ(steps[2].result, 2.0 * 0x22);
}

TEST(ExpressionTrace, ShowsNoMoreOfATextThanTheLimitSays) {
  const std::string kOmission = "\xE2\x80\xA6";
  CFormulaInputs inputs;
  std::vector<EvaluationStep> steps;
  const std::string longest(kMaxTracedText, '7');
  inputs.SetText(Input::Line, longest);
  Compiled("line").Trace(inputs, steps);
  EXPECT_EQ(steps.at(0).arguments.at(0), "\"" + longest + "\"");
  const std::string longer = longest + "8";
  inputs.SetText(Input::Line, longer);
  Compiled("line").Trace(inputs, steps);
  EXPECT_EQ(steps.at(0).arguments.at(0), "\"" + longest + "\"" + kOmission);

  EXPECT_EQ(Compiled(std::string(kMaxTracedText - 1, '0') + "5").StepText(0).size(),
            kMaxTracedText);
  const std::string text = Compiled("'" + std::string(kMaxTracedText, '1') + "'").StepText(0);
  EXPECT_EQ(text, "Val('" + std::string(kMaxTracedText - 1, '1') + kOmission + ")");
}

TEST(ExpressionTrace, CutsATextBetweenTwoCharacters) {
  const std::string before(kMaxTracedText - 2, '1');
  const std::string text = Compiled("'" + before + "\xC3\xA4'").StepText(0);
  EXPECT_EQ(text, "Val('" + before + "\xE2\x80\xA6)");
}

}  // namespace
}  // namespace lum::decoding
