// What every command of lumattr gets: the output streams, the exit code and the colour decision;
// and ToolError, by which a command says that it cannot go on.
#pragma once

#include <ostream>
#include <stdexcept>
#include <string>

namespace lum::tool {

/// Exit codes, the same for all commands.
enum ExitCode : int {
  kExitFine = 0,
  kExitFinding = 1,  ///< A difference or a finding was reported, or an operation has no value.
  kExitTrouble = 2,
};

/// Trouble: the command stops and main prints "lumattr: " and the message, one line of UTF-8.
class ToolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Results go to `out`, messages to `err`. Both take UTF-8.
struct ToolContext {
  std::ostream& out;
  std::ostream& err;
  bool color = false;  ///< Whether `out` is a terminal that may be coloured.
  int exitCode = kExitFine;
  bool terminal = false;  ///< Whether `out` is a terminal, which no file's text may steer.

  /// Writes "lumattr: warning: message" as one line to `err`.
  void Warn(const std::string& message) { err << "lumattr: warning: " << message << '\n'; }
};

}  // namespace lum::tool
