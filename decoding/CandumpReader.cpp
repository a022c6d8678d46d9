// The compact form, "(1436509052.249713) vcan0 123#1122334455667788", and what it has in common
// with the other, which CandumpColumns.cpp reads.
#include "decoding/CandumpReader.h"

#include <algorithm>

#include "decoding/TimeStamp.h"

namespace lum::decoding::detail {

namespace {

/// The direction that some tools write behind a frame.
std::string_view WithoutDirection(std::string_view text) {
  const std::size_t size = text.size();
  const bool hasOne =
      size >= 2 && IsSpaceOrTab(text[size - 2]) && (text[size - 1] == 'R' || text[size - 1] == 'T');
  return hasOne ? text.substr(0, size - 2) : text;
}

std::string_view WithoutBlanksBehind(std::string_view text) {
  while (!text.empty() && IsSpaceOrTab(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

/// The place of the '#' in the first word; nowhere when it has none.
std::size_t FindMark(std::string_view text) {
  for (std::size_t i = 0; i < text.size() && !IsSpaceOrTab(text[i]); ++i) {
    if (text[i] == '#') {
      return i;
    }
  }
  return std::string_view::npos;
}

}  // namespace

LineOutcome CCandumpReader::Take(const LogLine& line, LogRecord& record, LineProblem& problem) {
  BeginRecord(line, record);
  m_fault = FindTooLong(line);
  if (m_fault.reason.empty()) {
    CLogCursor cursor(line.text);
    cursor.TakeBlanks();
    if (cursor.IsAtEnd() || cursor.Peek() == '#') {
      record.kind = RecordKind::Remark;
    } else {
      TakeLine(cursor, record);
    }
  }
  return EndLine(line, m_fault, problem);
}

bool CCandumpReader::TakeLine(CLogCursor& cursor, LogRecord& record) {
  record.isBus = true;
  if (!TakeTime(cursor, record) || !TakeChannel(cursor, record)) {
    return false;
  }
  const std::size_t mark = FindMark(cursor.Rest());
  return mark != std::string_view::npos ? TakeCompact(cursor, mark, record)
                                        : TakeColumns(cursor, record);
}

bool CCandumpReader::TakeTime(CLogCursor& cursor, LogRecord& record) {
  if (cursor.Peek() != '(') {
    return true;
  }
  const std::size_t column = cursor.Column();
  record.time = TakeTimeInParentheses(cursor);
  if (!record.time) {
    return Fail(column, "no time stamp within the parentheses");
  }
  return cursor.TakeBlanks() || Fail(cursor.Column(), "no blank behind the time stamp");
}

bool CCandumpReader::TakeChannel(CLogCursor& cursor, LogRecord& record) {
  const std::size_t column = cursor.Column();
  record.bus.channel = cursor.TakeWord();
  if (record.bus.channel.empty()) {
    return Fail(column, "no name of an interface");
  }
  if (record.bus.channel.size() > kMaxChannelName) {
    return Fail(column, "name of an interface is longer than 64 bytes");
  }
  return cursor.TakeBlanks() || Fail(cursor.Column(), "no frame behind the interface");
}

bool CCandumpReader::TakeId(std::string_view digits, std::size_t column) {
  if (digits.size() != 3 && digits.size() != 8) {
    return Fail(column, "identifier has neither 3 nor 8 hexadecimal digits");
  }
  if (!m_frame.TakeId(digits)) {
    const auto wrong = std::find_if_not(digits.begin(), digits.end(), IsHexDigit);
    return Fail(column + static_cast<std::size_t>(wrong - digits.begin()),
                "no hexadecimal digit in the identifier");
  }
  if (!m_frame.IsExtended()) {
    return m_frame.Id() <= kMaxStandardId || Fail(column, "identifier is larger than 7FF");
  }
  return m_frame.Id() <= (kMaxExtendedId | kErrorFlag) ||
         Fail(column, "identifier is larger than 1FFFFFFF");
}

// ---- Compact

bool CCandumpReader::TakeCompact(const CLogCursor& cursor, std::size_t mark, LogRecord& record) {
  const std::string_view rest = cursor.Rest();
  if (!TakeId(rest.substr(0, mark), cursor.Column())) {
    return false;
  }
  const std::size_t column = cursor.Column() + mark + 1;
  const std::string_view data = WithoutDirection(rest.substr(mark + 1));
  if (data.size() <= 2 * kMaxCanBytes && data.size() % 2 == 0 && m_frame.TakeData(data)) {
    Describe(record, RecordKind::Data);
    return true;
  }
  return TakeCompactData(WithoutBlanksBehind(data), column, record);
}

/// What is no solid row of digits.
bool CCandumpReader::TakeCompactData(std::string_view data, std::size_t column, LogRecord& record) {
  if (data.starts_with('R') || data.starts_with('r')) {
    return TakeCompactRemote(data.substr(1), column + 1, record);
  }
  if (data.starts_with('#')) {
    return TakeCompactFd(data.substr(1), column + 1, record);
  }
  if (!GatherCompact(data, column, kMaxCanBytes)) {
    return false;
  }
  Describe(record, RecordKind::Data, Gathered());
  return true;
}

bool CCandumpReader::TakeCompactRemote(std::string_view rest, std::size_t column,
                                       LogRecord& record) {
  if (!rest.empty() && !(rest.size() == 1 && rest[0] >= '0' && rest[0] <= '8')) {
    return Fail(column, "expected a data length of 0 to 8 behind R, or nothing");
  }
  Describe(record, RecordKind::Remote, {});
  return true;
}

bool CCandumpReader::TakeCompactFd(std::string_view rest, std::size_t column, LogRecord& record) {
  if (rest.empty() || !IsHexDigit(rest.front())) {
    return Fail(column, "no flags of a CAN FD frame");
  }
  if (!GatherCompact(rest.substr(1), column + 1, kMaxFdBytes)) {
    return false;
  }
  Describe(record, RecordKind::Unusable, {});
  return true;
}

/// Digits with a dot or not between the bytes.
bool CCandumpReader::GatherCompact(std::string_view data, std::size_t column,
                                   std::size_t maxBytes) {
  m_gatheredCount = 0;
  for (std::size_t i = 0; i < data.size(); ++i) {
    if (data[i] == '.' && m_gatheredCount % 2 == 0 && i != 0) {
      continue;
    }
    if (!IsHexDigit(data[i])) {
      return Fail(column + i, "no hexadecimal digit in the data");
    }
    if (m_gatheredCount == 2 * maxBytes) {
      return Fail(column + i,
                  maxBytes == kMaxCanBytes ? "more than 8 data bytes" : "more than 64 data bytes");
    }
    m_gathered[m_gatheredCount++] = data[i];
  }
  return m_gatheredCount % 2 == 0 || Fail(column + data.size(), "odd number of hexadecimal digits");
}

// ---- Outcomes

void CCandumpReader::Describe(LogRecord& record, RecordKind kind) {
  const bool isError = m_frame.IsExtended() && m_frame.Id() > kMaxExtendedId;
  record.kind = isError ? RecordKind::BusError : kind;
  if (record.kind == RecordKind::Data) {
    m_frame.Describe(record.bus);
  } else {
    record.bus.id = m_frame.Id() & kMaxExtendedId;
    record.bus.isExtended = m_frame.IsExtended() && !isError;
    record.bus.data = m_frame.Data();
  }
}

void CCandumpReader::Describe(LogRecord& record, RecordKind kind, std::string_view digits) {
  m_frame.TakeData(digits);
  Describe(record, kind);
}

bool CCandumpReader::Fail(std::size_t column, std::string_view reason) {
  m_fault = {column, reason};
  return false;
}

}  // namespace lum::decoding::detail
