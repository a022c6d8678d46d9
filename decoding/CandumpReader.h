// Reads the logs of CAN buses in the two forms that candump writes: compact lines and columns.
#pragma once

#include "decoding/CanFrame.h"
#include "decoding/LogReader.h"
#include "decoding/LogText.h"
#include "decoding/ReaderParts.h"

namespace lum::decoding::detail {

class CCandumpReader final : public CLogReader {
 public:
  LineOutcome Take(const LogLine& line, LogRecord& record, LineProblem& problem) override;

 private:
  // Each takes its part of the line, or says in m_fault what is wrong, and answers false.
  bool TakeLine(CLogCursor& cursor, LogRecord& record);
  bool TakeTime(CLogCursor& cursor, LogRecord& record);
  bool TakeChannel(CLogCursor& cursor, LogRecord& record);
  bool TakeId(std::string_view digits, std::size_t column);

  bool TakeCompact(const CLogCursor& cursor, std::size_t mark, LogRecord& record);
  bool TakeCompactData(std::string_view data, std::size_t column, LogRecord& record);
  bool TakeCompactRemote(std::string_view rest, std::size_t column, LogRecord& record);
  bool TakeCompactFd(std::string_view rest, std::size_t column, LogRecord& record);
  bool GatherCompact(std::string_view data, std::size_t column, std::size_t maxBytes);

  bool TakeColumns(CLogCursor& cursor, LogRecord& record);
  bool TakeFlags(CLogCursor& cursor);
  bool TakeLength(CLogCursor& cursor, std::size_t& length, bool& isFd);
  bool GatherColumns(CLogCursor& cursor, std::size_t length);
  bool TakeColumnEnd(CLogCursor& cursor);

  std::string_view Gathered() const { return {m_gathered.data(), m_gatheredCount}; }
  /// Of data that the frame has taken.
  void Describe(LogRecord& record, RecordKind kind);
  /// Of digits, at most kMaxCanBytes bytes, that have been looked at.
  void Describe(LogRecord& record, RecordKind kind, std::string_view digits);
  bool Fail(std::size_t column, std::string_view reason);

  CCanFrame m_frame;
  LineFault m_fault;
  /// Digits that separators stood between.
  std::array<char, 2 * kMaxFdBytes> m_gathered{};
  std::size_t m_gatheredCount = 0;
};

}  // namespace lum::decoding::detail
