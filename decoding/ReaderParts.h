// What every reader begins and ends a line with.
#pragma once

#include "decoding/LineReader.h"
#include "decoding/LogReader.h"
#include "decoding/LogRecord.h"

namespace lum::decoding::detail {

inline constexpr LineOutcome kRecordAlone{true, false};
inline constexpr LineOutcome kProblemAlone{false, true};

/// A column of a line, from 1, and a static text; no reason, no fault.
struct LineFault {
  std::size_t column = 1;
  std::string_view reason;
};

inline void BeginRecord(const LogLine& line, LogRecord& record) {
  record = LogRecord();
  record.line = line.text;
  record.number = line.number;
  record.offset = line.offset;
}

inline LineOutcome EndLine(const LogLine& line, const LineFault& fault, LineProblem& problem) {
  if (fault.reason.empty()) {
    return kRecordAlone;
  }
  problem.line = line.number;
  problem.column = fault.column;
  problem.reason = fault.reason;
  return kProblemAlone;
}

/// What was cut off might have changed the meaning of what is there.
inline LineFault FindTooLong(const LogLine& line) {
  return line.isTooLong ? LineFault{line.text.size() + 1, "line is longer than 65536 bytes"}
                        : LineFault{};
}
static_assert(kMaxLogLine == 65'536);

/// Empty but for blanks, or begun with '#'.
bool IsRemark(std::string_view line);

}  // namespace lum::decoding::detail
