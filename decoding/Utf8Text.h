// Conversions between the library's wide texts and UTF-8, and how messages show a text.
#pragma once

#include <string>
#include <string_view>

#include "platform/Framework.h"

namespace lum::decoding {

/// Whether a byte of UTF-8 goes on with a character.
constexpr bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The characters of a text, valid while it lives unchanged.
std::wstring_view View(const CString& text);
CString ToCString(std::wstring_view text);

/// What is no Unicode becomes U+FFFD, so the result is always valid UTF-8.
std::string ToUtf8(const CString& text);
/// Bytes that are no UTF-8 are taken as Latin-1.
CString FromUtf8(std::string_view text);

/// The text in lower case, for comparisons that leave case out.
CString Folded(const CString& text);

/// The text with control characters written as "\t", "\n" or "\x1b": nothing a file holds can
/// steer the terminal or break a line of output.
std::string Printable(const CString& text);
/// Printable in single quotes, for messages.
std::string Quoted(const CString& text);
/// The same of UTF-8, cut where it is long.
std::string QuotedPart(std::string_view text);

}  // namespace lum::decoding
