// The attribute record: ownership of the value, and the flag word.
#include "attributes/AttributeRec.h"

#include <memory>
#include <utility>

#include "attributes/NodeAccess.h"

CAttributeRec::CAttributeRec(const CString& name, const CLumType& value, unsigned int flags)
    : m_mnemonic(name), m_value(value.MakeCopy()), m_flags(flags) {}

CAttributeRec::CAttributeRec(const CAttributeRec& other)
    : m_mnemonic(other.m_mnemonic), m_value(other.CopyValue()), m_flags(other.m_flags) {}

CAttributeRec::CAttributeRec(CAttributeRec&& other) noexcept
    : m_mnemonic(other.m_mnemonic),  // NOLINT(performance-move-constructor-init): it stays there.
      m_value(std::move(other.m_value)),
      m_flags(other.m_flags) {}

CAttributeRec& CAttributeRec::operator=(const CAttributeRec& other) {
  if (this != &other) {
    std::unique_ptr<CLumType> copy(other.CopyValue());
    SetMnemonic(other.m_mnemonic);
    m_flags = other.m_flags;
    m_value.Adopt(copy.release());
  }
  return *this;
}

CAttributeRec& CAttributeRec::operator=(CAttributeRec&& other) noexcept {
  if (this != &other) {
    SetMnemonic(other.m_mnemonic);
    m_flags = other.m_flags;
    m_value.TakeFrom(other.m_value);
  }
  return *this;
}

CAttributeRec::~CAttributeRec() = default;

void CAttributeRec::SetMnemonic(const CString& name) {
  if (m_isChild) {
    lum::detail::NodeAccess::RenameChild(static_cast<CAttributeMap&>(*this), name);
  } else {
    m_mnemonic = name;
  }
}

void CAttributeRec::SetValue(const CLumType& value) {
  if (&value != m_value.Get()) {
    m_value.Adopt(value.MakeCopy());
  }
}

void CAttributeRec::SetFlag(FLAGS flag, bool on) noexcept {
  m_flags = on ? (m_flags | flag) : (m_flags & ~static_cast<unsigned int>(flag));
}

CLumType* CAttributeRec::CopyValue() const {
  const CLumType* value = m_value.Get();
  return value != nullptr ? value->MakeCopy() : new CLumUndefined;
}
