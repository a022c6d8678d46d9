// UTF-8, character by character.
#include "platform/TextEncoding.h"

#include <cstdint>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsScalar(char32_t code) { return code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF); }

// Wide characters are UTF-16 where they have two bytes.
char32_t TakeWide(std::wstring_view& text) {
  auto code = static_cast<char32_t>(text.front());
  text.remove_prefix(1);
  if constexpr (sizeof(wchar_t) == 2) {
    const char32_t next = text.empty() ? 0 : static_cast<char32_t>(text.front());
    if (code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      text.remove_prefix(1);
      code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
    }
  }
  return IsScalar(code) ? code : kReplacement;
}

void AppendWide(std::wstring& text, char32_t code) {
  if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
    text += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(code);
  }
}

void AppendUtf8(std::string& bytes, char32_t code) {
  if (code < 0x80) {
    bytes += static_cast<char>(code);
    return;
  }
  const int followers = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  const char32_t lead = followers == 1 ? 0xC0 : followers == 2 ? 0xE0 : 0xF0;
  bytes += static_cast<char>(lead | (code >> (6 * followers)));
  for (int i = followers - 1; i >= 0; --i) {
    bytes += static_cast<char>(0x80 | ((code >> (6 * i)) & 0x3F));
  }
}

// The character that the bytes begin with, when they are valid there; else the first byte's code.
char32_t TakeUtf8(std::string_view& bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  const std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t code = lead & (0x7FU >> length);
  bool isValid = lead >= 0xC2 && lead < 0xF5 && length <= bytes.size();
  for (std::size_t i = 1; isValid && i < length; ++i) {
    const auto follower = static_cast<unsigned char>(bytes[i]);
    isValid = (follower & 0xC0) == 0x80;
    code = (code << 6) | (follower & 0x3FU);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  isValid = isValid && code >= kLeast[length] && IsScalar(code);
  bytes.remove_prefix(isValid ? length : 1);
  return isValid ? code : lead;
}

}  // namespace

void ConvertText(std::string_view from, std::wstring& to) {
  to.clear();
  while (!from.empty()) {
    AppendWide(to, TakeUtf8(from));
  }
}

void ConvertText(std::wstring_view from, std::string& to) {
  to.clear();
  while (!from.empty()) {
    AppendUtf8(to, TakeWide(from));
  }
}

CStringA WideToUtf8(const CString& text) { return CStringA(text); }

CString Utf8ToWide(const CStringA& text) { return CString(text); }
