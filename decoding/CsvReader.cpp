// RFC 4180 within one line: a field in quotes may hold separators and doubled quotes. A line break
// in a field is not read, for a damaged line would then take the lines behind it along.
#include "decoding/CsvReader.h"

#include <algorithm>

#include "decoding/FormulaInputs.h"

namespace lum::decoding::detail {

CCsvReader::CCsvReader(const ReaderOptions& options)
    : m_separator(options.separator == '\0' ? ',' : options.separator) {
  m_fields.reserve(CFormulaInputs::kMaxFields);
}

LineOutcome CCsvReader::Take(const LogLine& line, LogRecord& record, LineProblem& problem) {
  BeginRecord(line, record);
  LineFault fault = FindTooLong(line);
  if (fault.reason.empty()) {
    if (line.text.empty()) {
      record.kind = RecordKind::Remark;
    } else {
      fault = Split(line.text);
      record.fields = m_fields;
    }
  }
  return EndLine(line, fault, problem);
}

LineFault CCsvReader::Split(std::string_view line) {
  m_fields.clear();
  m_textsUsed = 0;
  CLogCursor cursor(line);
  while (true) {
    if (m_fields.size() == CFormulaInputs::kMaxFields) {
      return {cursor.Column(), "more than 256 fields"};
    }
    const LineFault fault = cursor.Peek() == '"' ? TakeQuoted(cursor) : TakePlain(cursor);
    if (!fault.reason.empty()) {
      return fault;
    }
    if (!cursor.TakeChar(m_separator)) {
      return {};
    }
  }
}

LineFault CCsvReader::TakePlain(CLogCursor& cursor) {
  const std::string_view rest = cursor.Rest();
  const std::string_view field = rest.substr(0, rest.find(m_separator));
  const std::size_t quote = field.find('"');
  if (quote != field.npos) {
    return {cursor.Column() + quote, "quotation mark in a field without quotation marks"};
  }
  m_fields.push_back(field);
  cursor.MoveTo(cursor.Place() + field.size());
  return {};
}

LineFault CCsvReader::TakeQuoted(CLogCursor& cursor) {
  const std::string_view rest = cursor.Rest();
  bool hasDoubled = false;
  std::size_t end = rest.find('"', 1);
  while (end != rest.npos && end + 1 < rest.size() && rest[end + 1] == '"') {
    hasDoubled = true;
    end = rest.find('"', end + 2);
  }
  if (end == rest.npos) {
    return {cursor.Column(), "quotation mark is not closed on this line"};
  }
  if (end + 1 < rest.size() && rest[end + 1] != m_separator) {
    return {cursor.Column() + end + 1, "text behind the closing quotation mark"};
  }
  const std::string_view inner = rest.substr(1, end - 1);
  // The texts of one line share a buffer that must not move while views lead into it.
  if (hasDoubled && m_textsUsed == 0) {
    m_texts.resize(std::max(m_texts.size(), rest.size()));
  }
  m_fields.push_back(hasDoubled ? Unescape(inner) : inner);
  cursor.MoveTo(cursor.Place() + end + 1);
  return {};
}

/// Precondition: each quote in the text is doubled.
std::string_view CCsvReader::Unescape(std::string_view quoted) {
  const std::size_t start = m_textsUsed;
  for (std::size_t i = 0; i < quoted.size(); ++i) {
    m_texts[m_textsUsed++] = quoted[i];
    i += quoted[i] == '"' ? 1 : 0;
  }
  return std::string_view(m_texts).substr(start, m_textsUsed - start);
}

}  // namespace lum::decoding::detail
