// Formula expressions: operations by name, arithmetic, numbers, texts and named inputs, compiled
// once and evaluated for each record. docs/formula-expressions.md has the language.
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

struct FormulaProgram;

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
  std::uint32_t step = 0;  ///< Which step ended the evaluation without a value; see StepText.
  bool HasValue() const { return absence == AbsenceReason::None; }
};

/// What a trace shows of a text is no longer, in bytes; the rest stands as "…".
inline constexpr std::size_t kMaxTracedText = 1024;

/// One step of an evaluation, for people. Naming an input or field is a step, whose only argument
/// is what it holds; constants are steps where they are the whole formula. Views live as long as
/// the expression.
struct EvaluationStep {
  std::string text;            ///< As StepText gives it.
  std::string_view operation;  ///< "CanVal", "*", "field", "frame"; a number's own form.
  /// The values it was given, as formulas write them: 7, "98FEF1008F…". None for an input that is
  /// missing.
  std::vector<std::string> arguments;
  std::vector<double> numbers;  ///< Those that are numbers; not-a-number for texts.
  int code = 1;                 ///< What the operation answered; 0 without a value.
  double result = 0.0;          ///< Not-a-number for an input that is a text.
  AbsenceReason absence = AbsenceReason::None;
};

/// A compiled formula. One expression is used by one thread at a time, since its intermediate
/// results live in it. Evaluating allocates nothing, once the inputs have held their longest texts;
/// NMEAPos alone makes wide texts of its own, for the time of its call, where they are longer than
/// 80 characters or not ASCII.
class CExpression {
 public:
  /// Compiles a text of UTF-8. The result of a formula is a number: a text alone, as everywhere
  /// where a number is wanted, is read as Val does, strictly.
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
  /// The part of the formula that a step evaluates: "CanVal(frame, -7, 2)". A text that is read as
  /// a number has a step of its own: "Val(field(3))".
  std::string StepText(std::uint32_t step) const;

 private:
  explicit CExpression(std::unique_ptr<FormulaProgram> program);

  std::unique_ptr<FormulaProgram> m_program;
};

}  // namespace lum::decoding
