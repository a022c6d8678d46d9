// The operations of CLumDouble that read numbers and positions from text fields.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "formulas/NumberArguments.h"
#include "formulas/TextArgument.h"
#include "values/DoubleType.h"
#include "values/NumberScan.h"

using lum::detail::CByteText;
using lum::detail::CWideText;
using lum::detail::ScanDouble;

namespace {

bool ReadTextOrNumber(const CLumType& source, double& number) {
  CByteText text;
  const std::optional<std::string_view> characters = text.Read(source);
  return characters ? ScanDouble(*characters, number) : lum::detail::ReadNumber(source, number);
}

// Decimal degrees from degrees and minutes written as one number, ddmm.mmm. The sign is dropped.
double DegreesOf(double degreesAndMinutes) {
  const double number = degreesAndMinutes / 100.0;
  const std::optional<std::int64_t> degrees = lum::detail::ToInteger(number);
  if (!degrees || std::abs(*degrees) == lum::detail::kFarAway) {
    return std::abs(number);  // An integer, or none at all.
  }
  const auto whole = static_cast<double>(*degrees);
  return std::abs(number - whole) / 0.6 + std::abs(whole);
}

bool IsSouthOrWest(std::wstring_view letter) {
  return letter.size() == 1 && (letter.front() == L'S' || letter.front() == L'W');
}

}  // namespace

int CLumDouble::Val(CLumType& textOrNumber, bool lenient) {
  m_value = 0.0;
  return ReadTextOrNumber(textOrNumber, m_value) || lenient ? 1 : 0;
}

int CLumDouble::NMEAPos(CLumType& position, CLumType& hemisphere) {
  CWideText positionText;
  CWideText hemisphereText;
  const std::wstring_view digits = positionText.ReadOrEmpty(position);
  const std::wstring_view letter = hemisphereText.ReadOrEmpty(hemisphere);
  if (digits.empty() || letter.empty()) {
    return 0;
  }
  double number = 0.0;
  const double degrees = ScanDouble(digits, number) ? DegreesOf(number) : 0.0;
  m_value = IsSouthOrWest(letter) ? -degrees : degrees;
  return 1;
}
