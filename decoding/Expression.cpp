#include "decoding/Expression.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "decoding/FormulaParser.h"
#include "decoding/FormulaProgram.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

double NumberOf(const CLumType& value) {
  double number = 0.0;
  static_cast<const CLumDouble&>(value).CLumDouble::GetDouble(number);
  return number;
}

AbsenceReason ReasonOf(InputState state) {
  return state == InputState::Missing ? AbsenceReason::MissingInput : AbsenceReason::EmptyInput;
}

AbsenceReason Load(const FormulaStep& step, CFormulaInputs& inputs) {
  const bool isField = step.kind == StepKind::Field;
  const auto input = static_cast<Input>(step.place);
  const InputState state = isField ? inputs.FieldState(step.place) : inputs.State(input);
  if (state != InputState::Present) {
    return ReasonOf(state);
  }
  *step.taker = isField ? &inputs.Field(step.place) : &inputs.Value(input);
  return AbsenceReason::None;
}

AbsenceReason Call(FormulaStep& step) {
  step.result.CLumDouble::SetDouble(0.0);
  const std::span arguments(step.arguments.data(), step.argumentCount);
  return step.operation->call(step.result, arguments, step.lenient) != 0 ? AbsenceReason::None
                                                                         : AbsenceReason::NoValue;
}

// Arguments of arithmetic are of the double kind: constants, number inputs and results.
double Compute(const FormulaStep& step) {
  const double first = NumberOf(*step.arguments[0]);
  if (step.kind == StepKind::Negate) {
    return -first;
  }
  const double second = NumberOf(*step.arguments[1]);
  switch (step.kind) {
    case StepKind::Add:
      return first + second;
    case StepKind::Subtract:
      return first - second;
    case StepKind::Multiply:
      return first * second;
    default:
      return first / second;
  }
}

ExpressionError ErrorAt(std::string_view text, const FormulaFault& fault) {
  ExpressionError error;
  const std::string_view before = text.substr(0, fault.place);
  const std::size_t lineStart = before.rfind('\n') + 1;
  const std::string_view line = before.substr(lineStart);
  error.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  error.column = 1 + static_cast<int>(line.size() - static_cast<std::size_t>(std::count_if(
                                                        line.begin(), line.end(), IsContinuation)));
  error.found = fault.found;
  error.expected = fault.expected;
  error.suggestion = fault.suggestion;
  return error;
}

}  // namespace

// ---- Steps

AbsenceReason TakeStep(FormulaStep& step, CFormulaInputs& inputs) {
  switch (step.kind) {
    case StepKind::Input:
    case StepKind::Field:
      return Load(step, inputs);
    case StepKind::Constant:
      return AbsenceReason::None;
    case StepKind::CallOnCopy:
      step.copy.CLumDouble::SetDouble(NumberOf(*step.arguments[1]));
      return Call(step);
    case StepKind::Call:
      return Call(step);
    default:
      step.result.CLumDouble::SetDouble(Compute(step));
      return AbsenceReason::None;
  }
}

double ResultOf(const FormulaStep& step) {
  double number = std::numeric_limits<double>::quiet_NaN();
  const CLumType* value = step.IsLoad() ? *step.taker : &step.result;
  value->GetDouble(number);
  return number;
}

// ---- Compilation

std::string ExpressionError::Message() const {
  std::string message =
      "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
  message += expected.empty() ? found : "found " + found + ", expected " + expected;
  return suggestion.empty() ? message : message + "; did you mean '" + suggestion + "'?";
}

std::variant<CExpression, ExpressionError> CExpression::Compile(std::string_view text) {
  if (text.size() > kMaxExpressionLength) {
    const std::string_view kept = text.substr(0, kMaxExpressionLength);
    return ErrorAt(kept, {kept.size(), std::to_string(text.size()) + " bytes",
                          "a formula of at most " + std::to_string(kMaxExpressionLength), ""});
  }
  auto program = std::make_unique<FormulaProgram>();
  program->text = text;
  try {
    CFormulaParser(*program).Parse();
  } catch (const FormulaFault& fault) {
    return ErrorAt(text, fault);
  }
  return CExpression(std::move(program));
}

CExpression::CExpression(std::unique_ptr<FormulaProgram> program) : m_program(std::move(program)) {}
CExpression::CExpression(CExpression&&) noexcept = default;
CExpression& CExpression::operator=(CExpression&&) noexcept = default;
CExpression::~CExpression() = default;

// ---- Evaluation

Evaluation CExpression::Evaluate(CFormulaInputs& inputs) const {
  Evaluation evaluation;
  for (FormulaStep& step : m_program->steps) {
    evaluation.absence = TakeStep(step, inputs);
    if (evaluation.absence != AbsenceReason::None) {
      return evaluation;
    }
    ++evaluation.step;
  }
  evaluation.step = 0;
  evaluation.value = ResultOf(m_program->steps.back());
  return evaluation;
}

const std::string& CExpression::Text() const { return m_program->text; }

bool CExpression::Uses(Input input) const {
  return (m_program->usedInputs >> static_cast<std::uint32_t>(input) & 1U) != 0;
}

}  // namespace lum::decoding
