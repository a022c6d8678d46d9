// Formula operations when memory runs out: whatever the arguments are, the result and they stay as
// they were.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/memory/RefusalWalk.h"
#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Kind;
using lum::test::Kinds;

struct Arguments {
  CLumDouble result = -1.0;
  std::unique_ptr<CLumType> first;
  std::unique_ptr<CLumType> second;
  std::unique_ptr<CLumType> third;
  std::unique_ptr<CLumType> fourth;
};

struct Formula {
  const char* name;
  void (*call)(Arguments&);
};

const std::vector<Formula>& Formulas() {
  static const std::vector<Formula> formulas = {
      {"Asin", [](Arguments& a) { a.result.Asin(*a.first); }},
      {"Acos", [](Arguments& a) { a.result.Acos(*a.first); }},
      {"Sin", [](Arguments& a) { a.result.Sin(*a.first); }},
      {"Val", [](Arguments& a) { a.result.Val(*a.first, true); }},
      {"TimeConv", [](Arguments& a) { a.result.TimeConv(*a.first); }},
      {"NMEAPos", [](Arguments& a) { a.result.NMEAPos(*a.first, *a.second); }},
      {"Pow1D", [](Arguments& a) { a.result.Pow1D(*a.first, *a.second); }},
      {"ExpandTimeEx", [](Arguments& a) { a.result.ExpandTimeEx(*a.first, *a.second); }},
      {"UtcToLocal", [](Arguments& a) { a.result.UtcToLocal(*a.first); }},
      {"CYMDMsecToMsec",
       [](Arguments& a) { a.result.CYMDMsecToMsec(*a.first, *a.second, *a.third, *a.fourth); }},
      {"IsEqual", [](Arguments& a) { a.result.IsEqual(*a.first, *a.second, *a.third); }},
      {"ClipValue", [](Arguments& a) { a.result.ClipValue(*a.first, *a.second, *a.third); }},
      {"SelectValue", [](Arguments& a) { a.result.SelectValue(*a.first, *a.second, *a.third); }},
      {"BinVal", [](Arguments& a) { a.result.BinVal(*a.first, *a.second, true); }},
      {"BitVal", [](Arguments& a) { a.result.BitVal(*a.first, *a.second); }},
      {"AdamVal", [](Arguments& a) { a.result.AdamVal(*a.first, *a.second); }},
      {"CanVal", [](Arguments& a) { a.result.CanVal(*a.first, *a.second, *a.third, false); }},
      {"J1939Val", [](Arguments& a) { a.result.J1939Val(*a.first, *a.second, *a.third, false); }},
      {"J1939BitsVal",
       [](Arguments& a) {
         a.result.J1939BitsVal(*a.first, *a.second, *a.third, *a.fourth, false);
       }},
      {"arithmetic",
       [](Arguments& a) {
         a.result += *a.first;
         a.result *= *a.second;
       }},
  };
  return formulas;
}

std::string DescribeArguments(const Arguments& arguments) {
  return lum::test::TextOf(arguments.result) + "|" + lum::test::TextOf(*arguments.first) + "|" +
         lum::test::TextOf(*arguments.second);
}

/// Arguments of one kind with a text that is a number or a long text without one.
void WalkKind(const Formula& formula, const Kind& kind, const wchar_t* text) {
  const auto prepare = [&](Arguments& arguments) {
    for (auto* argument :
         {&arguments.first, &arguments.second, &arguments.third, &arguments.fourth}) {
      *argument = kind.make(1);
      (*argument)->SetValueStr(CString(text));
      (*argument)->SetName(WideToUtf8(text));
    }
  };
  const auto run = [&formula](Arguments& arguments) {
    formula.call(arguments);
    return true;
  };
  lum::test::WalkRefusals(
      lum::test::Operation<Arguments>{formula.name, lum::test::Guarantee::Unchanged, run, prepare,
                                      false},
      DescribeArguments);
}

TEST(FormulaArgumentsMemory, ResultAndArgumentsStayAsTheyWere) {
  const int before = lum::test::AllRefusals();
  for (const Formula& formula : Formulas()) {
    for (const Kind& kind : Kinds()) {
      SCOPED_TRACE(kind.name);
      WalkKind(formula, kind, L"7");
      WalkKind(formula, kind, L"a text of many characters, none of which is a digit");
    }
  }
  EXPECT_GT(lum::test::AllRefusals(), before);
}

}  // namespace
