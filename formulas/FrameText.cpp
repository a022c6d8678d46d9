#include "formulas/FrameText.h"

#include <cstring>

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
  constexpr std::size_t kBlock = sizeof(std::uint64_t);
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kHighBits = 0x80 * kOnes;
  // Carries an ASCII character's high bit for '.' and what stands behind it.
  constexpr std::uint64_t kAddend = (0x80 - '.') * kOnes;
  if (text.size() < kBlock) {
    return false;
  }
  std::uint64_t broken = 0;
  const auto check = [&broken](const char* block) {
    std::uint64_t word = 0;
    std::memcpy(&word, block, kBlock);
    // A character that carries into its neighbour has its own high bit set.
    broken |= word | ~(word + kAddend);
  };
  for (std::size_t place = 0; place + kBlock < text.size(); place += kBlock) {
    check(text.data() + place);
  }
  check(text.data() + text.size() - kBlock);
  return (broken & kHighBits) == 0;
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
