// The operations of formulas as a table: names, arguments and calls.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "values/LumTypeBase.h"

namespace lum::decoding {

/// How an argument is written.
enum class ArgumentForm {
  kNumber,
  kVector,  ///< One to three numbers.
  kText,
};

struct OperationArgument {
  std::string_view name;
  ArgumentForm form = ArgumentForm::kNumber;
  bool takesNumber = false;  ///< Whether a number does where a text is meant.
};

/// One operation of CLumType.
struct Operation {
  static constexpr std::size_t kMaxArguments = 4;

  std::span<const OperationArgument> Arguments() const {
    return std::span(arguments).first(argumentCount);
  }

  std::string_view name;
  std::array<OperationArgument, kMaxArguments> arguments{};
  std::size_t argumentCount = 0;
  bool takesLenient = false;     ///< Whether bad input can be turned into a result.
  bool changesArgument = false;  ///< Whether it may write a bound back into its first argument.
  bool isSupported = true;       ///< Whether any kind of value has it.
  std::string_view result;       ///< What the result is, a few words.
  /// Calls it on `result` and returns its code. `arguments` are as many as it takes; `lenient` is
  /// ignored where it does not count.
  int (*call)(CLumType& result, std::span<CLumType* const> arguments, bool lenient) = nullptr;
};

/// All operations, in the order of their slots in CLumType.
std::span<const Operation> Operations();

/// The operation of exactly that name; null when there is none.
const Operation* FindOperation(std::string_view name);

/// The arguments as they are listed: "frame:text typeCode startByte".
std::string ArgumentsText(const Operation& operation);

}  // namespace lum::decoding
