// Upper and lower case of single characters, the same on every system and in every process locale:
// the Unicode simple mapping of Latin (ASCII, Latin-1, Extended-A), Greek and Cyrillic letters.
#pragma once

namespace lum::detail {

/// The other case of a letter; any other character as it is.
wchar_t ToUpperCase(wchar_t ch) noexcept;
wchar_t ToLowerCase(wchar_t ch) noexcept;
/// The character that stands for all case variants of a letter in comparisons.
wchar_t FoldCase(wchar_t ch) noexcept;

// Bytes may be binary or part of a longer character: only the ASCII letters have a case.
constexpr char ToUpperCase(char ch) noexcept {
  return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
}
constexpr char ToLowerCase(char ch) noexcept {
  return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}
constexpr char FoldCase(char ch) noexcept { return ToLowerCase(ch); }

}  // namespace lum::detail
