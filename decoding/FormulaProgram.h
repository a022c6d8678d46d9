// What a formula is compiled into: steps that stand in the order in which they are taken.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
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

/// Operations take values of the library, arithmetic takes plain numbers: reading a value costs
/// more than a sum. So a result that both may need is kept as both.
struct FormulaStep {
  /// Among the sources: the argument is a constant.
  static constexpr std::uint32_t kNoStep = 0xFFFFFFFF;

  StepKind kind = StepKind::Constant;
  bool lenient = false;
  bool isImplied = false;          ///< A Val that the formula does not write.
  std::uint8_t argumentCount = 0;  ///< Of all but inputs and fields.
  std::uint8_t place = 0;          ///< Which input or field.
  const Operation* operation = nullptr;
  std::array<CLumType*, Operation::kMaxArguments>
      arguments{};                         ///< Of Call; of CallOnCopy, the copy.
  std::array<const double*, 2> numbers{};  ///< Of arithmetic; of CallOnCopy, what is copied.
  CLumType** taker = nullptr;  ///< Of inputs and fields: the argument that waits for the value.
  CLumDouble result;           ///< Of operations, and of arithmetic that operations take.
  CLumDouble copy;
  bool isTakenByCall = false;
  double number = 0.0;    ///< The result; not-a-number for texts.
  std::size_t begin = 0;  ///< The part of the text, in bytes.
  std::size_t end = 0;
  std::array<std::uint32_t, Operation::kMaxArguments>
      sources{};  ///< Steps that give the arguments.

  bool IsLoad() const { return kind == StepKind::Input || kind == StepKind::Field; }
};

/// A number of the formula as both.
struct FormulaConstant {
  explicit FormulaConstant(double constant) : number(constant), value(constant) {}

  double number;
  CLumDouble value;
};

struct FormulaProgram {
  std::string text;
  std::vector<FormulaStep> steps;
  std::deque<FormulaConstant> numbers;  ///< They stay where they are.
  std::deque<CLumIoName> texts;
  std::uint32_t usedInputs = 0;  ///< A bit for each.

  /// Lets the steps point to each other, once there are all of them.
  void Bind();
};

/// Takes steps up to the first without a value; `step` is then its place among them. Otherwise the
/// value is that of the last. The steps before must have been taken.
Evaluation TakeSteps(std::span<FormulaStep> steps, CFormulaInputs& inputs);
/// The part of the formula that the step evaluates, as far as a trace shows it.
std::string StepTextOf(const FormulaProgram& program, const FormulaStep& step);

}  // namespace lum::decoding
