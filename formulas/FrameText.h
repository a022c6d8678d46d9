// Library-internal: reading the lines of hexadecimal text in which interfaces deliver frames.
#pragma once

#include <cstddef>
#include <string_view>

namespace lum::detail {

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
