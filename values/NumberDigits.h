// Library-internal: numbers taken apart into what their texts are made of. The length of a text is
// known before it is written, so that it can be written where it is to stand.
#pragma once

#include <cstdint>
#include <limits>

namespace lum::detail {

/// A whole number, for "%d" and "%u".
class CDecimal {
 public:
  /// The most characters of a text.
  static constexpr int kMostLength = std::numeric_limits<std::uint64_t>::digits10 + 2;

  CDecimal() = default;
  CDecimal(std::uint64_t size, bool isNegative);
  explicit CDecimal(std::uint64_t value) : CDecimal(value, false) {}
  explicit CDecimal(unsigned int value) : CDecimal(std::uint64_t{value}, false) {}
  explicit CDecimal(int value)
      : CDecimal(
            value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value),
            value < 0) {}

  int Length() const { return m_length; }
  /// Writes the text, which ends without a NUL, and returns its end.
  wchar_t* Write(wchar_t* at) const;

 private:
  std::uint64_t m_size = 0;
  int m_length = 1;
  bool m_isNegative = false;
};

/// A double, for "%f": six digits after the point, no exponent.
class CFixed {
 public:
  static constexpr int kMostLength = std::numeric_limits<double>::max_exponent10 + 9;

  /// False for numbers that are too large, too small, or none.
  bool Split(double value);

  int Length() const { return m_whole.Length() + 7; }
  wchar_t* Write(wchar_t* at) const;

 private:
  CDecimal m_whole;
  unsigned int m_millionths = 0;
};

/// Writes any double as "%f" does, with "inf", "-inf", "nan" and "-nan" for what is no number.
wchar_t* WriteFixed(wchar_t* at, double value);

/// The shortest text that reads back to the same double, in the form std::to_chars chooses; what is
/// no number as WriteFixed.
constexpr int kMostShortest = 24;
wchar_t* WriteShortest(wchar_t* at, double value);

}  // namespace lum::detail
