// Formula expressions: any text is refused at a place within it or evaluates the same again, step
// by step and in parts; what is printed from a tree gives what the tree gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "decoding/Expression.h"
#include "fuzz/FuzzInput.h"
#include "tests/decoding/NaiveFormula.h"

namespace {

using namespace lum::decoding;
using lum::test::IsSameNumber;

/// The inputs of one record, with what they are views of.
struct Record {
  explicit Record(const lum::test::Choose& choose) : naive(lum::test::MakeInputs(choose)) {
    lum::test::SetInputs(naive, inputs, views);
  }

  lum::test::NaiveInputs naive;
  std::vector<std::string_view> views;
  CFormulaInputs inputs;
};

void ExpectSame(const Evaluation& a, const Evaluation& b, const std::string& text) {
  EXPECT_EQ(a.absence, b.absence) << text;
  EXPECT_EQ(a.step, b.step) << text;
  EXPECT_PRED2(IsSameNumber, a.value, b.value) << text;
}

/// The part of the formula that a step names is a formula of its own, with the same result.
void CheckPart(const EvaluationStep& step, CFormulaInputs& inputs) {
  const bool isText = step.numbers.size() == 1 && std::isnan(step.numbers[0]) &&
                      std::isnan(step.result) && step.arguments[0] != "nan";
  if (step.text.size() > kMaxTracedText || isText) {
    return;
  }
  auto compiled = CExpression::Compile(step.text);
  ASSERT_TRUE(std::holds_alternative<CExpression>(compiled)) << step.text;
  const Evaluation part = std::get<CExpression>(compiled).Evaluate(inputs);
  EXPECT_EQ(part.absence, step.absence) << step.text;
  EXPECT_PRED2(IsSameNumber, part.value, step.absence == AbsenceReason::None ? step.result : 0.0)
      << step.text;
}

void CheckEvaluation(const CExpression& expression, CFormulaInputs& inputs) {
  constexpr std::size_t kMostParts = 50;
  const Evaluation evaluation = expression.Evaluate(inputs);
  ExpectSame(expression.Evaluate(inputs), evaluation, expression.Text());
  std::vector<EvaluationStep> steps;
  ExpectSame(expression.Trace(inputs, steps), evaluation, expression.Text());
  EXPECT_EQ(steps.back().absence, evaluation.absence);
  EXPECT_FALSE(expression.StepText(evaluation.step).empty());
  for (std::size_t i = 0; i < std::min(steps.size(), kMostParts); ++i) {
    CheckPart(steps[i], inputs);
  }
}

void CheckError(const ExpressionError& error, std::string_view text) {
  const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
  EXPECT_TRUE(error.line >= 1 && error.line <= lines) << error.Message();
  EXPECT_TRUE(error.column >= 1 && error.column <= static_cast<int>(text.size()) + 1)
      << error.Message();
  EXPECT_FALSE(error.found.empty());
}

void CheckText(std::string_view text, const lum::test::Choose& choose) {
  const auto compiled = CExpression::Compile(text);
  if (const auto* error = std::get_if<ExpressionError>(&compiled)) {
    CheckError(*error, text);
  } else if (text.find("ExpandTime") == std::string_view::npos) {  // It asks for the time of day.
    Record record(choose);
    CheckEvaluation(std::get<CExpression>(compiled), record.inputs);
  }
}

void CheckTree(const lum::test::Choose& choose) {
  const lum::test::NaiveNode formula = lum::test::MakeFormula(choose, 5);
  const std::string text = lum::test::Print(formula, choose);
  auto compiled = CExpression::Compile(text);
  ASSERT_TRUE(std::holds_alternative<CExpression>(compiled))
      << text << ": " << std::get<ExpressionError>(compiled).Message();
  Record record(choose);
  const lum::test::NaiveResult expected = lum::test::Evaluate(formula, record.naive);
  const CExpression& expression = std::get<CExpression>(compiled);
  const Evaluation evaluation = expression.Evaluate(record.inputs);
  EXPECT_EQ(evaluation.absence, expected.absence) << text;
  EXPECT_PRED2(IsSameNumber, evaluation.value, expected.number) << text;
  CheckEvaluation(expression, record.inputs);
}

}  // namespace

// Text or tree; the text, or choices.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  lum::fuzz::CChoices choices(data, size);
  const lum::test::Choose choose = [&choices] { return choices(); };
  if (in.Bool()) {
    CheckTree(choose);
  } else {
    CheckText(in.Rest(), choose);
  }
  return 0;
}
