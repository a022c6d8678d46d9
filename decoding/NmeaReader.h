// Reads sentences of NMEA 0183.
#pragma once

#include <vector>

#include "decoding/LogReader.h"
#include "decoding/LogText.h"
#include "decoding/ReaderParts.h"

namespace lum::decoding::detail {

class CNmeaReader final : public CLogReader {
 public:
  explicit CNmeaReader(const ReaderOptions& options);

  LineOutcome Take(const LogLine& line, LogRecord& record, LineProblem& problem) override;

 private:
  LineFault TakeLine(const LogLine& line, LogRecord& record);
  LineFault TakeSentence(CLogCursor& cursor, LogRecord& record);
  LineFault Split(std::string_view body, std::size_t column, LogRecord& record);

  bool m_mayLackChecksum;
  std::vector<std::string_view> m_fields;
};

}  // namespace lum::decoding::detail
