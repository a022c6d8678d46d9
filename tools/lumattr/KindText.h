// Kinds of values and the texts they read: the tool refuses a text that the library would read in
// part only, so that nothing is dropped in silence.
#pragma once

#include <optional>
#include <string>

#include "values/LumType.h"

namespace lum::tool {

/// The kind's short name, or its number when it has none.
std::string KindName(int kind);

/// The kind that readers of files give an attribute of this name.
CLumType::LUM_TYPE KindOfName(const CString& name);

/// Why the kind does not read the text wholly, as the end of a sentence ("'a' is no int"); none
/// when it does.
std::optional<std::string> WhyKindRefuses(int kind, const CString& text);

/// Why a file cannot hold the text as a value and give it back, whatever the kind; none when it
/// can.
std::optional<std::string> WhyFileRefuses(const CString& text);

}  // namespace lum::tool
