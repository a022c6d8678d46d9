// The operations of CLumDouble that compare numbers and choose between them.
#include <cmath>

#include "formulas/NumberArguments.h"
#include "values/DoubleType.h"

using lum::detail::Compute;
using lum::detail::NumberOrZero;

namespace {

double TruthValue(bool isTrue) { return isTrue ? 1.0 : 0.0; }

double Clip(double x, double lower, double upper) {
  const double atMostUpper = x > upper ? upper : x;
  return lower > atMostUpper ? lower : atMostUpper;
}

}  // namespace

int CLumDouble::Sign(CLumType& value) {
  return Compute(
      m_value, [](double x) { return x >= 0.0 ? 1.0 : -1.0; }, value);
}

int CLumDouble::IsNull(CLumType& value) {
  return Compute(
      m_value, [](double x) { return TruthValue(x == 0.0); }, value);
}

int CLumDouble::IsEqual(CLumType& first, CLumType& second, CLumType& tolerance) {
  const auto isEqual = [](double a, double b, double c) {
    return TruthValue(std::abs(a - b) <= c);
  };
  return Compute(m_value, isEqual, first, second, tolerance);
}

int CLumDouble::IsGreater(CLumType& first, CLumType& second) {
  return Compute(
      m_value, [](double a, double b) { return TruthValue(a > b); }, first, second);
}

int CLumDouble::IsLess(CLumType& first, CLumType& second) {
  return Compute(
      m_value, [](double a, double b) { return TruthValue(a < b); }, first, second);
}

int CLumDouble::ValueInRange(CLumType& value, CLumType& firstBound, CLumType& secondBound) {
  const double x = NumberOrZero(value);
  const double a = NumberOrZero(firstBound);
  const double b = NumberOrZero(secondBound);
  m_value = TruthValue((x - a) * (x - b) <= 0.0);
  return 1;
}

int CLumDouble::ClipValue(CLumType& value, CLumType& lower, CLumType& upper) {
  return Compute(m_value, Clip, value, lower, upper);
}

int CLumDouble::GateValue(CLumType& value, CLumType& lower, CLumType& upper) {
  bool isInside = false;
  const auto gate = [&isInside](double x, double low, double high) {
    isInside = low <= x && x <= high;
    return x;
  };
  return Compute(m_value, gate, value, lower, upper) != 0 && isInside ? 1 : 0;
}

int CLumDouble::CheckInValid(CLumType& value, CLumType& invalidMarker) {
  const double x = NumberOrZero(value);
  const bool isInvalid = x == NumberOrZero(invalidMarker);
  m_value = isInvalid ? 0.0 : x;
  return isInvalid ? 0 : 1;
}

int CLumDouble::SelectValue(CLumType& firstChoice, CLumType& secondChoice, CLumType& selector) {
  const double first = NumberOrZero(firstChoice);
  const double second = NumberOrZero(secondChoice);
  m_value = NumberOrZero(selector) == 0.0 ? first : second;
  return 1;
}
