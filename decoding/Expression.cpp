#include "decoding/Expression.h"

#include <algorithm>
#include <span>
#include <utility>

#include "decoding/FormulaParser.h"
#include "decoding/FormulaProgram.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

AbsenceReason ReasonOf(InputState state) {
  return state == InputState::Missing ? AbsenceReason::MissingInput : AbsenceReason::EmptyInput;
}

AbsenceReason LoadField(const FormulaStep& step, CFormulaInputs& inputs) {
  const InputState state = inputs.FieldState(step.place);
  if (state != InputState::Present) {
    return ReasonOf(state);
  }
  *step.taker = &inputs.Field(step.place);
  return AbsenceReason::None;
}

AbsenceReason LoadInput(FormulaStep& step, CFormulaInputs& inputs) {
  const auto input = static_cast<Input>(step.place);
  const InputState state = inputs.State(input);
  if (state != InputState::Present) {
    return ReasonOf(state);
  }
  if (!CFormulaInputs::IsText(input)) {
    step.number = inputs.ReadNumber(input);
  }
  if (step.taker != nullptr) {
    *step.taker = &inputs.Value(input);
  }
  return AbsenceReason::None;
}

AbsenceReason CallOperation(FormulaStep& step) {
  step.result.CLumDouble::SetDouble(0.0);
  const std::span arguments(step.arguments.data(), step.argumentCount);
  const int code = step.operation->call(step.result, arguments, step.lenient);
  step.result.CLumDouble::GetDouble(step.number);
  return code != 0 ? AbsenceReason::None : AbsenceReason::NoValue;
}

double Compute(const FormulaStep& step) {
  const double first = *step.numbers[0];
  switch (step.kind) {
    case StepKind::Add:
      return first + *step.numbers[1];
    case StepKind::Subtract:
      return first - *step.numbers[1];
    case StepKind::Multiply:
      return first * *step.numbers[1];
    case StepKind::Divide:
      return first / *step.numbers[1];
    default:
      return -first;
  }
}

AbsenceReason TakeStep(FormulaStep& step, CFormulaInputs& inputs) {
  switch (step.kind) {
    case StepKind::Input:
      return LoadInput(step, inputs);
    case StepKind::Field:
      return LoadField(step, inputs);
    case StepKind::Constant:
      return AbsenceReason::None;
    case StepKind::CallOnCopy:
      step.copy.CLumDouble::SetDouble(*step.numbers[0]);
      [[fallthrough]];
    case StepKind::Call:
      return CallOperation(step);
    default:
      step.number = Compute(step);
      if (step.isTakenByCall) {
        step.result.CLumDouble::SetDouble(step.number);
      }
      return AbsenceReason::None;
  }
}

ExpressionError ErrorAt(std::string_view text, const FormulaFault& fault) {
  const std::string_view before = text.substr(0, fault.place);
  const std::size_t lastBreak = before.rfind('\n');
  const std::string_view line =
      lastBreak == std::string_view::npos ? before : before.substr(lastBreak + 1);
  const auto characters =
      std::count_if(line.begin(), line.end(), [](char byte) { return !IsContinuation(byte); });
  ExpressionError error;
  error.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  error.column = 1 + static_cast<int>(characters);
  error.found = fault.found;
  error.expected = fault.expected;
  error.suggestion = fault.suggestion;
  return error;
}

}  // namespace

// ---- Steps

Evaluation TakeSteps(std::span<FormulaStep> steps, CFormulaInputs& inputs) {
  Evaluation evaluation;
  for (FormulaStep& step : steps) {
    evaluation.absence = TakeStep(step, inputs);
    if (evaluation.absence != AbsenceReason::None) {
      return evaluation;
    }
    ++evaluation.step;
  }
  evaluation.step = 0;
  evaluation.value = steps.back().number;
  return evaluation;
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
  return TakeSteps(m_program->steps, inputs);
}

const std::string& CExpression::Text() const { return m_program->text; }

bool CExpression::Uses(Input input) const {
  return (m_program->usedInputs >> static_cast<std::uint32_t>(input) & 1U) != 0;
}

}  // namespace lum::decoding
