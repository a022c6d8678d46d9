#include "tools/lumattr/ConsoleBuffer.h"

#include "tools/lumattr/Text.h"

#include <windows.h>

namespace lum::tool {
namespace {

// Far below the 64 KB that consoles of old systems take at once.
constexpr std::size_t kMostWaiting = 4096;

bool WriteAll(HANDLE console, std::wstring_view text) {
  while (!text.empty()) {
    DWORD count = 0;
    if (::WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()), &count, nullptr) ==
            0 ||
        count == 0) {
      return false;
    }
    text.remove_prefix(count);
  }
  return true;
}

}  // namespace

std::streambuf::int_type CConsoleBuffer::overflow(int_type ch) {
  const char byte = traits_type::to_char_type(ch);
  return traits_type::eq_int_type(ch, traits_type::eof()) || xsputn(&byte, 1) == 1
             ? traits_type::not_eof(ch)
             : traits_type::eof();
}

std::streamsize CConsoleBuffer::xsputn(const char* text, std::streamsize size) {
  m_waiting.append(text, static_cast<std::size_t>(size));
  const bool isDone = m_waiting.size() < kMostWaiting || WriteFirst(WholeCharacters(m_waiting));
  return isDone ? size : 0;
}

int CConsoleBuffer::sync() { return WriteFirst(WholeCharacters(m_waiting)) ? 0 : -1; }

bool CConsoleBuffer::WriteFirst(std::size_t size) {
  const CString wide = FromUtf8(std::string_view(m_waiting).substr(0, size));
  m_waiting.erase(0, size);
  return WriteAll(m_console, View(wide));
}

}  // namespace lum::tool
