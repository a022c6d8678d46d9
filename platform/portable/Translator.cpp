// Translator: two tables of texts by mnemonic, filled by hand or from a sectioned file.
#include "platform/Translator.h"

#include <map>
#include <utility>

#include "platform/FileObject.h"

namespace {

/// Ordered: whoever writes the file cannot choose mnemonics that make a look-up slow.
using TextMap = std::map<CString, CString>;

CString Find(const TextMap& texts, const CString& mnemonic) {
  const auto found = texts.find(mnemonic);
  return found == texts.end() ? CString() : found->second;
}

void AddSection(const FileObject& file, const CString& section, TextMap& texts) {
  FobjSection walk;
  CString mnemonic;
  CString text;
  for (bool found = file.GetFirstMapEntry(walk, section, mnemonic, text); found;
       found = file.GetNextMapEntry(walk, mnemonic, text)) {
    texts[mnemonic] = text;
  }
}

}  // namespace

struct Translator::Texts {
  TextMap names;
  TextMap controls;
  bool isForeign = false;

  static Translator instance;
};

Translator Translator::Texts::instance;

Translator::Translator() : m_texts(std::make_unique<Texts>()) {}
Translator::~Translator() = default;

Translator& Translator::Instance() { return Texts::instance; }

bool Translator::IsLanguageForeign() const noexcept { return m_texts->isForeign; }

void Translator::SetLanguageForeign(bool foreign) noexcept { m_texts->isForeign = foreign; }

CString Translator::GetAttribDefV2String(const CString& mnemonic) const {
  return Find(m_texts->names, mnemonic);
}

CString Translator::GetAttribDefV2CtrlString(const CString& mnemonic) const {
  return Find(m_texts->controls, mnemonic);
}

void Translator::SetString(const CString& mnemonic, const CString& text) {
  m_texts->names[mnemonic] = text;
}

void Translator::SetCtrlString(const CString& mnemonic, const CString& text) {
  m_texts->controls[mnemonic] = text;
}

bool Translator::Load(const CString& path) {
  FileObject file;
  if (!file.Load(path)) {
    return false;
  }
  Texts texts(*m_texts);
  AddSection(file, L"AttribDefV2", texts.names);
  AddSection(file, L"AttribDefV2Ctrl", texts.controls);
  *m_texts = std::move(texts);
  return true;
}

void Translator::Clear() { *m_texts = Texts(); }
