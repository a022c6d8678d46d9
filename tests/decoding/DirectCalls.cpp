#include "tests/decoding/DirectCalls.h"

#include <map>
#include <memory>
#include <span>
#include <vector>

#include "values/LumType.h"

namespace lum::test {
namespace {

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
  for (const CallArgument& argument : call.arguments) {
    if (argument.isText) {
      values.push_back(std::make_unique<CLumIoName>(
          CStringA(argument.bytes.data(), static_cast<int>(argument.bytes.size()))));
    } else {
      values.push_back(std::make_unique<CLumDouble>(argument.number));
    }
  }
  return values;
}

}  // namespace

bool HasDirectCall(std::string_view operation) { return kDirectCalls.contains(operation); }

std::optional<double> CallDirectly(const SingleCall& call) {
  const auto values = MakeValues(call);
  std::vector<CLumType*> arguments;
  for (const auto& value : values) {
    arguments.push_back(value.get());
  }
  CLumDouble result(0.0);
  const int code = kDirectCalls.at(call.operation->name)(result, arguments, call.lenient);
  double number = 0.0;
  result.GetDouble(number);
  return code != 0 ? std::optional(number) : std::nullopt;
}

}  // namespace lum::test
