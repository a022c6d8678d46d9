// The two name kinds. Bytes turn into wide text and back as UTF-8, in CLumIoName alone.
#include "values/NameTypes.h"

#include "platform/TextEncoding.h"

// ---- CLumName

CLumName::~CLumName() = default;

bool CLumName::SetValueStr(CString text) {
  m_name = text;
  return true;
}

CLumType::LUM_TYPE CLumName::Type() const { return TYPE_NAME; }

CLumName* CLumName::MakeCopy() const { return new CLumName(*this); }

int CLumName::GetValueStr(CString& text) const {
  text = m_name;
  return 1;
}

CLumType& CLumName::operator=(const CLumType& source) {
  source.GetName(m_name);
  return *this;
}

CLumType& CLumName::operator+=(const CLumType& source) {
  CString appended;
  source.GetName(appended);
  m_name += appended;
  return *this;
}

int CLumName::GetName(CString& name) const {
  name = m_name;
  return 1;
}

int CLumName::SetName(const CString& name) {
  m_name = name;
  return 1;
}

// ---- CLumIoName

CLumIoName::~CLumIoName() = default;

bool CLumIoName::SetValueStr(CStringA text) {
  m_name = text;
  return true;
}

CLumType::LUM_TYPE CLumIoName::Type() const { return TYPE_NAME; }

CLumIoName* CLumIoName::MakeCopy() const { return new CLumIoName(*this); }

int CLumIoName::GetValueStr(CStringA& text) const {
  text = m_name;
  return 1;
}

CLumType& CLumIoName::operator=(const CLumType& source) {
  source.GetName(m_name);
  return *this;
}

CLumType& CLumIoName::operator+=(const CLumType& source) {
  CStringA appended;
  source.GetName(appended);
  m_name += appended;
  return *this;
}

int CLumIoName::GetName(CStringA& name) const {
  name = m_name;
  return 1;
}

int CLumIoName::GetName(CString& name) const {
  name = Utf8ToWide(m_name);
  return 1;
}

int CLumIoName::SetName(const CStringA& name) {
  m_name = name;
  return 1;
}

int CLumIoName::SetName(const CString& name) {
  m_name = WideToUtf8(name);
  return 1;
}
