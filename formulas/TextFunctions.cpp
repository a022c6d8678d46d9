// The operations of CLumDouble that read numbers and positions from text fields.
#include <cmath>

#include "formulas/NumberArguments.h"
#include "formulas/TextArgument.h"
#include "values/DoubleType.h"
#include "values/NumberScan.h"

using lum::detail::CByteText;
using lum::detail::CWideText;
using lum::detail::ScanDouble;

namespace {

bool ReadTextOrNumber(const CLumType& source, double& number) {
  const CByteText text(source);
  return text.HasText() ? ScanDouble(text.View(), number) : lum::detail::ReadNumber(source, number);
}

// Decimal degrees from degrees and minutes written as one number, ddmm.mmm. The sign is dropped.
double DegreesOf(double degreesAndMinutes) {
  double degrees = 0.0;
  const double minutes = std::modf(degreesAndMinutes / 100.0, &degrees);
  return std::abs(minutes) / 0.6 + std::abs(degrees);
}

}  // namespace

int CLumDouble::Val(CLumType& textOrNumber, bool lenient) {
  m_value = 0.0;
  return ReadTextOrNumber(textOrNumber, m_value) || lenient ? 1 : 0;
}

int CLumDouble::NMEAPos(CLumType& position, CLumType& hemisphere) {
  const CWideText positionText(position);
  const CWideText hemisphereText(hemisphere);
  if (positionText.View().empty() || hemisphereText.View().empty()) {
    return 0;
  }
  double number = 0.0;
  const double degrees = ScanDouble(positionText.View(), number) ? DegreesOf(number) : 0.0;
  const bool isSouthOrWest = hemisphereText.View() == L"S" || hemisphereText.View() == L"W";
  m_value = isSouthOrWest ? -degrees : degrees;
  return 1;
}
