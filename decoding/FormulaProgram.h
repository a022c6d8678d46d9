// What a formula is compiled into: steps that stand in the order in which they are taken.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/FormulaInputs.h"
#include "decoding/Operations.h"
#include "values/LumType.h"

namespace lum::decoding {

enum class StepKind : std::uint8_t {
  Input,
  Field,
  Constant,  ///< Only of a formula that is nothing else.
  Call,
  CallOnCopy,  ///< Of an operation that writes into its argument.
  Negate,
  Add,
  Subtract,
  Multiply,
  Divide,
};

struct FormulaStep {
  /// Among the sources: the argument is a constant.
  static constexpr std::uint32_t kNoStep = 0xFFFFFFFF;

  StepKind kind = StepKind::Constant;
  bool lenient = false;
  bool isImplied = false;          ///< A Val that the formula does not write.
  std::uint8_t argumentCount = 0;  ///< Of all but inputs and fields.
  std::uint8_t place = 0;          ///< Which input or field.
  const Operation* operation = nullptr;
  /// What it takes. That of CallOnCopy lies behind the copy.
  std::array<CLumType*, Operation::kMaxArguments> arguments{};
  CLumType** taker = nullptr;  ///< Of inputs and fields: the argument that waits for their value.
  CLumDouble result;
  CLumDouble copy;
  std::size_t begin = 0;  ///< The part of the text, in bytes.
  std::size_t end = 0;
  std::array<std::uint32_t, Operation::kMaxArguments>
      sources{};  ///< Steps that give the arguments.

  bool IsLoad() const { return kind == StepKind::Input || kind == StepKind::Field; }
  CLumType*& Argument(std::size_t index) {
    return arguments[kind == StepKind::CallOnCopy ? index + 1 : index];
  }
  CLumType* Argument(std::size_t index) const {
    return arguments[kind == StepKind::CallOnCopy ? index + 1 : index];
  }
};

struct FormulaProgram {
  std::string text;
  std::vector<FormulaStep> steps;
  std::deque<CLumDouble> numbers;  ///< Constants; they stay where they are.
  std::deque<CLumIoName> texts;
  std::uint32_t usedInputs = 0;  ///< A bit for each.

  /// Lets the steps point to each other, once there are all of them.
  void Bind();
};

/// Takes one step. The steps before must have been taken.
AbsenceReason TakeStep(FormulaStep& step, CFormulaInputs& inputs);
/// The number that a step gave; not-a-number for an input that is a text.
double ResultOf(const FormulaStep& step);
/// The part of the formula that the step evaluates, as far as a trace shows it.
std::string StepTextOf(const FormulaProgram& program, const FormulaStep& step);

}  // namespace lum::decoding
