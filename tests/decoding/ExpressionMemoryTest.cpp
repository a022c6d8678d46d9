// Formulas allocate nothing for one record after the other.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "decoding/Expression.h"
#include "tests/Allocations.h"
#include "tests/decoding/Formulas.h"

namespace lum::decoding {
namespace {

using lum::test::Compiled;

struct RecordTexts {
  std::string frame;
  std::string line;
  std::vector<std::string_view> fields;
};

double EvaluateAll(const std::vector<CExpression>& expressions, CFormulaInputs& inputs,
                   const RecordTexts& record) {
  inputs.Clear();
  inputs.SetText(Input::Frame, record.frame);
  inputs.SetText(Input::Line, record.line);
  inputs.SetNumber(Input::Raw, 4.0);
  inputs.SetFields(record.fields);
  double sum = 0.0;
  for (const CExpression& expression : expressions) {
    sum += expression.Evaluate(inputs).value;
  }
  return sum;
}

TEST(ExpressionMemory, NothingIsAllocatedForARecordLikeOneBefore) {
  std::vector<CExpression> expressions;
  for (const std::string_view text :
       {"CanVal(frame, 7, 2) * 0.125", "CanVal(frame, -7, 2)", "Asin(raw) + raw", "line",
        "NMEAPos(field(1), field(2)) + field(0)", "field(3) * 2", "TimeConv(field(0))", "time",
        "Val(field(9))", "BinVal(line, 7)", "SelectValue(raw, 1 / 0, IsNull(raw))", "'5' + '6'"}) {
    expressions.push_back(Compiled(text));
  }
  const std::string longLine = "12.5 " + std::string(5000, 'x');
  const RecordTexts records[] = {
      {"98FEF1008FFFF3412AABBCCDD", longLine, {"120000.5", "4807.038", "S", ""}},
      {"1230", "1", {"1", "2", "N", "abc"}},
      {"98FEF1008000034120000CCDD", "7 and more", {"010203", "01131.000", "E", "-12.25"}},
  };
  CFormulaInputs inputs;
  std::vector<double> sums;
  for (const RecordTexts& record : records) {
    sums.push_back(EvaluateAll(expressions, inputs, record));
  }
  const int before = CountedAllocations();
  bool isSame = true;
  for (int i = 0; i < 300; ++i) {
    const std::size_t place = static_cast<std::size_t>(i) % std::size(records);
    isSame = isSame && EvaluateAll(expressions, inputs, records[place]) == sums[place];
  }
  EXPECT_EQ(CountedAllocations(), before);
  EXPECT_TRUE(isSame);
  EXPECT_NE(sums[0], sums[2]);
}

TEST(ExpressionMemory, CompilingAndEvaluatingGiveBackAllMemory) {
  const int before = LiveAllocations();
  {
    CFormulaInputs inputs;
    inputs.SetText(Input::Line, "12.5 m");
    std::vector<EvaluationStep> steps;
    EXPECT_EQ(Compiled("line + Val('5')").Trace(inputs, steps).value, 17.5);
    EXPECT_TRUE(std::holds_alternative<ExpressionError>(CExpression::Compile("Sin('a' + (1, 2)")));
  }
  EXPECT_EQ(LiveAllocations(), before);
}

}  // namespace
}  // namespace lum::decoding
