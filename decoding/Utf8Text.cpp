#include "decoding/Utf8Text.h"

#include <algorithm>

#include "platform/TextEncoding.h"

namespace lum::decoding {
namespace {

bool IsControl(wchar_t ch) { return ch < 0x20 || (ch >= 0x7F && ch < 0xA0); }

CString Escape(wchar_t ch) {
  switch (ch) {
    case L'\t':
      return L"\\t";
    case L'\n':
      return L"\\n";
    case L'\r':
      return L"\\r";
    default: {
      CString escape;
      escape.Format(L"\\x%02x", static_cast<unsigned int>(ch));
      return escape;
    }
  }
}

}  // namespace

std::wstring_view View(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

CString ToCString(std::wstring_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

std::string ToUtf8(const CString& text) {
  const CStringA bytes = WideToUtf8(text);
  return {bytes.GetString(), static_cast<std::size_t>(bytes.GetLength())};
}

CString FromUtf8(std::string_view text) {
  return Utf8ToWide(CStringA(text.data(), static_cast<int>(text.size())));
}

CString Folded(const CString& text) {
  CString folded = text;
  folded.MakeLower();
  return folded;
}

std::string Printable(const CString& text) {
  const std::wstring_view chars = View(text);
  if (std::none_of(chars.begin(), chars.end(), IsControl)) {
    return ToUtf8(text);
  }
  CString printable;
  for (wchar_t ch : chars) {
    if (IsControl(ch)) {
      printable += Escape(ch);
    } else {
      printable += ch;
    }
  }
  return ToUtf8(printable);
}

std::string Quoted(const CString& text) {
  std::string quoted(1, '\'');
  quoted += Printable(text);
  quoted += '\'';
  return quoted;
}

std::string QuotedPart(std::string_view text) {
  constexpr std::size_t kMaxQuoted = 60;
  if (text.size() <= kMaxQuoted) {
    return Quoted(FromUtf8(text));
  }
  std::size_t end = kMaxQuoted;
  while (end > 0 && IsContinuation(text[end])) {
    --end;
  }
  return Quoted(FromUtf8(text.substr(0, end)) + L"\u2026");
}

}  // namespace lum::decoding
