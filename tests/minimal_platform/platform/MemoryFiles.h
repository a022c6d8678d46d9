// The files of the minimal platform: names and bytes in memory, for the whole process. Programs
// fill them before they load from them.
#pragma once

#include <string>

#include "platform/MinimalString.h"

namespace MemoryFiles {

/// Makes a file or replaces its bytes.
void Write(const CString& path, std::string bytes);
/// The bytes of a file, valid until files change; null when there is none.
const std::string* Find(const CString& path);
void RemoveAll();

}  // namespace MemoryFiles

/// Takes the lines of a file in UTF-8 one by one, whether they end in LF or CRLF.
class MemoryFileLines {
 public:
  MemoryFileLines() = default;
  explicit MemoryFileLines(const std::string& bytes);

  /// False, with `line` emptied, when there is no further line.
  bool Next(CString& line);

 private:
  std::string m_bytes;
  std::size_t m_next = 0;
};
