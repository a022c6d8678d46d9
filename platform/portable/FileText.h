// CFileText: a text in the form in which a document keeps it, smaller than a CString and as quick
// to compare; and the ways between the two.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/FrameworkString.h"

namespace lum::detail {

/// A text of ASCII characters alone as bytes, any other as its wide characters lie in memory (where
/// they need not be aligned). So equal texts have equal forms. The bytes are somebody else's.
struct CFileText {
  std::string_view bytes;
  bool isWide = false;

  friend bool operator==(const CFileText& a, const CFileText& b) {
    return a.isWide == b.isWide && a.bytes == b.bytes;
  }
};

/// The form of a text, which must live and stay as it is meanwhile.
class CFileTextOf {
 public:
  explicit CFileTextOf(const CString& text);
  CFileTextOf(const CFileTextOf&) = delete;
  CFileTextOf& operator=(const CFileTextOf&) = delete;

  operator const CFileText&() const { return m_text; }

 private:
  /// Longer keys and values are rare.
  static constexpr std::size_t kInPlace = 128;

  std::array<char, kInPlace> m_short;
  std::string m_long;
  CFileText m_text;
};

/// The text again. An output that has room is used as it is: a walk over many items allocates
/// little.
void ReadText(const CFileText& text, CString& output);
CString ToCString(const CFileText& text);
std::wstring WideChars(const CFileText& text);

/// The text in bytes that are as different as the texts, for ordered containers.
inline std::string OrderedForm(const CFileText& text) {
  return std::string(1, text.isWide ? 'w' : 'a').append(text.bytes);
}

}  // namespace lum::detail
