// Evaluations told step by step.
#include <limits>

#include "decoding/FormulaLexer.h"
#include "decoding/FormulaNames.h"
#include "decoding/FormulaProgram.h"
#include "decoding/LogText.h"
#include "decoding/NumberLiteral.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

constexpr std::string_view kOmission = "\xE2\x80\xA6";

/// A text no longer than a trace shows.
std::string Shortened(std::string_view text) {
  if (text.size() <= kMaxTracedText) {
    return std::string(text);
  }
  std::size_t end = kMaxTracedText;
  while (end > 0 && IsContinuation(text[end])) {
    --end;
  }
  return std::string(text.substr(0, end)).append(kOmission);
}

void AppendEscaped(std::string& literal, char byte) {
  if (byte == '"' || byte == '\\') {
    literal += '\\';
    literal += byte;
  } else if (byte >= 0x20 && byte < 0x7F) {
    literal += byte;
  } else {
    const auto code = static_cast<unsigned char>(byte);
    literal += "\\x";
    literal += detail::kUpperDigits[code / 16U];
    literal += detail::kUpperDigits[code % 16U];
  }
}

std::string TextLiteral(std::string_view text) {
  std::string literal(1, '"');
  for (const char byte : text.substr(0, kMaxTracedText)) {
    AppendEscaped(literal, byte);
  }
  literal += '"';
  return text.size() > kMaxTracedText ? literal.append(kOmission) : literal;
}

std::string_view OperationName(const FormulaProgram& program, const FormulaStep& step) {
  switch (step.kind) {
    case StepKind::Input:
      return InputTable()[step.place].name;
    case StepKind::Field:
      return kFieldName;
    case StepKind::Constant:
      return std::string_view(program.text).substr(step.begin, step.end - step.begin);
    case StepKind::Negate:
    case StepKind::Subtract:
      return "-";
    case StepKind::Add:
      return "+";
    case StepKind::Multiply:
      return "*";
    case StepKind::Divide:
      return "/";
    default:
      return step.operation->name;
  }
}

void AddNumber(EvaluationStep& told, double number) {
  told.arguments.push_back(NumberText(number));
  told.numbers.push_back(number);
}

void AddText(EvaluationStep& told, std::string_view text) {
  told.arguments.push_back(TextLiteral(text));
  told.numbers.push_back(std::numeric_limits<double>::quiet_NaN());
}

/// What an operation takes: a number or the bytes of a text.
void AddValue(EvaluationStep& told, const CLumType& value) {
  double number = 0.0;
  CStringA text;
  if (value.GetDouble(number) != 0) {
    AddNumber(told, number);
  } else if (value.GetName(text) != 0) {
    AddText(told, {text.GetString(), static_cast<std::size_t>(text.GetLength())});
  }
}

void AddInput(EvaluationStep& told, const FormulaStep& step, const CFormulaInputs& inputs) {
  const auto input = static_cast<Input>(step.place);
  if (told.absence == AbsenceReason::MissingInput) {
    return;
  }
  if (step.kind == StepKind::Field) {
    AddText(told, inputs.FieldText(step.place));
  } else if (CFormulaInputs::IsText(input)) {
    AddText(told, inputs.Text(input));
  } else {
    AddNumber(told, inputs.ReadNumber(input));
  }
}

void AddArguments(EvaluationStep& told, const FormulaStep& step, const CFormulaInputs& inputs) {
  if (step.IsLoad()) {
    AddInput(told, step, inputs);
    return;
  }
  for (std::size_t i = 0; i < step.argumentCount; ++i) {
    if (step.kind == StepKind::Call) {
      AddValue(told, *step.arguments[i]);
    } else {
      AddNumber(told, *step.numbers[i]);
    }
  }
}

}  // namespace

std::string StepTextOf(const FormulaProgram& program, const FormulaStep& step) {
  const std::string text =
      Shortened(std::string_view(program.text).substr(step.begin, step.end - step.begin));
  return step.isImplied ? "Val(" + text + ")" : text;
}

std::string CExpression::StepText(std::uint32_t step) const {
  return StepTextOf(*m_program, m_program->steps.at(step));
}

Evaluation CExpression::Trace(CFormulaInputs& inputs, std::vector<EvaluationStep>& steps) const {
  steps.clear();
  Evaluation evaluation;
  for (FormulaStep& step : m_program->steps) {
    EvaluationStep& told = steps.emplace_back();
    told.text = StepTextOf(*m_program, step);
    told.operation = OperationName(*m_program, step);
    told.absence = TakeSteps({&step, 1}, inputs).absence;
    AddArguments(told, step, inputs);
    if (told.absence != AbsenceReason::None) {
      told.code = 0;
      evaluation.absence = told.absence;
      evaluation.step = static_cast<std::uint32_t>(steps.size() - 1);
      return evaluation;
    }
    told.result = step.number;
  }
  evaluation.value = steps.back().result;
  return evaluation;
}

}  // namespace lum::decoding
