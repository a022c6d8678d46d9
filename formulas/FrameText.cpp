#include "formulas/FrameText.h"

namespace lum::detail {
namespace {

// The beginning of a run that is hexadecimal, with a sign or without.
int HexOf(std::string_view run) {
  const bool isNegative = run.front() == '-';
  if (isNegative || run.front() == '+') {
    run.remove_prefix(1);
  }
  int number = 0;
  for (const char ch : run) {
    const int digit = HexDigit(ch);
    if (digit < 0) {
      break;
    }
    number = number * 16 + digit;
  }
  return isNegative ? -number : number;
}

}  // namespace

bool IsSolid(std::string_view text) {
  bool isSolid = true;
  for (const char ch : text) {
    isSolid &= static_cast<unsigned char>(ch) >= '.';
  }
  return isSolid;
}

std::string_view CFrameText::TakeRun(std::size_t width) {
  SkipBlanks(m_rest);
  std::size_t length = 0;
  while (length < width && length < m_rest.size() && !IsBlank(m_rest[length])) {
    ++length;
  }
  const std::string_view run = m_rest.substr(0, length);
  m_rest.remove_prefix(length);
  return run;
}

int CFrameText::TakeHex(std::size_t width) {
  const std::string_view run = TakeRun(width);
  return run.empty() ? -1 : HexOf(run);
}

}  // namespace lum::detail
