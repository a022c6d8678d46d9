// Lines are read in code units, not in characters: nothing of the grammar needs more, and the bytes
// around a value can then be kept as they are.
#include "platform/portable/LineSyntax.h"

#include "platform/portable/EncodedText.h"

namespace lum::detail {

namespace {

using Kind = FileObjectLine::Kind;

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

std::size_t SkipBlanks(const CCodeUnits& units, std::size_t index) {
  while (index < units.Count() && IsBlank(units[index])) {
    ++index;
  }
  return index;
}

std::size_t SkipBlanksBack(const CCodeUnits& units, std::size_t first, std::size_t end) {
  while (end > first && IsBlank(units[end - 1])) {
    --end;
  }
  return end;
}

// The place of the first such unit from `first` on, or the count.
std::size_t Find(const CCodeUnits& units, char16_t unit, std::size_t first) {
  while (first < units.Count() && units[first] != unit) {
    ++first;
  }
  return first;
}

bool BeginsComment(const CCodeUnits& units, std::size_t first) {
  return units[first] == u';' ||
         (units[first] == u'/' && first + 1 < units.Count() && units[first + 1] == u'/');
}

// All places in units.
CLineSyntax ParseHeader(const CCodeUnits& units, std::size_t first) {
  const std::size_t close = Find(units, u']', first);
  if (close == units.Count()) {
    return {};
  }
  return {Kind::Section, first + 1, close, 0};
}

CLineSyntax ParseItem(const CCodeUnits& units, std::size_t first) {
  const std::size_t equals = Find(units, u'=', first);
  const std::size_t keyEnd = SkipBlanksBack(units, first, equals);
  if (equals == units.Count() || keyEnd == first) {
    return {};
  }
  return {Kind::Item, first, keyEnd, SkipBlanks(units, equals + 1)};
}

CLineSyntax ParseUnits(const CCodeUnits& units) {
  const std::size_t first = SkipBlanks(units, 0);
  if (first == units.Count()) {
    return {Kind::Blank, 0, 0, 0};
  }
  if (BeginsComment(units, first)) {
    return {Kind::Comment, 0, 0, 0};
  }
  return units[first] == u'[' ? ParseHeader(units, first) : ParseItem(units, first);
}

bool HasLineBreak(const CString& text) { return text.Find(L'\n') >= 0 || text.Find(L'\r') >= 0; }

bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t'; }

}  // namespace

CLineSyntax ParseLine(std::string_view line, TextFileEncoding encoding) {
  CLineSyntax syntax = ParseUnits(CCodeUnits(line, encoding));
  const std::size_t unitSize = UnitSize(encoding);
  syntax.nameBegin *= unitSize;
  syntax.nameEnd *= unitSize;
  syntax.valueBegin *= unitSize;
  return syntax;
}

bool IsWritableSectionName(const CString& name) {
  return !HasLineBreak(name) && name.Find(L']') < 0;
}

bool IsWritableKey(const CString& key) {
  const int length = key.GetLength();
  if (length == 0 || HasLineBreak(key) || key.Find(L'=') >= 0) {
    return false;
  }
  const bool isComment = key[0] == L';' || (key[0] == L'/' && key[1] == L'/');
  return !isComment && key[0] != L'[' && !IsBlank(key[0]) && !IsBlank(key[length - 1]);
}

bool IsWritableValue(const CString& value) { return !HasLineBreak(value); }

}  // namespace lum::detail
