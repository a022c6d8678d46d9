#include "decoding/FormulaLexer.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "decoding/NumberLiteral.h"
#include "decoding/Utf8Text.h"
#include "platform/Numerics.h"

namespace lum::decoding {
namespace {

bool IsBlank(char ch) { return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r'; }
bool IsDigit(char ch) { return ch >= '0' && ch <= '9'; }
bool IsNameStart(char ch) {
  return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || ch == '_';
}
bool IsNamePart(char ch) { return IsNameStart(ch) || IsDigit(ch); }

TokenKind SignKind(char ch) {
  switch (ch) {
    case '+':
      return TokenKind::Plus;
    case '-':
      return TokenKind::Minus;
    case '*':
      return TokenKind::Times;
    case '/':
      return TokenKind::Divide;
    case '(':
      return TokenKind::Open;
    case ')':
      return TokenKind::Close;
    case ',':
      return TokenKind::Comma;
    default:
      return TokenKind::Unknown;
  }
}

/// Where the character that begins at `place` ends.
std::size_t CharacterEndAt(std::string_view text, std::size_t place) {
  do {
    ++place;
  } while (place < text.size() && IsContinuation(text[place]));
  return place;
}

/// How far everything goes that nobody would write behind a number without a blank: "12abc" is a
/// bad number rather than two tokens. The text begins with a digit or a point.
std::size_t NumberLength(std::string_view text) {
  const bool isHex = text.starts_with("0x") || text.starts_with("0X");
  std::size_t length = 1;
  while (length < text.size()) {
    const char ch = text[length];
    const bool isExponentSign =
        (ch == '+' || ch == '-') && !isHex && (text[length - 1] == 'e' || text[length - 1] == 'E');
    if (!IsNamePart(ch) && ch != '.' && !isExponentSign) {
      break;
    }
    ++length;
  }
  return length;
}

int HexDigitAt(std::string_view text, std::size_t place) {
  return place < text.size() ? HexVal(static_cast<unsigned char>(text[place])) : -1;
}

}  // namespace

FormulaToken CFormulaLexer::Next() {
  while (m_place < m_text.size() && IsBlank(m_text[m_place])) {
    ++m_place;
  }
  if (m_place == m_text.size()) {
    return Take(TokenKind::End, 0);
  }
  const char first = m_text[m_place];
  const bool isPoint = first == '.' && m_place + 1 < m_text.size() && IsDigit(m_text[m_place + 1]);
  if (IsDigit(first) || isPoint) {
    return TakeNumber();
  }
  if (first == '"' || first == '\'') {
    return TakeText();
  }
  if (IsNameStart(first)) {
    return TakeName();
  }
  const TokenKind kind = SignKind(first);
  return Take(kind, kind == TokenKind::Unknown ? CharacterEndAt(m_text, m_place) - m_place : 1);
}

FormulaToken CFormulaLexer::Take(TokenKind kind, std::size_t length) {
  FormulaToken token;
  token.kind = kind;
  token.begin = m_place;
  token.text = m_text.substr(m_place, length);
  m_place += length;
  return token;
}

FormulaToken CFormulaLexer::TakeNumber() {
  FormulaToken token = Take(TokenKind::Number, NumberLength(m_text.substr(m_place)));
  const std::optional<double> number = ReadUnsigned(token.text);
  if (!number) {
    throw FormulaFault{token.begin, QuotedPart(token.text),
                       "a decimal or 0x number that a double can hold", ""};
  }
  token.number = *number;
  return token;
}

// Numbers that are words, as command lines write them, are numbers here, too.
FormulaToken CFormulaLexer::TakeName() {
  const std::string_view rest = m_text.substr(m_place);
  const auto end = std::find_if_not(rest.begin(), rest.end(), IsNamePart);
  FormulaToken token = Take(TokenKind::Name, static_cast<std::size_t>(end - rest.begin()));
  if (const std::optional<double> number = ReadUnsigned(token.text)) {
    token.kind = TokenKind::Number;
    token.number = *number;
  }
  return token;
}

FormulaToken CFormulaLexer::TakeText() {
  const char quote = m_text[m_place];
  std::string bytes;
  std::size_t place = m_place + 1;
  while (place < m_text.size() && m_text[place] != quote) {
    bytes += m_text[place] == '\\' ? TakeEscape(place) : m_text[place++];
  }
  if (place >= m_text.size()) {
    throw FormulaFault{m_place, "a text without its closing quote", "", ""};
  }
  FormulaToken token = Take(TokenKind::Text, place + 1 - m_place);
  token.bytes = std::move(bytes);
  return token;
}

char CFormulaLexer::TakeEscape(std::size_t& place) const {
  constexpr std::string_view kEscapes = "\\\"'nt";
  constexpr std::string_view kMeanings = "\\\"'\n\t";
  const std::size_t begin = place++;
  const char letter = place < m_text.size() ? m_text[place] : '\0';
  if (const std::size_t found = kEscapes.find(letter); found != std::string_view::npos) {
    ++place;
    return kMeanings[found];
  }
  const int high = HexDigitAt(m_text, place + 1);
  const int low = HexDigitAt(m_text, place + 2);
  if (letter == 'x' && high >= 0 && low >= 0) {
    place += 3;
    return static_cast<char>(high * 16 + low);
  }
  const std::size_t end = place < m_text.size() ? CharacterEndAt(m_text, place) : place;
  throw FormulaFault{begin, QuotedPart(m_text.substr(begin, end - begin)),
                     R"(\\, \", \', \n, \t or \x and two hexadecimal digits)", ""};
}

}  // namespace lum::decoding
