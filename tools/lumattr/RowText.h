// A row while it is put together of its pieces.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "decoding/NumberText.h"

namespace lum::tool {

/// Puts pieces behind a text. They are gathered first: most are shorter than what it costs to make
/// a text longer. The text has them all after Finish.
class CRowText {
 public:
  explicit CRowText(std::string& text) : m_text(text) {}
  CRowText(const CRowText&) = delete;
  CRowText& operator=(const CRowText&) = delete;

  void Add(char c) { MoveTo(Write(c)); }
  void Add(std::string_view piece) {
    if (piece.size() > decoding::kNumberRoom) {
      Finish();
      m_text += piece;
    } else {
      MoveTo(std::copy(piece.begin(), piece.end(), m_end));
    }
  }
  void AddWhole(std::uint64_t number) { MoveTo(decoding::WriteWhole(m_end, number)); }
  void AddFixed(double number, int digits) { MoveTo(decoding::WriteFixed(m_end, number, digits)); }
  void AddNumber(double number, std::optional<int> digits) {
    MoveTo(decoding::WriteNumber(m_end, number, digits));
  }
  void Finish() {
    m_text.append(m_pieces.data(), m_end);
    m_end = m_pieces.data();
  }

 private:
  static constexpr std::size_t kSize = 2048;

  char* Write(char c) {
    *m_end = c;
    return m_end + 1;
  }
  /// There is room for a number, always.
  void MoveTo(char* end) {
    m_end = end;
    if (end > m_pieces.data() + (kSize - decoding::kNumberRoom)) {
      Finish();
    }
  }

  std::string& m_text;
  std::array<char, kSize> m_pieces;
  char* m_end = m_pieces.data();
};

}  // namespace lum::tool
