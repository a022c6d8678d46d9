#include "decoding/NumberText.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace lum::decoding {
namespace {

__extension__ using WideUInt = unsigned __int128;

constexpr int kMantissaBits = 52;
constexpr int kMostFastDigits = 9;
constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, kMostFastDigits + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) {
    powers[i] = powers[i - 1] * 10;
  }
  return powers;
}();

bool AppendNoNumber(std::string& text, double number) {
  if (std::isfinite(number)) {
    return false;
  }
  text += std::isnan(number) ? "nan" : number < 0.0 ? "-inf" : "inf";
  return true;
}

/// A number below 2^52 as a whole part and a fraction of so many digits.
struct FixedParts {
  std::uint64_t whole = 0;
  std::uint64_t fraction = 0;
};

/// `Bits` holds the bits of the fraction times the power of ten, so the rounding sees all of them.
template <typename Bits>
FixedParts SplitFixed(std::uint64_t mantissa, int shift, int digits) {
  const std::uint64_t power = kPowersOfTen[static_cast<std::size_t>(digits)];
  FixedParts parts;
  parts.whole = shift < 64 ? mantissa >> shift : 0;
  const Bits one = Bits{1} << shift;
  const Bits scaled = (Bits{mantissa} & (one - 1)) * power;
  parts.fraction = static_cast<std::uint64_t>(scaled >> shift);
  const Bits rest = scaled & (one - 1);
  const Bits half = one >> 1;
  // Without digits the whole part is what the tie makes even.
  const bool isOdd = ((digits == 0 ? parts.whole : parts.fraction) & 1) != 0;
  if (rest > half || (rest == half && isOdd)) {
    ++parts.fraction;
  }
  if (parts.fraction == power) {
    parts.fraction = 0;
    ++parts.whole;
  }
  return parts;
}

FixedParts SplitFixed(std::uint64_t mantissa, int shift, int digits) {
  if (shift > 2 * kMantissaBits) {
    return {};  // Below 2^-52: nine digits round to nothing.
  }
  const auto power = kPowersOfTen[static_cast<std::size_t>(digits)];
  const auto bits = static_cast<int>(std::bit_width(power));
  return shift + bits < 64 ? SplitFixed<std::uint64_t>(mantissa, shift, digits)
                           : SplitFixed<WideUInt>(mantissa, shift, digits);
}

char* WriteFraction(char* at, std::uint64_t fraction, int digits) {
  *at++ = '.';
  for (int i = digits - 1; i >= 0; --i) {
    at[i] = static_cast<char>('0' + fraction % 10);
    fraction /= 10;
  }
  return at + digits;
}

/// False for numbers with too many digits on either side of the point.
bool AppendFast(std::string& text, double number, int digits) {
  const auto bits = std::bit_cast<std::uint64_t>(number);
  const int exponent = static_cast<int>(bits >> kMantissaBits & 0x7FF);
  // 2^52 and above have no fraction; below 2^-1022 there is no leading one.
  const int shift = 1023 + kMantissaBits - exponent;
  if (digits > kMostFastDigits || shift <= 0) {
    return false;
  }
  const std::uint64_t leading = exponent == 0 ? 0 : std::uint64_t{1} << kMantissaBits;
  const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << kMantissaBits) - 1)) | leading;
  const FixedParts parts = SplitFixed(mantissa, shift, digits);
  char buffer[40];
  char* at = buffer;
  if (std::signbit(number)) {
    *at++ = '-';
  }
  at = std::to_chars(at, std::end(buffer), parts.whole).ptr;
  at = digits > 0 ? WriteFraction(at, parts.fraction, digits) : at;
  text.append(buffer, at);
  return true;
}

/// Devices count in whole numbers. From 100000 on a text with an exponent may be shorter.
bool AppendSmallWhole(std::string& text, double number) {
  constexpr double kFirstWithExponent = 1e5;
  if (!(std::fabs(number) < kFirstWithExponent)) {
    return false;
  }
  const auto whole = static_cast<std::int32_t>(number);
  if (whole != number || (whole == 0 && std::signbit(number))) {
    return false;
  }
  char buffer[8];
  text.append(buffer, std::to_chars(buffer, std::end(buffer), whole).ptr);
  return true;
}

}  // namespace

void AppendFixed(std::string& text, double number, int digits) {
  if (AppendNoNumber(text, number) || AppendFast(text, number, digits)) {
    return;
  }
  char buffer[400];
  const auto result =
      std::to_chars(buffer, std::end(buffer), number, std::chars_format::fixed, digits);
  text.append(buffer, result.ptr);
}

void AppendShortest(std::string& text, double number) {
  if (AppendSmallWhole(text, number) || AppendNoNumber(text, number)) {
    return;
  }
  char buffer[32];
  text.append(buffer, std::to_chars(buffer, std::end(buffer), number).ptr);
}

void AppendNumber(std::string& text, double number, std::optional<int> digits) {
  if (digits) {
    AppendFixed(text, number, *digits);
  } else {
    AppendShortest(text, number);
  }
}

void AppendWhole(std::string& text, std::uint64_t number) {
  char buffer[24];
  text.append(buffer, std::to_chars(buffer, std::end(buffer), number).ptr);
}

}  // namespace lum::decoding
