// One buffer of a fixed size: what is left of it moves to its front when more is to be read, at
// most one line. Lines that exceed the limit are passed over block by block behind what is kept of
// them.
#include "decoding/LineReader.h"

#include <algorithm>
#include <cstring>

namespace lum::decoding {

namespace {

constexpr std::size_t kLineBuffer = std::size_t{1} << 20;
/// With so many bytes and no end a line is too long, whether a CR is its last or not.
constexpr std::size_t kSurelyTooLong = kMaxLogLine + 2;
static_assert(kLineBuffer >= 2 * kSurelyTooLong);

}  // namespace

CLineReader::CLineReader(CLogInput& input, std::uint64_t offset)
    : m_input(input), m_buffer(kLineBuffer), m_offset(offset) {}

bool CLineReader::HasBuffered() const { return m_begin < m_wholeEnd; }

bool CLineReader::Next(LogLine& line) {
  std::size_t length = 0;
  const Ending ending = FindEnding(length);
  if (ending == Ending::EndOfLog && length == 0) {
    return false;
  }
  line.offset = m_offset;
  line.number = ++m_number;
  if (ending == Ending::TooLong) {
    PassOver();
    line.text = {m_buffer.data(), kMaxLogLine};
    line.isTooLong = true;
  } else {
    const std::string_view text(m_buffer.data() + m_begin, length);
    line.text = text.substr(0, length - (text.ends_with('\r') ? 1 : 0));
    line.isTooLong = line.text.size() > kMaxLogLine;
    line.text = line.text.substr(0, kMaxLogLine);
    const std::size_t taken = length + (ending == Ending::LineFeed ? 1 : 0);
    m_begin += taken;
    m_offset += taken;
  }
  line.end = m_offset;
  return true;
}

/// Of the line that begins at m_begin: how many bytes it has, as far as they have been read.
CLineReader::Ending CLineReader::FindEnding(std::size_t& length) {
  length = 0;
  while (true) {
    const char* const start = m_buffer.data() + m_begin;
    const std::size_t size = m_end - m_begin;
    if (const void* feed = std::memchr(start + length, '\n', size - length)) {
      length = static_cast<std::size_t>(static_cast<const char*>(feed) - start);
      return Ending::LineFeed;
    }
    length = size;
    if (length >= kSurelyTooLong) {
      return Ending::TooLong;
    }
    if (!Fill()) {
      return Ending::EndOfLog;
    }
  }
}

bool CLineReader::Fill() {
  if (m_isAtEnd) {
    return false;
  }
  MoveToFront();
  return ReadBlock(m_end) != 0;
}

/// Reads behind `place`, up to which the buffer is kept.
std::size_t CLineReader::ReadBlock(std::size_t place) {
  m_wholeEnd = 0;
  const std::size_t count = m_input.Read(m_buffer.data() + place, m_buffer.size() - place);
  m_isAtEnd = count == 0;
  m_end = place + count;
  const std::string_view block(m_buffer.data() + place, count);
  const std::size_t last = block.rfind('\n');
  m_wholeEnd = last == block.npos ? 0 : place + last + 1;
  return count;
}

void CLineReader::MoveToFront() {
  m_end -= m_begin;
  std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end);
  m_begin = 0;
}

/// Goes to the end of a line whose first kMaxLogLine bytes are kept at the front of the buffer.
void CLineReader::PassOver() {
  MoveToFront();
  m_offset += m_end;
  m_begin = kMaxLogLine;
  while (true) {
    if (ReadBlock(kMaxLogLine) == 0) {
      return;
    }
    const char* const start = m_buffer.data() + kMaxLogLine;
    const std::size_t size = m_end - kMaxLogLine;
    if (const void* feed = std::memchr(start, '\n', size)) {
      const auto taken = static_cast<std::size_t>(static_cast<const char*>(feed) - start) + 1;
      m_begin += taken;
      m_offset += taken;
      return;
    }
    m_offset += size;
  }
}

}  // namespace lum::decoding
