#include "decoding/FormulaParser.h"

#include <cmath>
#include <limits>
#include <optional>

#include "decoding/FormulaNames.h"

namespace lum::decoding {
namespace {

constexpr int kSumPrecedence = 1;
constexpr int kProductPrecedence = 2;
constexpr int kSignPrecedence = 3;

int PrecedenceOf(TokenKind sign) {
  const bool isSum = sign == TokenKind::Plus || sign == TokenKind::Minus;
  return isSum ? kSumPrecedence : kProductPrecedence;
}

StepKind BinaryKind(TokenKind sign) {
  switch (sign) {
    case TokenKind::Plus:
      return StepKind::Add;
    case TokenKind::Minus:
      return StepKind::Subtract;
    case TokenKind::Times:
      return StepKind::Multiply;
    default:
      return StepKind::Divide;
  }
}

FormulaStep LoadStep(StepKind kind, std::uint8_t place) {
  FormulaStep step;
  step.kind = kind;
  step.place = place;
  step.number = std::numeric_limits<double>::quiet_NaN();
  return step;
}

FormulaStep CallStep(const Operation& operation, bool lenient) {
  FormulaStep step;
  step.kind = operation.changesArgument ? StepKind::CallOnCopy : StepKind::Call;
  step.operation = &operation;
  step.lenient = lenient;
  step.argumentCount = static_cast<std::uint8_t>(operation.argumentCount);
  return step;
}

FormulaStep ArithmeticStep(StepKind kind, std::uint8_t argumentCount) {
  FormulaStep step;
  step.kind = kind;
  step.argumentCount = argumentCount;
  return step;
}

std::string Counted(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

/// "3 arguments: CanVal(frame, typeCode, startByte)"
std::string CountedArguments(const Operation& operation) {
  return Counted(operation.argumentCount) + ": " + CallText(operation);
}

}  // namespace

CFormulaParser::CFormulaParser(FormulaProgram& program)
    : m_program(program), m_lexer(program.text) {}

void CFormulaParser::Parse() {
  Advance();
  while (m_wantsValue || m_token.kind != TokenKind::End) {
    if (m_wantsValue) {
      TakeValue();
    } else {
      TakeOperator();
    }
  }
  TakeEnd();
}

// ---- Where a value is wanted

bool CFormulaParser::IsLenientNext() const {
  return !m_pending.empty() && m_pending.back().kind == Kind::Call &&
         ArgumentsOf(m_pending.back()) == m_pending.back().operation->argumentCount;
}

void CFormulaParser::TakeValue() {
  if (IsLenientNext()) {
    TakeLenient();
    return;
  }
  switch (m_token.kind) {
    case TokenKind::Number:
      PushNumber(m_token.number, m_token.begin);
      break;
    case TokenKind::Text:
      PushText();
      break;
    case TokenKind::Name:
      TakeName();
      break;
    case TokenKind::Plus:
    case TokenKind::Minus:
      TakeSign();
      break;
    case TokenKind::Open:
      Push({.kind = Kind::Parenthesis, .begin = m_token.begin});
      Advance();
      break;
    case TokenKind::Close:
      if (!m_pending.empty() && m_pending.back().kind == Kind::Call &&
          ArgumentsOf(m_pending.back()) == 0) {
        FinishCall();
      }
      [[fallthrough]];
    default:
      Refuse("a value");
  }
}

// A sign before a number is part of it; elsewhere a minus is a step.
void CFormulaParser::TakeSign() {
  const FormulaToken sign = m_token;
  Advance();
  if (m_token.kind == TokenKind::Number) {
    const bool isNegative = sign.kind == TokenKind::Minus;
    PushNumber(isNegative ? -m_token.number : m_token.number, sign.begin);
  } else {
    Push({.kind = Kind::Sign, .sign = sign.kind, .begin = sign.begin});
  }
}

void CFormulaParser::TakeName() {
  const FormulaToken name = m_token;
  Advance();
  if (m_token.kind != TokenKind::Open) {
    TakePlainName(name);
  } else if (name.text == kFieldName) {
    TakeField(name);
  } else {
    OpenCall(name);
  }
}

void CFormulaParser::TakePlainName(const FormulaToken& name) {
  if (const std::optional<Input> input = FindInput(name.text)) {
    const auto place = static_cast<std::uint8_t>(*input);
    m_program.usedInputs |= std::uint32_t{1} << place;
    FormulaStep step = LoadStep(StepKind::Input, place);
    step.begin = name.begin;
    step.end = name.End();
    PushLoad(step, InputTable()[place].isText);
    return;
  }
  if (IsLenientWord(name.text)) {
    throw FormulaFault{name.begin, QuotedPart(name.text), "a value", ""};
  }
  const Operation* operation = FindOperation(name.text);
  if (operation == nullptr && name.text != kFieldName) {
    throw UnknownName(name);
  }
  throw FormulaFault{name.begin, QuotedPart(name.text) + " without its arguments",
                     operation != nullptr ? CallText(*operation) : "field(0) to field(255)", ""};
}

void CFormulaParser::TakeField(const FormulaToken& name) {
  Advance();
  const bool isField = m_token.kind == TokenKind::Number && m_token.number >= 0.0 &&
                       m_token.number < static_cast<double>(CFormulaInputs::kMaxFields) &&
                       m_token.number == std::trunc(m_token.number);
  if (!isField) {
    Refuse("the number of a field, a whole number from 0 to 255");
  }
  const auto field = static_cast<std::uint8_t>(m_token.number);
  Advance();
  if (m_token.kind != TokenKind::Close) {
    Refuse("')'");
  }
  FormulaStep step = LoadStep(StepKind::Field, field);
  step.begin = name.begin;
  step.end = m_token.End();
  PushLoad(step, true);
  Advance();
}

void CFormulaParser::OpenCall(const FormulaToken& name) {
  const Operation* operation = FindOperation(name.text);
  if (operation == nullptr) {
    throw UnknownOperation(name);
  }
  if (!operation->isSupported) {
    throw FormulaFault{name.begin, "operation " + QuotedPart(name.text) + ", which gives no value",
                       "an operation that does", ""};
  }
  Push({.kind = Kind::Call,
        .operation = operation,
        .firstOperand = m_operands.size(),
        .begin = name.begin});
  Advance();
}

void CFormulaParser::TakeLenient() {
  if (m_token.kind != TokenKind::Name || !IsLenientWord(m_token.text)) {
    Refuse("lenient, true or false, behind " + CountedArguments(*m_pending.back().operation));
  }
  m_pending.back().lenient = m_token.text != "false";
  Advance();
  if (m_token.kind != TokenKind::Close) {
    Refuse("')'");
  }
  FinishCall();
}

// ---- Behind a value

void CFormulaParser::TakeOperator() {
  switch (m_token.kind) {
    case TokenKind::Plus:
    case TokenKind::Minus:
    case TokenKind::Times:
    case TokenKind::Divide:
      TakeBinary(PrecedenceOf(m_token.kind));
      break;
    case TokenKind::Comma:
      TakeComma();
      break;
    case TokenKind::Close:
      TakeClose();
      break;
    default:
      RefuseOperator();
  }
}

// The left side becomes a number now, before anything on the right is evaluated.
void CFormulaParser::TakeBinary(int precedence) {
  Reduce(precedence);
  MakeNumber();
  Push({.kind = Kind::Binary, .sign = m_token.kind});
  m_wantsValue = true;
  Advance();
}

void CFormulaParser::TakeComma() {
  Reduce(0);
  if (m_pending.empty() || m_pending.back().kind != Kind::Call) {
    RefuseOperator();
  }
  const Pending& call = m_pending.back();
  FinishArgument(call);
  if (ArgumentsOf(call) == call.operation->argumentCount && !call.operation->takesLenient) {
    throw FormulaFault{m_token.begin, "another argument", CountedArguments(*call.operation), ""};
  }
  m_wantsValue = true;
  Advance();
}

void CFormulaParser::TakeClose() {
  Reduce(0);
  if (m_pending.empty()) {
    RefuseOperator();
  }
  if (m_pending.back().kind == Kind::Call) {
    FinishArgument(m_pending.back());
    FinishCall();
    return;
  }
  m_operands.back().begin = m_pending.back().begin;
  m_operands.back().end = m_token.End();
  Pop();
  Advance();
}

void CFormulaParser::TakeEnd() {
  Reduce(0);
  if (!m_pending.empty()) {
    RefuseOperator();
  }
  MakeNumber();
  if (m_program.steps.empty()) {
    EmitConstant(m_operands.back());
  }
  m_program.Bind();
}

// ---- The two stacks

void CFormulaParser::Push(const Pending& pending) {
  m_depth += pending.kind == Kind::Binary ? 0 : 1;
  if (m_depth > kMaxExpressionDepth) {
    throw FormulaFault{pending.begin, "a part nested too deep",
                       "at most " + std::to_string(kMaxExpressionDepth) + " levels", ""};
  }
  m_pending.push_back(pending);
}

void CFormulaParser::Pop() {
  m_depth -= m_pending.back().kind == Kind::Binary ? 0 : 1;
  m_pending.pop_back();
}

void CFormulaParser::PushNumber(double number, std::size_t begin) {
  FormulaConstant& constant = m_program.numbers.emplace_back(number);
  m_operands.push_back({.constant = &constant.value,
                        .number = &constant.number,
                        .begin = begin,
                        .end = m_token.End()});
  m_wantsValue = false;
  Advance();
}

void CFormulaParser::PushText() {
  CLumType* constant = &m_program.texts.emplace_back(
      CStringA(m_token.bytes.data(), static_cast<int>(m_token.bytes.size())));
  m_operands.push_back(
      {.isText = true, .constant = constant, .begin = m_token.begin, .end = m_token.End()});
  m_wantsValue = false;
  Advance();
}

void CFormulaParser::PushLoad(const FormulaStep& step, bool isText) {
  m_operands.push_back(Emit(step, m_operands.size()));
  m_operands.back().isText = isText;
  m_wantsValue = false;
}

void CFormulaParser::Reduce(int precedence) {
  while (!m_pending.empty()) {
    const Pending& top = m_pending.back();
    const bool isSign = top.kind == Kind::Sign;
    if ((!isSign && top.kind != Kind::Binary) ||
        (isSign ? kSignPrecedence : PrecedenceOf(top.sign)) < precedence) {
      return;
    }
    ReduceTop();
  }
}

void CFormulaParser::ReduceTop() {
  const Pending top = m_pending.back();
  Pop();
  MakeNumber();
  if (top.kind == Kind::Sign && top.sign == TokenKind::Plus) {
    m_operands.back().begin = top.begin;
    return;
  }
  const bool isSign = top.kind == Kind::Sign;
  FormulaStep step =
      isSign ? ArithmeticStep(StepKind::Negate, 1) : ArithmeticStep(BinaryKind(top.sign), 2);
  const std::size_t first = m_operands.size() - step.argumentCount;
  step.begin = isSign ? top.begin : m_operands[first].begin;
  step.end = m_operands.back().end;
  m_operands.push_back(Emit(step, first));
}

void CFormulaParser::FinishArgument(const Pending& call) {
  const OperationArgument& argument = call.operation->arguments[ArgumentsOf(call) - 1];
  const Operand& operand = m_operands.back();
  if (argument.form != ArgumentForm::kText) {
    MakeNumber();
  } else if (!operand.isText && !argument.takesNumber) {
    throw FormulaFault{
        operand.begin, "a number",
        "a text: the " + std::string(argument.name) + " of " + CallText(*call.operation), ""};
  }
}

void CFormulaParser::FinishCall() {
  const Pending call = m_pending.back();
  if (ArgumentsOf(call) != call.operation->argumentCount) {
    throw FormulaFault{m_token.begin, Counted(ArgumentsOf(call)), CountedArguments(*call.operation),
                       ""};
  }
  FormulaStep step = CallStep(*call.operation, call.lenient);
  step.begin = call.begin;
  step.end = m_token.End();
  Pop();
  m_operands.push_back(Emit(step, call.firstOperand));
  m_wantsValue = false;
  Advance();
}

void CFormulaParser::MakeNumber() {
  const Operand& operand = m_operands.back();
  if (!operand.isText) {
    return;
  }
  FormulaStep step = CallStep(*FindOperation("Val"), false);
  step.isImplied = true;
  step.begin = operand.begin;
  step.end = operand.end;
  m_operands.push_back(Emit(step, m_operands.size() - 1));
}

// The operands from the first on become the step's arguments; it takes their place.
CFormulaParser::Operand CFormulaParser::Emit(FormulaStep step, std::size_t firstOperand) {
  for (std::size_t i = 0; i < step.argumentCount; ++i) {
    const Operand& operand = m_operands[firstOperand + i];
    if (step.kind == StepKind::Call) {
      step.arguments[i] = operand.constant;
    } else {
      step.numbers[i] = operand.number;
    }
    step.sources[i] = operand.step;
  }
  m_operands.resize(firstOperand);
  m_program.steps.push_back(step);
  const auto place = static_cast<std::uint32_t>(m_program.steps.size() - 1);
  return {.step = place, .begin = step.begin, .end = step.end};
}

void CFormulaParser::EmitConstant(const Operand& operand) {
  FormulaStep step;
  step.number = *operand.number;
  step.begin = operand.begin;
  step.end = operand.end;
  m_program.steps.push_back(step);
}

// ---- Refusals

void CFormulaParser::Refuse(const std::string& expected) const {
  const bool isEnd = m_token.kind == TokenKind::End;
  throw FormulaFault{m_token.begin, isEnd ? "the end" : QuotedPart(m_token.text), expected, ""};
}

void CFormulaParser::RefuseOperator() const {
  if (m_pending.empty()) {
    Refuse("an operator or the end");
  }
  Refuse(m_pending.back().kind == Kind::Call ? "an operator, ',' or ')'" : "an operator or ')'");
}

}  // namespace lum::decoding
