// Formula expressions: operations by name, arithmetic, numbers, texts and named inputs, compiled once
// and evaluated for each record. docs/formula-expressions.md has the language.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "decoding/FormulaInputs.h"

namespace lum::decoding {

/// No formula is longer, in bytes, or nested deeper.
inline constexpr std::size_t kMaxExpressionLength = 65'536;
inline constexpr int kMaxExpressionDepth = 200;

/// Why a text is no formula. Line and column count from 1, columns in characters.
struct ExpressionError {
  int line = 1;
  int column = 1;
  std::string found;       ///< "unknown operation 'CanVall'", "the end", "')'".
  std::string expected;    ///< May be empty.
  std::string suggestion;  ///< "CanVal", or empty.
  /// "line 1, column 5: unknown operation 'CanVall'; did you mean 'CanVal'?"
  std::string Message() const;
};

enum class AbsenceReason : std::uint8_t {
  None,          ///< There is a value.
  EmptyInput,    ///< A text that the formula needs is empty: the device has nothing to say.
  MissingInput,  ///< The record has no such input or field.
  NoValue,       ///< An operation answered 0.
};

/// What became of a formula.
struct Evaluation {
  double value = 0.0;  ///< Only with AbsenceReason::None.
  AbsenceReason absence = AbsenceReason::None;
  std::uint32_t step = 0;  ///< Which step ended the evaluation without a value; see Steps().
  bool HasValue() const { return absence == AbsenceReason::None; }
};

/// One step of an evaluation, for people.
struct EvaluationStep {
  std::string text;  ///< The part of the formula: "CanVal(frame, -7, 2)".
  std::string_view operation;  ///< "CanVal", "*", "field", "frame"; a number's or text's own form.
  std::vector<std::string> arguments;  ///< The values it was given, as texts.
  std::vector<double> numbers;         ///< Those that are numbers; not-a-number for texts.
  int code = 1;                        ///< What the operation answered; 0 without a value.
  double result = 0.0;
  AbsenceReason absence = AbsenceReason::None;
};

/// A compiled formula. Evaluating it allocates nothing and throws nothing; one expression is used by
/// one thread at a time, since its intermediate results live in it.
class CExpression {
 public:
  /// Compiles a text of UTF-8. The result of a formula is a number: a text alone is refused, unless
  /// it stands where a number is wanted, which reads it as Val does.
  static std::variant<CExpression, ExpressionError> Compile(std::string_view text);

  CExpression(CExpression&&) noexcept;
  CExpression& operator=(CExpression&&) noexcept;
  ~CExpression();

  /// Every step on an own result that was 0.0 before. An operation that answers 0, a missing input
  /// and an empty text end the evaluation: the result is absent.
  Evaluation Evaluate(CFormulaInputs& inputs) const;
  /// The same, told step by step in the order of evaluation.
  Evaluation Trace(CFormulaInputs& inputs, std::vector<EvaluationStep>& steps) const;

  const std::string& Text() const;
  /// Whether the formula names the input; Raw is for columns that have a raw formula alone.
  bool Uses(Input input) const;
  /// What a step does, without its values: "CanVal(frame, -7, 2)".
  std::string StepText(std::uint32_t step) const;

 private:
  struct Program;
  explicit CExpression(std::unique_ptr<Program> program);
  std::unique_ptr<Program> m_program;
};

}  // namespace lum::decoding
