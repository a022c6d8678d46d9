// Plain numbers are read where they stand. Every other item is handed to CLumString, so that there
// is one set of rules, the platform's.
#include "values/NumberItems.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>
#include <type_traits>

#include "platform/LumBase.h"
#include "values/PlainDecimal.h"

namespace lum::detail {
namespace {

constexpr wchar_t kSeparator = L',';

const wchar_t* SkipTrimmed(const wchar_t* at, const wchar_t* end) {
  while (at != end && (*at == L' ' || *at == L'\t')) {
    ++at;
  }
  return at;
}

// The place behind the blanks after an item and its separator. Null when something else follows.
const wchar_t* SkipEnd(const wchar_t* at, const wchar_t* end) {
  at = SkipTrimmed(at, end);
  if (at == end) {
    return at;
  }
  return *at == kSeparator ? at + 1 : nullptr;
}

bool IsSign(const wchar_t* at, const wchar_t* end) {
  return at != end && (*at == L'-' || *at == L'+');
}

// Each of these reads an item and returns the place behind it and its separator. Null, with the
// output untouched, for an item that another reader may well read.

// Decimal numbers without an exponent and of not too many digits.
inline const wchar_t* ReadPlain(const wchar_t* at, const wchar_t* end, double& value) {
  at = SkipTrimmed(at, end);
  const bool isSigned = IsSign(at, end);
  const bool isNegative = isSigned && *at == L'-';
  double size = 0.0;
  at = ReadPlainDecimal(at + (isSigned ? 1 : 0), end, size);
  at = at == nullptr ? nullptr : SkipEnd(at, end);
  if (at != nullptr) {
    value = isNegative ? -size : size;
  }
  return at;
}

// The same, rounded to double first. The second rounding goes wrong only where the first one ended
// halfway between two floats.
const wchar_t* ReadPlainFloat(const wchar_t* at, const wchar_t* end, float& value) {
  constexpr std::uint64_t kBeyondFloat = (std::uint64_t{1} << 29) - 1;
  constexpr std::uint64_t kHalfway = std::uint64_t{1} << 28;
  double number = 0.0;
  at = ReadPlain(at, end, number);
  if (at == nullptr || (std::bit_cast<std::uint64_t>(number) & kBeyondFloat) == kHalfway) {
    return nullptr;
  }
  value = static_cast<float>(number);
  return at;
}

// Whole numbers that the type can hold, but for a negative zero of an unsigned one and for the
// least int, of which there is no positive.
template <typename T>
const wchar_t* ReadWhole(const wchar_t* at, const wchar_t* end, T& value) {
  constexpr std::ptrdiff_t kMostDigits = std::numeric_limits<std::uint64_t>::digits10;
  constexpr std::uint64_t kLargest = std::numeric_limits<T>::max();
  at = SkipTrimmed(at, end);
  const bool isSigned = IsSign(at, end);
  const bool isNegative = isSigned && *at == L'-';
  const wchar_t* const first = at + (isSigned ? 1 : 0);
  std::uint64_t size = 0;
  at = ReadDigits(first, end, size);
  if (at == first || at - first > kMostDigits || size > kLargest ||
      (isNegative && std::is_unsigned_v<T>)) {
    return nullptr;
  }
  at = SkipEnd(at, end);
  if (at != nullptr) {
    value = isNegative ? 0 - static_cast<T>(size) : static_cast<T>(size);
  }
  return at;
}

// A truth value of one digit.
const wchar_t* ReadBit(const wchar_t* at, const wchar_t* end, bool& value) {
  at = SkipTrimmed(at, end);
  if (at == end || (*at != L'0' && *at != L'1')) {
    return nullptr;
  }
  const bool isOne = *at == L'1';
  at = SkipEnd(at + 1, end);
  if (at != nullptr) {
    value = isOne;
  }
  return at;
}

bool IsOfNumber(wchar_t ch) {
  return (ch >= L'0' && ch <= L'9') || ch == L'.' || ch == L'-' || ch == L'+' || ch == L'e' ||
         ch == L'E';
}

// Numbers of digits, point and exponent that std::from_chars reads, which rounds as every correct
// reading does. Words, and what it finds too large or too small, are left to the platform.
template <typename T>
const wchar_t* ReadByLibrary(const wchar_t* at, const wchar_t* end, T& value) {
  constexpr std::ptrdiff_t kMostCharacters = 48;
  char item[kMostCharacters];
  at = SkipTrimmed(at, end);
  if (at != end && *at == L'+') {
    ++at;  // std::from_chars takes none, but it would take another sign.
    if (IsSign(at, end)) {
      return nullptr;
    }
  }
  const wchar_t* const itemEnd =
      std::find_if_not(at, at + std::min(end - at, kMostCharacters), IsOfNumber);
  const char* const last =
      std::transform(at, itemEnd, item, [](wchar_t ch) { return static_cast<char>(ch); });
  T number = 0;
  const auto [unread, error] = std::from_chars(item, last, number);
  if (error != std::errc() || unread != last) {
    return nullptr;
  }
  at = SkipEnd(itemEnd, end);
  if (at != nullptr) {
    value = number;
  }
  return at;
}

template <typename T>
const wchar_t* ReadByPlatform(const wchar_t* at, const wchar_t* end, T& value) {
  const wchar_t* const itemEnd = std::find(at, end, kSeparator);
  const CString item(at, static_cast<int>(itemEnd - at));
  if (!CLumString(item, kSeparator, true, false).GetItem(0, value)) {
    return nullptr;
  }
  return itemEnd == end ? end : itemEnd + 1;
}

// What is no plain decimal. On its own, or it would slow down the reading of those.
template <typename T>
[[gnu::noinline]] const wchar_t* ReadOther(const wchar_t* at, const wchar_t* end, T& value) {
  const wchar_t* const next = ReadByLibrary(at, end, value);
  return next != nullptr ? next : ReadByPlatform(at, end, value);
}

}  // namespace

const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, bool& value) {
  const wchar_t* const next = ReadBit(at, end, value);
  return next != nullptr ? next : ReadByPlatform(at, end, value);
}

const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, int& value) {
  const wchar_t* const next = ReadWhole(at, end, value);
  return next != nullptr ? next : ReadByPlatform(at, end, value);
}

const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, unsigned int& value) {
  const wchar_t* const next = ReadWhole(at, end, value);
  return next != nullptr ? next : ReadByPlatform(at, end, value);
}

const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, float& value) {
  const wchar_t* const next = ReadPlainFloat(at, end, value);
  return next != nullptr ? next : ReadOther(at, end, value);
}

const wchar_t* ReadNumberItem(const wchar_t* at, const wchar_t* end, double& value) {
  const wchar_t* const next = ReadPlain(at, end, value);
  return next != nullptr ? next : ReadOther(at, end, value);
}

}  // namespace lum::detail
