#include "tools/lumattr/AttributePath.h"

#include <algorithm>

#include "attributes/AttributePersistence.h"
#include "catalogue/AttributeNames.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

PathStep ReadStep(std::wstring_view text) {
  PathStep step{ToCString(text), 0};
  step.occurrence = StripAttributeIndex(step.name);
  return step;
}

bool ReadsBackAs(const PathStep& step) {
  if (step.name.IsEmpty() || step.name.FindOneOf(L".=\r\n") >= 0) {
    return false;
  }
  const CString text = FormatStep(step);
  return ReadStep(View(text)) == step;
}

}  // namespace

std::optional<AttributePath> ReadPath(const CString& dotted) {
  AttributePath path;
  std::wstring_view rest = View(dotted);
  for (bool last = false; !last;) {
    const std::size_t dot = rest.find(KEY_DIVCHAR);
    last = dot == std::wstring_view::npos;
    path.push_back(ReadStep(rest.substr(0, dot)));
    if (path.back().occurrence < 0 || path.back().occurrence > kMaxPlaceholdersPerLoad) {
      return std::nullopt;
    }
    rest.remove_prefix(last ? rest.size() : dot + 1);
  }
  return path;
}

AttributePath ParsePathArgument(const std::string& argument) {
  const CString text = ArgumentText(argument, "PATH");
  if (text.IsEmpty()) {
    throw ToolError("the attribute's path is empty");
  }
  std::optional<AttributePath> path = ReadPath(text);
  if (!path) {
    throw ToolError("an occurrence in the path " + Quoted(text) + " is negative or too large");
  }
  return std::move(*path);
}

CString FormatStep(const PathStep& step) {
  CString text = step.name;
  AppendAttributeIndex(text, step.occurrence);
  return text;
}

CString FormatPath(const AttributePath& path) {
  CString dotted;
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (i != 0) {
      dotted += KEY_DIVCHAR;
    }
    dotted += FormatStep(path[i]);
  }
  return dotted;
}

bool CanBeWritten(const AttributePath& path) {
  return !path.empty() && std::all_of(path.begin(), path.end(), ReadsBackAs);
}

bool BeginsWith(const AttributePath& path, const AttributePath& beginning) {
  return path.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), path.begin());
}

std::optional<CString> DottedPathOfKey(const CString& key, int version) {
  if (version == 2) {
    return key;
  }
  if (version != 1 || key.Left(ATTRIB_MARK.GetLength()) != ATTRIB_MARK) {
    return std::nullopt;
  }
  return key.Mid(ATTRIB_MARK.GetLength());
}

CString KeyOfPath(const AttributePath& path, int version) {
  return version == 1 ? ATTRIB_MARK + FormatPath(path) : FormatPath(path);
}

}  // namespace lum::tool
