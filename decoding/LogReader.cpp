// Which reader a format has.
#include "decoding/LogReader.h"

#include "decoding/CandumpReader.h"
#include "decoding/CsvReader.h"
#include "decoding/J1939Reader.h"
#include "decoding/LogText.h"
#include "decoding/NmeaReader.h"
#include "decoding/PlainReader.h"
#include "decoding/ReaderParts.h"

namespace lum::decoding {

bool CLogReader::Finish(LineProblem& /*problem*/) { return false; }

std::unique_ptr<CLogReader> MakeLogReader(LogFormat format, const ReaderOptions& options) {
  switch (format) {
    case LogFormat::Candump:
      return std::make_unique<detail::CCandumpReader>();
    case LogFormat::J1939:
      return std::make_unique<detail::CJ1939Reader>();
    case LogFormat::Nmea:
      return std::make_unique<detail::CNmeaReader>(options);
    case LogFormat::Csv:
      return std::make_unique<detail::CCsvReader>(options);
    case LogFormat::Plain:
      break;
  }
  return std::make_unique<detail::CPlainReader>(options);
}

bool detail::IsRemark(std::string_view line) {
  detail::CLogCursor cursor(line);
  cursor.TakeBlanks();
  return cursor.IsAtEnd() || cursor.Peek() == '#';
}

}  // namespace lum::decoding
