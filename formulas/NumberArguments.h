// Library-internal: how the operations of formulas read their number arguments.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>

#include "values/LumTypeBase.h"

namespace lum::detail {

/// Reads a number argument: a double or, where GetDouble is refused, another number kind. False,
/// with `number` untouched, when the argument holds none.
bool ReadNumber(const CLumType& argument, double& number);

/// The argument's number, 0.0 when it holds none.
double NumberOrZero(const CLumType& argument);

/// Sets the result to what the function makes of the arguments' numbers, one parameter for each,
/// and returns 1. They are read in order; at the first that holds no number it returns 0, with the
/// result as it was.
template <typename Function, typename... Arguments>
int Compute(double& result, Function function, const Arguments&... arguments) {
  std::array<double, sizeof...(Arguments)> numbers{};
  std::size_t place = 0;
  if (!(ReadNumber(arguments, numbers[place++]) && ...)) {
    return 0;
  }
  result = std::apply(function, numbers);
  return 1;
}

/// A number as an integer, truncated toward zero. Nothing for not-a-number and infinities. What is
/// beyond any length, place or code comes out as kFarAway or its negative.
std::optional<std::int64_t> ToInteger(double number);
inline constexpr std::int64_t kFarAway = std::int64_t{1} << 53;

/// As ToInteger, nothing also for what a signed 32-bit integer cannot hold.
std::optional<std::int32_t> ToInt32(double number);

}  // namespace lum::detail
