// Reads lines of values that a separator stands between, with the quotes of RFC 4180.
#pragma once

#include <string>
#include <vector>

#include "decoding/LogReader.h"
#include "decoding/LogText.h"
#include "decoding/ReaderParts.h"

namespace lum::decoding::detail {

class CCsvReader final : public CLogReader {
 public:
  explicit CCsvReader(const ReaderOptions& options);

  LineOutcome Take(const LogLine& line, LogRecord& record, LineProblem& problem) override;

 private:
  LineFault Split(std::string_view line);
  LineFault TakePlain(CLogCursor& cursor);
  LineFault TakeQuoted(CLogCursor& cursor);
  std::string_view Unescape(std::string_view quoted);

  char m_separator;
  std::vector<std::string_view> m_fields;
  /// Fields that had doubled quotes; as long as the longest such line.
  std::string m_texts;
  std::size_t m_textsUsed = 0;
};

}  // namespace lum::decoding::detail
