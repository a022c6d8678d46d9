// Tells the format of a log from its first lines: each line has the first format that fits it.
#include <algorithm>
#include <array>

#include "decoding/CandumpReader.h"
#include "decoding/CsvReader.h"
#include "decoding/NmeaReader.h"

namespace lum::decoding {

namespace {

class CFormatVotes {
 public:
  void Count(const std::string& text);
  LogFormat Winner() const;

 private:
  template <typename Reader>
  bool Fits(Reader& reader, const LogLine& line) {
    LineProblem problem;
    return reader.Take(line, m_record, problem).hasRecord;
  }
  LogFormat Classify(const LogLine& line);

  detail::CCandumpReader m_candump;
  detail::CNmeaReader m_nmea{{.allowMissingChecksum = true}};
  detail::CCsvReader m_csv{{}};
  LogRecord m_record;
  std::array<std::size_t, 5> m_votes{};
};

LogFormat CFormatVotes::Classify(const LogLine& line) {
  if (Fits(m_candump, line)) {
    return LogFormat::Candump;
  }
  // Without its comma a '$' stands in front of anything.
  if (Fits(m_nmea, line) && m_record.fields.size() > 1) {
    return LogFormat::Nmea;
  }
  if (Fits(m_csv, line) && m_record.fields.size() > 1) {
    return LogFormat::Csv;
  }
  return LogFormat::Plain;
}

void CFormatVotes::Count(const std::string& text) {
  if (!detail::IsRemark(text)) {
    LogLine line;
    line.text = text;
    ++m_votes[static_cast<std::size_t>(Classify(line))];
  }
}

LogFormat CFormatVotes::Winner() const {
  // Of equal numbers the format that a line fits least by chance.
  LogFormat winner = LogFormat::Plain;
  for (const LogFormat format : {LogFormat::Csv, LogFormat::Nmea, LogFormat::Candump}) {
    const std::size_t votes = m_votes[static_cast<std::size_t>(format)];
    if (votes != 0 && votes >= m_votes[static_cast<std::size_t>(winner)]) {
      winner = format;
    }
  }
  return winner;
}

}  // namespace

LogFormat DetectLogFormat(const std::vector<std::string>& firstLines) {
  CFormatVotes votes;
  for (const std::string& line : firstLines) {
    votes.Count(line);
  }
  return votes.Winner();
}

}  // namespace lum::decoding
