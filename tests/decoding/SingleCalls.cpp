#include "tests/decoding/SingleCalls.h"

#include <functional>
#include <limits>

#include "decoding/NumberLiteral.h"

namespace lum::test {
namespace {

using decoding::Operation;

constexpr double kNumbers[] = {0.0,
                               1.0,
                               -1.0,
                               2.5,
                               -7.0,
                               7.0,
                               12.0,
                               3.0,
                               90.0,
                               -0.0,
                               45.5,
                               1e20,
                               725.0,
                               2024.0,
                               6e-310,
                               86399.0,
                               123456.5,
                               -2.25,
                               std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};

/// Texts that mean something to each of the operations that take one, and some that do not.
constexpr const char* kTexts[] = {"98FEF1008FFFF3412AABBCCDD",
                                  "12381122334455667788",
                                  ">00FF0F0043F17D8DE02EFFFFFF;",
                                  ">+01.234-00.500+05.000+00.125+09.999+01.000+00.000-10.000",
                                  "4807.038",
                                  "12.5 m",
                                  "235959.5",
                                  "1A2B",
                                  "S",
                                  "abc",
                                  "",
                                  "x",
                                  "\x01\x02\x03\x04\xFF\xFE\x7F\x80\x10"};

/// Another choice for each round and place, by turns.
template <typename T, std::size_t N>
const T& Turn(const T (&values)[N], std::size_t round, std::size_t place) {
  return values[(round * (2 * place + 1) + 3 * place) % N];
}

CallArgument MakeArgument(const decoding::OperationArgument& argument, std::size_t round,
                          std::size_t place) {
  const bool isText =
      argument.form == decoding::ArgumentForm::kText && !(argument.takesNumber && round % 3 == 2);
  return isText ? CallArgument{true, 0.0, Turn(kTexts, round, place)}
                : CallArgument{false, Turn(kNumbers, round, place), ""};
}

/// Every byte as an escape.
std::string TextLiteral(const std::string& bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string literal = "'";
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    literal += std::string("\\x") + kDigits[code / 16] + kDigits[code % 16];
  }
  return literal + "'";
}

using PrintText = std::function<std::string(const CallArgument&)>;

std::string FormulaOf(const SingleCall& call, const PrintText& printText) {
  std::string text = std::string(call.operation->name) + "(";
  for (const CallArgument& argument : call.arguments) {
    text += text.back() == '(' ? "" : ", ";
    text += argument.isText ? printText(argument) : decoding::NumberText(argument.number);
  }
  return text + (call.lenient ? ", lenient)" : ")");
}

}  // namespace

std::string SingleCall::Formula() const {
  return FormulaOf(*this, [](const CallArgument& argument) { return TextLiteral(argument.bytes); });
}

std::string SingleCall::FormulaOfFields() const {
  std::size_t field = 0;
  return FormulaOf(*this, [&field](const CallArgument& argument) {
    return argument.bytes.empty() ? "''" : "field(" + std::to_string(++field) + ")";
  });
}

std::vector<std::string> SingleCall::Fields() const {
  std::vector<std::string> fields;
  for (const CallArgument& argument : arguments) {
    if (argument.isText && !argument.bytes.empty()) {
      fields.push_back(argument.bytes);
    }
  }
  return fields;
}

std::vector<SingleCall> SingleCalls() {
  constexpr std::size_t kRounds = 20;
  std::vector<SingleCall> calls;
  for (const Operation& operation : decoding::Operations()) {
    if (!operation.isSupported || operation.name == "ExpandTime") {
      continue;
    }
    for (std::size_t round = 0; round < kRounds; ++round) {
      SingleCall call{&operation, {}, operation.takesLenient && round % 2 == 1};
      for (const decoding::OperationArgument& argument : operation.Arguments()) {
        call.arguments.push_back(MakeArgument(argument, round, call.arguments.size()));
      }
      calls.push_back(call);
    }
  }
  // By turns there is hardly ever a date.
  calls.push_back({decoding::FindOperation("CYMDMsecToMsec"),
                   {{false, 2024.0, ""}, {false, 2.0, ""}, {false, 30.0, ""}, {false, 1.5, ""}},
                   false});
  return calls;
}

}  // namespace lum::test
