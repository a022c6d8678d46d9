// The double kind as a value; its operations for formulas stand in formulas/.
#include "values/DoubleType.h"

#include "values/NumberItems.h"
#include "values/NumberText.h"

namespace {

// What compound arithmetic takes from its source: zero where it is no double.
double DoubleOrZero(const CLumType& source) {
  double value = 0.0;
  source.GetDouble(value);
  return value;
}

}  // namespace

CLumDouble::~CLumDouble() = default;

bool CLumDouble::SetValueStr(CString text) {
  double value = 0.0;
  return lum::detail::CNumberItems(text).Take(value) && SetDouble(value) != 0;
}

CLumType::LUM_TYPE CLumDouble::Type() const { return TYPE_DOUBLE; }

CLumDouble* CLumDouble::MakeCopy() const { return new CLumDouble(*this); }

int CLumDouble::GetValueStr(CString& text) const {
  lum::detail::ReplaceByFixed(text, m_value);
  return 1;
}

int CLumDouble::GetDouble(double& value) const {
  value = m_value;
  return 1;
}

int CLumDouble::SetDouble(double value) {
  m_value = value;
  return 1;
}

CLumType& CLumDouble::operator=(const CLumType& source) {
  source.GetDouble(m_value);
  return *this;
}

CLumType& CLumDouble::operator+=(const CLumType& source) {
  m_value += DoubleOrZero(source);
  return *this;
}

CLumType& CLumDouble::operator-=(const CLumType& source) {
  m_value -= DoubleOrZero(source);
  return *this;
}

CLumType& CLumDouble::operator*=(const CLumType& source) {
  m_value *= DoubleOrZero(source);
  return *this;
}

CLumType& CLumDouble::operator/=(const CLumType& source) {
  m_value /= DoubleOrZero(source);
  return *this;
}
