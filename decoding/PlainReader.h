// Reads lines of any kind: fields between blanks, or between a separator.
#pragma once

#include <vector>

#include "decoding/LogReader.h"
#include "decoding/LogText.h"
#include "decoding/ReaderParts.h"

namespace lum::decoding::detail {

class CPlainReader final : public CLogReader {
 public:
  explicit CPlainReader(const ReaderOptions& options);

  LineOutcome Take(const LogLine& line, LogRecord& record, LineProblem& problem) override;

 private:
  LineFault TakeLine(const LogLine& line, LogRecord& record);
  void TakeTime(CLogCursor& cursor, LogRecord& record) const;
  LineFault Add(std::string_view field, std::size_t column);
  LineFault SplitAtBlanks(CLogCursor cursor);
  LineFault SplitAtSeparator(CLogCursor cursor);

  char m_separator;
  std::vector<std::string_view> m_fields;
};

}  // namespace lum::decoding::detail
