// The form in columns, "can0  123   [8]  11 22 33 44 55 66 77 88   '.."3DUfw.'", with the words
// that candump writes for the direction, remote requests and error frames.
#include "decoding/CandumpReader.h"

namespace lum::decoding::detail {

bool CCandumpReader::TakeColumns(CLogCursor& cursor, LogRecord& record) {
  if (!TakeFlags(cursor)) {
    return false;
  }
  const std::size_t column = cursor.Column();
  std::size_t length = 0;
  bool isFd = false;
  if (!TakeId(cursor.TakeWord(), column) || !TakeLength(cursor, length, isFd)) {
    return false;
  }
  constexpr std::string_view kRemote = "remote request";
  if (cursor.Rest().starts_with(kRemote)) {
    cursor.MoveTo(cursor.Place() + kRemote.size());
    if (!TakeColumnEnd(cursor)) {
      return false;
    }
    Describe(record, RecordKind::Remote, {});
    return true;
  }
  if (!GatherColumns(cursor, length) || !TakeColumnEnd(cursor)) {
    return false;
  }
  if (isFd) {
    Describe(record, RecordKind::Unusable, {});
  } else {
    Describe(record, RecordKind::Data, Gathered());
  }
  return true;
}

/// "RX - -" or "TX B E", if they are there: the direction and two flags of CAN FD.
bool CCandumpReader::TakeFlags(CLogCursor& cursor) {
  if (!cursor.Rest().starts_with("RX ") && !cursor.Rest().starts_with("TX ")) {
    return true;
  }
  cursor.TakeWord();
  for (const char flag : {'B', 'E'}) {
    cursor.TakeBlanks();
    if (!cursor.TakeChar('-') && !cursor.TakeChar(flag)) {
      return Fail(cursor.Column(), "expected the flags B or -, E or - behind RX or TX");
    }
  }
  return cursor.TakeBlanks() || Fail(cursor.Column(), "no identifier behind the flags");
}

/// "[8]"; of two digits for CAN FD.
bool CCandumpReader::TakeLength(CLogCursor& cursor, std::size_t& length, bool& isFd) {
  cursor.TakeBlanks();
  if (!cursor.TakeChar('[')) {
    return Fail(cursor.Column(), "no data length in brackets behind the identifier");
  }
  const std::size_t column = cursor.Column();
  while (IsDecimalDigit(cursor.Peek()) && cursor.Column() - column < 2) {
    length = 10 * length + static_cast<std::size_t>(cursor.Peek() - '0');
    cursor.MoveTo(cursor.Place() + 1);
  }
  isFd = cursor.Column() - column == 2;
  if (cursor.Column() == column || !cursor.TakeChar(']')) {
    return Fail(cursor.Column(), "data length is no number of one or two digits in brackets");
  }
  if (length > (isFd ? kMaxFdBytes : kMaxCanBytes)) {
    return Fail(column, isFd ? "more than 64 data bytes" : "more than 8 data bytes");
  }
  cursor.TakeBlanks();
  return true;
}

/// As many bytes as the length says, blanks between them.
bool CCandumpReader::GatherColumns(CLogCursor& cursor, std::size_t length) {
  m_gatheredCount = 0;
  for (std::size_t i = 0; i < length; ++i) {
    const std::size_t column = cursor.Column();
    const std::string_view byte = cursor.TakeWord();
    if (byte.empty() || byte.front() == '\'') {
      return Fail(column, "fewer data bytes than the data length says");
    }
    for (std::size_t k = 0; k < byte.size(); ++k) {
      if (!IsHexDigit(byte[k])) {
        return Fail(column + k, "no hexadecimal digit in the data");
      }
    }
    if (byte.size() != 2) {
      return Fail(column, "a data byte has two hexadecimal digits");
    }
    m_gathered[m_gatheredCount++] = byte[0];
    m_gathered[m_gatheredCount++] = byte[1];
    cursor.TakeBlanks();
  }
  return true;
}

/// Nothing, the bytes as characters, or the word for an error frame.
bool CCandumpReader::TakeColumnEnd(CLogCursor& cursor) {
  cursor.TakeBlanks();
  const std::string_view rest = cursor.Rest();
  return rest.empty() || rest.front() == '\'' || rest.starts_with("ERRORFRAME") ||
         Fail(cursor.Column(), "more behind the data than the data length says");
}

}  // namespace lum::decoding::detail
