// The readers: each takes lines and gives records or problems. They keep no more than what is under
// way, never more than a stated bound.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "decoding/LineReader.h"
#include "decoding/LogRecord.h"

namespace lum::decoding {

/// A sentence is at most so many characters, from '$' or '!' to the end of its line; NMEA 0183
/// allows 82, which devices exceed. A longer one is a problem.
inline constexpr std::size_t kMaxSentence = 1024;

struct ReaderOptions {
  char separator = '\0';  ///< Between the fields of plain lines and of CSV; 0: blanks, commas.
  bool allowMissingChecksum = false;  ///< NMEA 0183: a sentence without "*hh" is one all the same.
};

/// What became of a line. A line gives at most one record and at most one problem; a frame that
/// ends one message wrongly can do both.
struct LineOutcome {
  bool hasRecord = false;
  bool hasProblem = false;
};

/// One reader for each format.
class CLogReader {
 public:
  virtual ~CLogReader() = default;

  virtual LineOutcome Take(const LogLine& line, LogRecord& record, LineProblem& problem) = 0;
  /// At the end of the log: problems of what is still under way, one after the other. False when
  /// there are no more.
  virtual bool Finish(LineProblem& problem);
};

std::unique_ptr<CLogReader> MakeLogReader(LogFormat format, const ReaderOptions& options);

/// The format that most of some first lines have; Plain when it is none of the others. Never J1939:
/// that is Candump with a will.
LogFormat DetectLogFormat(const std::vector<std::string>& firstLines);

}  // namespace lum::decoding
