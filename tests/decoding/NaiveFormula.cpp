#include "tests/decoding/NaiveFormula.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>

#include "decoding/NumberLiteral.h"

namespace lum::test {
namespace {

using decoding::AbsenceReason;
using decoding::ArgumentForm;
using decoding::Input;
using decoding::Operation;

constexpr double kNumbers[] = {0.0,
                               1.0,
                               2.0,
                               3.0,
                               7.0,
                               8.0,
                               12.0,
                               0.5,
                               0.125,
                               6.0,
                               1e300,
                               90.0,
                               360.0,
                               2024.0,
                               1e-310,
                               123456.0,
                               5000.0,
                               1e10,
                               std::numeric_limits<double>::infinity()};
constexpr const char* kTexts[] = {"98FEF1008FFFFFFFFFFFFFFFF",
                                  "12381122334455667788",
                                  ">00FF0F0043F17D8DE02EFFFFFF;",
                                  "12.5",
                                  "4807.038",
                                  "N",
                                  "S",
                                  "-7",
                                  "abc",
                                  "120000.5",
                                  "1A2B",
                                  " 3e2x",
                                  ">+01.234-00.500+05.000",
                                  "0x10"};

template <typename T, std::size_t N>
T Pick(const T (&values)[N], const Choose& choose) {
  return values[choose() % N];
}

std::string MakeText(const Choose& choose) {
  if (choose() % 4 != 0) {
    return Pick(kTexts, choose);
  }
  std::string text;
  for (auto length = choose() % 6; length > 0; --length) {
    text += static_cast<char>(choose() % 256);
  }
  return text;
}

double MakeNumber(const Choose& choose) {
  return choose() % 4 == 0 ? static_cast<double>(choose() % 4096) / 16.0 : Pick(kNumbers, choose);
}

NaiveNode MakeTextNode(const Choose& choose) {
  NaiveNode node;
  switch (choose() % 3) {
    case 0:
      node.kind = NaiveNode::Kind::Text;
      node.text = MakeText(choose);
      break;
    case 1:
      node.kind = NaiveNode::Kind::Field;
      node.field = choose() % 5;
      break;
    default:
      node.kind = NaiveNode::Kind::Input;
      node.input = static_cast<Input>(choose() % 5);
  }
  return node;
}

NaiveNode MakeLeaf(const Choose& choose) {
  NaiveNode node;
  if (choose() % 3 == 0) {
    return MakeTextNode(choose);
  }
  if (choose() % 3 == 0) {
    node.kind = NaiveNode::Kind::Input;
    node.input = static_cast<Input>(5 + choose() % 9);
    return node;
  }
  node.number = MakeNumber(choose);
  return node;
}

const Operation& PickOperation(const Choose& choose) {
  const auto operations = decoding::Operations();
  while (true) {
    const Operation& operation = operations[choose() % operations.size()];
    if (operation.isSupported && operation.name != "ExpandTime") {
      return operation;
    }
  }
}

NaiveNode MakeCall(const Choose& choose, int levels) {
  NaiveNode node;
  node.kind = NaiveNode::Kind::Call;
  node.operation = &PickOperation(choose);
  node.lenient = node.operation->takesLenient && choose() % 3 == 0;
  for (const decoding::OperationArgument& argument : node.operation->Arguments()) {
    const bool isText =
        argument.form == ArgumentForm::kText && !(argument.takesNumber && choose() % 2 == 0);
    node.children.push_back(isText ? MakeTextNode(choose) : MakeFormula(choose, levels - 1));
  }
  return node;
}

std::string TextLiteral(const std::string& text, char quote) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string literal(1, quote);
  for (const char ch : text) {
    const auto code = static_cast<unsigned char>(ch);
    if (ch == quote || ch == '\\') {
      literal += std::string("\\") + ch;
    } else if (code < 0x20 || code >= 0x7F) {
      literal += std::string("\\x") + kDigits[code / 16] + kDigits[code % 16];
    } else {
      literal += ch;
    }
  }
  return literal + quote;
}

/// How tightly a node holds together: sums, products, all else.
int Tightness(const NaiveNode& node) {
  const bool isSum = node.sign == '+' || node.sign == '-';
  return node.kind != NaiveNode::Kind::Binary ? 3 : isSum ? 1 : 2;
}

std::string Blank(const Choose& choose) {
  static constexpr const char* kBlanks[] = {"", "", "", " ", "\n", "\t "};
  return Pick(kBlanks, choose);
}

std::string PrintSide(const NaiveNode& node, int tightness, const Choose& choose) {
  const std::string text = Blank(choose) + Print(node, choose) + Blank(choose);
  return Tightness(node) < tightness || choose() % 8 == 0 ? "(" + text + ")" : text;
}

std::string PrintCall(const NaiveNode& node, const Choose& choose) {
  std::string text = std::string(node.operation->name) + Blank(choose) + "(";
  for (const NaiveNode& child : node.children) {
    text += (&child == node.children.data() ? "" : ",") + PrintSide(child, 0, choose);
  }
  if (node.operation->takesLenient && (node.lenient || choose() % 4 == 0)) {
    text += node.lenient ? choose() % 2 == 0 ? ", lenient" : ", true" : ", false";
  }
  return text + ")";
}

/// A value of the library, or why there is none.
struct Value {
  AbsenceReason absence = AbsenceReason::None;
  std::unique_ptr<CLumType> value;
};

Value Absent(AbsenceReason reason) { return {reason, nullptr}; }

Value MakeName(const std::string& text) {
  return {AbsenceReason::None,
          std::make_unique<CLumIoName>(CStringA(text.data(), static_cast<int>(text.size())))};
}

Value OfRecord(const std::string& text) {
  return text.empty() ? Absent(AbsenceReason::EmptyInput) : MakeName(text);
}

Value MakeDouble(double number) {
  return {AbsenceReason::None, std::make_unique<CLumDouble>(number)};
}

Value ValueOfInput(Input input, const NaiveInputs& inputs) {
  if (const auto text = inputs.texts.find(input); text != inputs.texts.end()) {
    return OfRecord(text->second);
  }
  const auto number = inputs.numbers.find(input);
  return number == inputs.numbers.end() ? Absent(AbsenceReason::MissingInput)
                                        : MakeDouble(number->second);
}

Value ValueOf(const NaiveNode& node, const NaiveInputs& inputs);

Value ReadAsNumber(Value read) {
  double number = 0.0;
  if (read.absence != AbsenceReason::None || read.value->GetDouble(number) != 0) {
    return read;
  }
  auto result = std::make_unique<CLumDouble>(0.0);
  const int code = result->Val(*read.value, false);
  return {code != 0 ? AbsenceReason::None : AbsenceReason::NoValue, std::move(result)};
}

Value CallOf(const NaiveNode& node, const NaiveInputs& inputs) {
  std::vector<Value> values;
  std::vector<CLumType*> arguments;
  for (const NaiveNode& child : node.children) {
    const bool isText = node.operation->arguments[values.size()].form == ArgumentForm::kText;
    Value value = ValueOf(child, inputs);
    values.push_back(isText ? std::move(value) : ReadAsNumber(std::move(value)));
    if (values.back().absence != AbsenceReason::None) {
      return Absent(values.back().absence);
    }
    arguments.push_back(values.back().value.get());
  }
  auto result = std::make_unique<CLumDouble>(0.0);
  const int code = node.operation->call(*result, arguments, node.lenient);
  return {code != 0 ? AbsenceReason::None : AbsenceReason::NoValue, std::move(result)};
}

CLumDouble Computed(char sign, const CLumDouble& first, const CLumDouble& second) {
  switch (sign) {
    case '+':
      return first + second;
    case '-':
      return first - second;
    case '*':
      return first * second;
    default:
      return first / second;
  }
}

Value BinaryOf(const NaiveNode& node, const NaiveInputs& inputs) {
  Value sides[2];
  for (std::size_t i = 0; i < 2; ++i) {
    sides[i] = ReadAsNumber(ValueOf(node.children[i], inputs));
    if (sides[i].absence != AbsenceReason::None) {
      return Absent(sides[i].absence);
    }
  }
  return {AbsenceReason::None, std::make_unique<CLumDouble>(
                                   Computed(node.sign, static_cast<CLumDouble&>(*sides[0].value),
                                            static_cast<CLumDouble&>(*sides[1].value)))};
}

Value NegatedOf(const NaiveNode& node, const NaiveInputs& inputs) {
  Value value = ReadAsNumber(ValueOf(node.children[0], inputs));
  if (value.absence != AbsenceReason::None) {
    return value;
  }
  auto result = std::make_unique<CLumDouble>(0.0);
  result->Neg(*value.value);
  return {AbsenceReason::None, std::move(result)};
}

Value ValueOf(const NaiveNode& node, const NaiveInputs& inputs) {
  switch (node.kind) {
    case NaiveNode::Kind::Number:
      return MakeDouble(node.number);
    case NaiveNode::Kind::Text:
      return MakeName(node.text);
    case NaiveNode::Kind::Input:
      return ValueOfInput(node.input, inputs);
    case NaiveNode::Kind::Field:
      return node.field < inputs.fields.size() ? OfRecord(inputs.fields[node.field])
                                               : Absent(AbsenceReason::MissingInput);
    case NaiveNode::Kind::Call:
      return CallOf(node, inputs);
    case NaiveNode::Kind::Negate:
      return NegatedOf(node, inputs);
    default:
      return BinaryOf(node, inputs);
  }
}

}  // namespace

NaiveInputs MakeInputs(const Choose& choose) {
  NaiveInputs inputs;
  for (std::size_t i = 0; i < decoding::kInputCount; ++i) {
    const auto input = static_cast<Input>(i);
    if (choose() % 8 == 0) {
      continue;
    }
    if (decoding::InputTable()[i].isText) {
      inputs.texts[input] = choose() % 16 == 0 ? "" : MakeText(choose);
    } else {
      inputs.numbers[input] = MakeNumber(choose) * (choose() % 3 == 0 ? -1.0 : 1.0);
    }
  }
  for (auto count = choose() % 6; count > 0; --count) {
    inputs.fields.push_back(choose() % 8 == 0 ? "" : MakeText(choose));
  }
  return inputs;
}

void SetInputs(const NaiveInputs& from, decoding::CFormulaInputs& inputs,
               std::vector<std::string_view>& views) {
  inputs.Clear();
  for (const auto& [input, text] : from.texts) {
    inputs.SetText(input, text);
  }
  for (const auto& [input, number] : from.numbers) {
    inputs.SetNumber(input, number);
  }
  views.assign(from.fields.begin(), from.fields.end());
  inputs.SetFields(views);
}

NaiveNode MakeFormula(const Choose& choose, int levels) {
  if (levels <= 0 || choose() % 6 == 0) {
    return MakeLeaf(choose);
  }
  NaiveNode node;
  switch (choose() % 5) {
    case 0:
      node.kind = NaiveNode::Kind::Negate;
      node.children.push_back(MakeFormula(choose, levels - 1));
      return node;
    case 1:
    case 2:
      node.kind = NaiveNode::Kind::Binary;
      node.sign = "+-*/"[choose() % 4];
      node.children.push_back(MakeFormula(choose, levels - 1));
      node.children.push_back(MakeFormula(choose, levels - 1));
      return node;
    default:
      return MakeCall(choose, levels);
  }
}

std::string Print(const NaiveNode& node, const Choose& choose) {
  switch (node.kind) {
    case NaiveNode::Kind::Number:
      return decoding::NumberText(node.number);
    case NaiveNode::Kind::Text:
      return TextLiteral(node.text, choose() % 2 == 0 ? '"' : '\'');
    case NaiveNode::Kind::Input:
      return std::string(decoding::InputTable()[static_cast<std::size_t>(node.input)].name);
    case NaiveNode::Kind::Field:
      return "field(" + std::to_string(node.field) + ")";
    case NaiveNode::Kind::Call:
      return PrintCall(node, choose);
    case NaiveNode::Kind::Negate:
      return "-" + PrintSide(node.children[0], 3, choose);
    default: {
      const int tightness = Tightness(node);
      const std::string left = PrintSide(node.children[0], tightness, choose);
      return left + node.sign + PrintSide(node.children[1], tightness + 1, choose);
    }
  }
}

NaiveResult Evaluate(const NaiveNode& node, const NaiveInputs& inputs) {
  const Value value = ReadAsNumber(ValueOf(node, inputs));
  NaiveResult result{value.absence, 0.0};
  if (value.absence == AbsenceReason::None) {
    value.value->GetDouble(result.number);
  }
  return result;
}

bool IsSameNumber(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

}  // namespace lum::test
