// CStdioFile reads the file whole when it is opened: what others write to it later is not seen.
#include "platform/StdioFile.h"

#include <string>
#include <string_view>
#include <utility>

#include "platform/portable/EncodedText.h"
#include "platform/portable/FileCalls.h"
#include "platform/portable/FileUpdate.h"

namespace {

/// Longer lines get storage of their own size, so that no short one keeps that of a long one.
constexpr int kMostReused = 1 << 12;

/// Makes `text` of bytes that are ASCII alone, the same in every 8-bit encoding. Most lines are
/// such, and a caller reads them one after the other into one string, whose storage is used again.
/// False, with any text, when there are others.
bool WidenAscii(std::string_view bytes, CString& text) {
  if (bytes.size() > kMostReused) {
    return false;
  }
  if (text.GetLength() > kMostReused) {
    text.Empty();
  }
  const auto length = static_cast<int>(bytes.size());
  wchar_t* out = text.GetBuffer(length);
  unsigned char bits = 0;
  for (const char byte : bytes) {
    bits |= static_cast<unsigned char>(byte);
    *out++ = static_cast<unsigned char>(byte);
  }
  text.ReleaseBuffer(length);
  return bits < 0x80;
}

}  // namespace

struct CStdioFile::State {
  explicit State(std::string file)
      : bytes(std::move(file)), encoding(lum::detail::DetectEncoding(bytes)) {
    Rewind();
  }

  void Rewind() { place = lum::detail::EncodingMark(encoding).size(); }

  std::string bytes;
  TextFileEncoding encoding;
  std::size_t place = 0;
};

CStdioFile::CStdioFile() = default;
CStdioFile::~CStdioFile() = default;

bool CStdioFile::Open(const wchar_t* path, [[maybe_unused]] unsigned int flags) {
  Close();
  lum::detail::CFileCalls calls;
  std::string bytes;
  CString reason;
  if (path == nullptr ||
      !lum::detail::ReadSavedFile(CString(path), kMaxFileBytes, bytes, reason, calls)) {
    return false;
  }
  m_state = std::make_unique<State>(std::move(bytes));
  return true;
}

bool CStdioFile::ReadString(CString& line) {
  // An odd byte at the end of a UTF-16 file is no character and makes no line.
  if (!m_state ||
      m_state->bytes.size() - m_state->place < lum::detail::UnitSize(m_state->encoding)) {
    line.Empty();
    return false;
  }
  const std::string_view bytes = m_state->bytes;
  const lum::detail::CLineBounds bounds =
      lum::detail::LineAt(bytes, m_state->place, m_state->encoding);
  const std::string_view lineBytes = bytes.substr(bounds.begin, bounds.end - bounds.begin);
  if (lum::detail::UnitSize(m_state->encoding) != 1 || !WidenAscii(lineBytes, line)) {
    line = lum::detail::DecodeText(lineBytes, m_state->encoding);
  }
  m_state->place = bounds.next;
  return true;
}

void CStdioFile::SeekToBegin() {
  if (m_state) {
    m_state->Rewind();
  }
}

void CStdioFile::Close() { m_state.reset(); }
