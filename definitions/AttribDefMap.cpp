// The queries over the loaded definitions, the registry of list-filling functions, and copying.
// The loader stands in AttribDefFile.cpp.
#include "definitions/AttribDefMap.h"

#include <utility>

#include "catalogue/AttributeNames.h"
#include "definitions/DefinitionIndex.h"
#include "values/SharedObject.h"

namespace {

constinit lum::detail::CSharedObject<CAttribDefMap> g_table;

Translator& Translations() { return Translator::Instance(); }

bool LanguageIsForeign() { return Translations().IsLanguageForeign(); }

CString TranslatedName(const CString& mnemonic) {
  return LanguageIsForeign() ? Translations().GetAttribDefV2String(mnemonic) : CString();
}

CString TranslatedCtlAttribs(const CString& mnemonic) {
  return LanguageIsForeign() ? Translations().GetAttribDefV2CtrlString(mnemonic) : CString();
}

CAttribDefRec* RecordAt(const lum::detail::DefinitionRecords& records, int place) {
  return place == lum::detail::kNoRecord ? nullptr : records[static_cast<std::size_t>(place)].get();
}

template <typename Field, typename Out>
bool ReadField(const CAttribDefRec* record, Field field, Out& out) {
  if (record == nullptr) {
    return false;
  }
  out = static_cast<Out>((record->*field)());
  return true;
}

/// The text of a control-attribute line with the blanks around its items removed.
CString Normalise(const CString& ctlAttribs) {
  return CLumString(ctlAttribs, L',', true, false).String();
}

}  // namespace

CAttribDefMap::CAttribDefMap() : m_index(std::make_unique<Index>()) {}

CAttribDefMap::CAttribDefMap(const CAttribDefMap& other)
    : m_records(other.m_records),
      m_index(std::make_unique<Index>(*other.m_index)),
      m_ctlAttribs(other.m_ctlAttribs),
      m_initialised(other.m_initialised),
      m_functionLists(other.m_functionLists) {}

CAttribDefMap& CAttribDefMap::operator=(const CAttribDefMap& other) {
  if (this == &other) {
    return *this;
  }
  CAttribDefMap copy(other);
  // Nothing is lost when both hold the same records already, so assigning again keeps nothing more.
  if (m_records != other.m_records) {
    Retire();
  }
  m_records.swap(copy.m_records);
  m_index.swap(copy.m_index);
  m_ctlAttribs.swap(copy.m_ctlAttribs);
  m_initialised = copy.m_initialised;
  m_functionLists.swap(copy.m_functionLists);
  return *this;
}

CAttribDefMap::~CAttribDefMap() = default;

CAttribDefMap& CAttribDefMap::GetAttribDefMap() { return g_table.Get(); }

int CAttribDefMap::Count() const noexcept { return NextIndex(); }

CAttribDefRec const& CAttribDefMap::operator[](int index) const {
  return *m_records[static_cast<std::size_t>(index)];
}

CAttribDefRec* CAttribDefMap::Lookup(const CString& mnemonic) const {
  return RecordAt(m_records, m_index->mnemonics.Find(m_records, lum::detail::View(mnemonic)));
}

CAttribDefRec* CAttribDefMap::Lookup(unsigned short id) const {
  return RecordAt(m_records, m_index->identifiers.Find(id));
}

bool CAttribDefMap::GetAttribName(CString mnemonic, CString& name) const {
  CString translated = TranslatedName(mnemonic);
  if (!translated.IsEmpty()) {
    name = std::move(translated);
    return true;
  }
  return ReadField(Lookup(mnemonic), &CAttribDefRec::Name, name);
}

bool CAttribDefMap::GetAttribName(unsigned short id, CString& name) const {
  const CAttribDefRec* record = Lookup(id);
  if (record == nullptr) {
    return false;
  }
  CString translated = TranslatedName(record->Mnemonic());
  name = translated.IsEmpty() ? record->Name() : translated;
  return true;
}

bool CAttribDefMap::GetAttribType(CString mnemonic, CLumType::LUM_TYPE& type) const {
  type = CLumType::TYPE_UNDEFINED;
  // The ordering pseudo-attribute of attribute trees is always known and has no value type.
  if (mnemonic == ATTRIB_ORDERINFO) {
    return true;
  }
  return ReadField(Lookup(mnemonic), &CAttribDefRec::Type, type);
}

bool CAttribDefMap::GetAttribType(unsigned short id, CLumType::LUM_TYPE& type) const {
  return ReadField(Lookup(id), &CAttribDefRec::Type, type);
}

bool CAttribDefMap::GetAttribControlType(CString mnemonic, int& controlType) const {
  return ReadField(Lookup(mnemonic), &CAttribDefRec::ControlType, controlType);
}

bool CAttribDefMap::GetAttribControlType(unsigned short id, int& controlType) const {
  return ReadField(Lookup(id), &CAttribDefRec::ControlType, controlType);
}

bool CAttribDefMap::GetAttribID(CString mnemonic, unsigned short& id) const {
  return ReadField(Lookup(mnemonic), &CAttribDefRec::Id, id);
}

bool CAttribDefMap::GetAttribMnemo(unsigned short id, CString& mnemonic) const {
  return ReadField(Lookup(id), &CAttribDefRec::Mnemonic, mnemonic);
}

bool CAttribDefMap::GetBitmapFilename(CString const& mnemonic, CString& fileName) const {
  return ReadField(Lookup(mnemonic), &CAttribDefRec::BitmapFile, fileName);
}

bool CAttribDefMap::GetCtlAttribs(CString mnemonic, CString& text) const {
  CString translated = TranslatedCtlAttribs(mnemonic);
  if (!translated.IsEmpty()) {
    text = std::move(translated);
    return true;
  }
  const auto found = m_ctlAttribs.find(mnemonic);
  text = found == m_ctlAttribs.end() ? CString() : Normalise(found->second);
  return found != m_ctlAttribs.end();
}

CAttribDefRec* CAttribDefMap::GetAttribDefRec(CString mnemonic) { return Lookup(mnemonic); }

CAttribDefRec* CAttribDefMap::GetAttribDefRec(unsigned short id) { return Lookup(id); }

bool CAttribDefMap::FillList(CString const& listName, CStringArray& list) {
  const auto found = m_functionLists.find(listName);
  if (found == m_functionLists.end() || found->second == nullptr) {
    return false;
  }
  found->second(list);
  return true;
}

bool CAttribDefMap::RegisterFunctionListItem(CString const& listName, FillFunction fill) {
  m_functionLists[listName] = fill;
  return true;
}

bool CAttribDefMap::RemoveFunctionListItem(CString const& listName) {
  return m_functionLists.erase(listName) != 0;
}
