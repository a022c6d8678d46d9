// The grammar of one line of a sectioned configuration file, and which names and texts can stand in
// such a line.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/FileObject.h"
#include "platform/portable/FileText.h"

namespace lum::detail {

/// What a line is. Places are byte offsets into the line.
struct CLineSyntax {
  FileObjectLine::Kind kind = FileObjectLine::Kind::Unknown;
  std::size_t nameBegin = 0;  ///< The key of an item, the name of a section.
  std::size_t nameEnd = 0;
  std::size_t valueBegin = 0;  ///< The value of an item goes on to the end of the line.
};

/// Reads one line, given without its terminator.
CLineSyntax ParseLine(std::string_view line, TextFileEncoding encoding);

/// True when a line made of the text reads back as it.
bool IsWritableSectionName(const CString& name);
bool IsWritableKey(const CFileText& key);
bool IsWritableValue(const CFileText& value);

}  // namespace lum::detail
