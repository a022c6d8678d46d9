// One attribute definition: copying, and taking over the items of a definition line.
#include "definitions/AttribDefRec.h"

#include <utility>

namespace {

std::unique_ptr<CLumType> Clone(const CLumType* value) {
  return std::unique_ptr<CLumType>(value == nullptr ? nullptr : value->MakeCopy());
}

}  // namespace

CAttribDefRec::CAttribDefRec() = default;

CAttribDefRec::CAttribDefRec(CAttribDefRec const& other)
    : m_mnemonic(other.m_mnemonic),
      m_id(other.m_id),
      m_name(other.m_name),
      m_type(other.m_type),
      m_controlType(other.m_controlType),
      m_bitmapFile(other.m_bitmapFile),
      m_defaultValue(Clone(other.m_defaultValue.get())),
      m_ctlAttribs(other.m_ctlAttribs) {}

CAttribDefRec& CAttribDefRec::operator=(CAttribDefRec const& other) {
  if (this != &other) {
    // The only step that may run out of memory comes first: the record is then still whole.
    std::unique_ptr<CLumType> defaultValue = Clone(other.m_defaultValue.get());
    m_mnemonic = other.m_mnemonic;
    m_id = other.m_id;
    m_name = other.m_name;
    m_type = other.m_type;
    m_controlType = other.m_controlType;
    m_bitmapFile = other.m_bitmapFile;
    m_defaultValue = std::move(defaultValue);
    m_ctlAttribs = other.m_ctlAttribs;
  }
  return *this;
}

CAttribDefRec::~CAttribDefRec() = default;

CAttribDefRec* CAttribDefRec::MakeCopy() const { return new CAttribDefRec(*this); }

void CAttribDefRec::LoadRec(CString mnemonic, unsigned short id, CString name, unsigned int type,
                            unsigned int controlType, CString bitmapFile, CLumType* defaultValue) {
  // Copied before the current value goes: the caller may hand in that very value.
  std::unique_ptr<CLumType> copy = Clone(defaultValue);
  m_mnemonic = std::move(mnemonic);
  m_id = id;
  m_name = std::move(name);
  m_type = type;
  m_controlType = controlType;
  m_bitmapFile = std::move(bitmapFile);
  m_defaultValue = std::move(copy);
}
