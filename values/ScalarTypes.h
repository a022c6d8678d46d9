// The scalar kinds of value, one number each, and CLumUndefined, the value without content. The
// double kind stands in DoubleType.h.
#pragma once

#include "values/LumTypeBase.h"

namespace lum::detail {
class CHeldValue;
}

/// No value: every access is refused.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumUndefined : public CLumType {
 public:
  CLumUndefined() = default;
  CLumUndefined(const CLumUndefined&) = default;
  CLumUndefined& operator=(const CLumUndefined&) = default;
  ~CLumUndefined() override;

  using CLumType::operator=;
  LUM_TYPE Type() const override;
  CLumUndefined* MakeCopy() const override;
};

/// A truth value; its text is "1" or "0".
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumBool : public CLumType {
 public:
  CLumBool(bool value) noexcept : m_value(value) {}
  CLumBool(const CLumBool&) = default;
  CLumBool& operator=(const CLumBool&) = default;
  ~CLumBool() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumBool* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetBool(bool& value) const override;
  int SetBool(bool value) override;
  CLumType& operator=(const CLumType& source) override;

 private:
  friend class lum::detail::CHeldValue;

  bool m_value;
};

/// A signed 32-bit number; its text is decimal ("%d").
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumInt : public CLumType {
 public:
  CLumInt(int value) noexcept : m_value(value) {}
  CLumInt(const CLumInt&) = default;
  CLumInt& operator=(const CLumInt&) = default;
  ~CLumInt() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumInt* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetInt(int& value) const override;
  int SetInt(int value) override;
  CLumType& operator=(const CLumType& source) override;

 private:
  friend class lum::detail::CHeldValue;

  int m_value;
};

/// An unsigned 32-bit number; its text is decimal ("%u").
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumUInt : public CLumType {
 public:
  CLumUInt(unsigned int value) noexcept : m_value(value) {}
  CLumUInt(const CLumUInt&) = default;
  CLumUInt& operator=(const CLumUInt&) = default;
  ~CLumUInt() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumUInt* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetUInt(unsigned int& value) const override;
  int SetUInt(unsigned int value) override;
  CLumType& operator=(const CLumType& source) override;

 private:
  friend class lum::detail::CHeldValue;

  unsigned int m_value;
};

/// An unsigned 64-bit number; its text is decimal. Reading takes the number a text begins with,
/// as the C runtime's scan of an unsigned 64-bit number does: what follows it is ignored.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumULongLong : public CLumType {
 public:
  CLumULongLong(std::uint64_t value) noexcept : m_value(value) {}
  CLumULongLong(const CLumULongLong&) = default;
  CLumULongLong& operator=(const CLumULongLong&) = default;
  ~CLumULongLong() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumULongLong* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetULongLong(std::uint64_t& value) const override;
  int SetULongLong(std::uint64_t value) override;
  CLumType& operator=(const CLumType& source) override;

 private:
  friend class lum::detail::CHeldValue;

  std::uint64_t m_value;
};

/// A float (IEEE 754 binary32); its text has six digits after the point ("%f").
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumFloat : public CLumType {
 public:
  CLumFloat(float value) noexcept : m_value(value) {}
  CLumFloat(const CLumFloat&) = default;
  CLumFloat& operator=(const CLumFloat&) = default;
  ~CLumFloat() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumFloat* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetFloat(float& value) const override;
  int SetFloat(float value) override;
  CLumType& operator=(const CLumType& source) override;

 private:
  friend class lum::detail::CHeldValue;

  float m_value;
};
