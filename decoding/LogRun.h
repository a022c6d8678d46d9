// A run over one log: its lines, what its reader makes of them, which messages they are, and an
// honest count of it all.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "decoding/Decoder.h"
#include "decoding/LineReader.h"
#include "decoding/LogInput.h"
#include "decoding/LogReader.h"
#include "decoding/Profile.h"

namespace lum::decoding {

/// What became of the lines of a log. Every line is counted in exactly one of `matched`,
/// `unmatched`, `bad`, `remarks`, `remote`, `busErrors`, `unusable` and `parts`.
struct LogCounts {
  std::uint64_t lines = 0;
  std::uint64_t matched = 0;    ///< Lines that gave one row or more.
  std::uint64_t unmatched = 0;  ///< Good lines that are none of the profile's messages.
  std::uint64_t bad = 0;        ///< Lines that could not be read.
  std::uint64_t remarks = 0;
  std::uint64_t remote = 0;
  std::uint64_t busErrors = 0;
  std::uint64_t unusable = 0;
  std::uint64_t parts = 0;     ///< Frames of multi-packet messages but the last of each.
  std::uint64_t problems = 0;  ///< Bad lines, and messages of several frames that were not whole.
  std::uint64_t rows = 0;
};

struct LogRunOptions {
  std::optional<LogFormat> format;  ///< In place of the profile's, or of what the lines look like.
  /// The first line that counts begins at this byte or behind it. Lines keep their numbers.
  std::uint64_t resumeFrom = 0;
  /// Once it is set the log ends before the next line, which is left whole for another run.
  const std::atomic<bool>* isInterrupted = nullptr;
};

/// The format that was found out, or J1939 in place of Candump when the profile's conditions or
/// formulas ask for what only that has.
LogFormat FitFormat(LogFormat detected, const Profile& profile);

/// Decodes the lines of an input one after the other. The profile and the input must outlive it.
class CLogRun {
 public:
  /// A format is told from so many first lines at most.
  static constexpr std::size_t kMostSampleLines = 64;
  /// So many bytes before the place to resume from are read for the frames of messages that were
  /// under way there.
  static constexpr std::uint64_t kWarmUpBytes = 4 << 20;

  /// Throws what the input throws, and DecodingError when it ends before the place to resume from.
  CLogRun(CLogInput& input, const Profile& profile, const LogRunOptions& options);

  /// Goes on to the next line, or at the end of the log to the next problem of what was under way.
  /// False when there is nothing more. Throws what the input throws.
  bool Next();
  /// What is wrong with the line, or with a message that it ends; null when nothing is.
  const LineProblem* Problem() const { return m_outcome.hasProblem ? &m_problem : nullptr; }
  /// The messages that the line's record is. Their rows are decoded on demand.
  std::span<const std::size_t> Matches() const { return m_matches; }
  /// Precondition: `message` is one of Matches().
  Row Decode(std::size_t message);
  /// The record of the line; null when it has none.
  const LogRecord* Record() const { return m_outcome.hasRecord ? &m_record : nullptr; }
  const LogLine& Line() const { return m_line; }

  LogFormat Format() const { return m_format; }
  bool IsFormatDetected() const { return m_isFormatDetected; }
  /// Behind the last line that was taken: where another run may resume.
  std::uint64_t Offset() const { return std::max(m_line.end, m_resumeFrom); }
  /// Whether the next line is there without a wait.
  bool HasBuffered() const { return !m_sample.empty() || m_lines.HasBuffered(); }
  const LogCounts& Counts() const { return m_counts; }

 private:
  struct StoredLine {
    std::string text;
    LogLine line;
  };

  bool IsInterrupted() const { return m_isInterrupted != nullptr && m_isInterrupted->load(); }
  bool NextLine();
  void TakeSample();
  LogFormat ChooseFormat(const Profile& profile, const LogRunOptions& options);
  std::uint64_t CountLines(CLogInput& input, std::uint64_t bytes) const;
  void WarmUp();
  void TakeLine();
  void Count();
  bool FinishReader();

  const std::atomic<bool>* m_isInterrupted;
  std::uint64_t m_resumeFrom;
  std::uint64_t m_linesBefore;  ///< That end before the first line that is read.
  CLineReader m_lines;
  std::deque<StoredLine> m_sample;
  StoredLine m_replayed;
  LogFormat m_format = LogFormat::Plain;
  bool m_isFormatDetected = false;
  std::unique_ptr<CLogReader> m_reader;
  CDecoder m_decoder;
  LogLine m_line;
  LogRecord m_record;
  LineProblem m_problem;
  LineOutcome m_outcome;
  std::span<const std::size_t> m_matches;
  LogCounts m_counts;
};

}  // namespace lum::decoding
