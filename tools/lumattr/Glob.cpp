#include "tools/lumattr/Glob.h"

namespace lum::tool {
namespace {

CString Folded(const CString& text) {
  CString folded = text;
  folded.MakeLower();
  return folded;
}

}  // namespace

CGlob::CGlob(const CString& pattern) : m_pattern(Folded(pattern)) {}

// After a mismatch the last "*" takes one character more; earlier ones never have to.
bool CGlob::Matches(const CString& text) const {
  const CString folded = Folded(text);
  int star = -1;
  int starTakesTo = 0;
  int place = 0;
  for (int i = 0; i < folded.GetLength();) {
    const wchar_t expected = m_pattern[place];  // NUL at the end of the pattern.
    if (expected == L'*') {
      star = place++;
      starTakesTo = i;
    } else if (place < m_pattern.GetLength() && (expected == L'?' || expected == folded[i])) {
      ++place;
      ++i;
    } else if (star >= 0) {
      place = star + 1;
      i = ++starTakesTo;
    } else {
      return false;
    }
  }
  while (m_pattern[place] == L'*') {
    ++place;
  }
  return place == m_pattern.GetLength();
}

}  // namespace lum::tool
