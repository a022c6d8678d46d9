#include "tools/lumattr/Terminal.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>
#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>

#include <windows.h>
#include "tools/lumattr/ConsoleBuffer.h"
#else
#include <unistd.h>
#endif

namespace lum::tool {
namespace {

#if defined(_WIN32)

bool IsConsole(HANDLE handle) {
  DWORD mode = 0;
  return ::GetConsoleMode(handle, &mode) != 0;
}

// Never destroyed: the streams are flushed after everything else.
void Prepare(std::ostream& stream, std::FILE* file, DWORD standardHandle) {
  const HANDLE handle = ::GetStdHandle(standardHandle);
  if (IsConsole(handle)) {
    stream.rdbuf(new CConsoleBuffer(handle));
  } else {
    ::_setmode(::_fileno(file), _O_BINARY);
  }
}

// Consoles before Windows 10 show no colours.
bool DoesOutputShowColors() {
  const HANDLE handle = ::GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return ::GetConsoleMode(handle, &mode) != 0 &&
         ::SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

#else

bool DoesOutputShowColors() { return IsOutputTerminal(); }

#endif

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

void PrepareStandardStreams() {
#if defined(_WIN32)
  Prepare(std::cout, stdout, STD_OUTPUT_HANDLE);
  Prepare(std::cerr, stderr, STD_ERROR_HANDLE);
#endif
}

bool IsClosedPipe(int error) {
#if defined(_WIN32)
  return error == EPIPE || error == EINVAL;  // Windows says either.
#else
  return error == EPIPE;
#endif
}

bool IsOutputTerminal() {
#if defined(_WIN32)
  return IsConsole(::GetStdHandle(STD_OUTPUT_HANDLE));
#else
  return isatty(STDOUT_FILENO) != 0;
#endif
}

bool IsErrorTerminal() {
#if defined(_WIN32)
  return IsConsole(::GetStdHandle(STD_ERROR_HANDLE));
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

bool MayColorOutput() {
  return Environment("NO_COLOR").empty() && Environment("TERM") != "dumb" && DoesOutputShowColors();
}

}  // namespace lum::tool
