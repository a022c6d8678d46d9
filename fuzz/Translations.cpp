// Any bytes as a file of translations: the translator knows exactly the items of its two sections,
// and definitions answer with them.
#include <gtest/gtest.h>

#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "platform/LumBase.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

const lum::fuzz::CFuzzFiles& Files() { return lum::fuzz::CFuzzFiles::Instance(); }

template <typename Ask>
void CheckSection(const FileObject& file, const CString& section, Ask ask) {
  FobjSection walk;
  CString mnemonic;
  CString text;
  for (bool more = file.GetFirstMapEntry(walk, section, mnemonic, text); more;
       more = file.GetNextMapEntry(walk, mnemonic, text)) {
    EXPECT_EQ(ask(mnemonic), text) << testing::PrintToString(mnemonic);
  }
}

/// Names that the file does not translate are those of the table.
void CheckDefinition(const CString& mnemonic) {
  CString name = L"untouched";
  const CString translated = Translator::Instance().GetAttribDefV2String(mnemonic);
  EXPECT_EQ(CAttribDefMap().GetAttribName(mnemonic, name), !translated.IsEmpty());
  EXPECT_EQ(name, translated.IsEmpty() ? CString(L"untouched") : translated);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  Files().WriteInput(in.Rest());
  CTranslations translations;
  Translator& translator = translations.Foreign();
  EXPECT_TRUE(translator.Load(Files().Input()));
  FileObject file;
  EXPECT_TRUE(file.Load(Files().Input()));
  CheckSection(file, L"AttribDefV2", [&](const CString& mnemonic) {
    CheckDefinition(mnemonic);
    return translator.GetAttribDefV2String(mnemonic);
  });
  CheckSection(file, L"AttribDefV2Ctrl", [&](const CString& mnemonic) {
    return translator.GetAttribDefV2CtrlString(mnemonic);
  });
  if (file.ItemCount(L"AttribDefV2") == 0) {
    EXPECT_EQ(translator.GetAttribDefV2String(L"Height"), L"");
  }
  return 0;
}
