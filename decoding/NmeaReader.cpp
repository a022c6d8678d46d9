// "$GPGGA,123519,4807.038,N,01131.000,E*hh": the checksum is the exclusive or of all characters
// between '$' and '*'. In front may stand a time stamp and tag blocks (NMEA 0183, version 4.10).
#include "decoding/NmeaReader.h"

#include <algorithm>

#include "decoding/FormulaInputs.h"
#include "decoding/TimeStamp.h"

namespace lum::decoding::detail {

namespace {

constexpr std::size_t kNoPlace = std::string_view::npos;

/// A text with its checksum: what it covers, and what stands behind "*hh".
struct SummedText {
  std::string_view body;
  bool hasSum = false;
};

/// Splits "body*hh" and verifies it; `column` is that of its first character.
LineFault VerifySum(std::string_view text, std::size_t column, SummedText& summed) {
  const std::size_t star = text.find('*');
  summed = {text.substr(0, star), star != kNoPlace};
  std::uint8_t sum = 0;
  for (std::size_t i = 0; i < summed.body.size(); ++i) {
    const char c = summed.body[i];
    if (c < 0x20 || c > 0x7E) {
      return {column + i, "character that no sentence may have"};
    }
    sum = static_cast<std::uint8_t>(sum ^ static_cast<std::uint8_t>(c));
  }
  if (!summed.hasSum) {
    return {};
  }
  const std::string_view digits = text.substr(star + 1);
  if (digits.size() != 2 || !IsHexDigit(digits[0]) || !IsHexDigit(digits[1])) {
    return {column + star + 1, "checksum is not two hexadecimal digits at the end"};
  }
  const bool isRight = (DigitValue(digits[0]) << 4 | DigitValue(digits[1])) == sum;
  return isRight ? LineFault{} : LineFault{column + star + 1, "checksum is wrong"};
}

/// "\g:1-2-73874,n:157,s:r003669945*hh\" in front of a sentence: verified and passed over.
LineFault TakeTagBlocks(CLogCursor& cursor) {
  while (cursor.TakeChar('\\')) {
    const std::string_view rest = cursor.Rest();
    const std::size_t end = rest.find('\\');
    if (end == kNoPlace) {
      return {cursor.Column() - 1, "tag block has no end"};
    }
    SummedText block;
    const LineFault fault = VerifySum(rest.substr(0, end), cursor.Column(), block);
    if (!fault.reason.empty()) {
      return fault;
    }
    if (!block.hasSum) {
      return {cursor.Column() + end, "tag block has no checksum"};
    }
    cursor.MoveTo(cursor.Place() + end + 1);
  }
  return {};
}

/// "(1436509052.249713) " or "2015-07-10T06:17:32.249Z ".
LineFault TakePrefix(CLogCursor& cursor, LogRecord& record) {
  CLogCursor ahead = cursor;
  const bool isInParentheses = cursor.Peek() == '(';
  if (!isInParentheses && !IsDecimalDigit(cursor.Peek())) {
    return {};
  }
  const std::optional<double> time =
      isInParentheses ? TakeTimeInParentheses(ahead) : TakeCivilTime(ahead);
  if (!time || !ahead.TakeBlanks()) {
    return {cursor.Column(), "neither a time stamp nor a sentence"};
  }
  record.time = time;
  cursor = ahead;
  return {};
}

}  // namespace

CNmeaReader::CNmeaReader(const ReaderOptions& options)
    : m_mayLackChecksum(options.allowMissingChecksum) {
  m_fields.reserve(CFormulaInputs::kMaxFields);
}

LineOutcome CNmeaReader::Take(const LogLine& line, LogRecord& record, LineProblem& problem) {
  BeginRecord(line, record);
  return EndLine(line, TakeLine(line, record), problem);
}

LineFault CNmeaReader::TakeLine(const LogLine& line, LogRecord& record) {
  LineFault fault = FindTooLong(line);
  if (!fault.reason.empty()) {
    return fault;
  }
  CLogCursor cursor(line.text);
  cursor.TakeBlanks();
  if (cursor.IsAtEnd() || cursor.Peek() == '#') {
    record.kind = RecordKind::Remark;
    return {};
  }
  fault = TakePrefix(cursor, record);
  if (fault.reason.empty()) {
    fault = TakeTagBlocks(cursor);
  }
  return fault.reason.empty() ? TakeSentence(cursor, record) : fault;
}

LineFault CNmeaReader::TakeSentence(CLogCursor& cursor, LogRecord& record) {
  const std::size_t start = cursor.Column();
  if (cursor.Rest().size() > kMaxSentence) {
    return {start + kMaxSentence, "sentence is longer than 1024 characters"};
  }
  if (!cursor.TakeChar('$') && !cursor.TakeChar('!')) {
    return {start, "sentence begins with neither $ nor !"};
  }
  SummedText sentence;
  const LineFault fault = VerifySum(cursor.Rest(), cursor.Column(), sentence);
  if (!fault.reason.empty()) {
    return fault;
  }
  const std::size_t end = cursor.Column() + sentence.body.size();
  if (!sentence.hasSum) {
    if (!m_mayLackChecksum) {
      return {end, "checksum is missing"};
    }
    // Without a checksum nothing else tells two sentences that ran into one.
    const std::size_t second = sentence.body.find_first_of("$!");
    if (second != kNoPlace) {
      return {cursor.Column() + second, "a sentence begins within another"};
    }
  }
  return Split(sentence.body, cursor.Column(), record);
}

LineFault CNmeaReader::Split(std::string_view body, std::size_t column, LogRecord& record) {
  m_fields.clear();
  std::size_t start = 0;
  while (true) {
    if (m_fields.size() == CFormulaInputs::kMaxFields) {
      return {column + start, "more than 256 fields"};
    }
    const std::size_t end = std::min(body.find(',', start), body.size());
    m_fields.push_back(body.substr(start, end - start));
    if (end == body.size()) {
      break;
    }
    start = end + 1;
  }
  if (m_fields.front().empty()) {
    return {column, "sentence has no address"};
  }
  record.fields = m_fields;
  record.address = m_fields.front();
  return {};
}
static_assert(kMaxSentence == 1024 && CFormulaInputs::kMaxFields == 256);

}  // namespace lum::decoding::detail
