// Lines are read in code units, not in characters: nothing of the grammar needs more, and the bytes
// around a value can then be kept as they are.
#include "platform/portable/LineSyntax.h"

#include "platform/portable/AsciiText.h"
#include "platform/portable/EncodedText.h"

namespace lum::detail {

namespace {

using Kind = FileObjectLine::Kind;

/// The code units of an 8-bit encoding, without a choice at every one of them.
class CByteUnits {
 public:
  explicit CByteUnits(std::string_view bytes) : m_bytes(bytes) {}

  std::size_t Count() const { return m_bytes.size(); }
  char16_t operator[](std::size_t index) const {
    return static_cast<unsigned char>(m_bytes[index]);
  }

 private:
  std::string_view m_bytes;
};

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

template <typename Units>
std::size_t SkipBlanks(const Units& units, std::size_t index) {
  while (index < units.Count() && IsBlank(units[index])) {
    ++index;
  }
  return index;
}

template <typename Units>
std::size_t SkipBlanksBack(const Units& units, std::size_t first, std::size_t end) {
  while (end > first && IsBlank(units[end - 1])) {
    --end;
  }
  return end;
}

// The place of the first such unit from `first` on, or the count.
template <typename Units>
std::size_t Find(const Units& units, char16_t unit, std::size_t first) {
  while (first < units.Count() && units[first] != unit) {
    ++first;
  }
  return first;
}

template <typename Units>
bool BeginsComment(const Units& units, std::size_t first) {
  return units[first] == u';' ||
         (units[first] == u'/' && first + 1 < units.Count() && units[first + 1] == u'/');
}

// All places in units.
template <typename Units>
CLineSyntax ParseHeader(const Units& units, std::size_t first) {
  const std::size_t close = Find(units, u']', first);
  if (close == units.Count()) {
    return {};
  }
  return {Kind::Section, first + 1, close, 0};
}

template <typename Units>
CLineSyntax ParseItem(const Units& units, std::size_t first) {
  const std::size_t equals = Find(units, u'=', first);
  const std::size_t keyEnd = SkipBlanksBack(units, first, equals);
  if (equals == units.Count() || keyEnd == first) {
    return {};
  }
  return {Kind::Item, first, keyEnd, SkipBlanks(units, equals + 1)};
}

template <typename Units>
CLineSyntax ParseUnits(const Units& units) {
  const std::size_t first = SkipBlanks(units, 0);
  if (first == units.Count()) {
    return {Kind::Blank, 0, 0, 0};
  }
  if (BeginsComment(units, first)) {
    return {Kind::Comment, 0, 0, 0};
  }
  return units[first] == u'[' ? ParseHeader(units, first) : ParseItem(units, first);
}

bool HasLineBreak(std::wstring_view text) {
  return text.find_first_of(L"\n\r") != std::wstring_view::npos;
}
bool HasLineBreak(std::string_view text) { return HasOneOf(text, '\n', '\r'); }

bool HasLineBreakOrEquals(std::wstring_view text) {
  return text.find_first_of(L"\n\r=") != std::wstring_view::npos;
}
bool HasLineBreakOrEquals(std::string_view text) { return HasOneOf(text, '\n', '\r', '='); }

template <typename Ch>
bool IsWritableKeyOf(std::basic_string_view<Ch> key) {
  const auto isBlank = [](Ch ch) { return ch == Ch{' '} || ch == Ch{'\t'}; };
  if (key.empty() || HasLineBreakOrEquals(key)) {
    return false;
  }
  const bool isComment =
      key[0] == Ch{';'} || (key[0] == Ch{'/'} && key.size() > 1 && key[1] == Ch{'/'});
  return !isComment && key[0] != Ch{'['} && !isBlank(key.front()) && !isBlank(key.back());
}

}  // namespace

CLineSyntax ParseLine(std::string_view line, TextFileEncoding encoding) {
  const std::size_t unitSize = UnitSize(encoding);
  if (unitSize == 1) {
    return ParseUnits(CByteUnits(line));
  }
  CLineSyntax syntax = ParseUnits(CCodeUnits(line, encoding));
  syntax.nameBegin *= unitSize;
  syntax.nameEnd *= unitSize;
  syntax.valueBegin *= unitSize;
  return syntax;
}

bool IsWritableSectionName(const CString& name) { return name.FindOneOf(L"\n\r]") < 0; }

bool IsWritableKey(const CFileText& key) {
  return key.isWide ? IsWritableKeyOf<wchar_t>(WideChars(key)) : IsWritableKeyOf(key.bytes);
}

bool IsWritableValue(const CFileText& value) {
  return !(value.isWide ? HasLineBreak(WideChars(value)) : HasLineBreak(value.bytes));
}

}  // namespace lum::detail
