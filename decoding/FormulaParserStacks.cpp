// The parser's two stacks: what waits for its right side, and what has a value already.
#include "decoding/FormulaNames.h"
#include "decoding/FormulaParser.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

constexpr int kSumPrecedence = 1;
constexpr int kProductPrecedence = 2;
constexpr int kSignPrecedence = 3;

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

}  // namespace

int FormulaPrecedence(TokenKind sign) {
  const bool isSum = sign == TokenKind::Plus || sign == TokenKind::Minus;
  return isSum ? kSumPrecedence : kProductPrecedence;
}

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
        (isSign ? kSignPrecedence : FormulaPrecedence(top.sign)) < precedence) {
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
