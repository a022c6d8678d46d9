// One conversion of a printf format, such as "%-08.3I64x", and the numbers written by it. Knows
// nothing of argument lists and of string classes.
#pragma once

#include <cstdint>
#include <string>

namespace lum::detail {

/// The size that the letters between precision and type give the argument.
enum class ArgumentSize { Default, Char, Short, Long, LongLong, Size, PtrDiff, IntMax, LongDouble };

/// A conversion, read: what stands behind "%".
struct Conversion {
  bool leftAligned = false;
  bool plusSign = false;
  bool blankSign = false;
  bool alternative = false;  // "#"
  bool zeroPadded = false;
  int width = 0;
  int precision = -1;  // -1: none given.
  ArgumentSize size = ArgumentSize::Default;
  char type = 0;  // The type letter; 0 when it is none that is known.
};

/// A number in the parts between which padding goes: "-0x" and "1f", or "+" and "1.5".
struct NumberParts {
  std::string prefix;
  std::string digits;
  bool takesZeros = true;  // False when "0" padding is not allowed (precision given, "inf").
};

/// Writes an integer for the types d, i, u, x, X and o.
NumberParts WriteInteger(const Conversion& conversion, bool isNegative, std::uint64_t magnitude);

/// Writes a floating-point number for the types f, e, g, a and their capitals, always with ".".
NumberParts WriteFloating(const Conversion& conversion, double value);

}  // namespace lum::detail
