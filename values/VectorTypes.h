// The vector kinds of value: two and three doubles.
#pragma once

#include "values/LumTypeBase.h"

/// Two doubles; the text is "%f,%f".
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumDouble2D : public CLumType {
 public:
  CLumDouble2D() = default;
  CLumDouble2D(double first, double second) noexcept : m_first(first), m_second(second) {}
  CLumDouble2D(const CLumDouble2D&) = default;
  CLumDouble2D(CLumDouble2D&&) = default;
  CLumDouble2D& operator=(const CLumDouble2D&) = default;
  CLumDouble2D& operator=(CLumDouble2D&&) = default;
  ~CLumDouble2D() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumDouble2D* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetDouble2D(double& first, double& second) const override;
  int SetDouble2D(double first, double second) override;
  /// Stores the negated components of `value`; 0, with nothing changed, when it has no two doubles.
  int Neg(CLumType& value) override;
  CLumType& operator=(const CLumType& source) override;
  CLumType& operator+=(const CLumType& source) override;
  CLumType& operator-=(const CLumType& source) override;
  CLumType& operator*=(const CLumType& source) override;
  CLumType& operator/=(const CLumType& source) override;

  CLumDouble2D operator+(const CLumDouble2D& other) const;
  CLumDouble2D operator-(const CLumDouble2D& other) const;
  CLumDouble2D operator*(const CLumDouble2D& other) const;
  CLumDouble2D operator/(const CLumDouble2D& other) const;

 private:
  double m_first = 0.0;
  double m_second = 0.0;
};

/// Three doubles, also a point in space; the text is "%f,%f,%f".
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumDouble3D : public CLumType {
 public:
  CLumDouble3D() = default;
  CLumDouble3D(double x, double y, double z) noexcept : m_x(x), m_y(y), m_z(z) {}
  CLumDouble3D(const Point& point) noexcept : m_x(point.x), m_y(point.y), m_z(point.z) {}
  CLumDouble3D(const CLumDouble3D&) = default;
  CLumDouble3D(CLumDouble3D&&) = default;
  CLumDouble3D& operator=(const CLumDouble3D&) = default;
  CLumDouble3D& operator=(CLumDouble3D&&) = default;
  ~CLumDouble3D() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumDouble3D* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  /// Stores the negated components of `value`; 0, with nothing changed, when it has no three.
  int Neg(CLumType& value) override;
  CLumType& operator=(const CLumType& source) override;
  CLumType& operator+=(const CLumType& source) override;
  CLumType& operator-=(const CLumType& source) override;
  CLumType& operator*=(const CLumType& source) override;
  CLumType& operator/=(const CLumType& source) override;
  int GetDouble3D(double& x, double& y, double& z) const override;
  int SetDouble3D(double x, double y, double z) override;

  CLumDouble3D operator+(const CLumDouble3D& other) const;
  CLumDouble3D operator-(const CLumDouble3D& other) const;
  CLumDouble3D& operator+=(const CLumDouble3D& other);
  CLumDouble3D& operator-=(const CLumDouble3D& other);

  double X() const noexcept { return m_x; }
  double Y() const noexcept { return m_y; }
  double Z() const noexcept { return m_z; }
  void X(double x) noexcept { m_x = x; }
  void Y(double y) noexcept { m_y = y; }
  void Z(double z) noexcept { m_z = z; }
  Point GetAsPoint() const noexcept { return {m_x, m_y, m_z}; }
  using CLumType::Set;
  void Set(Point& point) noexcept {
    m_x = point.x;
    m_y = point.y;
    m_z = point.z;
  }

 private:
  double m_x = 0.0;
  double m_y = 0.0;
  double m_z = 0.0;
};
