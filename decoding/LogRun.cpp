#include "decoding/LogRun.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "decoding/DecodingError.h"
#include "decoding/ProfileMatch.h"

namespace lum::decoding {
namespace {

constexpr std::uint64_t kCountedAtOnce = 1 << 18;

bool NeedsJ1939(const std::optional<CExpression>& formula) {
  constexpr Input kOfJ1939[] = {Input::Message, Input::Pgn, Input::Source, Input::Destination,
                                Input::Priority};
  return formula && std::any_of(std::begin(kOfJ1939), std::end(kOfJ1939),
                                [&](Input input) { return formula->Uses(input); });
}

bool NeedsJ1939(const MessageRule& message) {
  return std::any_of(message.match.begin(), message.match.end(),
                     [](const MatchTerm& term) { return IsOfJ1939(term.part); }) ||
         std::any_of(message.columns.begin(), message.columns.end(), [](const ColumnRule& column) {
           return NeedsJ1939(column.raw) || NeedsJ1939(column.formula);
         });
}

bool NeedsJ1939(const Profile& profile) {
  return std::any_of(profile.messages.begin(), profile.messages.end(),
                     [](const MessageRule& message) { return NeedsJ1939(message); });
}

/// Where reading begins: before the place to resume from, as far as a message may have begun there.
std::uint64_t FirstOffset(const LogRunOptions& options) {
  return options.resumeFrom - std::min(options.resumeFrom, CLogRun::kWarmUpBytes);
}

[[noreturn]] void ComplainOfEnd(std::uint64_t from) {
  throw DecodingError("the log ends before byte " + std::to_string(from) +
                      ", from which to resume");
}

}  // namespace

LogFormat FitFormat(LogFormat detected, const Profile& profile) {
  return detected == LogFormat::Candump && NeedsJ1939(profile) ? LogFormat::J1939 : detected;
}

CLogRun::CLogRun(CLogInput& input, const Profile& profile, const LogRunOptions& options)
    : m_isInterrupted(options.isInterrupted),
      m_resumeFrom(options.resumeFrom),
      m_linesBefore(CountLines(input, FirstOffset(options))),
      m_lines(input, FirstOffset(options)),
      m_decoder(profile) {
  m_line.end = FirstOffset(options);
  m_format = ChooseFormat(profile, options);
  m_reader = MakeLogReader(m_format, profile.reader);
  WarmUp();
}

/// Passes over the first bytes of a log. They are read and not skipped, for rows tell the numbers
/// of their lines.
std::uint64_t CLogRun::CountLines(CLogInput& input, std::uint64_t bytes) const {
  std::vector<char> block(static_cast<std::size_t>(std::min(bytes, kCountedAtOnce)));
  std::uint64_t lines = 0;
  for (std::uint64_t left = bytes; left > 0 && !IsInterrupted();) {
    const auto room = static_cast<std::size_t>(std::min<std::uint64_t>(left, block.size()));
    const std::size_t count = input.Read(block.data(), room);
    if (count == 0 && !IsInterrupted()) {
      ComplainOfEnd(m_resumeFrom);
    }
    const auto end = block.begin() + static_cast<std::ptrdiff_t>(count);
    lines += static_cast<std::uint64_t>(std::count(block.begin(), end, '\n'));
    left -= count;
  }
  return lines;
}

LogFormat CLogRun::ChooseFormat(const Profile& profile, const LogRunOptions& options) {
  if (options.format || profile.format) {
    return options.format ? *options.format : *profile.format;
  }
  m_isFormatDetected = true;
  TakeSample();
  std::vector<std::string> lines;
  for (const StoredLine& stored : m_sample) {
    lines.push_back(stored.text);
  }
  return FitFormat(DetectLogFormat(lines), profile);
}

/// The first lines, to be taken again. A live log that has said something is not waited for.
void CLogRun::TakeSample() {
  LogLine line;
  bool hasText = false;
  while (m_sample.size() < kMostSampleLines && (!hasText || m_lines.HasBuffered()) &&
         m_lines.Next(line)) {
    hasText = hasText || line.text.find_first_not_of(" \t") != std::string_view::npos;
    m_sample.push_back({std::string(line.text), line});
  }
}

bool CLogRun::NextLine() {
  if (m_sample.empty()) {
    const std::uint64_t end = m_line.end;
    const bool isThere = m_lines.Next(m_line) && !IsInterrupted();
    m_line.end = isThere ? m_line.end : end;
    m_line.number += m_linesBefore;
    return isThere;
  }
  m_replayed = std::move(m_sample.front());
  m_sample.pop_front();
  m_line = m_replayed.line;
  m_line.text = m_replayed.text;
  m_line.number += m_linesBefore;
  return true;
}

/// Feeds the reader with the lines before, which gave their rows to an earlier run. The first may
/// be cut; what it makes of that is nobody's business.
void CLogRun::WarmUp() {
  while (m_line.end < m_resumeFrom && !IsInterrupted()) {
    if (NextLine()) {
      m_reader->Take(m_line, m_record, m_problem);
    } else if (!IsInterrupted()) {
      ComplainOfEnd(m_resumeFrom);
    }
  }
}

bool CLogRun::Next() {
  m_matches = {};
  m_outcome = {};
  if (IsInterrupted()) {
    return false;
  }
  if (NextLine()) {
    TakeLine();
    return true;
  }
  return !IsInterrupted() && FinishReader();
}

void CLogRun::TakeLine() {
  ++m_counts.lines;
  m_outcome = m_reader->Take(m_line, m_record, m_problem);
  if (m_outcome.hasRecord && m_record.kind == RecordKind::Data) {
    m_matches = m_decoder.Match(m_record);
  }
  Count();
}

void CLogRun::Count() {
  m_counts.problems += m_outcome.hasProblem ? 1 : 0;
  if (!m_outcome.hasRecord) {
    ++m_counts.bad;
    return;
  }
  switch (m_record.kind) {
    case RecordKind::Data:
      ++(m_matches.empty() ? m_counts.unmatched : m_counts.matched);
      break;
    case RecordKind::Remote:
      ++m_counts.remote;
      break;
    case RecordKind::BusError:
      ++m_counts.busErrors;
      break;
    case RecordKind::Unusable:
      ++m_counts.unusable;
      break;
    case RecordKind::Remark:
      ++m_counts.remarks;
      break;
    case RecordKind::Part:
      ++m_counts.parts;
      break;
  }
}

bool CLogRun::FinishReader() {
  m_outcome.hasProblem = m_reader->Finish(m_problem);
  m_counts.problems += m_outcome.hasProblem ? 1 : 0;
  return m_outcome.hasProblem;
}

Row CLogRun::Decode(std::size_t message) {
  ++m_counts.rows;
  return m_decoder.Decode(m_record, message);
}

}  // namespace lum::decoding
