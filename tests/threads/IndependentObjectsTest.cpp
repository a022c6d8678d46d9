// Objects of their own in several threads at once: what each thread gets is what it gets alone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "definitions/AttribDefMap.h"
#include "platform/ExtensionModule.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/definitions/DefinitionFile.h"
#include "tests/threads/Together.h"

namespace {

using testing::ElementsAreArray;

CString Numbered(const wchar_t* format, int number) {
  CString text;
  text.Format(format, number);
  return text;
}

/// A tree with many children, groups, occurrences and values that share one name.
CAttributeMap BuildTree(int number, const CString& sharedName) {
  CAttributeMap tree;
  tree.Add(L"AttrVersion", CLumInt(2), 0);
  for (int i = 0; i < 40; ++i) {
    tree.Add(Numbered(L"Item%d", i % 30), CLumDouble(i + number / 8.0), i % 2 == 0 ? 0u : 1u);
    tree.FindCreate(sharedName, i % 4).Add(sharedName, CLumName(sharedName), 0);
  }
  tree.Find(sharedName, number % 4).Mnemonic();
  tree.Remove(Numbered(L"Item%d", number));
  tree.Insert(0, L"Item20", CLumBool(true), 0);
  return tree;
}

TEST(TreesInThreads, AreBuiltMergedAndCompared) {
  const CString sharedName(L"Shared");
  const CAttributeMap source = BuildTree(100, sharedName);
  const auto work = [&](int number) {
    std::string text;
    for (int round = 0; round < 5; ++round) {
      CAttributeMap tree = BuildTree(number, sharedName);
      CAttributeMap copy(source);
      copy.Overload(tree, true, true, false, false);
      CAttributeMap difference;
      source.Compare(copy, difference,
                     CAttributeMap::COMPARE_VALUES | CAttributeMap::COMPARE_ADDED);
      CAttributeMap moved(std::move(copy));
      moved.FindCreate(sharedName).SetMnemonic(Numbered(L"Renamed%d", number));
      tree = moved.Find(sharedName);
      text = Describe(moved) + "|" + Describe(difference) + "|" + Describe(tree);
    }
    return text;
  };
  const std::string before = Describe(source);
  const auto texts = TextsOf(work);
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(work)));
  EXPECT_EQ(Describe(source), before);
}

/// Saves a tree in a file of the thread's own, and reads it again both ways.
std::string SaveAndLoad(const CTemporaryFolder& folder, int number) {
  const CString path = PathText(folder.File(std::to_string(number) + ".cfg"));
  FileObject file;
  SaveAttributes(BuildTree(number, L"Shared"), file, L"S");
  if (!file.Save(path)) {
    return "not saved: " + Narrow(file.LastError());
  }
  FileObject again;
  CAttributeMap tree;
  CAttributeMap ordered;
  if (!again.Load(path) || !LoadAttributes(tree, again, L"S", false) ||
      !LoadAttributesOrdered(ordered, path, L"S", false)) {
    return "not loaded: " + Narrow(again.LastError());
  }
  RemoveAttributes(again, L"S");
  return Describe(tree) + "|" + Describe(ordered) + "|" + Items(again, L"S");
}

TEST(FilesInThreads, AreSavedAndLoadedInOneFolder) {
  LoadTestDefinitions();
  const CTemporaryFolder folder;
  const auto work = [&](int number) { return SaveAndLoad(folder, number); };
  const auto texts = TextsOf(work);
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(work)));
  EXPECT_THAT(texts.front(), testing::HasSubstr("Shared:999:"));
  EXPECT_EQ(folder.EntryCount(), std::size_t{kThreads});
}

TEST(FilesInThreads, SavedUnderOneNameLeaveOneOfThemWhole) {
  const CTemporaryFolder folder;
  const CString path = PathText(folder.File("all.cfg"));
  const auto content = [](int number) {
    FileObject file;
    SaveAttributes(BuildTree(number, L"Shared"), file, L"S");
    return file;
  };
  const auto saved = ResultsOf<int>([&](int number) { return content(number).Save(path) ? 1 : 0; });
  EXPECT_THAT(saved, testing::Contains(1));
  FileObject left;
  ASSERT_TRUE(left.Load(path));
  EXPECT_THAT(TextsOneByOne([&](int number) { return Items(content(number), L"S"); }),
              testing::Contains(Items(left, L"S")));
  EXPECT_EQ(folder.EntryCount(), 1u);
}

TEST(DefinitionsInThreads, AreLoadedIntoTablesOfTheirOwn) {
  const CDefinitionFile shared(
      "Depth,17,Depth limit,103,2,depth.bmp,12.5\n@Depth, 0 , 100\nNames,18,Names,613,1,,a,b\n");
  CAttribDefMap first;
  ASSERT_TRUE(first.LoadDefFile(shared.Path(), false));
  const auto work = [&](int number) {
    CAttribDefMap own;
    own.LoadDefFile(shared.Path(), true);
    CAttribDefMap copy(first);
    const CAttribDefMap second(copy);
    Load(copy, "Own,1,Own name,101,0,," + std::to_string(number) + "\n");
    copy.RegisterFunctionListItem(L"F", [](CStringArray& list) { list.Add(L"filled"); });
    CStringArray list;
    copy.FillList(L"F", list);
    return std::to_string(own.Count() + second.Count() + list.GetSize()) +
           Narrow(ValueText(*copy.GetAttribDefRec(L"Own"))) + Narrow(CtlText(own[0])) +
           Narrow(ValueText(second[1]));
  };
  const auto texts = TextsOf(work);
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(work)));
  EXPECT_EQ(texts[3], "53 0 , 100a,b");
}

/// The formulas that look at the clock, the zone or a frame.
std::string Evaluate(int number) {
  CLumDouble year(number), time(1000.0 * number), local, full, raw;
  CLumIoName message(">00FF0F0043F17D8DE02EFFFFFF;");
  CLumDouble uint16(7), byte3(3);
  const int done =
      full.YyToCcyy(year) + local.UtcToLocal(time) + raw.J1939Val(message, uint16, byte3, false);
  CLumDouble back;
  back.LocalToUtc(local);
  return std::to_string(done) + TextOf(full) + TextOf(raw) + TextOf(back);
}

TEST(FormulasInThreads, AreEvaluatedAtOnce) {
  const auto texts = TextsOf(Evaluate);
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(Evaluate)));
  EXPECT_THAT(texts.front(), testing::StartsWith("32000.000000"));
}

TEST(ModulesInThreads, AreRegisteredAndTakenDownAtOnce) {
  const int before = CDynLinkLibrary::Count();
  const auto seen = ResultsOf<int>([](int) {
    int least = 1000;
    for (int i = 0; i < 100; ++i) {
      AFX_EXTENSION_MODULE module;
      AfxInitExtensionModule(module, nullptr);
      const CDynLinkLibrary library(module);
      least = std::min(least, CDynLinkLibrary::Count());
    }
    return least;
  });
  EXPECT_THAT(seen, testing::Each(testing::Gt(before)));
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

}  // namespace
