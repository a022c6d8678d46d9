// What the readers share: classes of ASCII characters, hexadecimal digits, and a place in a line
// that moves on. None of it knows a locale.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace lum::decoding::detail {

inline bool IsDecimalDigit(char c) { return c >= '0' && c <= '9'; }
inline bool IsSpaceOrTab(char c) { return c == ' ' || c == '\t'; }

/// What a character that is no hexadecimal digit has in the table.
inline constexpr std::uint8_t kNoDigit = 0xFF;

inline constexpr std::array<std::uint8_t, 256> kDigitValues = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoDigit);
  for (std::uint8_t i = 0; i < 10; ++i) {
    values[static_cast<std::size_t>('0' + i)] = i;
  }
  for (std::uint8_t i = 0; i < 6; ++i) {
    values[static_cast<std::size_t>('a' + i)] = static_cast<std::uint8_t>(10 + i);
    values[static_cast<std::size_t>('A' + i)] = static_cast<std::uint8_t>(10 + i);
  }
  return values;
}();

/// 0 to 15, or kNoDigit.
inline std::uint8_t DigitValue(char c) { return kDigitValues[static_cast<unsigned char>(c)]; }
inline bool IsHexDigit(char c) { return DigitValue(c) != kNoDigit; }

inline constexpr std::string_view kUpperDigits = "0123456789ABCDEF";

/// Writes the low digits of a number, upper case.
inline void WriteHex(std::uint32_t number, std::size_t count, char* to) {
  for (std::size_t i = count; i > 0; --i, number >>= 4) {
    to[i - 1] = kUpperDigits[number & 0xF];
  }
}

/// A place in a line. Looking beyond the end gives NUL.
class CLogCursor {
 public:
  explicit CLogCursor(std::string_view line, std::size_t place = 0)
      : m_line(line), m_place(place) {}

  std::size_t Place() const { return m_place; }
  /// As problems count it, from 1.
  std::size_t Column() const { return m_place + 1; }
  bool IsAtEnd() const { return m_place == m_line.size(); }
  char Peek() const { return IsAtEnd() ? '\0' : m_line[m_place]; }
  std::string_view Rest() const { return m_line.substr(m_place); }

  void MoveTo(std::size_t place) { m_place = place; }
  bool TakeChar(char wanted) {
    const bool isThere = !IsAtEnd() && m_line[m_place] == wanted;
    m_place += isThere ? 1 : 0;
    return isThere;
  }
  /// True when there was one at least.
  bool TakeBlanks() {
    std::size_t place = m_place;
    while (place < m_line.size() && IsSpaceOrTab(m_line[place])) {
      ++place;
    }
    return std::exchange(m_place, place) != place;
  }
  /// The characters up to the next blank or the end.
  std::string_view TakeWord() {
    std::size_t place = m_place;
    while (place < m_line.size() && !IsSpaceOrTab(m_line[place])) {
      ++place;
    }
    const std::size_t start = std::exchange(m_place, place);
    return m_line.substr(start, place - start);
  }

 private:
  std::string_view m_line;
  std::size_t m_place;
};

}  // namespace lum::decoding::detail
