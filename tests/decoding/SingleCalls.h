// Calls of single operations with all sorts of arguments, for the comparison of formulas with what
// else calls operations.
#pragma once

#include <string>
#include <vector>

#include "decoding/Operations.h"

namespace lum::test {

/// An argument as the number or the bytes that it is.
struct CallArgument {
  bool isText = false;
  double number = 0.0;
  std::string bytes;
};

struct SingleCall {
  const decoding::Operation* operation = nullptr;
  std::vector<CallArgument> arguments;
  bool lenient = false;

  /// As a formula.
  std::string Formula() const;
  /// As a formula that takes its texts, unless they are empty, from field(1) on.
  std::string FormulaOfFields() const;
  std::vector<std::string> Fields() const;
};

/// Several hundred calls, of every supported operation but those that ask for the time of day.
std::vector<SingleCall> SingleCalls();

}  // namespace lum::test
