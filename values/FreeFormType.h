// CLumAnything: the free-form value, a text that converts on demand.
#pragma once

#include "values/LumTypeBase.h"

namespace lum::detail {
class CHeldValue;
}

/// Holds a text and answers every typed getter by reading it, every typed setter by writing the
/// value's text form. Int, unsigned, 64-bit, bool and double are read as the C runtime's formatted
/// scan reads them in its "C" locale (leading white space skipped, what follows the number ignored,
/// overflow wrapped as there); float, vectors, lists and records as their own kinds read texts. A
/// getter that fails returns 0 and leaves its outputs as they were.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumAnything : public CLumType {
 public:
  CLumAnything() = default;
  CLumAnything(const CString& text) : m_text(text) {}
  CLumAnything(const wchar_t* text) : m_text(text) {}
  CLumAnything(const CLumAnything&) = default;
  CLumAnything(CLumAnything&&) = default;
  CLumAnything& operator=(const CLumAnything&) = default;
  CLumAnything& operator=(CLumAnything&&) = default;
  ~CLumAnything() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumAnything* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  int GetInt(int& value) const override;
  int SetInt(int value) override;
  int GetUInt(unsigned int& value) const override;
  int SetUInt(unsigned int value) override;
  int GetULongLong(std::uint64_t& value) const override;
  int SetULongLong(std::uint64_t value) override;
  int GetBool(bool& value) const override;
  int SetBool(bool value) override;
  int GetFloat(float& value) const override;
  int SetFloat(float value) override;
  int GetDouble(double& value) const override;
  int SetDouble(double value) override;
  int GetDouble2D(double& first, double& second) const override;
  int SetDouble2D(double first, double second) override;
  /// Takes over the source's text form; a source without one leaves the text unchanged.
  CLumType& operator=(const CLumType& source) override;
  int GetDataInfo(CDataInfo& value) const override;
  int SetDataInfo(const CDataInfo& value) override;
  int GetCompOffset(CCompOffset& value) const override;
  int SetCompOffset(const CCompOffset& value) override;
  /// The text as UTF-8.
  int GetName(CStringA& name) const override;
  int GetName(CString& name) const override;
  using CLumType::SetName;
  int SetName(const CString& name) override;
  int GetDouble3D(double& x, double& y, double& z) const override;
  int SetDouble3D(double x, double y, double z) override;
  int GetIntArray(std::vector<int>& values) const override;
  int SetIntArray(const std::vector<int>& values) override;
  int GetDoubleArray(std::vector<double>& values) const override;
  int SetDoubleArray(const std::vector<double>& values) override;
  int GetNameArray(std::vector<CString>& names) const override;
  int SetNameArray(const std::vector<CString>& names) override;

 private:
  friend class lum::detail::CHeldValue;

  CString m_text;
};
