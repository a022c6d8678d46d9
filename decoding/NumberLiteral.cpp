#include "decoding/NumberLiteral.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

#include "platform/Numerics.h"

namespace lum::decoding {
namespace {

bool IsHexDigit(char ch) { return HexVal(static_cast<unsigned char>(ch)) >= 0; }

std::optional<double> ReadDigits(std::string_view text, std::chars_format format) {
  double number = 0.0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, format);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace

// Digits are asked for first, because std::from_chars reads signs and words as well.
std::optional<double> ReadUnsigned(std::string_view text) {
  if (text == "inf") {
    return std::numeric_limits<double>::infinity();
  }
  if (text == "nan") {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (text.starts_with("0x") || text.starts_with("0X")) {
    text.remove_prefix(2);
    return std::all_of(text.begin(), text.end(), IsHexDigit)
               ? ReadDigits(text, std::chars_format::hex)
               : std::nullopt;
  }
  const bool isDecimal = text.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
  return isDecimal && !text.starts_with('-') ? ReadDigits(text, std::chars_format::general)
                                             : std::nullopt;
}

std::string NumberText(double number) {
  if (std::isnan(number)) {
    return "nan";
  }
  char text[32];
  return {text, std::to_chars(text, std::end(text), number).ptr};
}

}  // namespace lum::decoding
