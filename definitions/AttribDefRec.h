// CAttribDefRec: one attribute definition, as a line of a definition file gives it.
#pragma once

#include <memory>

#include "values/LumType.h"

/// A definition: mnemonic, identifier, display name, value type, editor control, bitmap and default
/// value, with the control-attribute text of its "@" line. Records belong to a CAttribDefMap;
/// callers never free them. Copies are deep.
///
/// Threads: a record may be read in several threads while none changes it; tables that were copied
/// from each other share their records.
class LUM_ATTRIBUTES_API CAttribDefRec {
 public:
  /// All texts empty, all numbers 0, no default value.
  CAttribDefRec();
  CAttribDefRec(CAttribDefRec const& other);
  CAttribDefRec& operator=(CAttribDefRec const& other);
  virtual ~CAttribDefRec();
  /// A new copy, owned by the caller.
  virtual CAttribDefRec* MakeCopy() const;

  /// Sets everything but the control-attribute text. The record stores a copy of `defaultValue`,
  /// which stays the caller's; null means no default value.
  void LoadRec(CString mnemonic, unsigned short id, CString name, unsigned int type,
               unsigned int controlType, CString bitmapFile, CLumType* defaultValue);

  const CString& Mnemonic() const noexcept { return m_mnemonic; }
  unsigned short Id() const noexcept { return m_id; }
  /// The display name.
  const CString& Name() const noexcept { return m_name; }
  /// A CLumType::LUM_TYPE code, or whatever the file says.
  unsigned int Type() const noexcept { return m_type; }
  unsigned int ControlType() const noexcept { return m_controlType; }
  const CString& BitmapFile() const noexcept { return m_bitmapFile; }
  /// Owned by the record and valid until it is loaded, assigned or destroyed; null when the type
  /// code makes no value.
  const CLumType* DefaultValue() const noexcept { return m_defaultValue.get(); }

  void GetCtlAttribs(CString& out) const { out = m_ctlAttribs; }
  void SetCtlAttribs(CString const& text) { m_ctlAttribs = text; }

 private:
  friend class CAttribDefMap;  // Hands a default value over instead of having it copied.

  CString m_mnemonic;
  unsigned short m_id = 0;
  CString m_name;
  unsigned int m_type = 0;
  unsigned int m_controlType = 0;
  CString m_bitmapFile;
  std::unique_ptr<CLumType> m_defaultValue;
  CString m_ctlAttribs;
};
