// The items of a split text are kept as places in the shared text: splitting allocates one list and
// copies no characters.
#include "platform/Tokenizer.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/portable/NumberText.h"

namespace {

bool IsBlank(wchar_t ch) { return ch == L' ' || ch == L'\t'; }

std::wstring_view WithoutBlanks(std::wstring_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace

CLumString::CLumString(const CString& text, wchar_t separator, bool trim, bool merge)
    : m_separator(separator) {
  LoadStringW(text, trim, merge);
}

CLumString::CLumString(wchar_t separator) : m_separator(separator) {}

void CLumString::LoadStringW(const CString& text, bool trim, bool merge) {
  CString copy(text);
  const std::wstring_view whole(copy.GetString(), static_cast<std::size_t>(copy.GetLength()));
  bool isMore = !whole.empty();
  std::vector<Span> spans;
  if (isMore && !merge) {
    const auto separators = std::count(whole.begin(), whole.end(), m_separator);
    spans.reserve(static_cast<std::size_t>(separators) + 1);
  }
  for (std::size_t first = 0; isMore;) {
    const std::size_t end = std::min(whole.find(m_separator, first), whole.size());
    const std::wstring_view item = whole.substr(first, end - first);
    const std::wstring_view kept = trim ? WithoutBlanks(item) : item;
    spans.push_back({static_cast<int>(kept.data() - whole.data()), static_cast<int>(kept.size())});
    isMore = end != whole.size();
    first = merge ? std::min(whole.find_first_not_of(m_separator, end), whole.size()) : end + 1;
  }
  m_text = std::move(copy);
  m_spans = std::move(spans);
}

std::vector<CString> CLumString::Items() const {
  std::vector<CString> items;
  items.reserve(m_spans.size());
  for (const Span& span : m_spans) {
    items.push_back(m_text.Mid(span.first, span.length));
  }
  return items;
}

bool CLumString::GetItem(int index, CString& value) const {
  if (index < 0 || index >= Count()) {
    return false;
  }
  const Span& span = m_spans[static_cast<std::size_t>(index)];
  value = m_text.Mid(span.first, span.length);
  return true;
}

template <typename T>
bool CLumString::GetNumber(int index, T& value) const {
  if (index < 0 || index >= Count()) {
    return false;
  }
  const Span& span = m_spans[static_cast<std::size_t>(index)];
  const std::wstring_view item(m_text.GetString() + span.first,
                               static_cast<std::size_t>(span.length));
  return lum::detail::ReadNumber(WithoutBlanks(item), value);
}

bool CLumString::GetItem(int index, bool& value) const { return GetNumber(index, value); }

bool CLumString::GetItem(int index, int& value) const { return GetNumber(index, value); }

bool CLumString::GetItem(int index, unsigned int& value) const { return GetNumber(index, value); }

bool CLumString::GetItem(int index, unsigned short& value) const { return GetNumber(index, value); }

bool CLumString::GetItem(int index, std::uint64_t& value) const { return GetNumber(index, value); }

bool CLumString::GetItem(int index, float& value) const { return GetNumber(index, value); }

bool CLumString::GetItem(int index, double& value) const { return GetNumber(index, value); }

void CLumString::Erase(int first, int count) {
  const long long begin = std::max(first, 0);
  const long long end = std::min<long long>(static_cast<long long>(first) + count, Count());
  if (begin < end) {
    m_spans.erase(m_spans.begin() + begin, m_spans.begin() + end);
  }
}

CString CLumString::String() const {
  CString joined;
  for (const Span& span : m_spans) {
    if (&span != m_spans.data()) {
      joined.AppendChar(m_separator);
    }
    joined.Append(m_text.GetString() + span.first, span.length);
  }
  return joined;
}
