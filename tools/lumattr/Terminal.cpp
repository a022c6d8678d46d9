#include "tools/lumattr/Terminal.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace lum::tool {
namespace {

bool IsOutputTerminal() {
#if defined(_WIN32)
  return _isatty(_fileno(stdout)) != 0;
#else
  return isatty(STDOUT_FILENO) != 0;
#endif
}

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

bool MayColorOutput() {
  return Environment("NO_COLOR").empty() && Environment("TERM") != "dumb" && IsOutputTerminal();
}

}  // namespace lum::tool
