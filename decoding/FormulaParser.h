// Reads a formula and writes the steps that evaluate it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/FormulaLexer.h"
#include "decoding/FormulaProgram.h"

namespace lum::decoding {

/// How tightly a sign binds what stands on both its sides.
int FormulaPrecedence(TokenKind sign);

/// Reads from left to right with stacks of its own: what waits for its right side, and what has
/// been read. A step is written as soon as its arguments are there, so steps stand in the order of
/// the text.
class CFormulaParser {
 public:
  /// Reads the program's text.
  explicit CFormulaParser(FormulaProgram& program);

  /// Writes the program's other parts. Throws FormulaFault.
  void Parse();

 private:
  /// Something that has a value.
  struct Operand {
    bool isText = false;
    std::uint32_t step = FormulaStep::kNoStep;
    CLumType* constant = nullptr;
    const double* number = nullptr;  ///< Of a constant that is one.
    std::size_t begin = 0;
    std::size_t end = 0;
  };
  enum class Kind : std::uint8_t { Parenthesis, Call, Sign, Binary };
  /// Something that is not complete yet.
  struct Pending {
    Kind kind = Kind::Parenthesis;
    TokenKind sign = TokenKind::Plus;
    const Operation* operation = nullptr;
    bool lenient = false;
    std::size_t firstOperand = 0;
    std::size_t begin = 0;
  };

  void TakeValue();
  void TakeSign();
  void TakeName();
  void TakePlainName(const FormulaToken& name);
  void TakeField(const FormulaToken& name);
  void OpenCall(const FormulaToken& name);
  void TakeLenient();
  void TakeOperator();
  void TakeBinary(int precedence);
  void TakeComma();
  void TakeClose();
  void TakeEnd();

  void Push(const Pending& pending);
  void Pop();
  void PushNumber(double number, std::size_t begin);
  void PushText();
  void PushLoad(const FormulaStep& step, bool isText);
  /// Completes what waits on top and binds at least so tightly.
  void Reduce(int precedence);
  void ReduceTop();
  void FinishArgument(const Pending& call);
  void FinishCall();
  /// Reads the last operand as Val does, if it is a text.
  void MakeNumber();
  Operand Emit(FormulaStep step, std::size_t firstOperand);
  void EmitConstant(const Operand& operand);

  void Advance() { m_token = m_lexer.Next(); }
  std::size_t ArgumentsOf(const Pending& call) const {
    return m_operands.size() - call.firstOperand;
  }
  bool IsLenientNext() const;
  [[noreturn]] void Refuse(const std::string& expected) const;
  [[noreturn]] void RefuseOperator() const;

  FormulaProgram& m_program;
  CFormulaLexer m_lexer;
  FormulaToken m_token;
  bool m_wantsValue = true;
  int m_depth = 0;
  std::vector<Operand> m_operands;
  std::vector<Pending> m_pending;
};

}  // namespace lum::decoding
