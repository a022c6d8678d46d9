// Everyday numbers are written from integers, eight digits at a time; std::to_chars, which knows no
// locale, writes the others.
#include "decoding/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "decoding/DecimalDigits.h"
#include "values/ShortDecimal.h"

namespace lum::decoding {
namespace {

using detail::kWordDigits;
using detail::kWordEnd;

__extension__ using WideUInt = unsigned __int128;

constexpr int kMantissaBits = 52;
constexpr int kMostFastDigits = kWordDigits;
constexpr auto kPowersOfTen = [] {
  std::array<std::uint32_t, kMostFastDigits + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) {
    powers[i] = powers[i - 1] * 10;
  }
  return powers;
}();

// ---- Digits

/// Digits without the zeros in front.
template <typename Word>
char* WriteDigits(char* at, Word digits) {
  constexpr Word kLast = Word{1} << (8 * (sizeof(Word) - 1));  // It stays, though it be zero.
  const auto zeros = static_cast<std::size_t>(std::countr_zero(digits | kLast)) / 8;
  detail::StoreDigits(detail::AsCharacters(digits) >> (8 * zeros), at);
  return at + sizeof(Word) - zeros;
}

/// A number below kWordEnd.
char* WriteWord(char* at, std::uint32_t number) {
  return number < detail::kHalfEnd ? WriteDigits(at, detail::SplitFours(number))
                                   : WriteDigits(at, detail::SplitDigits(number));
}

/// So many digits behind the point, of a number that has no more.
char* WriteFraction(char* at, std::uint32_t fraction, int digits) {
  constexpr int kHalf = kMostFastDigits / 2;
  *at++ = '.';
  if (digits <= kHalf) {
    const std::uint32_t raised = fraction * kPowersOfTen[static_cast<std::size_t>(kHalf - digits)];
    detail::StoreDigits(detail::AsCharacters(detail::SplitFours(raised)), at);
  } else {
    const std::uint32_t raised =
        fraction * kPowersOfTen[static_cast<std::size_t>(kMostFastDigits - digits)];
    detail::StoreDigits(detail::AsCharacters(detail::SplitDigits(raised)), at);
  }
  return at + digits;
}

// ---- What is not written from integers

char* WriteNoNumber(char* at, double number) {
  const std::string_view name = std::isnan(number) ? "nan" : number < 0.0 ? "-inf" : "inf";
  return std::copy(name.begin(), name.end(), at);
}

template <typename... Form>
char* WriteByLibrary(char* at, double number, Form... form) {
  return std::isfinite(number) ? std::to_chars(at, at + kNumberRoom, number, form...).ptr
                               : WriteNoNumber(at, number);
}

// ---- Fixed digits

/// A number below 2^52 as a whole part and a fraction of so many digits.
struct FixedParts {
  std::uint64_t whole = 0;
  std::uint32_t fraction = 0;
};

/// `Bits` holds the bits of the fraction times the power of ten, so the rounding sees all of them.
template <typename Bits>
FixedParts SplitFixed(std::uint64_t mantissa, int shift, int digits) {
  const std::uint32_t power = kPowersOfTen[static_cast<std::size_t>(digits)];
  FixedParts parts;
  parts.whole = shift < 64 ? mantissa >> shift : 0;
  const Bits one = Bits{1} << shift;
  const Bits scaled = (Bits{mantissa} & (one - 1)) * power;
  parts.fraction = static_cast<std::uint32_t>(scaled >> shift);
  const Bits rest = scaled & (one - 1);
  const Bits half = one >> 1;
  // Without digits the whole part is what the tie makes even.
  const bool isOdd = ((digits == 0 ? parts.whole : parts.fraction) & 1) != 0;
  parts.fraction += rest > half || (rest == half && isOdd) ? 1U : 0U;
  if (parts.fraction == power) {
    parts.fraction = 0;
    ++parts.whole;
  }
  return parts;
}

FixedParts SplitFixed(std::uint64_t mantissa, int shift, int digits) {
  if (shift > 2 * kMantissaBits) {
    return {};  // Below 2^-52: eight digits round to nothing.
  }
  const auto power = kPowersOfTen[static_cast<std::size_t>(digits)];
  const auto bits = static_cast<int>(std::bit_width(power));
  return shift + bits < 64 ? SplitFixed<std::uint64_t>(mantissa, shift, digits)
                           : SplitFixed<WideUInt>(mantissa, shift, digits);
}

}  // namespace

char* WriteWhole(char* at, std::uint64_t number) {
  if (number < kWordEnd) {
    return WriteWord(at, static_cast<std::uint32_t>(number));
  }
  const std::uint64_t upper = number / kWordEnd;
  if (upper >= kWordEnd) {
    return std::to_chars(at, at + kNumberRoom, number).ptr;
  }
  at = WriteWord(at, static_cast<std::uint32_t>(upper));
  const std::uint64_t lower = detail::SplitDigits(static_cast<std::uint32_t>(number % kWordEnd));
  detail::StoreDigits(detail::AsCharacters(lower), at);
  return at + kWordDigits;
}

char* WriteFixed(char* at, double number, int digits) {
  const auto bits = std::bit_cast<std::uint64_t>(number);
  const int exponent = static_cast<int>(bits >> kMantissaBits & 0x7FF);
  // 2^52 and above have no fraction, nor has what is no number; below 2^-1022 there is no leading
  // one.
  const int shift = 1023 + kMantissaBits - exponent;
  if (digits > kMostFastDigits || shift <= 0) {
    return WriteByLibrary(at, number, std::chars_format::fixed, digits);
  }
  const std::uint64_t leading = exponent == 0 ? 0 : std::uint64_t{1} << kMantissaBits;
  const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << kMantissaBits) - 1)) | leading;
  const FixedParts parts = SplitFixed(mantissa, shift, digits);
  // Nothing jumps on the sign, which cannot be foreseen.
  *at = '-';
  at = WriteWhole(at + (std::signbit(number) ? 1 : 0), parts.whole);
  return digits > 0 ? WriteFraction(at, parts.fraction, digits) : at;
}

char* WriteShortest(char* at, double number) {
  std::uint64_t millionths = 0;
  if (!lum::detail::FindShortDecimal(std::fabs(number), millionths)) {
    return WriteByLibrary(at, number);
  }
  *at = '-';
  at = WriteWhole(at + (std::signbit(number) ? 1 : 0), millionths / lum::detail::kMillion);
  const auto fraction = static_cast<std::uint32_t>(millionths % lum::detail::kMillion);
  if (fraction == 0) {
    return at;
  }
  // Two zeros stand in front of six digits.
  const std::uint64_t digits = detail::SplitDigits(fraction) >> 16;
  *at++ = '.';
  detail::StoreDigits(detail::AsCharacters(digits), at);
  return at + kWordDigits - static_cast<std::size_t>(std::countl_zero(digits)) / 8;
}

char* WriteNumber(char* at, double number, std::optional<int> digits) {
  return digits ? WriteFixed(at, number, *digits) : WriteShortest(at, number);
}

void AppendFixed(std::string& text, double number, int digits) {
  AppendNumber(text, number, digits);
}

void AppendShortest(std::string& text, double number) { AppendNumber(text, number, std::nullopt); }

void AppendNumber(std::string& text, double number, std::optional<int> digits) {
  char buffer[kNumberRoom];
  text.append(buffer, WriteNumber(buffer, number, digits));
}

void AppendWhole(std::string& text, std::uint64_t number) {
  char buffer[kNumberRoom];
  text.append(buffer, WriteWhole(buffer, number));
}

}  // namespace lum::decoding
