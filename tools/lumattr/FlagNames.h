// Attribute flags by name, and the forms in which files and arguments write them.
#pragma once

#include <string>
#include <vector>

#include "platform/Framework.h"

namespace lum::tool {

/// The names of the bits that are set, in ascending order; the bits that have no name are one last
/// entry in hexadecimal.
std::vector<std::string> FlagNames(unsigned int flags);
/// The same joined by "|", or "-" when no bit is set.
std::string FlagNamesText(unsigned int flags);

/// The flag word an argument stands for: a number ("16", "0x10"), names joined by "," or "|"
/// ("editable,group"; numbers may stand among them), or changes to `current` ("+disabled,-group").
/// "none" is 0. Throws ToolError for anything else.
unsigned int ParseFlagsArgument(const std::string& argument, unsigned int current);

/// The flag word in the form of a file's `like`: hexadecimal stays hexadecimal, with its prefix,
/// its width and its letters' case. What is not hexadecimal gives decimal.
CString FormatFlagsLike(unsigned int flags, const CString& like);

}  // namespace lum::tool
