// The operations of CLumDouble that read numbers and positions from text fields.
#include <cmath>

#include "formulas/Arguments.h"
#include "values/DoubleType.h"
#include "values/NumberScan.h"
#include "values/TextView.h"

using lum::detail::ScanDouble;
using lum::detail::View;

namespace {

bool ReadTextOrNumber(const CLumType& source, double& number) {
  CStringA text;
  return source.GetName(text) != 0 ? ScanDouble(View(text), number)
                                   : lum::detail::ReadNumber(source, number);
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
  CString positionText;
  CString hemisphereText;
  position.GetName(positionText);
  hemisphere.GetName(hemisphereText);
  if (positionText.IsEmpty() || hemisphereText.IsEmpty()) {
    return 0;
  }
  double number = 0.0;
  const double degrees = ScanDouble(View(positionText), number) ? DegreesOf(number) : 0.0;
  const bool isSouthOrWest = hemisphereText == L"S" || hemisphereText == L"W";
  m_value = isSouthOrWest ? -degrees : degrees;
  return 1;
}
