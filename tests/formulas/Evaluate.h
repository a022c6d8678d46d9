// What the tests of the formula operations share: an operation called with plain arguments, and its
// outcome, compared to the last bit.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>

#include "values/LumType.h"

namespace lum::test {

/// What the result value holds before an operation.
inline constexpr double kPrevious = 123.25;

/// The result code and what the result value holds after an operation.
struct Outcome {
  int code;
  double result;

  friend bool operator==(const Outcome& a, const Outcome& b) {
    return a.code == b.code &&
           std::bit_cast<std::uint64_t>(a.result) == std::bit_cast<std::uint64_t>(b.result);
  }
};

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
  out->precision(17);
  *out << "code " << outcome.code << ", result " << outcome.result;
}

inline constexpr Outcome kKept = {0, kPrevious};
inline constexpr Outcome kLenientZero = {1, 0.0};

/// A code of 1 and a result.
constexpr Outcome Gives(double result) { return {1, result}; }

/// A device record: characters of a literal, embedded NULs included.
template <std::size_t kSize>
std::string Record(const char (&literal)[kSize]) {
  return std::string(literal, kSize - 1);
}

inline CLumDouble AsValue(double number) { return {number}; }
inline CLumDouble AsValue(int number) { return {static_cast<double>(number)}; }
inline bool AsValue(bool isLenient) { return isLenient; }
inline CLumIoName AsValue(std::string_view bytes) {
  return {CStringA(bytes.data(), static_cast<int>(bytes.size()))};
}
inline CLumIoName AsValue(const char* bytes) { return AsValue(std::string_view(bytes)); }
inline CLumName AsValue(const wchar_t* text) { return {CString(text)}; }

/// Calls an operation, virtually, on a double that holds kPrevious.
template <typename... Parameters, typename... Arguments>
Outcome Evaluate(int (CLumType::*operation)(Parameters...), const Arguments&... arguments) {
  CLumDouble result(kPrevious);
  CLumType& target = result;
  auto values = std::make_tuple(AsValue(arguments)...);
  const int code =
      std::apply([&](auto&... value) { return (target.*operation)(value...); }, values);
  double number = 0.0;
  result.GetDouble(number);
  return {code, number};
}

}  // namespace lum::test
