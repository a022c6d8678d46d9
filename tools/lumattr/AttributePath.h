// The path of an attribute in its tree, as users write it and as keys of the two format versions
// spell it: "Sensor(1).Offset", in version 1 "@trSensor(1).Offset".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Framework.h"

namespace lum::tool {

/// One name on the path with its occurrence among the same-named siblings.
struct PathStep {
  CString name;
  int occurrence = 0;

  friend bool operator==(const PathStep&, const PathStep&) = default;
};

using AttributePath = std::vector<PathStep>;

/// The path that readers of files take from a dotted text, which may hold empty names. None when
/// they reject it: an occurrence is negative or beyond what a load creates.
std::optional<AttributePath> ReadPath(const CString& dotted);

/// The path an argument names. Throws ToolError when it is empty or no reader could follow it.
AttributePath ParsePathArgument(const std::string& argument);

/// The canonical dotted text: an occurrence is written when it is not 0.
CString FormatPath(const AttributePath& path);
/// One step of it: "Name" or "Name(2)".
CString FormatStep(const PathStep& step);

/// Whether the path, written as a key, reads back as this very path: names are not empty and hold
/// nothing that keys give a meaning to.
bool CanBeWritten(const AttributePath& path);

/// Whether `path` is `beginning` or leads through it.
bool BeginsWith(const AttributePath& path, const AttributePath& beginning);

/// The dotted path in a section item's key, or none when the key is no attribute's in that version.
std::optional<CString> DottedPathOfKey(const CString& key, int version);
/// The key of a path in that version, 1 or 2.
CString KeyOfPath(const AttributePath& path, int version);

}  // namespace lum::tool
