// Runs a program and collects what it writes.
#pragma once

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace lum::test {

/// A handle, closed at the end of its life.
class CHandle {
 public:
  explicit CHandle(HANDLE handle = INVALID_HANDLE_VALUE) : m_handle(handle) {}
  ~CHandle() { Close(); }
  CHandle(const CHandle&) = delete;
  CHandle& operator=(const CHandle&) = delete;

  bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE && m_handle != nullptr; }
  HANDLE Get() const { return m_handle; }
  HANDLE* Receive() { return &m_handle; }
  void Close() {
    if (IsOpen()) {
      ::CloseHandle(m_handle);
    }
    m_handle = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE m_handle;
};

/// What CreateProcessW is told beside the command line.
struct ProcessSetup {
  std::filesystem::path folder;  ///< Where it runs; empty for this program's own.
  HANDLE output = nullptr;       ///< Null for none.
  HANDLE errors = nullptr;
  DWORD flags = 0;
};

/// The command line that CommandLineToArgvW takes apart into these words again.
std::wstring CommandLine(const std::vector<std::wstring>& words);

/// Runs a program to its end and gives its exit code; 0xFFFFFFFF when it cannot be started or takes
/// more than a minute.
DWORD RunProcess(std::wstring commandLine, const ProcessSetup& setup);

/// The same with both outputs collected.
struct ProcessResult {
  DWORD exitCode = 0;
  std::string output;
  std::string errors;
};
ProcessResult RunAndCollect(const std::vector<std::wstring>& words,
                            const std::filesystem::path& folder);

}  // namespace lum::test
