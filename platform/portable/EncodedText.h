// The bytes of a text file: which encoding they are in, where their lines end, and the way between
// bytes and wide text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/FileObject.h"
#include "platform/FrameworkString.h"

namespace lum::detail {

/// A byte order mark decides; else bytes that are valid UTF-8 as a whole are UTF-8, any other ANSI.
TextFileEncoding DetectEncoding(std::string_view file);
/// The byte order mark that a file of this encoding begins with, or nothing.
std::string_view EncodingMark(TextFileEncoding encoding);
/// How many bytes a code unit has: 2 in UTF-16, else 1.
std::size_t UnitSize(TextFileEncoding encoding);

bool IsAscii(std::string_view bytes);
bool IsValidUtf8(std::string_view bytes);
/// True when the bytes keep the rules of their encoding; ANSI text is held to those of UTF-8, the
/// only one of the two that has any.
bool IsValidText(std::string_view bytes, TextFileEncoding encoding);

/// Bytes to text. In 8-bit encodings a byte that is not part of valid UTF-8 is taken as Latin-1 (or
/// by the system's code page); in UTF-16 lone surrogates stay and an odd last byte is dropped.
CString DecodeText(std::string_view bytes, TextFileEncoding encoding);
/// Appends the bytes of a text. False when they would not read back as the same text; `bytes` may
/// have grown then.
bool EncodeText(const CString& text, TextFileEncoding encoding, std::string& bytes);
/// True when a reader of the whole file finds this encoding, or another one with the same text.
bool ReadsBackAs(std::string_view file, TextFileEncoding encoding);

/// The code units of encoded bytes. All that lines are made of (blanks, brackets, "=", line ends)
/// is one unit in every encoding.
class CCodeUnits {
 public:
  CCodeUnits(std::string_view bytes, TextFileEncoding encoding)
      : m_bytes(bytes), m_encoding(encoding), m_unitSize(UnitSize(encoding)) {}

  std::size_t Count() const { return m_bytes.size() / m_unitSize; }
  char16_t operator[](std::size_t index) const {
    if (m_unitSize == 1) {
      return Byte(index);
    }
    const char16_t first = Byte(2 * index);
    const char16_t second = Byte(2 * index + 1);
    return m_encoding == TextFileEncoding::Utf16LittleEndian
               ? static_cast<char16_t>(first | (second << 8))
               : static_cast<char16_t>((first << 8) | second);
  }

 private:
  unsigned char Byte(std::size_t place) const { return static_cast<unsigned char>(m_bytes[place]); }

  std::string_view m_bytes;
  TextFileEncoding m_encoding;
  std::size_t m_unitSize;
};

/// The first half of a UTF-16 pair that stands alone; the count when there is none.
std::size_t FirstInvalidUnit(const CCodeUnits& units);

/// One line as places in a file's bytes: [begin, end) without the terminator, [end, next) the
/// terminator: LF, CR LF or, at the end of the file, nothing. A CR alone ends no line.
struct CLineBounds {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t next = 0;
};

/// The line that begins at `begin`. Precondition: begin < bytes.size().
CLineBounds LineAt(std::string_view bytes, std::size_t begin, TextFileEncoding encoding);

}  // namespace lum::detail
