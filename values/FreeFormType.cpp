// CLumAnything writes every value through the kind it belongs to, and reads plain numbers by a
// scan, everything else through its kind.
#include "values/FreeFormType.h"

#include "platform/TextEncoding.h"
#include "values/ArrayTypes.h"
#include "values/DoubleType.h"
#include "values/NumberScan.h"
#include "values/RecordTypes.h"
#include "values/ScalarTypes.h"
#include "values/TextView.h"
#include "values/VectorTypes.h"

using lum::detail::View;

CLumAnything::~CLumAnything() = default;

CLumType::LUM_TYPE CLumAnything::Type() const { return TYPE_ANYTHING; }

CLumAnything* CLumAnything::MakeCopy() const { return new CLumAnything(*this); }

bool CLumAnything::SetValueStr(CString text) {
  m_text = text;
  return true;
}

int CLumAnything::GetValueStr(CString& text) const {
  text = m_text;
  return 1;
}

CLumType& CLumAnything::operator=(const CLumType& source) {
  source.GetValueStr(m_text);
  return *this;
}

// ---- Plain numbers

int CLumAnything::GetInt(int& value) const {
  return lum::detail::ScanInt(View(m_text), value) ? 1 : 0;
}

int CLumAnything::SetInt(int value) { return CLumInt(value).GetValueStr(m_text); }

int CLumAnything::GetUInt(unsigned int& value) const {
  return lum::detail::ScanUInt(View(m_text), value) ? 1 : 0;
}

int CLumAnything::SetUInt(unsigned int value) { return CLumUInt(value).GetValueStr(m_text); }

int CLumAnything::GetULongLong(std::uint64_t& value) const {
  return lum::detail::ScanULongLong(View(m_text), value) ? 1 : 0;
}

int CLumAnything::SetULongLong(std::uint64_t value) {
  return CLumULongLong(value).GetValueStr(m_text);
}

int CLumAnything::GetBool(bool& value) const {
  int number = 0;
  if (!lum::detail::ScanInt(View(m_text), number)) {
    return 0;
  }
  value = number != 0;
  return 1;
}

int CLumAnything::SetBool(bool value) { return CLumBool(value).GetValueStr(m_text); }

int CLumAnything::GetFloat(float& value) const {
  CLumFloat number(0.0F);
  return number.SetValueStr(m_text) ? number.GetFloat(value) : 0;
}

int CLumAnything::SetFloat(float value) { return CLumFloat(value).GetValueStr(m_text); }

int CLumAnything::GetDouble(double& value) const {
  return lum::detail::ScanDouble(View(m_text), value) ? 1 : 0;
}

int CLumAnything::SetDouble(double value) { return CLumDouble(value).GetValueStr(m_text); }

// ---- Vectors

int CLumAnything::GetDouble2D(double& first, double& second) const {
  CLumDouble2D pair(first, second);
  return pair.SetValueStr(m_text) ? pair.GetDouble2D(first, second) : 0;
}

int CLumAnything::SetDouble2D(double first, double second) {
  return CLumDouble2D(first, second).GetValueStr(m_text);
}

int CLumAnything::GetDouble3D(double& x, double& y, double& z) const {
  CLumDouble3D triple;
  return triple.SetValueStr(m_text) ? triple.GetDouble3D(x, y, z) : 0;
}

int CLumAnything::SetDouble3D(double x, double y, double z) {
  return CLumDouble3D(x, y, z).GetValueStr(m_text);
}

// ---- Records

int CLumAnything::GetDataInfo(CDataInfo& value) const {
  CLumDataInfo info;
  return info.SetValueStr(m_text) ? info.GetDataInfo(value) : 0;
}

int CLumAnything::SetDataInfo(const CDataInfo& value) {
  return CLumDataInfo(value).GetValueStr(m_text);
}

int CLumAnything::GetCompOffset(CCompOffset& value) const {
  CLumCompOffset offset;
  return offset.SetValueStr(m_text) ? offset.GetCompOffset(value) : 0;
}

int CLumAnything::SetCompOffset(const CCompOffset& value) {
  return CLumCompOffset(value).GetValueStr(m_text);
}

// ---- Names

int CLumAnything::GetName(CStringA& name) const {
  name = WideToUtf8(m_text);
  return 1;
}

int CLumAnything::GetName(CString& name) const {
  name = m_text;
  return 1;
}

int CLumAnything::SetName(const CString& name) {
  m_text = name;
  return 1;
}

// ---- Lists

int CLumAnything::GetIntArray(std::vector<int>& values) const {
  CLumIntArray list;
  return list.SetValueStr(m_text) ? list.GetIntArray(values) : 0;
}

int CLumAnything::SetIntArray(const std::vector<int>& values) {
  return CLumIntArray(values).GetValueStr(m_text);
}

int CLumAnything::GetDoubleArray(std::vector<double>& values) const {
  CLumDoubleArray list;
  return list.SetValueStr(m_text) ? list.GetDoubleArray(values) : 0;
}

int CLumAnything::SetDoubleArray(const std::vector<double>& values) {
  return CLumDoubleArray(values).GetValueStr(m_text);
}

int CLumAnything::GetNameArray(std::vector<CString>& names) const {
  CLumNameArray list;
  return list.SetValueStr(m_text) ? list.GetNameArray(names) : 0;
}

int CLumAnything::SetNameArray(const std::vector<CString>& names) {
  return CLumNameArray(names).GetValueStr(m_text);
}
