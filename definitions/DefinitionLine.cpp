// The usual form of definition lines; AttribDefFile.cpp reads the others.
#include "definitions/DefinitionLine.h"

#include <cstddef>

namespace lum::detail {

namespace {

constexpr std::size_t kSafeDigits = 9;  // Any number of so many fits into an int.

bool IsBlankOrTab(wchar_t ch) { return ch == L' ' || ch == L'\t'; }

std::wstring_view WithoutBlanks(std::wstring_view text) {
  while (!text.empty() && IsBlankOrTab(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlankOrTab(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

/// Takes the text up to the next separator, and that, off the line; the whole line when there is
/// none. False when there is nothing left to take from.
class CItemCutter {
 public:
  explicit CItemCutter(std::wstring_view line) : m_rest(line) {}

  bool Take(std::wstring_view& item) {
    if (m_atEnd) {
      return false;
    }
    const std::size_t separator = m_rest.find(kItemSeparator);
    m_atEnd = separator == std::wstring_view::npos;
    item = WithoutBlanks(m_rest.substr(0, separator));
    m_rest.remove_prefix(m_atEnd ? m_rest.size() : separator + 1);
    return true;
  }

  bool Take(int& number) {
    std::wstring_view item;
    if (!Take(item) || item.empty() || item.size() > kSafeDigits) {
      return false;
    }
    number = 0;
    for (const wchar_t ch : item) {
      if (ch < L'0' || ch > L'9') {
        return false;
      }
      number = number * 10 + (ch - L'0');
    }
    return true;
  }

  std::wstring_view Rest() const { return m_rest; }

 private:
  std::wstring_view m_rest;
  bool m_atEnd = false;
};

bool CutDefault(std::wstring_view rest, std::wstring_view& text) {
  text = WithoutBlanks(rest);
  return rest.find(kItemSeparator) == std::wstring_view::npos ||
         rest.find_first_of(L" \t") == std::wstring_view::npos;
}

}  // namespace

bool CutUsualLine(std::wstring_view line, DefinitionItems& items) {
  CItemCutter cutter(line);
  return cutter.Take(items.mnemonic) && cutter.Take(items.id) && cutter.Take(items.name) &&
         cutter.Take(items.type) && cutter.Take(items.controlType) &&
         cutter.Take(items.bitmapFile) && CutDefault(cutter.Rest(), items.defaultText);
}

}  // namespace lum::detail
