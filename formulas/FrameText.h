// Library-internal: reading the lines of hexadecimal text in which interfaces deliver frames.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "values/PlainScan.h"

namespace lum::detail {

/// Whether a text has neither blanks nor signs, so that its runs are where their widths put them
/// and hold no "-1". Says no of some such texts, too: every character must stand behind both in the
/// code, as digits, letters and the point do.
bool IsSolid(std::string_view text);

/// As CFrameText::TakeHex of a run of two characters without a sign.
inline std::uint8_t HexByte(char first, char second) {
  const int high = HexDigit(first);
  const int low = HexDigit(second);
  const int number = low < 0 ? high : high * 16 + low;
  return static_cast<std::uint8_t>(high < 0 ? 0 : number);
}

/// Takes a text apart into runs of characters, as extraction from a stream with a width does.
class CFrameText {
 public:
  /// `text` must outlive the reader.
  explicit CFrameText(std::string_view text) : m_rest(text) {}

  /// The next run of at most `width` characters that are no blanks, after any blanks. Empty when
  /// the text has run out.
  std::string_view TakeRun(std::size_t width);

  /// The number of the next run of one or two characters, read as far as it is hexadecimal, a sign
  /// included: 0 when it is not hexadecimal at all, -1 when the text has run out. A run "-1" is
  /// taken for the latter, as it always has been.
  int TakeHex(std::size_t width);

 private:
  std::string_view m_rest;
};

}  // namespace lum::detail
