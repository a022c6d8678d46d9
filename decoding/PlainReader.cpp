// Blanks and tabs in a row separate once; a separator separates each time, and fields may be empty.
#include "decoding/PlainReader.h"

#include "decoding/FormulaInputs.h"
#include "decoding/TimeStamp.h"

namespace lum::decoding::detail {

CPlainReader::CPlainReader(const ReaderOptions& options) : m_separator(options.separator) {
  m_fields.reserve(CFormulaInputs::kMaxFields);
}

LineOutcome CPlainReader::Take(const LogLine& line, LogRecord& record, LineProblem& problem) {
  BeginRecord(line, record);
  return EndLine(line, TakeLine(line, record), problem);
}

LineFault CPlainReader::TakeLine(const LogLine& line, LogRecord& record) {
  LineFault fault = FindTooLong(line);
  if (!fault.reason.empty()) {
    return fault;
  }
  if (IsRemark(line.text)) {
    record.kind = RecordKind::Remark;
    return {};
  }
  CLogCursor cursor(line.text);
  TakeTime(cursor, record);
  m_fields.clear();
  fault = m_separator == '\0' ? SplitAtBlanks(cursor) : SplitAtSeparator(cursor);
  record.fields = m_fields;
  return fault;
}

/// A time stamp with a blank behind it. Further blanks may be empty fields between separators.
void CPlainReader::TakeTime(CLogCursor& cursor, LogRecord& record) const {
  CLogCursor behind = cursor;
  behind.TakeBlanks();
  const std::optional<double> time = TakeTimeInParentheses(behind);
  if (time && (behind.IsAtEnd() || behind.TakeChar(' ') || behind.TakeChar('\t'))) {
    record.time = time;
    cursor = behind;
  }
}

LineFault CPlainReader::Add(std::string_view field, std::size_t column) {
  if (m_fields.size() == CFormulaInputs::kMaxFields) {
    return {column, "more than 256 fields"};
  }
  m_fields.push_back(field);
  return {};
}

LineFault CPlainReader::SplitAtBlanks(CLogCursor cursor) {
  LineFault fault;
  cursor.TakeBlanks();
  while (!cursor.IsAtEnd() && fault.reason.empty()) {
    const std::size_t column = cursor.Column();
    fault = Add(cursor.TakeWord(), column);
    cursor.TakeBlanks();
  }
  return fault;
}

LineFault CPlainReader::SplitAtSeparator(CLogCursor cursor) {
  LineFault fault;
  bool isMore = !cursor.IsAtEnd();
  while (isMore && fault.reason.empty()) {
    const std::string_view field = cursor.Rest().substr(0, cursor.Rest().find(m_separator));
    fault = Add(field, cursor.Column());
    cursor.MoveTo(cursor.Place() + field.size());
    isMore = cursor.TakeChar(m_separator);
  }
  return fault;
}

}  // namespace lum::decoding::detail
