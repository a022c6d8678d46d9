#include "decoding/FormulaParser.h"
#include "decoding/Utf8Text.h"

#include <cmath>
#include <limits>
#include <optional>

#include "decoding/FormulaNames.h"

namespace lum::decoding {
namespace {

FormulaStep LoadStep(StepKind kind, std::uint8_t place) {
  FormulaStep step;
  step.kind = kind;
  step.place = place;
  step.number = std::numeric_limits<double>::quiet_NaN();
  return step;
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
      TakeBinary(FormulaPrecedence(m_token.kind));
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

}  // namespace lum::decoding
