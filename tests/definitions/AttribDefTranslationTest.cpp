// Translated control-attribute texts while loading: which controls take them, and when.
#include <gtest/gtest.h>

#include "definitions/AttribDefMap.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

CString LoadedCtlText(const char* controlType, bool translate) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, std::string("M,1,,101,") + controlType + ",\n@M,file text\n", translate));
  return CtlText(table[0]);
}

TEST(DefinitionTranslation, NeedsAForeignLanguageAndTheCallersWish) {
  CTranslations translations;
  Translator::Instance().SetCtrlString(L"M", L"translated");
  EXPECT_EQ(LoadedCtlText("5", true), CString(L"file text"));
  translations.Foreign();
  EXPECT_EQ(LoadedCtlText("5", true), CString(L"translated"));
  EXPECT_EQ(LoadedCtlText("5", false), CString(L"file text"));
  Translator::Instance().SetLanguageForeign(false);
  EXPECT_EQ(LoadedCtlText("5", true), CString(L"file text"));
}

TEST(DefinitionTranslation, SomeControlsKeepTheFilesText) {
  CTranslations translations;
  translations.Foreign().SetCtrlString(L"M", L"translated");
  for (int controlType = -70; controlType <= 70; ++controlType) {
    const bool exempt =
        controlType == 17 || controlType == 18 || controlType == 21 || controlType == 31;
    EXPECT_EQ(LoadedCtlText(std::to_string(controlType).c_str(), true),
              CString(exempt ? L"file text" : L"translated"))
        << controlType;
  }
  EXPECT_EQ(LoadedCtlText("2147483647", true), CString(L"translated"));
  EXPECT_EQ(LoadedCtlText("-2147483648", true), CString(L"translated"));
}

TEST(DefinitionTranslation, AnEmptyTranslationKeepsTheFilesText) {
  CTranslations translations;
  translations.Foreign().SetCtrlString(L"Other", L"translated");
  EXPECT_EQ(LoadedCtlText("5", true), CString(L"file text"));
  translations.Foreign().SetCtrlString(L"M", L"");
  EXPECT_EQ(LoadedCtlText("5", true), CString(L"file text"));
}

TEST(DefinitionTranslation, DisplayNameTranslationsAreNoControlTexts) {
  CTranslations translations;
  translations.Foreign().SetString(L"M", L"a name");
  EXPECT_EQ(LoadedCtlText("5", true), CString(L"file text"));
}

TEST(DefinitionTranslation, TheMapKeepsTheFilesText) {
  CTranslations translations;
  translations.Foreign().SetCtrlString(L"M", L"translated");
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "M,1,,101,5,\n@M,file text\n", true));
  Translator::Instance().SetLanguageForeign(false);
  CString text;
  EXPECT_TRUE(table.GetCtlAttribs(L"M", text));
  EXPECT_EQ(text, CString(L"file text"));
  EXPECT_EQ(CtlText(table[0]), CString(L"translated"));
}

TEST(DefinitionTranslation, QueriesTranslateEveryControl) {
  CTranslations translations;
  translations.Foreign().SetCtrlString(L"M", L"translated , text");
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "M,1,,101,17,\n@M,file text\n", true));
  EXPECT_EQ(CtlText(table[0]), CString(L"file text"));
  CString text;
  EXPECT_TRUE(table.GetCtlAttribs(L"M", text));
  EXPECT_EQ(text, CString(L"translated , text"));
  translations.Foreign().SetCtrlString(L"Unknown", L"known to the translator");
  EXPECT_TRUE(table.GetCtlAttribs(L"Unknown", text));
  EXPECT_EQ(text, CString(L"known to the translator"));
}

TEST(DefinitionTranslation, NamesByMnemonicAskTheTranslatorFirst) {
  CTranslations translations;
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "Height,1,Height,101,0,\nWidth,2,Width,101,0,\n"));
  Translator::Instance().SetString(L"Height", L"H\u00F6he");
  Translator::Instance().SetString(L"Elsewhere", L"Anderswo");
  CString name(L"untouched");
  EXPECT_TRUE(table.GetAttribName(L"Height", name));
  EXPECT_EQ(name, CString(L"Height"));
  EXPECT_FALSE(table.GetAttribName(L"Elsewhere", name));
  EXPECT_EQ(name, CString(L"Height"));
  translations.Foreign();
  EXPECT_TRUE(table.GetAttribName(L"Height", name));
  EXPECT_EQ(name, CString(L"H\u00F6he"));
  EXPECT_TRUE(table.GetAttribName(L"Width", name));
  EXPECT_EQ(name, CString(L"Width"));
  EXPECT_TRUE(table.GetAttribName(L"Elsewhere", name));
  EXPECT_EQ(name, CString(L"Anderswo"));
  EXPECT_FALSE(table.GetAttribName(L"Nowhere", name));
  EXPECT_EQ(name, CString(L"Anderswo"));
}

TEST(DefinitionTranslation, NamesByIdentifierNeedADefinition) {
  CTranslations translations;
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "Height,1,Height,101,0,\nWidth,2,Width,101,0,\nDepth,1,Depth,101,0,\n"));
  translations.Foreign().SetString(L"Height", L"H\u00F6he");
  translations.Foreign().SetString(L"Depth", L"Tiefe");
  CString name(L"untouched");
  EXPECT_FALSE(table.GetAttribName(9, name));
  EXPECT_EQ(name, CString(L"untouched"));
  EXPECT_TRUE(table.GetAttribName(1, name));
  EXPECT_EQ(name, CString(L"Tiefe"));
  EXPECT_TRUE(table.GetAttribName(2, name));
  EXPECT_EQ(name, CString(L"Width"));
  Translator::Instance().SetLanguageForeign(false);
  EXPECT_TRUE(table.GetAttribName(1, name));
  EXPECT_EQ(name, CString(L"Depth"));
}

}  // namespace
