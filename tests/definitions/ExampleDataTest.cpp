// The example files fit together: every definition makes its default value, every configured value
// is accepted by its definition, every translation belongs to a definition.
#include <gtest/gtest.h>

#include <set>

#include "catalogue/AttributeNames.h"
#include "definitions/AttribDefMap.h"
#include "platform/TextEncoding.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

CString DataFile(const char* name) {
  return Utf8ToWide((std::string(LUM_EXAMPLE_DATA) + "/" + name).c_str());
}

class ExampleData : public testing::Test {
 protected:
  ExampleData() { EXPECT_TRUE(m_table.LoadDefFile(DataFile("survey.def"), false)); }

  CAttribDefMap m_table;
};

TEST_F(ExampleData, DefinesEveryKindOfValue) {
  std::set<unsigned int> types;
  for (int i = 0; i < m_table.Count(); ++i) {
    types.insert(m_table[i].Type());
  }
  EXPECT_EQ(types, (std::set<unsigned int>{0, 101, 102, 103, 104, 109, 112, 203, 301, 401, 402, 501,
                                           603, 607, 613}));
}

TEST_F(ExampleData, UsesTheCataloguesMnemonicsOnceEach) {
  std::set<CString> catalogue;
  for (const AttributeName& name : AttributeNames()) {
    catalogue.insert(name.mnemonic);
  }
  std::set<CString> mnemonics;
  std::set<unsigned short> ids;
  int fromCatalogue = 0;
  for (int i = 0; i < m_table.Count(); ++i) {
    EXPECT_TRUE(mnemonics.insert(m_table[i].Mnemonic()).second) << i;
    EXPECT_TRUE(ids.insert(m_table[i].Id()).second) << i;
    EXPECT_FALSE(m_table[i].Name().IsEmpty()) << i;
    fromCatalogue += static_cast<int>(catalogue.count(m_table[i].Mnemonic()));
  }
  EXPECT_GE(fromCatalogue, 150);
  EXPECT_GE(fromCatalogue, m_table.Count() - 10);
}

TEST_F(ExampleData, DefaultValuesReadTheirOwnText) {
  for (int i = 0; i < m_table.Count(); ++i) {
    ASSERT_NE(m_table[i].DefaultValue(), nullptr) << i;
    if (m_table[i].Type() != CLumType::TYPE_UNDEFINED) {
      const std::unique_ptr<CLumType> value(m_table[i].DefaultValue()->MakeCopy());
      EXPECT_TRUE(value->SetValueStr(ValueText(m_table[i]))) << i;
    }
  }
}

/// The name a key stands for: what follows its last dot, without the occurrence.
CString LeafName(CString key) {
  key = key.Mid(key.ReverseFind(L'.') + 1);
  const int occurrence = key.Find(L'(');
  return occurrence < 0 ? key : key.Left(occurrence);
}

void CheckItem(CAttribDefMap& table, const CString& key, const CString& value) {
  const CString name = LeafName(key);
  const int comma = value.Find(L',');
  if (comma < 0 || name == ATTRIB_VERSION_KEY || name == ATTRIB_ORDERINFO || name[0] == L'@') {
    return;
  }
  const CAttribDefRec* record = table.GetAttribDefRec(name);
  ASSERT_NE(record, nullptr) << testing::PrintToString(key);
  const std::unique_ptr<CLumType> copy(record->DefaultValue()->MakeCopy());
  EXPECT_TRUE(copy->SetValueStr(value.Mid(comma + 1))) << testing::PrintToString(key);
}

int CheckSection(CAttribDefMap& table, const FileObject& file, const CString& section) {
  FobjSection walk;
  CString key;
  CString value;
  int items = 0;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    CheckItem(table, key, value);
    ++items;
  }
  return items;
}

TEST_F(ExampleData, ConfiguredValuesFitTheirDefinitions) {
  for (const char* name : {"survey.cfg", "crew.cfg"}) {
    SCOPED_TRACE(name);
    FileObject file;
    ASSERT_TRUE(file.Load(DataFile(name)));
    int items = 0;
    for (const CString& section : file.SectionNames()) {
      CString version;
      if (file.GetItem(section, ATTRIB_VERSION_KEY, version)) {
        EXPECT_EQ(version, CString(L"0,2"));
        items += CheckSection(m_table, file, section);
      }
    }
    EXPECT_GE(items, 20);
  }
}

TEST_F(ExampleData, TranslationsBelongToDefinitions) {
  CTranslations translations;
  FileObject file;
  ASSERT_TRUE(file.Load(DataFile("german.lang")));
  for (const wchar_t* section : {L"AttribDefV2", L"AttribDefV2Ctrl"}) {
    FobjSection walk;
    CString key;
    CString value;
    ASSERT_TRUE(file.GetFirstMapEntry(walk, section, key, value));
    do {
      EXPECT_NE(m_table.GetAttribDefRec(key), nullptr) << testing::PrintToString(key);
      EXPECT_FALSE(value.IsEmpty());
    } while (file.GetNextMapEntry(walk, key, value));
  }
  ASSERT_TRUE(translations.Foreign().Load(DataFile("german.lang")));
  CString text;
  EXPECT_TRUE(m_table.GetAttribName(ATTR_HEIGHT, text));
  EXPECT_EQ(text, CString(L"H\u00F6he"));
}

}  // namespace
