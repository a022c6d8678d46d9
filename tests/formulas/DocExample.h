// A value as docs/formulas.md writes it, for the tests made from its examples.
#pragma once

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "values/LumType.h"

namespace lum::test {

/// The shortest decimal text, without an exponent, that reads back to the same double: two doubles
/// have the same text only when they have the same bits, not-a-number apart.
inline std::string Written(double number) {
  if (std::isnan(number)) {
    return "nan";  // Its sign differs between machines.
  }
  char text[512];
  const auto [end, error] =
      std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
  return error == std::errc() ? std::string(text, end) : "too long";
}

/// The number or the vector that a value holds; else its text.
inline std::string Written(const CLumType& value) {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  float single = 0.0F;
  if (value.Get(x)) {
    return Written(x);
  }
  if (value.Get(single)) {
    return Written(static_cast<double>(single));
  }
  if (value.GetDouble2D(x, y) != 0) {
    return "(" + Written(x) + ", " + Written(y) + ")";
  }
  if (value.GetDouble3D(x, y, z) != 0) {
    return "(" + Written(x) + ", " + Written(y) + ", " + Written(z) + ")";
  }
  CString text;
  value.GetValueStr(text);
  return CStringA(text).GetString();
}

/// The number that a value holds, not-a-number when it holds none.
inline double NumberOf(const CLumType& value) {
  double number = std::numeric_limits<double>::quiet_NaN();
  value.Get(number);
  return number;
}

}  // namespace lum::test
