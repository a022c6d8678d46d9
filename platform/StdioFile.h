// CStdioFile: line-by-line reading of a text file.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/FrameworkString.h"

/// A text file open for reading. The encoding is found from the file itself: a byte order mark
/// (UTF-8, UTF-16), else UTF-8 when the whole file is valid UTF-8, else the ANSI code page.
/// Threads: an open file belongs to one thread at a time, as reading moves its place; distinct ones
/// may be used in different threads, also on one file.
class LUM_PLATFORM_API CStdioFile {
 public:
  /// Flags of Open; their numbers are the framework's.
  enum OpenFlags : unsigned int {
    modeRead = 0x0000,
    shareDenyWrite = 0x0020,  ///< Others may read the file, not write it (where the system can).
    typeText = 0x4000,
  };

  /// A file larger than this is refused by Open: no input may exhaust its host's memory.
  static constexpr std::size_t kMaxFileBytes = std::size_t{1} << 30;

  CStdioFile();
  ~CStdioFile();
  CStdioFile(const CStdioFile&) = delete;
  CStdioFile& operator=(const CStdioFile&) = delete;

  /// Opens a file for reading. False when it cannot be opened, is a directory or is larger than
  /// kMaxFileBytes; nothing is open then.
  bool Open(const wchar_t* path, unsigned int flags);
  /// Reads the next line without its terminator (LF, CRLF or CR LF mixed). False at the end of the
  /// file, `line` is then empty.
  bool ReadString(CString& line);
  /// Starts over with the first line.
  void SeekToBegin();
  void Close();

 private:
  struct State;
  std::unique_ptr<State> m_state;
};
