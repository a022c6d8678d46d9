// Runs a program and collects what it writes.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/portable/WindowsHandle.h"

namespace lum::test {

using lum::detail::CHandle;

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

/// Starts a program and does not wait for it. Null when it cannot be started.
CHandle StartProcess(std::wstring commandLine, const ProcessSetup& setup);

/// RunProcess with both outputs collected.
struct ProcessResult {
  DWORD exitCode = 0;
  std::string output;
  std::string errors;
};
ProcessResult RunAndCollect(const std::vector<std::wstring>& words,
                            const std::filesystem::path& folder);

}  // namespace lum::test
