#include "tools/lumattr/ConsoleBuffer.h"

#include "platform/TextEncoding.h"
#include "tools/lumattr/Text.h"

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

namespace lum::tool {
namespace {

// Far below the 64 KB that consoles of old systems take at once.
constexpr std::size_t kMostWaiting = 4096;

bool IsTail(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// How long a sequence is that begins with this byte.
std::size_t SequenceLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  if (byte < 0xC0) {
    return 1;
  }
  return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

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

std::size_t WholeCharacters(std::string_view bytes) {
  std::size_t start = bytes.size();
  while (start > 0 && bytes.size() - start < 3 && IsTail(bytes[start - 1])) {
    --start;
  }
  if (start == 0) {
    return bytes.size();
  }
  --start;
  return start + SequenceLength(bytes[start]) > bytes.size() ? start : bytes.size();
}

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
