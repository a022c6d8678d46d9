// The examples of docs/formula-expressions.md: each line with an arrow.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/NumberLiteral.h"

namespace lum::decoding {
namespace {

constexpr std::string_view kArrow = " \xE2\x86\x92 ";

std::string Trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(' ');
  const std::size_t end = text.find_last_not_of(" \r");
  return begin == std::string::npos ? "" : text.substr(begin, end + 1 - begin);
}

std::string ReasonText(AbsenceReason reason) {
  switch (reason) {
    case AbsenceReason::MissingInput:
      return "missing input: ";
    case AbsenceReason::EmptyInput:
      return "empty input: ";
    default:
      return "no value: ";
  }
}

/// What stands behind the arrow: a number, why there is none, or what is wrong.
std::string OutcomeOf(const std::string& formula, CFormulaInputs& inputs) {
  const auto compiled = CExpression::Compile(formula);
  if (const auto* error = std::get_if<ExpressionError>(&compiled)) {
    return error->Message();
  }
  const CExpression& expression = std::get<CExpression>(compiled);
  const Evaluation evaluation = expression.Evaluate(inputs);
  return evaluation.HasValue()
             ? NumberText(std::round(evaluation.value * 1e9) / 1e9)
             : ReasonText(evaluation.absence) + expression.StepText(evaluation.step);
}

TEST(ExpressionDocument, ShowsWhatItsFormulasGive) {
  const std::vector<std::string_view> fields = {"$GPGLL", "4807.038", "S", "", "abc"};
  CFormulaInputs inputs;
  inputs.SetText(Input::Frame, "98FEF1008FFFF3412AABBCCDD");
  inputs.SetText(Input::Channel, "");
  inputs.SetNumber(Input::Pgn, 65265.0);
  inputs.SetNumber(Input::Raw, -2.0);
  inputs.SetFields(fields);
  std::ifstream file(LUM_EXPRESSION_DOCUMENT);
  int examples = 0;
  for (std::string line; std::getline(file, line);) {
    const std::size_t arrow = line.find(kArrow);
    if (line.starts_with("    ") && arrow != std::string::npos) {
      const std::string formula = Trimmed(line.substr(0, arrow));
      EXPECT_EQ(OutcomeOf(formula, inputs), Trimmed(line.substr(arrow + kArrow.size()))) << formula;
      ++examples;
    }
  }
  EXPECT_GT(examples, 30);
}

TEST(ExpressionDocument, NamesAllInputs) {
  std::ifstream file(LUM_EXPRESSION_DOCUMENT);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const InputName& input : InputTable()) {
    EXPECT_NE(text.find("`" + std::string(input.name) + "`"), std::string::npos) << input.name;
  }
}

}  // namespace
}  // namespace lum::decoding
