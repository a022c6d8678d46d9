// Compiled formulas against trees that are evaluated in the plainest way.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "decoding/Expression.h"
#include "tests/decoding/NaiveFormula.h"

namespace {

using lum::decoding::AbsenceReason;
using lum::decoding::CExpression;
using lum::decoding::CFormulaInputs;
using lum::decoding::Evaluation;
using lum::decoding::ExpressionError;

constexpr int kFormulas = 10'000;
constexpr int kRecords = 4;

/// How the evaluations ended, for the proof that all ends are reached.
using Ends = std::map<AbsenceReason, int>;

void CompareOnRecords(const lum::test::NaiveNode& formula, const CExpression& expression,
                      const lum::test::Choose& choose, Ends& ends) {
  static CFormulaInputs inputs;
  std::vector<std::string_view> views;
  for (int i = 0; i < kRecords; ++i) {
    const lum::test::NaiveInputs record = lum::test::MakeInputs(choose);
    lum::test::SetInputs(record, inputs, views);
    const lum::test::NaiveResult expected = lum::test::Evaluate(formula, record);
    for (int again = 0; again < 2; ++again) {
      const Evaluation evaluation = expression.Evaluate(inputs);
      ASSERT_EQ(evaluation.absence, expected.absence) << expression.Text();
      ASSERT_PRED2(lum::test::IsSameNumber, evaluation.value, expected.number) << expression.Text();
    }
    ++ends[expected.absence];
  }
}

TEST(RandomExpressions, GiveWhatTheirTreesGiveToTheLastBit) {
  std::mt19937 random(23);
  const lum::test::Choose choose = [&random] { return random(); };
  Ends ends;
  for (int i = 0; i < kFormulas; ++i) {
    const lum::test::NaiveNode formula = lum::test::MakeFormula(choose, 4);
    const std::string text = lum::test::Print(formula, choose);
    const auto compiled = CExpression::Compile(text);
    const ExpressionError* error = std::get_if<ExpressionError>(&compiled);
    ASSERT_EQ(error, nullptr) << text << ": " << error->Message();
    ASSERT_NO_FATAL_FAILURE(
        CompareOnRecords(formula, std::get<CExpression>(compiled), choose, ends));
  }
  for (const AbsenceReason reason : {AbsenceReason::None, AbsenceReason::EmptyInput,
                                     AbsenceReason::MissingInput, AbsenceReason::NoValue}) {
    EXPECT_GT(ends[reason], kFormulas * kRecords / 40) << static_cast<int>(reason);
  }
}

}  // namespace
