// CString and CStringA on std::basic_string: the members of the framework's strings that
// LumAttributes uses, and few more.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

template <typename Ch>
class MinimalString;

/// Between wide text and bytes, UTF-8 standing in for the system's code page.
void ConvertText(std::string_view from, std::wstring& to);
void ConvertText(std::wstring_view from, std::string& to);

/// Places and counts are ints, as in the framework; a place that does not exist is -1.
template <typename Ch>
class MinimalString {
  using View = std::basic_string_view<Ch>;
  using OtherChar = std::conditional_t<std::is_same_v<Ch, char>, wchar_t, char>;
  static constexpr Ch kWhiteSpace[] = {' ', '\t', '\n', '\v', '\f', '\r', 0};

 public:
  MinimalString() = default;
  /// Null gives the empty text.
  MinimalString(const Ch* text) {
    if (text != nullptr) {
      m_text = text;
    }
  }
  MinimalString(const Ch* text, int length) : m_text(text, Size(length)) {}
  explicit MinimalString(Ch ch, int count = 1) : m_text(Size(count), ch) {}
  explicit MinimalString(const OtherChar* text) {
    if (text != nullptr) {
      ConvertText(text, m_text);
    }
  }
  explicit MinimalString(const MinimalString<OtherChar>& text) {
    ConvertText({text.GetString(), static_cast<std::size_t>(text.GetLength())}, m_text);
  }

  int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
  bool IsEmpty() const noexcept { return m_text.empty(); }
  void Empty() noexcept { m_text.clear(); }
  const Ch* GetString() const noexcept { return m_text.c_str(); }
  operator const Ch*() const noexcept { return m_text.c_str(); }
  /// The character behind the last one is NUL.
  Ch operator[](int index) const noexcept { return m_text[Size(index)]; }
  Ch GetAt(int index) const noexcept { return m_text[Size(index)]; }

  MinimalString Left(int count) const { return Mid(0, count); }
  MinimalString Right(int count) const { return Mid(GetLength() - std::max(count, 0)); }
  MinimalString Mid(int first) const { return Mid(first, GetLength()); }
  MinimalString Mid(int first, int count) const {
    const View part = View(m_text)
                          .substr(std::min(Size(std::max(first, 0)), m_text.size()))
                          .substr(0, Size(count));
    return MinimalString(part.data(), static_cast<int>(part.size()));
  }

  int Find(Ch ch, int start = 0) const noexcept { return Place(m_text.find(ch, Size(start))); }
  int Find(const Ch* text, int start = 0) const noexcept {
    return Place(m_text.find(text, Size(start)));
  }
  int ReverseFind(Ch ch) const noexcept { return Place(m_text.rfind(ch)); }
  int FindOneOf(const Ch* set) const noexcept { return Place(m_text.find_first_of(set)); }

  MinimalString& TrimLeft() {
    m_text.erase(0, m_text.find_first_not_of(kWhiteSpace));
    return *this;
  }
  MinimalString& TrimRight() {
    m_text.erase(m_text.find_last_not_of(kWhiteSpace) + 1);
    return *this;
  }
  MinimalString& Trim() { return TrimRight().TrimLeft(); }

  int Compare(const Ch* text) const noexcept { return m_text.compare(text); }

  void Append(const Ch* text) { m_text += text; }
  void Append(const Ch* text, int length) { m_text.append(text, Size(length)); }
  void Append(const MinimalString& text) { m_text += text.m_text; }
  void AppendChar(Ch ch) { m_text += ch; }
  Ch* GetBuffer(int length) {
    m_text.resize(std::max(Size(length), m_text.size()));
    return m_text.data();
  }
  void ReleaseBuffer(int length) { m_text.resize(Size(length)); }
  MinimalString& operator+=(const MinimalString& text) {
    m_text += text.m_text;
    return *this;
  }
  MinimalString& operator+=(const Ch* text) {
    m_text += text;
    return *this;
  }
  MinimalString& operator+=(Ch ch) {
    m_text += ch;
    return *this;
  }

  friend MinimalString operator+(MinimalString a, const MinimalString& b) {
    return std::move(a += b);
  }
  friend MinimalString operator+(MinimalString a, const Ch* b) { return std::move(a += b); }
  friend MinimalString operator+(const Ch* a, const MinimalString& b) {
    return MinimalString(a) + b;
  }

  // By character code, over the whole text.
  friend bool operator==(const MinimalString& a, const MinimalString& b) noexcept {
    return a.m_text == b.m_text;
  }
  friend bool operator==(const MinimalString& a, const Ch* b) noexcept { return a.m_text == b; }
  friend bool operator<(const MinimalString& a, const MinimalString& b) noexcept {
    return a.m_text < b.m_text;
  }

 private:
  static std::size_t Size(int length) noexcept {
    return static_cast<std::size_t>(std::max(length, 0));
  }
  static int Place(std::size_t place) noexcept {
    return place == std::basic_string<Ch>::npos ? -1 : static_cast<int>(place);
  }

  std::basic_string<Ch> m_text;
};

using CString = MinimalString<wchar_t>;
using CStringA = MinimalString<char>;
