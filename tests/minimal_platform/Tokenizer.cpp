// Splitting texts, and reading and writing numbers in them.
#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

#include "platform/LumBase.h"

namespace {

std::wstring_view ViewOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

CString ToText(std::wstring_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

std::wstring_view WithoutBlanks(std::wstring_view text) {
  constexpr const wchar_t* kBlanks = L" \t";
  const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

// The characters as bytes, without a plus sign; nothing when one is not ASCII.
std::string Ascii(std::wstring_view text) {
  if (text.size() > 1 && text[0] == L'+' && text[1] != L'-') {
    text.remove_prefix(1);
  }
  std::string bytes;
  for (const wchar_t ch : text) {
    if (ch < 1 || ch > 126) {
      return {};
    }
    bytes += static_cast<char>(ch);
  }
  return bytes;
}

// A number that from_chars found out of range: one too small for the type counts as the nearest.
template <typename T>
bool ReadTiny(const std::string& bytes, T& number) {
  std::istringstream stream(bytes);
  stream.imbue(std::locale::classic());
  return static_cast<bool>(stream >> number) && std::isfinite(number);
}

template <typename T>
bool ReadNumber(const CString& item, T& value) {
  const std::string bytes = Ascii(WithoutBlanks(ViewOf(item)));
  const char* end = bytes.data() + bytes.size();
  T number{};
  const auto [rest, problem] = std::from_chars(bytes.data(), end, number);
  bool isRead = problem == std::errc() && rest == end;
  if constexpr (std::is_floating_point_v<T>) {
    isRead = isRead ||
             (problem == std::errc::result_out_of_range && rest == end && ReadTiny(bytes, number));
  }
  if (isRead) {
    value = number;
  }
  return isRead;
}

template <typename T>
CString& AppendNumber(CString& text, T number) {
  std::array<char, 32> bytes;
  *std::to_chars(bytes.data(), bytes.data() + bytes.size() - 1, number).ptr = '\0';
  return text << CString(bytes.data());
}

}  // namespace

void CLumString::LoadStringW(const CString& text, bool trim, bool merge) {
  m_items.clear();
  if (text.IsEmpty()) {
    return;
  }
  std::wstring_view rest = ViewOf(text);
  bool hasMore = true;
  while (hasMore) {
    const std::size_t end = std::min(rest.find(m_separator), rest.size());
    hasMore = end < rest.size();
    m_items.push_back(ToText(trim ? WithoutBlanks(rest.substr(0, end)) : rest.substr(0, end)));
    rest.remove_prefix(hasMore ? end + 1 : end);
    while (merge && rest.starts_with(m_separator)) {
      rest.remove_prefix(1);
    }
  }
}

bool CLumString::GetItem(int index, CString& value) const {
  if (index < 0 || index >= Count()) {
    return false;
  }
  value = m_items[static_cast<std::size_t>(index)];
  return true;
}

bool CLumString::GetItem(int index, bool& value) const {
  CString item;
  if (!GetItem(index, item)) {
    return false;
  }
  std::string word = Ascii(WithoutBlanks(ViewOf(item)));
  for (char& ch : word) {
    ch = static_cast<char>(ch >= 'A' && ch <= 'Z' ? ch + ('a' - 'A') : ch);
  }
  const bool isTrue = word == "1" || word == "true";
  const bool isReadable = isTrue || word == "0" || word == "false";
  value = isReadable ? isTrue : value;
  return isReadable;
}

bool CLumString::GetItem(int index, int& value) const {
  CString item;
  return GetItem(index, item) && ReadNumber(item, value);
}

bool CLumString::GetItem(int index, unsigned int& value) const {
  CString item;
  return GetItem(index, item) && ReadNumber(item, value);
}

bool CLumString::GetItem(int index, unsigned short& value) const {
  CString item;
  return GetItem(index, item) && ReadNumber(item, value);
}

bool CLumString::GetItem(int index, float& value) const {
  CString item;
  return GetItem(index, item) && ReadNumber(item, value);
}

bool CLumString::GetItem(int index, double& value) const {
  CString item;
  return GetItem(index, item) && ReadNumber(item, value);
}

void CLumString::Erase(int first, int count) {
  const int begin = std::clamp(first, 0, Count());
  const int end = std::clamp(first + count, begin, Count());
  m_items.erase(m_items.begin() + begin, m_items.begin() + end);
}

CString CLumString::String() const {
  CString joined;
  for (const CString& item : m_items) {
    if (&item != m_items.data()) {
      joined += m_separator;
    }
    joined += item;
  }
  return joined;
}

CString& operator<<(CString& text, int value) { return AppendNumber(text, value); }

CString& operator<<(CString& text, double value) { return AppendNumber(text, value); }

CString& operator<<(CString& text, wchar_t value) { return text += value; }

CString& operator<<(CString& text, const CString& value) { return text += value; }
