// Library-internal: how the operations of formulas read their number arguments.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>

#include "values/HeldValue.h"
#include "values/LumTypeBase.h"

namespace lum::detail {

/// As ReadNumber of any kind.
bool ReadByAccessors(const CLumType& argument, double& number);

/// Reads a number argument: a double or, where GetDouble is refused, another number kind. False,
/// with `number` untouched, when the argument holds none.
inline bool ReadNumber(const CLumType& argument, double& number) {
  return ReadHeld<CLumDouble>(argument, number) || ReadHeld<CLumInt>(argument, number) ||
         ReadByAccessors(argument, number);
}

/// The argument's number, 0.0 when it holds none.
inline double NumberOrZero(const CLumType& argument) {
  double number = 0.0;
  ReadNumber(argument, number);
  return number;
}

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
inline constexpr std::int64_t kFarAway = std::int64_t{1} << 53;
inline std::optional<std::int64_t> ToInteger(double number) {
  if (std::abs(number) < static_cast<double>(kFarAway)) {
    return static_cast<std::int64_t>(number);
  }
  if (!std::isfinite(number)) {
    return std::nullopt;
  }
  return number < 0.0 ? -kFarAway : kFarAway;
}

/// As ToInteger, nothing also for what a signed 32-bit integer cannot hold.
std::optional<std::int32_t> ToInt32(double number);

}  // namespace lum::detail
