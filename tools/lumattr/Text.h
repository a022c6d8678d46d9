// The UTF-8 of arguments and outputs: what is read, and what a terminal may be shown.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "decoding/Utf8Text.h"
#include "platform/Framework.h"

namespace lum::tool {

struct ToolContext;

using decoding::FromUtf8;
using decoding::Printable;
using decoding::Quoted;
using decoding::ToCString;
using decoding::ToUtf8;
using decoding::View;

/// An argument of the command line as a text. Throws ToolError, naming the argument by `what`, when
/// it is no valid UTF-8: what cannot be read back must not get into a file.
CString ArgumentText(const std::string& argument, std::string_view what);

/// A text of a file for the output: as it is, or on a terminal as Printable makes it.
std::string Shown(const ToolContext& context, const CString& text);

/// "12 lines" or "1 line".
std::string Counted(std::uint64_t count, const char* one, const char* many);

/// How many of the bytes are whole characters: all but an unfinished sequence at their end.
std::size_t WholeCharacters(std::string_view bytes);

/// How many columns of a terminal the UTF-8 text takes: none for combining marks, two for wide
/// East Asian characters and pictographs.
int DisplayWidth(std::string_view text);

}  // namespace lum::tool
