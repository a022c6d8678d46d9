#include "formulas/NumberArguments.h"

#include <limits>

namespace lum::detail {
namespace {

// The accessors convert nothing, so each kind has to be asked for its own type.
template <typename T>
bool ReadAs(const CLumType& argument, double& number) {
  T value{};
  if (!argument.Get(value)) {
    return false;
  }
  number = static_cast<double>(value);
  return true;
}

}  // namespace

bool ReadByAccessors(const CLumType& argument, double& number) {
  return argument.GetDouble(number) != 0 || ReadAs<float>(argument, number) ||
         ReadAs<int>(argument, number) || ReadAs<unsigned int>(argument, number) ||
         ReadAs<std::uint64_t>(argument, number) || ReadAs<bool>(argument, number);
}

std::optional<std::int32_t> ToInt32(double number) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::optional<std::int64_t> integer = ToInteger(number);
  if (!integer || *integer < Limits::min() || *integer > Limits::max()) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(*integer);
}

}  // namespace lum::detail
