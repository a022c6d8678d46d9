// The attribute record: ownership of the value, and the flag word.
#include "attributes/AttributeRec.h"

#include <memory>
#include <utility>

CAttributeRec::CAttributeRec(const CString& name, const CLumType& value, unsigned int flags)
    : m_mnemonic(name), m_value(value.MakeCopy()), m_flags(flags) {}

CAttributeRec::CAttributeRec(const CString& name, CLumType* value, unsigned int flags)
    : m_mnemonic(name), m_value(value), m_flags(flags) {}

CAttributeRec::CAttributeRec(const CAttributeRec& other)
    : m_mnemonic(other.m_mnemonic), m_value(other.CopyValue()), m_flags(other.m_flags) {}

CAttributeRec::CAttributeRec(CAttributeRec&& other) noexcept
    : m_mnemonic(other.m_mnemonic),  // NOLINT(performance-move-constructor-init): it stays there.
      m_value(std::exchange(other.m_value, nullptr)),
      m_flags(other.m_flags) {}

CAttributeRec& CAttributeRec::operator=(const CAttributeRec& other) {
  if (this != &other) {
    std::unique_ptr<CLumType> copy(other.CopyValue());
    m_mnemonic = other.m_mnemonic;
    m_flags = other.m_flags;
    AdoptValue(copy.release());
  }
  return *this;
}

CAttributeRec& CAttributeRec::operator=(CAttributeRec&& other) noexcept {
  if (this != &other) {
    m_mnemonic = other.m_mnemonic;
    m_flags = other.m_flags;
    AdoptValue(std::exchange(other.m_value, nullptr));
  }
  return *this;
}

CAttributeRec::~CAttributeRec() { delete m_value; }

void CAttributeRec::SetValue(const CLumType& value) {
  if (&value != m_value) {
    AdoptValue(value.MakeCopy());
  }
}

void CAttributeRec::SetFlag(FLAGS flag, bool on) noexcept {
  m_flags = on ? (m_flags | flag) : (m_flags & ~static_cast<unsigned int>(flag));
}

CLumType* CAttributeRec::CopyValue() const {
  return m_value != nullptr ? m_value->MakeCopy() : new CLumUndefined;
}

void CAttributeRec::AdoptValue(CLumType* value) noexcept {
  delete m_value;
  m_value = value;
}
