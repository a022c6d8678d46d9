// The case tables: runs of letters whose cases lie a fixed distance apart, and the few letters that
// map in one direction only.
#include "platform/portable/CaseMapping.h"

#include <cstdint>

namespace lum::detail {
namespace {

using Code = std::uint32_t;

// Upper-case letters first, first + step, ... last; the lower case of each stands `distance` away.
struct CaseRun {
  Code first;
  Code last;
  Code step;
  int distance;
};

constexpr CaseRun kRuns[] = {
    // Latin
    {0x0041, 0x005A, 1, 32},
    {0x00C0, 0x00D6, 1, 32},
    {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},
    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1},
    // Greek
    {0x0370, 0x0372, 2, 1},
    {0x0376, 0x0376, 1, 1},
    {0x037F, 0x037F, 1, 116},
    {0x0386, 0x0386, 1, 38},
    {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},
    {0x03A3, 0x03AB, 1, 32},
    {0x03CF, 0x03CF, 1, 8},
    {0x03D8, 0x03EE, 2, 1},
    {0x03F7, 0x03F7, 1, 1},
    {0x03F9, 0x03F9, 1, -7},
    {0x03FA, 0x03FA, 1, 1},
    {0x03FD, 0x03FF, 1, -130},
    // Cyrillic
    {0x0400, 0x040F, 1, 80},
    {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},
};

constexpr Code kCapitalDottedI = 0x0130;
constexpr Code kSmallDotlessI = 0x0131;

struct CasePair {
  Code from;
  Code to;
};

// Second lower-case forms of a capital: micro sign, long s, final sigma, symbol variants.
constexpr CasePair kUpperOnly[] = {
    {0x00B5, 0x039C}, {kSmallDotlessI, 0x0049}, {0x017F, 0x0053}, {0x03C2, 0x03A3},
    {0x03D0, 0x0392}, {0x03D1, 0x0398},         {0x03D5, 0x03A6}, {0x03D6, 0x03A0},
    {0x03F0, 0x039A}, {0x03F1, 0x03A1},         {0x03F5, 0x0395},
};

constexpr CasePair kLowerOnly[] = {{kCapitalDottedI, 0x0069}, {0x03F4, 0x03B8}};

constexpr bool IsCapitalOf(const CaseRun& run, Code code) {
  return code >= run.first && code <= run.last && (code - run.first) % run.step == 0;
}

constexpr Code Moved(Code code, int distance) {
  return static_cast<Code>(static_cast<int>(code) + distance);
}

template <std::size_t N>
Code Lookup(const CasePair (&pairs)[N], Code code) {
  for (const CasePair& pair : pairs) {
    if (pair.from == code) {
      return pair.to;
    }
  }
  return code;
}

constexpr Code kLastMapped = 0x052F;

Code CodeOf(wchar_t ch) { return static_cast<Code>(ch); }

}  // namespace

wchar_t ToLowerCase(wchar_t ch) noexcept {
  const Code code = CodeOf(ch);
  if (code > kLastMapped) {
    return ch;
  }
  for (const CaseRun& run : kRuns) {
    if (IsCapitalOf(run, code)) {
      return static_cast<wchar_t>(Moved(code, run.distance));
    }
  }
  return static_cast<wchar_t>(Lookup(kLowerOnly, code));
}

wchar_t ToUpperCase(wchar_t ch) noexcept {
  const Code code = CodeOf(ch);
  if (code > kLastMapped) {
    return ch;
  }
  for (const CaseRun& run : kRuns) {
    const Code capital = Moved(code, -run.distance);
    if (IsCapitalOf(run, capital)) {
      return static_cast<wchar_t>(capital);
    }
  }
  return static_cast<wchar_t>(Lookup(kUpperOnly, code));
}

wchar_t FoldCase(wchar_t ch) noexcept {
  const Code code = CodeOf(ch);
  if (code < 0x80) {
    return code >= 'A' && code <= 'Z' ? static_cast<wchar_t>(code + ('a' - 'A')) : ch;
  }
  // The Turkish letters i are letters of their own, no variants of the Latin one.
  if (code == kCapitalDottedI || code == kSmallDotlessI) {
    return ch;
  }
  return ToLowerCase(ToUpperCase(ch));
}

}  // namespace lum::detail
