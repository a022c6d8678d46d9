#include "platform/portable/FileText.h"

#include <cstring>

#include "platform/portable/AsciiText.h"

namespace lum::detail {

namespace {

std::size_t WideCount(const CFileText& text) { return text.bytes.size() / sizeof(wchar_t); }

}  // namespace

CFileTextOf::CFileTextOf(const CString& text) {
  const auto length = static_cast<std::size_t>(text.GetLength());
  char* bytes = m_short.data();
  if (length > kInPlace) {
    m_long.resize(length);
    bytes = m_long.data();
  }
  if (NarrowAscii(text.GetString(), length, bytes)) {
    m_text = {{bytes, length}, false};
  } else {
    const auto* wide = reinterpret_cast<const char*>(text.GetString());
    m_text = {{wide, length * sizeof(wchar_t)}, true};
  }
}

void ReadText(const CFileText& text, CString& output) {
  if (text.bytes.empty()) {
    output.Empty();
    return;
  }
  const auto length = static_cast<int>(text.isWide ? WideCount(text) : text.bytes.size());
  wchar_t* chars = output.GetBuffer(length);
  if (text.isWide) {
    std::memcpy(chars, text.bytes.data(), text.bytes.size());
  } else {
    WidenAscii(text.bytes, chars);
  }
  output.ReleaseBuffer(length);
}

CString ToCString(const CFileText& text) {
  CString output;
  ReadText(text, output);
  return output;
}

std::wstring WideChars(const CFileText& text) {
  if (!text.isWide) {
    return {text.bytes.begin(), text.bytes.end()};
  }
  std::wstring chars(WideCount(text), L'\0');
  std::memcpy(chars.data(), text.bytes.data(), text.bytes.size());
  return chars;
}

}  // namespace lum::detail
