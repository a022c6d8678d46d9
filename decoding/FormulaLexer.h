// Takes the text of a formula apart into numbers, texts, names and signs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace lum::decoding {

enum class TokenKind : std::uint8_t {
  Number,
  Text,
  Name,
  Plus,
  Minus,
  Times,
  Divide,
  Open,
  Close,
  Comma,
  Unknown,  ///< A character that no formula has outside of texts.
  End,
};

struct FormulaToken {
  TokenKind kind = TokenKind::End;
  std::size_t begin = 0;  ///< In bytes; `text` is what stands there.
  std::string_view text;
  double number = 0.0;  ///< Of Number.
  std::string bytes;    ///< Of Text, with its escapes resolved.

  std::size_t End() const { return begin + text.size(); }
};

/// What is wrong with a formula, and where. Thrown by those who read one, within Compile alone.
struct FormulaFault {
  std::size_t place = 0;  ///< In bytes.
  std::string found;
  std::string expected;
  std::string suggestion;
};

class CFormulaLexer {
 public:
  /// The text must outlive the lexer and its tokens.
  explicit CFormulaLexer(std::string_view text) : m_text(text) {}

  /// The next token; End again and again behind the last. Throws FormulaFault for a number or a
  /// text that is none.
  FormulaToken Next();

 private:
  FormulaToken Take(TokenKind kind, std::size_t length);
  FormulaToken TakeNumber();
  FormulaToken TakeText();
  FormulaToken TakeName();
  char TakeEscape(std::size_t& place) const;

  std::string_view m_text;
  std::size_t m_place = 0;
};

}  // namespace lum::decoding
