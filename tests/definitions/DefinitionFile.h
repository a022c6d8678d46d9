// Helpers of the definition tests: definition files made on the fly, a translator that is reset,
// and a reporter that collects messages.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "definitions/AttribDefMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

/// A definition file that lives as long as the object.
class CDefinitionFile {
 public:
  explicit CDefinitionFile(std::string_view bytes) {
    WriteBytes(m_folder.File("definitions.def"), bytes);
  }

  CString Path() const { return PathText(m_folder.File("definitions.def")); }

 private:
  CTemporaryFolder m_folder;
};

inline bool Load(CAttribDefMap& table, std::string_view bytes, bool translate = false) {
  const CDefinitionFile file(bytes);
  return table.LoadDefFile(file.Path(), translate);
}

inline CString ValueText(const CAttribDefRec& record) {
  CString text(L"untouched");
  if (record.DefaultValue() == nullptr) {
    return L"no value";
  }
  record.DefaultValue()->GetValueStr(text);
  return text;
}

inline CString CtlText(const CAttribDefRec& record) {
  CString text(L"untouched");
  record.GetCtlAttribs(text);
  return text;
}

/// Starts and ends with an empty translator.
struct CTranslations {
  CTranslations() { Translator::Instance().Clear(); }
  ~CTranslations() { Translator::Instance().Clear(); }
  CTranslations(const CTranslations&) = delete;
  CTranslations& operator=(const CTranslations&) = delete;

  Translator& Foreign() {
    Translator::Instance().SetLanguageForeign(true);
    return Translator::Instance();
  }
};

/// Collects what is reported while it lives.
class CReports {
 public:
  CReports() : m_before(Error::SetReporter(&Collect)) { All().clear(); }
  ~CReports() { Error::SetReporter(m_before); }
  CReports(const CReports&) = delete;
  CReports& operator=(const CReports&) = delete;

  static std::vector<std::pair<CString, CString>>& All() {
    static std::vector<std::pair<CString, CString>> reports;
    return reports;
  }

 private:
  static void Collect(const CString& category, const CString& message) {
    All().emplace_back(category, message);
  }

  Error::Reporter m_before;
};
