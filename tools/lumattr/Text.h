// Conversions between the library's wide texts and the UTF-8 of arguments and outputs.
#pragma once

#include <string>
#include <string_view>

#include "platform/Framework.h"

namespace lum::tool {

struct ToolContext;

/// The characters of a text, valid while it lives unchanged.
std::wstring_view View(const CString& text);
CString ToCString(std::wstring_view text);

/// What is no Unicode becomes U+FFFD, so the result is always valid UTF-8.
std::string ToUtf8(const CString& text);
/// Bytes that are no UTF-8 are taken as Latin-1.
CString FromUtf8(std::string_view text);

/// An argument of the command line as a text. Throws ToolError, naming the argument by `what`, when
/// it is no valid UTF-8: what cannot be read back must not get into a file.
CString ArgumentText(const std::string& argument, std::string_view what);

/// The text with control characters written as "\t", "\n" or "\x1b": nothing a file holds can
/// steer the terminal or break a line of output.
std::string Printable(const CString& text);
/// Printable in single quotes, for messages.
std::string Quoted(const CString& text);

/// A text of a file for the output: as it is, or on a terminal as Printable makes it.
std::string Shown(const ToolContext& context, const CString& text);
/// JSON that a terminal shows and is not steered by: escapes the control characters beyond ASCII's
/// first, which JSON itself need not.
std::string SafeJson(const std::string& json);

/// How many of the bytes are whole characters: all but an unfinished sequence at their end.
std::size_t WholeCharacters(std::string_view bytes);

/// How many columns of a terminal the UTF-8 text takes: none for combining marks, two for wide
/// East Asian characters and pictographs.
int DisplayWidth(std::string_view text);

}  // namespace lum::tool
