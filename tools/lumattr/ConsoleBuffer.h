// A stream buffer that writes UTF-8 to a Windows console, which takes UTF-16. Windows only.
#pragma once

#include <streambuf>
#include <string>

namespace lum::tool {

/// Collects bytes until it is flushed or holds several thousand. A character whose bytes are not
/// all there yet waits for the rest. Writing fails when the console does not take the text.
class CConsoleBuffer : public std::streambuf {
 public:
  /// `console` is the system's handle; it stays open as long as the buffer lives.
  explicit CConsoleBuffer(void* console) : m_console(console) {}

 protected:
  int_type overflow(int_type ch) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  bool WriteFirst(std::size_t size);

  void* m_console;
  std::string m_waiting;
};

}  // namespace lum::tool
