// Every operation in a formula against the same call in C++: answer and bits.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "decoding/Expression.h"
#include "tests/decoding/DirectCalls.h"
#include "tests/decoding/Formulas.h"
#include "tests/decoding/NaiveFormula.h"
#include "tests/decoding/SingleCalls.h"

namespace lum::decoding {
namespace {

using lum::test::Compiled;
using lum::test::SingleCall;

TEST(ExpressionOperations, GiveWhatDirectCallsGive) {
  CFormulaInputs inputs;
  std::map<std::string_view, int> withValue;
  const std::vector<SingleCall> calls = lum::test::SingleCalls();
  for (const SingleCall& call : calls) {
    const std::optional<double> expected = lum::test::CallDirectly(call);
    const Evaluation evaluation = Compiled(call.Formula()).Evaluate(inputs);
    ASSERT_EQ(evaluation.HasValue(), expected.has_value()) << call.Formula();
    if (expected) {
      EXPECT_PRED2(lum::test::IsSameNumber, evaluation.value, *expected) << call.Formula();
      ++withValue[call.operation->name];
    } else {
      EXPECT_EQ(evaluation.absence, AbsenceReason::NoValue) << call.Formula();
    }
  }
  EXPECT_GE(calls.size(), 700U);
  for (const SingleCall& call : calls) {
    EXPECT_GT(withValue[call.operation->name], 0) << call.operation->name;
  }
}

TEST(ExpressionOperations, ArePartsOfWholeFormulasWithTheSameBits) {
  CLumIoName frame(CStringA("98FEF1008FFFF3412AABBCCDD"));
  CLumDouble code(-7.0), start(2.0), scale(0.1), offset(-273.15), third(3.0);
  CLumDouble raw(0.0), root(0.0);
  ASSERT_EQ(raw.CanVal(frame, code, start, false), 1);
  const CLumDouble scaled = raw * scale + offset;
  CLumDouble quotient = scaled / third;
  ASSERT_EQ(root.Sqr1D(quotient), 1);
  const CLumDouble total = root - scaled * scaled / (raw - third);
  double expected = 0.0;
  total.GetDouble(expected);
  CFormulaInputs inputs;
  inputs.SetText(Input::Frame, "98FEF1008FFFF3412AABBCCDD");
  const Evaluation evaluation =
      Compiled(
          "Sqr1D((CanVal(frame, -7, 2) * 0.1 + -273.15) / 3)"
          " - (CanVal(frame, -7, 2) * 0.1 - 273.15) * (CanVal(frame, -7, 2) * 0.1 - 273.15)"
          " / (CanVal(frame, -7, 2) - 3)")
          .Evaluate(inputs);
  EXPECT_PRED2(lum::test::IsSameNumber, evaluation.value, expected);
}

TEST(ExpressionOperations, LeaveOutTheTimeOfDayAndWhatNoKindHas) {
  for (const Operation& operation : Operations()) {
    EXPECT_EQ(lum::test::HasDirectCall(operation.name),
              operation.isSupported && operation.name != "ExpandTime")
        << operation.name;
  }
  CFormulaInputs inputs;
  EXPECT_TRUE(Compiled("ExpandTime(1000)").Evaluate(inputs).HasValue());
}

}  // namespace
}  // namespace lum::decoding
