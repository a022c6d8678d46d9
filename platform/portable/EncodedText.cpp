// UTF-8 and ANSI are converted by the platform's text conversion, UTF-16 here. Most texts are ASCII
// alone, which is the same in UTF-8 and every ANSI code page and takes a short way.
#include "platform/portable/EncodedText.h"

#include <algorithm>

#include "platform/TextEncoding.h"
#include "platform/portable/AsciiText.h"
#include "platform/portable/FileText.h"

namespace lum::detail {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

bool IsUtf16(TextFileEncoding encoding) {
  return encoding == TextFileEncoding::Utf16LittleEndian ||
         encoding == TextFileEncoding::Utf16BigEndian;
}

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// False, with nothing appended, when the text is not ASCII.
bool AppendAscii(const CString& text, std::string& bytes) {
  const std::size_t begin = bytes.size();
  const auto length = static_cast<std::size_t>(text.GetLength());
  bytes.resize(begin + length);
  const bool isAscii = NarrowAscii(text.GetString(), length, bytes.data() + begin);
  bytes.resize(isAscii ? begin + length : begin);
  return isAscii;
}

CStringA ToByteString(std::string_view bytes) {
  return CStringA(bytes.data(), static_cast<int>(bytes.size()));
}

std::string_view View(const CStringA& bytes) {
  return {bytes.GetString(), static_cast<std::size_t>(bytes.GetLength())};
}

// ---- UTF-16

bool HasPairAt(const CCodeUnits& units, std::size_t index) {
  return index + 1 < units.Count() && IsHighSurrogate(units[index]) &&
         IsLowSurrogate(units[index + 1]);
}

wchar_t JoinPair(char16_t high, char16_t low) {
  return static_cast<wchar_t>(0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00));
}

CString DecodeUtf16(const CCodeUnits& units) {
  CString text;
  if (units.Count() == 0) {
    return text;
  }
  wchar_t* out = text.GetBuffer(static_cast<int>(units.Count()));
  int length = 0;
  for (std::size_t i = 0; i < units.Count(); ++i) {
    if (!kWideIsUtf16 && HasPairAt(units, i)) {
      out[length++] = JoinPair(units[i], units[i + 1]);
      ++i;
    } else {
      out[length++] = static_cast<wchar_t>(units[i]);
    }
  }
  text.ReleaseBuffer(length);
  return text;
}

void AppendUnit(std::uint32_t unit, TextFileEncoding encoding, std::string& bytes) {
  const char low = static_cast<char>(unit & 0xFF);
  const char high = static_cast<char>((unit >> 8) & 0xFF);
  const bool lowFirst = encoding == TextFileEncoding::Utf16LittleEndian;
  bytes += lowFirst ? low : high;
  bytes += lowFirst ? high : low;
}

// A character beyond Unicode comes out as something else; the caller reads the bytes back to see.
void EncodeUtf16(const CString& text, TextFileEncoding encoding, std::string& bytes) {
  for (int i = 0; i < text.GetLength(); ++i) {
    const auto code = static_cast<std::uint32_t>(text[i]);
    if (kWideIsUtf16 || code < 0x10000) {
      AppendUnit(code, encoding, bytes);
    } else {
      AppendUnit(0xD800 + (((code - 0x10000) >> 10) & 0x3FF), encoding, bytes);
      AppendUnit(0xDC00 + ((code - 0x10000) & 0x3FF), encoding, bytes);
    }
  }
}

// The place of the first LF unit at or after `begin`, or the end of the whole units.
std::size_t FindLineFeed(std::string_view bytes, std::size_t begin, TextFileEncoding encoding) {
  if (!IsUtf16(encoding)) {
    return std::min(bytes.find('\n', begin), bytes.size());
  }
  const CCodeUnits units(bytes.substr(begin), encoding);
  std::size_t index = 0;
  while (index < units.Count() && units[index] != u'\n') {
    ++index;
  }
  return begin + 2 * index;
}

bool EndsWithReturn(std::string_view line, TextFileEncoding encoding) {
  const CCodeUnits units(line, encoding);
  return units.Count() > 0 && units[units.Count() - 1] == u'\r';
}

}  // namespace

TextFileEncoding DetectEncoding(std::string_view file) {
  for (const TextFileEncoding encoding :
       {TextFileEncoding::Utf8WithMark, TextFileEncoding::Utf16LittleEndian,
        TextFileEncoding::Utf16BigEndian}) {
    if (file.starts_with(EncodingMark(encoding))) {
      return encoding;
    }
  }
  return IsValidUtf8(file) ? TextFileEncoding::Utf8 : TextFileEncoding::Ansi;
}

std::string_view EncodingMark(TextFileEncoding encoding) {
  switch (encoding) {
    case TextFileEncoding::Utf8WithMark:
      return kUtf8Mark;
    case TextFileEncoding::Utf16LittleEndian:
      return kUtf16LittleMark;
    case TextFileEncoding::Utf16BigEndian:
      return kUtf16BigMark;
    case TextFileEncoding::Utf8:
    case TextFileEncoding::Ansi:
      break;
  }
  return {};
}

std::size_t UnitSize(TextFileEncoding encoding) { return IsUtf16(encoding) ? 2 : 1; }

// Looks at all bytes, not only up to the first other one: a loop without a way out is turned into
// one over many bytes at once.
bool IsAscii(std::string_view bytes) {
  unsigned char bits = 0;
  for (const char byte : bytes) {
    bits = static_cast<unsigned char>(bits | static_cast<unsigned char>(byte));
  }
  return bits < 0x80;
}

// Line by line, because no sequence spans a line end and a large file needs little memory then. A
// byte taken as Latin-1 comes back as two, so only valid text keeps its size on the way to wide
// text and back.
bool IsValidUtf8(std::string_view bytes) {
  if (IsAscii(bytes)) {
    return true;
  }
  for (std::size_t begin = 0; begin < bytes.size();) {
    const CLineBounds line = LineAt(bytes, begin, TextFileEncoding::Utf8);
    const std::string_view text = bytes.substr(begin, line.next - begin);
    if (!IsAscii(text) && View(WideToUtf8(Utf8ToWide(ToByteString(text)))).size() != text.size()) {
      return false;
    }
    begin = line.next;
  }
  return true;
}

std::size_t FirstInvalidUnit(const CCodeUnits& units) {
  for (std::size_t i = 0; i < units.Count(); ++i) {
    if (HasPairAt(units, i)) {
      ++i;
    } else if (IsHighSurrogate(units[i]) || IsLowSurrogate(units[i])) {
      return i;
    }
  }
  return units.Count();
}

bool IsValidText(std::string_view bytes, TextFileEncoding encoding) {
  if (!IsUtf16(encoding)) {
    return IsValidUtf8(bytes);
  }
  return bytes.size() % 2 == 0 && FirstInvalidUnit(CCodeUnits(bytes, encoding)) * 2 == bytes.size();
}

CString DecodeText(std::string_view bytes, TextFileEncoding encoding) {
  if (bytes.empty()) {
    return CString();
  }
  if (IsUtf16(encoding)) {
    return DecodeUtf16(CCodeUnits(bytes, encoding));
  }
  if (IsAscii(bytes)) {
    return ToCString({bytes});
  }
  return encoding == TextFileEncoding::Ansi ? AnsiToWide(ToByteString(bytes))
                                            : Utf8ToWide(ToByteString(bytes));
}

bool EncodeText(const CString& text, TextFileEncoding encoding, std::string& bytes) {
  if (!IsUtf16(encoding) && AppendAscii(text, bytes)) {
    return true;
  }
  const std::size_t begin = bytes.size();
  if (IsUtf16(encoding)) {
    EncodeUtf16(text, encoding, bytes);
  } else {
    bytes += View(encoding == TextFileEncoding::Ansi ? WideToAnsi(text) : WideToUtf8(text));
  }
  return DecodeText(std::string_view(bytes).substr(begin), encoding) == text;
}

bool ReadsBackAs(std::string_view file, TextFileEncoding encoding) {
  const TextFileEncoding found = DetectEncoding(file);
  if (found == encoding) {
    return true;
  }
  // An ANSI file may have lost what told it from UTF-8.
  return encoding == TextFileEncoding::Ansi && found == TextFileEncoding::Utf8 &&
         DecodeText(file, found) == DecodeText(file, encoding);
}

CLineBounds LineAt(std::string_view bytes, std::size_t begin, TextFileEncoding encoding) {
  const std::size_t unitSize = UnitSize(encoding);
  CLineBounds line{begin, FindLineFeed(bytes, begin, encoding), bytes.size()};
  if (line.end + unitSize > bytes.size()) {
    return line;
  }
  line.next = line.end + unitSize;
  if (EndsWithReturn(bytes.substr(begin, line.end - begin), encoding)) {
    line.end -= unitSize;
  }
  return line;
}

}  // namespace lum::detail
