// The formula operations in the kinds that do not have them: nothing done, nothing touched.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Kind;
using lum::test::Kinds;
using lum::test::TextOf;

struct Operation {
  const char* name;
  int (*call)(CLumType& result, CLumType& a, CLumType& b, CLumType& c, CLumType& d);
};

#define ONE(name)                                                    \
  {                                                                  \
#name, [](CLumType & result, CLumType & a, CLumType&, CLumType&, \
              CLumType&) { return result.name(a); }                  \
  }
#define TWO(name)                                                       \
  {                                                                     \
#name, [](CLumType & result, CLumType & a, CLumType & b, CLumType&, \
              CLumType&) { return result.name(a, b); }                  \
  }
#define THREE(name)                                                        \
  {                                                                        \
#name, [](CLumType & result, CLumType & a, CLumType & b, CLumType & c, \
              CLumType&) { return result.name(a, b, c); }                  \
  }

const Operation kOperations[] = {
    THREE(ClipValue),
    THREE(GateValue),
    TWO(NMEAPos),
    {"Val", [](CLumType& result, CLumType& a, CLumType&, CLumType&,
               CLumType&) { return result.Val(a, true); }},
    ONE(TimeConv),
    ONE(Inverse),
    ONE(ExpandTime),
    TWO(ExpandTimeEx),
    ONE(HmsToMsec),
    ONE(UtcToLocal),
    ONE(LocalToUtc),
    ONE(YyToCcyy),
    {"CYMDMsecToMsec", [](CLumType& result, CLumType& a, CLumType& b, CLumType& c,
                          CLumType& d) { return result.CYMDMsecToMsec(a, b, c, d); }},
    TWO(Pow1D),
    ONE(Sqr1D),
    ONE(Log1D),
    ONE(Neg),
    ONE(Int),
    ONE(ValToStr),
    TWO(ValToMyStr),
    ONE(IsNull),
    THREE(IsEqual),
    TWO(IsGreater),
    TWO(IsLess),
    ONE(Sign),
    {"BinVal", [](CLumType& result, CLumType& a, CLumType& b, CLumType&,
                  CLumType&) { return result.BinVal(a, b, true); }},
    {"CanVal", [](CLumType& result, CLumType& a, CLumType& b, CLumType& c,
                  CLumType&) { return result.CanVal(a, b, c, true); }},
    TWO(AdamVal),
    TWO(CheckInValid),
    {"J1939Val", [](CLumType& result, CLumType& a, CLumType& b, CLumType& c,
                    CLumType&) { return result.J1939Val(a, b, c, true); }},
    {"J1939BitsVal", [](CLumType& result, CLumType& a, CLumType& b, CLumType& c,
                        CLumType& d) { return result.J1939BitsVal(a, b, c, d, true); }},
    TWO(BitVal),
    TWO(FromEulerRoll),
    ONE(OutString),
    THREE(FormatGeogsDMS),
    ONE(Sin),
    ONE(Cos),
    ONE(Asin),
    ONE(Acos),
    TWO(Bearing),
    TWO(Modulo),
    THREE(ValueInRange),
    THREE(SelectValue),
};

#undef ONE
#undef TWO
#undef THREE

// The operations that not even the working kind of formulas has.
const std::set<std::string> kNowhere = {"ValToStr", "ValToMyStr", "OutString", "FormatGeogsDMS"};

bool IsDefault(const std::string& kind, const std::string& operation) {
  if (kind == "double") {
    return kNowhere.contains(operation);
  }
  return operation != "Neg" || (kind != "double2d" && kind != "double3d");
}

TEST(FormulaDefaults, CoverEveryOperation) { EXPECT_EQ(std::size(kOperations), 43U); }

TEST(FormulaDefaults, DoNothingInOtherKinds) {
  for (const Kind& kind : Kinds()) {
    for (const Operation& operation : kOperations) {
      if (!IsDefault(kind.name, operation.name)) {
        continue;
      }
      SCOPED_TRACE(std::string(kind.name) + "." + operation.name);
      const auto result = kind.make(1);
      const std::string before = TextOf(*result);
      CLumDouble a(1.0);
      CLumDouble b(0.5);
      CLumDouble c(2.0);
      CLumDouble d(3.0);
      EXPECT_EQ(operation.call(*result, a, b, c, d), 0);
      EXPECT_EQ(TextOf(*result), before);
      EXPECT_EQ(TextOf(a) + TextOf(b) + TextOf(c) + TextOf(d), "1.0000000.5000002.0000003.000000");
    }
  }
}

}  // namespace
