// Formulas as trees: made by chance, printed, and evaluated in the plainest way, for the comparison
// with compiled ones.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/Operations.h"

namespace lum::test {

/// Gives numbers by chance.
using Choose = std::function<std::uint_fast32_t()>;

/// What a record holds; what is not there is missing.
struct NaiveInputs {
  std::map<decoding::Input, std::string> texts;
  std::map<decoding::Input, double> numbers;
  std::vector<std::string> fields;
};

struct NaiveNode {
  enum class Kind { Number, Text, Input, Field, Call, Negate, Binary };

  Kind kind = Kind::Number;
  double number = 0.0;
  std::string text;
  decoding::Input input = decoding::Input::Line;
  std::size_t field = 0;
  const decoding::Operation* operation = nullptr;
  bool lenient = false;
  char sign = '+';
  std::vector<NaiveNode> children;

  bool IsText() const;
};

/// A number, or why there is none.
struct NaiveResult {
  decoding::AbsenceReason absence = decoding::AbsenceReason::None;
  double number = 0.0;
};

NaiveInputs MakeInputs(const Choose& choose);
/// Hands the inputs over; they must live as long as `inputs` is used, and so must `views`.
void SetInputs(const NaiveInputs& from, decoding::CFormulaInputs& inputs,
               std::vector<std::string_view>& views);

/// A formula of at most so many levels. None asks for the time of day.
NaiveNode MakeFormula(const Choose& choose, int levels);
/// With as few parentheses as the formula needs, and some more by chance.
std::string Print(const NaiveNode& node, const Choose& choose);
/// Each operation is called on values made for it alone.
NaiveResult Evaluate(const NaiveNode& node, const NaiveInputs& inputs);

/// Whether two results are the same to the last bit; one not-a-number is like another.
bool IsSameNumber(double a, double b);

}  // namespace lum::test
