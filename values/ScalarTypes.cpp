// The scalar kinds differ in their field and its text form alone.
#include "values/ScalarTypes.h"

#include "values/NumberItems.h"
#include "values/NumberScan.h"
#include "values/NumberText.h"
#include "values/TextView.h"

namespace {

using lum::detail::ReplaceByDecimal;
using lum::detail::ReplaceByFixed;

// Reads the first of comma-separated items; the items after it do not count.
template <typename T>
bool ReadFirstItem(const CString& text, T& value) {
  return lum::detail::CNumberItems(text).Take(value);
}

}  // namespace

// ---- CLumUndefined

CLumUndefined::~CLumUndefined() = default;

CLumType::LUM_TYPE CLumUndefined::Type() const { return TYPE_UNDEFINED; }

CLumUndefined* CLumUndefined::MakeCopy() const { return new CLumUndefined(*this); }

// ---- CLumBool

CLumBool::~CLumBool() = default;

bool CLumBool::SetValueStr(CString text) {
  bool value = false;
  return ReadFirstItem(text, value) && SetBool(value) != 0;
}

CLumType::LUM_TYPE CLumBool::Type() const { return TYPE_BOOL; }

CLumBool* CLumBool::MakeCopy() const { return new CLumBool(*this); }

int CLumBool::GetValueStr(CString& text) const {
  ReplaceByDecimal(text, m_value ? 1 : 0);
  return 1;
}

int CLumBool::GetBool(bool& value) const {
  value = m_value;
  return 1;
}

int CLumBool::SetBool(bool value) {
  m_value = value;
  return 1;
}

CLumType& CLumBool::operator=(const CLumType& source) {
  source.GetBool(m_value);
  return *this;
}

// ---- CLumInt

CLumInt::~CLumInt() = default;

bool CLumInt::SetValueStr(CString text) {
  int value = 0;
  return ReadFirstItem(text, value) && SetInt(value) != 0;
}

CLumType::LUM_TYPE CLumInt::Type() const { return TYPE_INT; }

CLumInt* CLumInt::MakeCopy() const { return new CLumInt(*this); }

int CLumInt::GetValueStr(CString& text) const {
  ReplaceByDecimal(text, m_value);
  return 1;
}

int CLumInt::GetInt(int& value) const {
  value = m_value;
  return 1;
}

int CLumInt::SetInt(int value) {
  m_value = value;
  return 1;
}

CLumType& CLumInt::operator=(const CLumType& source) {
  source.GetInt(m_value);
  return *this;
}

// ---- CLumUInt

CLumUInt::~CLumUInt() = default;

bool CLumUInt::SetValueStr(CString text) {
  unsigned int value = 0;
  return ReadFirstItem(text, value) && SetUInt(value) != 0;
}

CLumType::LUM_TYPE CLumUInt::Type() const { return TYPE_UINT; }

CLumUInt* CLumUInt::MakeCopy() const { return new CLumUInt(*this); }

int CLumUInt::GetValueStr(CString& text) const {
  ReplaceByDecimal(text, m_value);
  return 1;
}

int CLumUInt::GetUInt(unsigned int& value) const {
  value = m_value;
  return 1;
}

int CLumUInt::SetUInt(unsigned int value) {
  m_value = value;
  return 1;
}

CLumType& CLumUInt::operator=(const CLumType& source) {
  source.GetUInt(m_value);
  return *this;
}

// ---- CLumULongLong

CLumULongLong::~CLumULongLong() = default;

bool CLumULongLong::SetValueStr(CString text) {
  return lum::detail::ScanULongLong(lum::detail::View(text), m_value);
}

CLumType::LUM_TYPE CLumULongLong::Type() const { return TYPE_ULONGLONG; }

CLumULongLong* CLumULongLong::MakeCopy() const { return new CLumULongLong(*this); }

int CLumULongLong::GetValueStr(CString& text) const {
  ReplaceByDecimal(text, m_value);
  return 1;
}

int CLumULongLong::GetULongLong(std::uint64_t& value) const {
  value = m_value;
  return 1;
}

int CLumULongLong::SetULongLong(std::uint64_t value) {
  m_value = value;
  return 1;
}

CLumType& CLumULongLong::operator=(const CLumType& source) {
  source.GetULongLong(m_value);
  return *this;
}

// ---- CLumFloat

CLumFloat::~CLumFloat() = default;

bool CLumFloat::SetValueStr(CString text) {
  float value = 0.0F;
  return ReadFirstItem(text, value) && SetFloat(value) != 0;
}

CLumType::LUM_TYPE CLumFloat::Type() const { return TYPE_FLOAT; }

CLumFloat* CLumFloat::MakeCopy() const { return new CLumFloat(*this); }

int CLumFloat::GetValueStr(CString& text) const {
  ReplaceByFixed(text, static_cast<double>(m_value));
  return 1;
}

int CLumFloat::GetFloat(float& value) const {
  value = m_value;
  return 1;
}

int CLumFloat::SetFloat(float value) {
  m_value = value;
  return 1;
}

CLumType& CLumFloat::operator=(const CLumType& source) {
  source.GetFloat(m_value);
  return *this;
}
