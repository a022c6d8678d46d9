#include "tools/lumattr/SystemText.h"

#if defined(_WIN32)

#include <cstdlib>
#include <memory>
#include <string_view>
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <shellapi.h>

namespace lum::tool {
namespace {

bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void AppendUtf8(char32_t code, std::string& text) {
  const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | (code >> 6));
    tail(0);
  } else if (code < 0x10000) {
    text += static_cast<char>(0xE0 | (code >> 12));
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0 | (code >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

// The system's own conversion replaces lone surrogates, which then could no longer be refused.
std::string Utf8Of(std::wstring_view wide) {
  std::string text;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    char32_t code = wide[i];
    if (IsHighSurrogate(wide[i]) && i + 1 < wide.size() && IsLowSurrogate(wide[i + 1])) {
      code = 0x10000 + ((code - 0xD800) << 10) + (wide[++i] - 0xDC00U);
    }
    AppendUtf8(code, text);
  }
  return text;
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
