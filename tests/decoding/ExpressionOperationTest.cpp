// Every operation in a formula against the same call in C++: answer and bits.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/Expression.h"
#include "tests/decoding/Formulas.h"
#include "tests/decoding/NaiveFormula.h"
#include "tests/decoding/SingleCalls.h"

namespace lum::decoding {
namespace {

using lum::test::Compiled;
using lum::test::SingleCall;

using Arguments = std::span<CLumType* const>;
using DirectCall = int (*)(CLumDouble&, Arguments, bool);

const std::map<std::string_view, DirectCall> kDirectCalls = {
    {"ClipValue",
     [](CLumDouble& r, Arguments a, bool) { return r.ClipValue(*a[0], *a[1], *a[2]); }},
    {"GateValue",
     [](CLumDouble& r, Arguments a, bool) { return r.GateValue(*a[0], *a[1], *a[2]); }},
    {"NMEAPos", [](CLumDouble& r, Arguments a, bool) { return r.NMEAPos(*a[0], *a[1]); }},
    {"Val", [](CLumDouble& r, Arguments a, bool lenient) { return r.Val(*a[0], lenient); }},
    {"TimeConv", [](CLumDouble& r, Arguments a, bool) { return r.TimeConv(*a[0]); }},
    {"Inverse", [](CLumDouble& r, Arguments a, bool) { return r.Inverse(*a[0]); }},
    {"ExpandTimeEx", [](CLumDouble& r, Arguments a, bool) { return r.ExpandTimeEx(*a[0], *a[1]); }},
    {"HmsToMsec", [](CLumDouble& r, Arguments a, bool) { return r.HmsToMsec(*a[0]); }},
    {"UtcToLocal", [](CLumDouble& r, Arguments a, bool) { return r.UtcToLocal(*a[0]); }},
    {"LocalToUtc", [](CLumDouble& r, Arguments a, bool) { return r.LocalToUtc(*a[0]); }},
    {"YyToCcyy", [](CLumDouble& r, Arguments a, bool) { return r.YyToCcyy(*a[0]); }},
    {"CYMDMsecToMsec",
     [](CLumDouble& r, Arguments a, bool) { return r.CYMDMsecToMsec(*a[0], *a[1], *a[2], *a[3]); }},
    {"Pow1D", [](CLumDouble& r, Arguments a, bool) { return r.Pow1D(*a[0], *a[1]); }},
    {"Sqr1D", [](CLumDouble& r, Arguments a, bool) { return r.Sqr1D(*a[0]); }},
    {"Log1D", [](CLumDouble& r, Arguments a, bool) { return r.Log1D(*a[0]); }},
    {"Neg", [](CLumDouble& r, Arguments a, bool) { return r.Neg(*a[0]); }},
    {"Int", [](CLumDouble& r, Arguments a, bool) { return r.Int(*a[0]); }},
    {"IsNull", [](CLumDouble& r, Arguments a, bool) { return r.IsNull(*a[0]); }},
    {"IsEqual", [](CLumDouble& r, Arguments a, bool) { return r.IsEqual(*a[0], *a[1], *a[2]); }},
    {"IsGreater", [](CLumDouble& r, Arguments a, bool) { return r.IsGreater(*a[0], *a[1]); }},
    {"IsLess", [](CLumDouble& r, Arguments a, bool) { return r.IsLess(*a[0], *a[1]); }},
    {"Sign", [](CLumDouble& r, Arguments a, bool) { return r.Sign(*a[0]); }},
    {"BinVal",
     [](CLumDouble& r, Arguments a, bool lenient) { return r.BinVal(*a[0], *a[1], lenient); }},
    {"CanVal", [](CLumDouble& r, Arguments a,
                  bool lenient) { return r.CanVal(*a[0], *a[1], *a[2], lenient); }},
    {"AdamVal", [](CLumDouble& r, Arguments a, bool) { return r.AdamVal(*a[0], *a[1]); }},
    {"CheckInValid", [](CLumDouble& r, Arguments a, bool) { return r.CheckInValid(*a[0], *a[1]); }},
    {"J1939Val", [](CLumDouble& r, Arguments a,
                    bool lenient) { return r.J1939Val(*a[0], *a[1], *a[2], lenient); }},
    {"J1939BitsVal",
     [](CLumDouble& r, Arguments a, bool lenient) {
       return r.J1939BitsVal(*a[0], *a[1], *a[2], *a[3], lenient);
     }},
    {"BitVal", [](CLumDouble& r, Arguments a, bool) { return r.BitVal(*a[0], *a[1]); }},
    {"FromEulerRoll",
     [](CLumDouble& r, Arguments a, bool) { return r.FromEulerRoll(*a[0], *a[1]); }},
    {"Sin", [](CLumDouble& r, Arguments a, bool) { return r.Sin(*a[0]); }},
    {"Cos", [](CLumDouble& r, Arguments a, bool) { return r.Cos(*a[0]); }},
    {"Asin", [](CLumDouble& r, Arguments a, bool) { return r.Asin(*a[0]); }},
    {"Acos", [](CLumDouble& r, Arguments a, bool) { return r.Acos(*a[0]); }},
    {"Bearing", [](CLumDouble& r, Arguments a, bool) { return r.Bearing(*a[0], *a[1]); }},
    {"Modulo", [](CLumDouble& r, Arguments a, bool) { return r.Modulo(*a[0], *a[1]); }},
    {"ValueInRange",
     [](CLumDouble& r, Arguments a, bool) { return r.ValueInRange(*a[0], *a[1], *a[2]); }},
    {"SelectValue",
     [](CLumDouble& r, Arguments a, bool) { return r.SelectValue(*a[0], *a[1], *a[2]); }},
};

std::vector<std::unique_ptr<CLumType>> MakeValues(const SingleCall& call) {
  std::vector<std::unique_ptr<CLumType>> values;
  for (const lum::test::CallArgument& argument : call.arguments) {
    if (argument.isText) {
      values.push_back(std::make_unique<CLumIoName>(
          CStringA(argument.bytes.data(), static_cast<int>(argument.bytes.size()))));
    } else {
      values.push_back(std::make_unique<CLumDouble>(argument.number));
    }
  }
  return values;
}

TEST(ExpressionOperations, GiveWhatDirectCallsGive) {
  CFormulaInputs inputs;
  std::map<std::string_view, int> withValue;
  const std::vector<SingleCall> calls = lum::test::SingleCalls();
  for (const SingleCall& call : calls) {
    const auto values = MakeValues(call);
    std::vector<CLumType*> arguments;
    for (const auto& value : values) {
      arguments.push_back(value.get());
    }
    CLumDouble result(0.0);
    const int code = kDirectCalls.at(call.operation->name)(result, arguments, call.lenient);
    double expected = 0.0;
    result.GetDouble(expected);
    const Evaluation evaluation = Compiled(call.Formula()).Evaluate(inputs);
    ASSERT_EQ(evaluation.HasValue(), code != 0) << call.Formula();
    if (code != 0) {
      EXPECT_PRED2(lum::test::IsSameNumber, evaluation.value, expected) << call.Formula();
      ++withValue[call.operation->name];
    } else {
      EXPECT_EQ(evaluation.absence, AbsenceReason::NoValue) << call.Formula();
    }
  }
  EXPECT_GE(calls.size(), 700U);
  for (const auto& [name, call] : kDirectCalls) {
    EXPECT_GT(withValue[name], 0) << name;
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
    EXPECT_EQ(kDirectCalls.count(operation.name) != 0,
              operation.isSupported && operation.name != "ExpandTime")
        << operation.name;
  }
  CFormulaInputs inputs;
  EXPECT_TRUE(Compiled("ExpandTime(1000)").Evaluate(inputs).HasValue());
}

}  // namespace
}  // namespace lum::decoding
