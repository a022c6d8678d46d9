#include "decoding/Glob.h"

#include <cstddef>

#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

std::size_t CharacterEnd(std::wstring_view, std::size_t place) { return place + 1; }

std::size_t CharacterEnd(std::string_view text, std::size_t place) {
  do {
    ++place;
  } while (place < text.size() && IsContinuation(text[place]));
  return place;
}

// After a mismatch the last "*" takes one unit more; earlier ones never have to. It may then end
// within a character of UTF-8: "?" takes the rest of it, as it would have taken the whole, and no
// other character of a pattern begins like that.
template <typename Ch>
bool MatchesPattern(std::basic_string_view<Ch> pattern, std::basic_string_view<Ch> text) {
  constexpr std::size_t kNone = std::basic_string_view<Ch>::npos;
  std::size_t star = kNone;
  std::size_t starTakesTo = 0;
  std::size_t place = 0;
  for (std::size_t i = 0; i < text.size();) {
    const bool isAtEnd = place == pattern.size();
    if (!isAtEnd && pattern[place] == Ch('*')) {
      star = place++;
      starTakesTo = i;
    } else if (!isAtEnd && pattern[place] == Ch('?')) {
      ++place;
      i = CharacterEnd(text, i);
    } else if (!isAtEnd && pattern[place] == text[i]) {
      ++place;
      ++i;
    } else if (star != kNone) {
      place = star + 1;
      i = ++starTakesTo;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(Ch('*'), place) == kNone;
}

}  // namespace

bool MatchesGlob(std::string_view pattern, std::string_view text) {
  return MatchesPattern(pattern, text);
}

CGlob::CGlob(const CString& pattern) : m_pattern(Folded(pattern)) {}

bool CGlob::Matches(const CString& text) const {
  const CString folded = Folded(text);
  return MatchesPattern(View(m_pattern), View(folded));
}

}  // namespace lum::decoding
