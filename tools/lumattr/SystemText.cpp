#include "tools/lumattr/SystemText.h"

#if defined(_WIN32)

#include <windows.h>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <shellapi.h>

#include "platform/TextEncoding.h"

namespace lum::tool {
namespace {

std::string Utf8Of(const wchar_t* text) {
  const CString wide(text);
  const CStringA bytes = WideToUtf8(wide);
  const bool isWhole = Utf8ToWide(bytes) == wide;
  // What has half a character is refused like any other bytes that are no UTF-8.
  return std::string(bytes.GetString()) + (isWhole ? "" : "\xFF");
}

struct CLocalMemory {
  void operator()(wchar_t** memory) const { ::LocalFree(memory); }
};

}  // namespace

std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  const std::unique_ptr<wchar_t*, CLocalMemory> words(
      ::CommandLineToArgvW(::GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) {
    arguments.push_back(Utf8Of(words.get()[i]));
  }
  return arguments;
}

void TakeVariableAsUtf8(const char* name) {
  const std::wstring wideName(name, name + std::string_view(name).size());
  if (const wchar_t* value = ::_wgetenv(wideName.c_str())) {
    ::_putenv_s(name, Utf8Of(value).c_str());
  }
}

}  // namespace lum::tool

#else

namespace lum::tool {

std::vector<std::string> ProgramArguments(int argc, char** argv) { return {argv, argv + argc}; }

void TakeVariableAsUtf8(const char* /*name*/) {}

}  // namespace lum::tool

#endif
