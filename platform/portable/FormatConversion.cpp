// The digits come from std::to_chars; what printf's flags ask for beyond them is added here.
#include "platform/portable/FormatConversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace lum::detail {
namespace {

constexpr int kDefaultPrecision = 6;

// No double has more decimal places than this; whatever is asked for beyond is zeros.
constexpr int kMostPlaces = 1100;

// Digits before the point, those after it, sign, point and exponent.
constexpr int kFloatingSize = 320 + kMostPlaces + 16;

bool IsCapital(char type) { return type >= 'A' && type <= 'Z'; }

char LowerType(char type) { return IsCapital(type) ? static_cast<char>(type - 'A' + 'a') : type; }

void MakeCapitals(std::string& text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char ch) {
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
  });
}

std::string SignOf(const Conversion& conversion, bool isNegative) {
  if (isNegative) {
    return "-";
  }
  if (conversion.plusSign) {
    return "+";
  }
  return conversion.blankSign ? " " : "";
}

int BaseOf(char type) {
  switch (type) {
    case 'o':
      return 8;
    case 'x':
    case 'X':
      return 16;
    default:
      return 10;
  }
}

// ---- Floating point

std::string DigitsOf(double magnitude, std::chars_format format, int precision) {
  char buffer[kFloatingSize];
  char* end = precision < 0 ? std::to_chars(buffer, std::end(buffer), magnitude, format).ptr
                            : std::to_chars(buffer, std::end(buffer), magnitude, format,
                                            std::min(precision, kMostPlaces))
                                  .ptr;
  return std::string(buffer, end);
}

// Where the exponent begins, or the text's end.
std::size_t MantissaLength(const std::string& text, char exponentMark) {
  return std::min(text.find(exponentMark), text.size());
}

// Adds the zeros beyond the places that a double can have, and the point that "#" asks for.
void CompleteMantissa(std::string& text, char exponentMark, int precision, bool needsPoint) {
  std::size_t end = MantissaLength(text, exponentMark);
  if (precision > kMostPlaces) {
    const auto zeros = static_cast<std::size_t>(precision - kMostPlaces);
    text.insert(end, zeros, '0');
    end += zeros;
  }
  if (needsPoint && text.find('.') == std::string::npos) {
    text.insert(end, 1, '.');
  }
}

std::string WriteFixed(double magnitude, int precision, bool needsPoint) {
  std::string text = DigitsOf(magnitude, std::chars_format::fixed, precision);
  CompleteMantissa(text, '\0', precision, needsPoint);
  return text;
}

std::string WriteScientific(double magnitude, int precision, bool needsPoint) {
  std::string text = DigitsOf(magnitude, std::chars_format::scientific, precision);
  CompleteMantissa(text, 'e', precision, needsPoint);
  return text;
}

int ExponentOf(const std::string& scientific) {
  const char* first = scientific.data() + MantissaLength(scientific, 'e') + 1;
  int exponent = 0;
  std::from_chars(*first == '+' ? first + 1 : first, scientific.data() + scientific.size(),
                  exponent);
  return exponent;
}

// "%#g": the form that "%g" takes, with its trailing zeros.
std::string WriteGeneralWithZeros(double magnitude, int significant) {
  std::string scientific = WriteScientific(magnitude, significant - 1, true);
  const int exponent = ExponentOf(scientific);
  if (exponent < -4 || exponent >= significant) {
    return scientific;
  }
  return WriteFixed(magnitude, significant - 1 - exponent, true);
}

std::string WriteGeneral(double magnitude, int precision, bool keepsZeros) {
  const int significant = std::max(precision, 1);
  return keepsZeros ? WriteGeneralWithZeros(magnitude, significant)
                    : DigitsOf(magnitude, std::chars_format::general, significant);
}

std::string WriteHexadecimal(double magnitude, int precision, bool needsPoint) {
  std::string text = DigitsOf(magnitude, std::chars_format::hex, precision);
  CompleteMantissa(text, 'p', precision, needsPoint);
  return text;
}

std::string WriteFinite(const Conversion& conversion, double magnitude) {
  const int places = conversion.precision < 0 ? kDefaultPrecision : conversion.precision;
  switch (LowerType(conversion.type)) {
    case 'e':
      return WriteScientific(magnitude, places, conversion.alternative);
    case 'g':
      return WriteGeneral(magnitude, places, conversion.alternative);
    case 'a':
      return WriteHexadecimal(magnitude, conversion.precision, conversion.alternative);
    default:
      return WriteFixed(magnitude, places, conversion.alternative);
  }
}

}  // namespace

NumberParts WriteInteger(const Conversion& conversion, bool isNegative, std::uint64_t magnitude) {
  NumberParts parts;
  const char type = conversion.type;
  const bool isSigned = type == 'd' || type == 'i';
  parts.prefix = isSigned ? SignOf(conversion, isNegative) : "";
  parts.takesZeros = conversion.precision < 0;
  if (magnitude != 0 || conversion.precision != 0) {
    char buffer[32];
    char* end = std::to_chars(buffer, std::end(buffer), magnitude, BaseOf(type)).ptr;
    parts.digits.assign(buffer, end);
  }
  const auto wanted = static_cast<std::size_t>(std::max(conversion.precision, 0));
  if (parts.digits.size() < wanted) {
    parts.digits.insert(0, wanted - parts.digits.size(), '0');
  }
  if (conversion.alternative && type == 'o' && (parts.digits.empty() || parts.digits[0] != '0')) {
    parts.digits.insert(0, 1, '0');
  }
  if (conversion.alternative && BaseOf(type) == 16 && magnitude != 0) {
    parts.prefix += "0x";
  }
  if (type == 'X') {
    MakeCapitals(parts.prefix);
    MakeCapitals(parts.digits);
  }
  return parts;
}

NumberParts WriteFloating(const Conversion& conversion, double value) {
  NumberParts parts;
  parts.prefix = SignOf(conversion, std::signbit(value));
  if (std::isfinite(value)) {
    parts.prefix += LowerType(conversion.type) == 'a' ? "0x" : "";
    parts.digits = WriteFinite(conversion, std::fabs(value));
  } else {
    parts.digits = std::isnan(value) ? "nan" : "inf";
    parts.takesZeros = false;
  }
  if (IsCapital(conversion.type)) {
    MakeCapitals(parts.prefix);
    MakeCapitals(parts.digits);
  }
  return parts;
}

}  // namespace lum::detail
