// The two name kinds of value: wide text and bytes. Both report TYPE_NAME.
#pragma once

#include "values/LumTypeBase.h"

namespace lum::detail {
class CHeldValue;
}

/// A wide text. Appending another value appends its wide name, if it has one.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumName : public CLumType {
 public:
  CLumName() = default;
  CLumName(const CString& name) : m_name(name) {}
  CLumName(const CLumName&) = default;
  CLumName(CLumName&&) = default;
  CLumName& operator=(const CLumName&) = default;
  CLumName& operator=(CLumName&&) = default;
  ~CLumName() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumName* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  CLumType& operator=(const CLumType& source) override;
  CLumType& operator+=(const CLumType& source) override;
  using CLumType::GetName;
  using CLumType::SetName;
  int GetName(CString& name) const override;
  int SetName(const CString& name) override;

  CLumName operator+(const CLumName& other) const { return CLumName(m_name + other.m_name); }

 private:
  friend class lum::detail::CHeldValue;

  CString m_name;
};

/// Bytes, for names exchanged with 8-bit interfaces; taken as UTF-8 where wide text is asked for.
/// It has no wide text form: only GetName and SetName convert.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumIoName : public CLumType {
 public:
  CLumIoName() = default;
  CLumIoName(const CStringA& name) : m_name(name) {}
  CLumIoName(const CLumIoName&) = default;
  CLumIoName(CLumIoName&&) = default;
  CLumIoName& operator=(const CLumIoName&) = default;
  CLumIoName& operator=(CLumIoName&&) = default;
  ~CLumIoName() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CStringA text) override;
  LUM_TYPE Type() const override;
  CLumIoName* MakeCopy() const override;
  int GetValueStr(CStringA& text) const override;
  CLumType& operator=(const CLumType& source) override;
  CLumType& operator+=(const CLumType& source) override;
  int GetName(CStringA& name) const override;
  int GetName(CString& name) const override;
  int SetName(const CStringA& name) override;
  int SetName(const CString& name) override;

  CLumIoName operator+(const CLumIoName& other) const { return CLumIoName(m_name + other.m_name); }

 private:
  friend class lum::detail::CHeldValue;

  CStringA m_name;
};
