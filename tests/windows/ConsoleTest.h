// The part of the console's tests that runs in the new console.
#pragma once

#include <string>

namespace lum::test {

/// The first argument of this program when it is started in a new console.
inline constexpr const wchar_t* kInConsole = L"--in-console";

/// Runs the command line in the console of this process, then writes the texts of the console's
/// cells into a file as they are, row by row. Gives the exit code of what was run.
int RunInThisConsole(const std::wstring& commandLine, const std::wstring& shownFile);

}  // namespace lum::test
