// One configuration file, one table of definitions, one value that several threads read while none
// changes it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "definitions/AttribDefMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/definitions/DefinitionFile.h"
#include "tests/threads/Together.h"
#include "values/LumTypeCreator.h"

namespace {

using testing::Each;

constexpr const char* kFile =
    "; a comment\n[S]\nAttrVersion=0,2\nA=0,1\nB = 1,text\nC(1).D=0,2.5\n\nunknown\n[T]\nA=0,2\n";

std::string ReadEverything(const FileObject& file) {
  std::string text;
  for (const CString& section : file.SectionNames()) {
    CString value;
    file.GetItem(section, L"A", value);
    text += Narrow(section) + std::to_string(file.ItemCount(section)) + Narrow(value) +
            Items(file, section) + (file.HasSection(section) ? ";" : "!");
  }
  for (const FileObjectLine& line : file.LoadedLines()) {
    text += Narrow(line.text) + std::to_string(line.valueColumn);
  }
  CAttributeMap tree;
  text += std::to_string(LoadAttributes(tree, file, L"S", false)) + Describe(tree);
  FileObject copy(file);
  copy.SetItem(L"S", L"A", L"0,9", true);
  FileObject section;
  section.CopySection(L"S", copy);
  return text + Items(section, L"S") + Narrow(file.LastError());
}

TEST(FileReadByThreads, AnswersAllOfThem) {
  const CTemporaryFolder folder;
  WriteBytes(folder.File("read.cfg"), kFile);
  FileObject loaded;
  ASSERT_TRUE(loaded.Load(PathText(folder.File("read.cfg"))));
  const auto texts = TextsOf([&](int) { return ReadEverything(loaded); });
  EXPECT_THAT(texts, Each(ReadEverything(loaded)));
  EXPECT_THAT(texts.front(), testing::HasSubstr("S40,1AttrVersion=0,2|A=0,1|B=1,text|C(1)"));
}

TEST(FileReadByThreads, AnswersAllOfThemAfterChanges) {
  FileObject file;
  for (int i = 0; i < 200; ++i) {
    CString key;
    key.Format(L"A%d", i);
    file.SetItem(L"S", key, L"0,1", true);
  }
  file.SetItem(L"S", L"A", L"0,5", true);
  file.RemoveItem(L"S", L"A7");
  const auto texts = TextsOf([&](int) { return ReadEverything(file); });
  EXPECT_THAT(texts, Each(ReadEverything(file)));
  EXPECT_THAT(texts.front(), testing::HasSubstr("S2000,5A0=0,1|"));
}

constexpr const char* kDefinitions =
    "DepthLimit,17,Depth limit,103,2,depth.bmp,12.5\n"
    "@DepthLimit, 0 , 100\n"
    "Names,18,Names,613,1,,a,b\n"
    "DepthLimit,19,Another depth,103,2,,13.5\n";

std::string AskEverything(const CAttribDefMap& table) {
  std::string text = std::to_string(table.Count()) + std::to_string(table.FileInitialised());
  for (int i = 0; i < table.Count(); ++i) {
    const CAttribDefRec& record = table[i];
    CString name, sameName, bitmap, controls, mnemonic;
    auto type = CLumType::TYPE_UNDEFINED;
    int control = 0;
    unsigned short id = 0;
    const int found =
        table.GetAttribName(record.Mnemonic(), name) + table.GetAttribName(record.Id(), sameName) +
        table.GetAttribType(record.Mnemonic(), type) + table.GetAttribID(record.Mnemonic(), id) +
        table.GetAttribControlType(record.Id(), control) + table.GetAttribMnemo(id, mnemonic) +
        table.GetBitmapFilename(record.Mnemonic(), bitmap) +
        table.GetCtlAttribs(record.Mnemonic(), controls);
    text += Narrow(name + L"," + sameName + L"," + bitmap + L"," + controls + L"," + mnemonic) +
            std::to_string(type) + std::to_string(id) + std::to_string(found + control) +
            Narrow(ValueText(record)) + Narrow(CtlText(record)) + ";";
  }
  return text;
}

TEST(DefinitionsReadByThreads, AnswerAllOfThem) {
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, kDefinitions));
  const auto texts = TextsOf([&](int) { return AskEverything(table); });
  EXPECT_THAT(texts, Each(AskEverything(table)));
  EXPECT_EQ(texts.front().rfind("31Another depth,Depth limit,,0,100,DepthLimit", 0), 0u)
      << texts.front();
}

TEST(DefinitionsReadByThreads, AnswerInAForeignLanguage) {
  CTranslations translations;
  translations.Foreign().SetString(L"DepthLimit", L"Diepte");
  translations.Foreign().SetCtrlString(L"DepthLimit", L"1,2");
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, kDefinitions));
  const auto texts = TextsOf([&](int) { return AskEverything(table); });
  EXPECT_THAT(texts, Each(AskEverything(table)));
  EXPECT_EQ(texts.front().rfind("31Diepte,Diepte,,1,2,DepthLimit", 0), 0u) << texts.front();
}

TEST(DefinitionsReadByThreads, AreCopiedAndGiveTheirDefaultsToTrees) {
  LoadTestDefinitions();
  const CAttribDefMap& table = CAttribDefMap::GetAttribDefMap();
  const FileObject file = FileWithItems("AttrVersion=0,2|DefInt=0,8|DefArray=0,4,5|Other=0,x");
  const auto use = [&] {
    CAttributeMap tree;
    tree.AppendNew(L"DefName");
    LoadAttributes(tree, file, L"S", true);
    const CAttribDefMap copy(table);
    return Describe(tree) + AskEverything(copy);
  };
  const auto texts = TextsOf([&](int) { return use(); });
  EXPECT_THAT(texts, Each(use()));
  EXPECT_THAT(texts.front(), testing::HasSubstr("DefInt:101:8:0 DefArray:603:4,5:0"));
}

std::string ReadValue(const CLumType& value) {
  int number = 0;
  unsigned int bits = 0;
  std::uint64_t wide = 0;
  bool flag = false;
  double real = 0, second = 0, third = 0;
  CString name;
  CStringA bytes;
  std::vector<int> numbers;
  std::vector<double> reals;
  std::vector<CString> names;
  std::string text;
  for (const int done :
       {value.GetInt(number), value.GetUInt(bits), value.GetULongLong(wide), value.GetBool(flag),
        value.GetDouble(real), value.GetDouble2D(real, second),
        value.GetDouble3D(real, second, third), value.GetName(name), value.GetName(bytes),
        value.GetIntArray(numbers), value.GetDoubleArray(reals), value.GetNameArray(names)}) {
    text += std::to_string(done);
  }
  const std::unique_ptr<CLumType> copy(value.MakeCopy());
  CLumAnything assigned;
  assigned = value;
  return text + TextOf(value) + TextOf(*copy) + TextOf(assigned) + Narrow(name) +
         std::to_string(number) + (real == 1.0 ? "one" : "other") + std::to_string(numbers.size());
}

TEST(ValuesReadByThreads, OfEveryKindAnswerAllOfThem) {
  for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
    std::unique_ptr<CLumType> value(LumTypeCreator::MakeLumType(kind.type, L"1"));
    if (value == nullptr) {
      value = std::make_unique<CLumAnything>(L"1,2");
    }
    const auto texts = TextsOf([&](int) { return ReadValue(*value); });
    EXPECT_THAT(texts, Each(ReadValue(*value))) << Narrow(kind.name);
  }
}

}  // namespace
