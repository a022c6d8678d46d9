// Vectors read and write their components in the scalar double's text form, and combine component
// by component.
#include "values/VectorTypes.h"

#include "values/NumberItems.h"
#include "values/NumberText.h"

namespace {

using lum::detail::CNumberItems;
using lum::detail::ReplaceByFixed;

// What compound arithmetic takes from its source: zeros where it has no two (three) doubles.
CLumDouble2D PairOrZeros(const CLumType& source) {
  double first = 0.0;
  double second = 0.0;
  source.GetDouble2D(first, second);
  return {first, second};
}

CLumDouble3D TripleOrZeros(const CLumType& source) {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  source.GetDouble3D(x, y, z);
  return {x, y, z};
}

}  // namespace

// ---- CLumDouble2D

CLumDouble2D::~CLumDouble2D() = default;

bool CLumDouble2D::SetValueStr(CString text) {
  CNumberItems items(text);
  double first = 0.0;
  double second = 0.0;
  return items.Take(first) && items.Take(second) && SetDouble2D(first, second) != 0;
}

CLumType::LUM_TYPE CLumDouble2D::Type() const { return TYPE_DOUBLE2D; }

CLumDouble2D* CLumDouble2D::MakeCopy() const { return new CLumDouble2D(*this); }

int CLumDouble2D::GetValueStr(CString& text) const {
  ReplaceByFixed(text, {m_first, m_second});
  return 1;
}

int CLumDouble2D::GetDouble2D(double& first, double& second) const {
  first = m_first;
  second = m_second;
  return 1;
}

int CLumDouble2D::SetDouble2D(double first, double second) {
  m_first = first;
  m_second = second;
  return 1;
}

int CLumDouble2D::Neg(CLumType& value) {
  double first = 0.0;
  double second = 0.0;
  const int status = value.GetDouble2D(first, second);
  if (status == 0) {
    return status;
  }
  m_first = -first;
  m_second = -second;
  return 1;
}

CLumType& CLumDouble2D::operator=(const CLumType& source) {
  source.GetDouble2D(m_first, m_second);
  return *this;
}

CLumType& CLumDouble2D::operator+=(const CLumType& source) {
  return *this = *this + PairOrZeros(source);
}

CLumType& CLumDouble2D::operator-=(const CLumType& source) {
  return *this = *this - PairOrZeros(source);
}

CLumType& CLumDouble2D::operator*=(const CLumType& source) {
  return *this = *this * PairOrZeros(source);
}

CLumType& CLumDouble2D::operator/=(const CLumType& source) {
  return *this = *this / PairOrZeros(source);
}

CLumDouble2D CLumDouble2D::operator+(const CLumDouble2D& other) const {
  return {m_first + other.m_first, m_second + other.m_second};
}

CLumDouble2D CLumDouble2D::operator-(const CLumDouble2D& other) const {
  return {m_first - other.m_first, m_second - other.m_second};
}

CLumDouble2D CLumDouble2D::operator*(const CLumDouble2D& other) const {
  return {m_first * other.m_first, m_second * other.m_second};
}

CLumDouble2D CLumDouble2D::operator/(const CLumDouble2D& other) const {
  return {m_first / other.m_first, m_second / other.m_second};
}

// ---- CLumDouble3D

CLumDouble3D::~CLumDouble3D() = default;

bool CLumDouble3D::SetValueStr(CString text) {
  CNumberItems items(text);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  return items.Take(x) && items.Take(y) && items.Take(z) && SetDouble3D(x, y, z) != 0;
}

CLumType::LUM_TYPE CLumDouble3D::Type() const { return TYPE_DOUBLE3D; }

CLumDouble3D* CLumDouble3D::MakeCopy() const { return new CLumDouble3D(*this); }

int CLumDouble3D::GetValueStr(CString& text) const {
  ReplaceByFixed(text, {m_x, m_y, m_z});
  return 1;
}

int CLumDouble3D::Neg(CLumType& value) {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  const int status = value.GetDouble3D(x, y, z);
  if (status == 0) {
    return status;
  }
  m_x = -x;
  m_y = -y;
  m_z = -z;
  return 1;
}

CLumType& CLumDouble3D::operator=(const CLumType& source) {
  source.GetDouble3D(m_x, m_y, m_z);
  return *this;
}

CLumType& CLumDouble3D::operator+=(const CLumType& source) {
  return *this += TripleOrZeros(source);
}

CLumType& CLumDouble3D::operator-=(const CLumType& source) {
  return *this -= TripleOrZeros(source);
}

CLumType& CLumDouble3D::operator*=(const CLumType& source) {
  const CLumDouble3D other = TripleOrZeros(source);
  m_x *= other.m_x;
  m_y *= other.m_y;
  m_z *= other.m_z;
  return *this;
}

CLumType& CLumDouble3D::operator/=(const CLumType& source) {
  const CLumDouble3D other = TripleOrZeros(source);
  m_x /= other.m_x;
  m_y /= other.m_y;
  m_z /= other.m_z;
  return *this;
}

int CLumDouble3D::GetDouble3D(double& x, double& y, double& z) const {
  x = m_x;
  y = m_y;
  z = m_z;
  return 1;
}

int CLumDouble3D::SetDouble3D(double x, double y, double z) {
  m_x = x;
  m_y = y;
  m_z = z;
  return 1;
}

CLumDouble3D CLumDouble3D::operator+(const CLumDouble3D& other) const {
  return {m_x + other.m_x, m_y + other.m_y, m_z + other.m_z};
}

CLumDouble3D CLumDouble3D::operator-(const CLumDouble3D& other) const {
  return {m_x - other.m_x, m_y - other.m_y, m_z - other.m_z};
}

CLumDouble3D& CLumDouble3D::operator+=(const CLumDouble3D& other) { return *this = *this + other; }

CLumDouble3D& CLumDouble3D::operator-=(const CLumDouble3D& other) { return *this = *this - other; }
