// Small numeric services.
#include "platform/Numerics.h"

#include <cmath>
#include <limits>

double Epsilon(double m) { return m * std::numeric_limits<double>::epsilon(); }

double modgeo(double degrees) {
  if (!std::isfinite(degrees)) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  // The remainder is exact and so are the sums below, however large the angle is.
  const double rest = std::fmod(degrees, 360.0);
  if (rest > 180.0) {
    return rest - 360.0;
  }
  if (rest <= -180.0) {
    return rest + 360.0;
  }
  return rest + 0.0;  // Makes a negative zero positive.
}

int HexVal(wchar_t digit) {
  if (digit >= L'0' && digit <= L'9') {
    return digit - L'0';
  }
  if (digit >= L'A' && digit <= L'F') {
    return digit - L'A' + 10;
  }
  if (digit >= L'a' && digit <= L'f') {
    return digit - L'a' + 10;
  }
  return -1;
}
