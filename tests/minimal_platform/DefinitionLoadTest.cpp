// Definition files in memory: what the library makes of a host's text files, errors and
// translations.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "catalogue/AttributeNames.h"
#include "definitions/AttribDefMap.h"
#include "tests/TextPrinting.h"

namespace {

class DefinitionLoad : public testing::Test {
 protected:
  ~DefinitionLoad() override {
    MemoryFiles::RemoveAll();
    Translator::Instance().Clear();
  }

  bool Load(const char* bytes, bool translate = false) {
    MemoryFiles::Write(L"definitions", bytes);
    return m_table.LoadDefFile(L"definitions", translate);
  }
  CString DefaultText(const CString& mnemonic) {
    CString text;
    m_table.GetAttribDefRec(mnemonic)->DefaultValue()->GetValueStr(text);
    return text;
  }

  CAttribDefMap m_table;
};

TEST_F(DefinitionLoad, ReadsEveryItemOfALine) {
  ASSERT_TRUE(
      Load("\xEF\xBB\xBF// a comment\r\n"
           "\r\n"
           " MaxDepth , 17 , Gr\xC3\xB6\xC3\x9Fte Tiefe , 103 , 2 , depth.bmp , 37.5 \r\n"
           "@@CHECKSUM=4F2A\r\n"));
  ASSERT_EQ(m_table.Count(), 1);
  const CAttribDefRec& record = m_table[0];
  EXPECT_EQ(record.Mnemonic(), ATTR_MAXDEPTH);
  EXPECT_EQ(record.Id(), 17);
  EXPECT_EQ(record.Name(), L"Gr\u00F6\u00DFte Tiefe");
  EXPECT_EQ(record.Type(), 103U);
  EXPECT_EQ(record.ControlType(), 2U);
  EXPECT_EQ(record.BitmapFile(), L"depth.bmp");
  EXPECT_EQ(DefaultText(L"MaxDepth"), L"37.500000");
}

TEST_F(DefinitionLoad, AFieldMayHoldTheWholeRestOfItsLine) {
  ASSERT_TRUE(Load("A,1,a list,603,0,,1, 2,3\nB,2,no default,101,0,\n"));
  EXPECT_EQ(DefaultText(L"A"), L"1,2,3");
  EXPECT_EQ(DefaultText(L"B"), L"0");
}

TEST_F(DefinitionLoad, ATypeCodeThatMakesNoValueShowsInTheResult) {
  EXPECT_FALSE(Load("A,1,name,12345,0,,x\n"));
  EXPECT_EQ(m_table.Count(), 1);
  EXPECT_EQ(m_table[0].DefaultValue(), nullptr);
}

TEST_F(DefinitionLoad, ControlTextsAreTranslatedInAForeignLanguage) {
  const char* lines = "M,1,a name,101,2,,5\n@M, 0 , 100\n";
  Translator::Instance().SetLanguageForeign(true);
  Translator::Instance().SetString(L"M", L"ein Name");
  ASSERT_TRUE(Load(lines, true));
  CString text;
  EXPECT_TRUE(m_table.GetAttribName(L"M", text));
  EXPECT_EQ(text, L"ein Name");
  EXPECT_TRUE(m_table.GetCtlAttribs(L"M", text));
  EXPECT_EQ(text, L"0,100");

  Translator::Instance().SetCtrlString(L"M", L"translated");
  ASSERT_TRUE(Load(lines, true));
  m_table.GetAttribDefRec(L"M")->GetCtlAttribs(text);
  EXPECT_EQ(text, L"translated");
}

TEST_F(DefinitionLoad, AMissingFileIsReportedAndChangesNothing) {
  static std::vector<std::pair<CString, CString>> reports;
  ASSERT_TRUE(Load("A,1,name,101,0,,5\n"));
  const Error::Reporter before =
      Error::SetReporter([](const CString& category, const CString& message) {
        reports.emplace_back(category, message);
      });
  EXPECT_FALSE(m_table.LoadDefFile(L"missing", false));
  Error::SetReporter(before);
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].first, L"General");
  EXPECT_GE(reports[0].second.Find(L"missing"), 0);
  EXPECT_EQ(m_table.Count(), 1);
}

}  // namespace
