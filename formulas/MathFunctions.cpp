// The mathematical operations of CLumDouble.
#include <cmath>
#include <numbers>

#include "formulas/NumberArguments.h"
#include "platform/LumBase.h"
#include "values/DoubleType.h"

using lum::detail::Compute;
using lum::detail::NumberOrZero;
using lum::detail::ReadNumber;

namespace {

// Sets a sine or cosine that is beyond its range to the bound, in the argument, too.
void Clamp(CLumType& argument, double& number) {
  if (number > 1.0) {
    number = 1.0;
    argument.SetDouble(number);
  }
  if (number < -1.0) {
    number = -1.0;
    argument.SetDouble(number);
  }
}

// The angle from north through east.
double DirectionOf(double east, double north) {
  // In this order, and not by D_TO_R: the last bit depends on it.
  const double angle = std::atan2(east, north) * 180.0 / std::numbers::pi;
  return angle < 0.0 ? angle + 360.0 : angle;
}

}  // namespace

int CLumDouble::Sin(CLumType& degrees) {
  return Compute(
      m_value, [](double angle) { return std::sin(angle * D_TO_R); }, degrees);
}

int CLumDouble::Cos(CLumType& degrees) {
  return Compute(
      m_value, [](double angle) { return std::cos(angle * D_TO_R); }, degrees);
}

int CLumDouble::Asin(CLumType& value) {
  const auto arcSine = [&value](double sine) {
    Clamp(value, sine);
    return std::asin(sine) / D_TO_R;
  };
  return Compute(m_value, arcSine, value);
}

int CLumDouble::Acos(CLumType& value) {
  const auto arcCosine = [&value](double cosine) {
    Clamp(value, cosine);
    return std::acos(cosine) / D_TO_R;
  };
  return Compute(m_value, arcCosine, value);
}

int CLumDouble::Sqr1D(CLumType& value) {
  double x = 0.0;
  if (!ReadNumber(value, x)) {
    return 0;
  }
  const bool isNegative = x < 0.0;
  m_value = isNegative ? 0.0 : std::sqrt(x);
  return isNegative ? 0 : 1;
}

int CLumDouble::Pow1D(CLumType& base, CLumType& exponent) {
  return Compute(
      m_value, [](double a, double b) { return std::pow(a, b); }, base, exponent);
}

int CLumDouble::Log1D(CLumType& value) {
  double x = 0.0;
  if (!ReadNumber(value, x) || x <= 0.0) {
    return 0;
  }
  m_value = std::log10(x);
  return 1;
}

int CLumDouble::Neg(CLumType& value) {
  return Compute(
      m_value, [](double x) { return -x; }, value);
}

// A sign change, which formulas in the field rely on, not a reciprocal.
int CLumDouble::Inverse(CLumType& value) { return CLumDouble::Neg(value); }

int CLumDouble::Int(CLumType& value) {
  return Compute(
      m_value, [](double x) { return std::trunc(x); }, value);
}

int CLumDouble::Modulo(CLumType& dividend, CLumType& divisor) {
  return Compute(
      m_value, [](double a, double b) { return std::fmod(a, b); }, dividend, divisor);
}

int CLumDouble::Bearing(CLumType& first, CLumType& second) {
  return Compute(m_value, DirectionOf, first, second);
}

int CLumDouble::FromEulerRoll(CLumType& roll, CLumType& pitch) {
  const double r = modgeo(NumberOrZero(roll));
  const double p = NumberOrZero(pitch);
  const std::optional<std::int64_t> quadrant = lum::detail::ToInteger(r / 90.0);
  if (!quadrant) {
    return 0;
  }
  const double angle = std::asin(std::sin(r * D_TO_R) * std::cos(p * D_TO_R)) / D_TO_R;
  // Beyond the upright the arc sine comes down again.
  m_value = *quadrant == 0 ? angle : 180.0 * static_cast<double>(*quadrant) - angle;
  return 1;
}
