// Translator: texts set by hand and loaded from a file.
#include "platform/Translator.h"

#include <gtest/gtest.h>

#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

namespace {

class TranslatorTest : public testing::Test {
 protected:
  TranslatorTest() { m_translator.Clear(); }
  ~TranslatorTest() override { m_translator.Clear(); }

  bool Load(const std::string& bytes) {
    WriteBytes(m_folder.File("texts"), bytes);
    return m_translator.Load(PathText(m_folder.File("texts")));
  }

  CTemporaryFolder m_folder;
  Translator& m_translator = Translator::Instance();
};

TEST_F(TranslatorTest, IsOneForTheProcess) { EXPECT_EQ(&Translator::Instance(), &m_translator); }

TEST_F(TranslatorTest, HasNoTextsAndNoForeignLanguageAtFirst) {
  EXPECT_FALSE(m_translator.IsLanguageForeign());
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Height"), L"");
  EXPECT_EQ(m_translator.GetAttribDefV2CtrlString(L"Height"), L"");
}

TEST_F(TranslatorTest, SwitchesTheLanguage) {
  m_translator.SetLanguageForeign(true);
  EXPECT_TRUE(m_translator.IsLanguageForeign());
  m_translator.SetLanguageForeign(false);
  EXPECT_FALSE(m_translator.IsLanguageForeign());
}

TEST_F(TranslatorTest, KeepsNamesAndControlTextsApart) {
  m_translator.SetString(L"Height", L"name");
  m_translator.SetCtrlString(L"Depth", L"control");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Height"), L"name");
  EXPECT_EQ(m_translator.GetAttribDefV2CtrlString(L"Height"), L"");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Depth"), L"");
  EXPECT_EQ(m_translator.GetAttribDefV2CtrlString(L"Depth"), L"control");
  m_translator.SetString(L"Height", L"other");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Height"), L"other");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"height"), L"");
}

TEST_F(TranslatorTest, AddsTheTextsOfAFile) {
  m_translator.SetString(L"Depth", L"kept");
  m_translator.SetString(L"Height", L"replaced");
  EXPECT_TRUE(
      Load("; German\n[AttribDefV2]\nHeight = H\xC3\xB6he\nA=1\nA=2\n[Other]\nX=x\n"
           "[AttribDefV2Ctrl]\nHeight=0,100,0.5\n"));
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Height"), L"H\u00F6he");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Depth"), L"kept");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"A"), L"2");
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"X"), L"");
  EXPECT_EQ(m_translator.GetAttribDefV2CtrlString(L"Height"), L"0,100,0.5");
  EXPECT_FALSE(m_translator.IsLanguageForeign());
}

TEST_F(TranslatorTest, ChangesNothingWhenTheFileCannotBeRead) {
  m_translator.SetString(L"Height", L"kept");
  m_translator.SetLanguageForeign(true);
  EXPECT_FALSE(m_translator.Load(PathText(m_folder.File("missing"))));
  EXPECT_FALSE(m_translator.Load(PathText(m_folder.Path())));
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"Height"), L"kept");
  EXPECT_TRUE(m_translator.IsLanguageForeign());
}

TEST_F(TranslatorTest, ForgetsEverything) {
  EXPECT_TRUE(Load("[AttribDefV2]\nA=1\n[AttribDefV2Ctrl]\nA=2\n"));
  m_translator.SetLanguageForeign(true);
  m_translator.Clear();
  EXPECT_FALSE(m_translator.IsLanguageForeign());
  EXPECT_EQ(m_translator.GetAttribDefV2String(L"A"), L"");
  EXPECT_EQ(m_translator.GetAttribDefV2CtrlString(L"A"), L"");
}

}  // namespace
