// The lines of a log, in constant memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "decoding/LogInput.h"

namespace lum::decoding {

/// A longer line is delivered as far as this and marked; the rest of it is passed over.
inline constexpr std::size_t kMaxLogLine = 65'536;

struct LogLine {
  std::string_view text;     ///< Without LF, CR LF; valid until the next call.
  std::uint64_t number = 0;  ///< From 1.
  std::uint64_t offset = 0;  ///< Of its first byte in the decompressed log.
  std::uint64_t end = 0;     ///< Of the byte behind its end.
  bool isTooLong = false;
};

class CLineReader {
 public:
  /// `offset` is how many bytes of the log were left out before.
  explicit CLineReader(CLogInput& input, std::uint64_t offset = 0);

  /// False at the end. A last line without its end is a line. Throws what the input throws, once
  /// all whole lines before have been delivered.
  bool Next(LogLine& line);
  /// Whether the next line is there without waiting for the input: rows are flushed before a wait.
  bool HasBuffered() const;

 private:
  enum class Ending : std::uint8_t { LineFeed, EndOfLog, TooLong };

  Ending FindEnding(std::size_t& length);
  bool Fill();
  std::size_t ReadBlock(std::size_t place);
  void MoveToFront();
  void PassOver();

  CLogInput& m_input;
  std::vector<char> m_buffer;
  std::size_t m_begin = 0;     ///< Of what has not been delivered.
  std::size_t m_end = 0;       ///< Of what has been read.
  std::size_t m_wholeEnd = 0;  ///< Of the last whole line that has been read.
  std::uint64_t m_offset;      ///< Of m_begin in the log.
  std::uint64_t m_number = 0;
  bool m_isAtEnd = false;
};

}  // namespace lum::decoding
