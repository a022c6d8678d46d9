// A short wide text of ASCII in 8-bit characters, for the peers that read only those.
#pragma once

#include <cstddef>
#include <string_view>

namespace lum::bench {

class CNarrowText {
 public:
  explicit CNarrowText(std::wstring_view text) : m_end(m_characters) {
    for (const wchar_t ch : text.substr(0, kMostCharacters - 1)) {
      *m_end++ = static_cast<char>(ch);
    }
    *m_end = '\0';
  }
  CNarrowText(const CNarrowText&) = delete;
  CNarrowText& operator=(const CNarrowText&) = delete;

  /// The text, also NUL-terminated.
  const char* Begin() const { return m_characters; }
  const char* End() const { return m_end; }

 private:
  static constexpr std::size_t kMostCharacters = 64;

  char m_characters[kMostCharacters];
  char* m_end;
};

}  // namespace lum::bench
