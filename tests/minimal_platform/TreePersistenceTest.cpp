// Attribute trees through files in memory: what the library makes of a host's sectioned files, its
// text files and its strings.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "catalogue/AttributeNames.h"
#include "tests/TextPrinting.h"

namespace {

// Made while the program starts: the catalogue's texts have been built by then.
const CString g_nameOfStart = ATTR_MAXDEPTH;

class TreePersistence : public testing::Test {
 protected:
  ~TreePersistence() override { MemoryFiles::RemoveAll(); }
};

CString TextOf(const CAttributeMap& map, const CString& name, int n = 0) {
  CString text;
  map.FindValue(name, n).GetValueStr(text);
  return text;
}

CAttributeMap SampleTree() {
  CAttributeMap tree;
  tree.Add(ATTRIB_VERSION_KEY, CLumInt(2), 0);
  tree.Add(L"Unit", CLumName(L"m\u00B2"), 1);
  tree.Add(L"Sensor").Add(L"Offset", CLumDouble(1.5), 0);
  tree.Add(L"Sensor").Add(L"Ids", CLumIntArray({1, 2, 3}), 0x11);
  tree.Add(L"Scratch", CLumInt(1), CAttributeRec::FLAG_TRANSIENT);
  return tree;
}

TEST_F(TreePersistence, ASavedTreeIsWrittenItemByItem) {
  FileObject file;
  ASSERT_TRUE(SaveAttributes(SampleTree(), file, L"Survey"));
  ASSERT_TRUE(file.Save(L"survey.cfg"));
  ASSERT_NE(MemoryFiles::Find(L"survey.cfg"), nullptr);
  EXPECT_EQ(*MemoryFiles::Find(L"survey.cfg"),
            "[Survey]\n"
            "AttrVersion=0,2\n"
            "Unit=1,m\xC2\xB2\n"
            "Sensor.Offset=0,1.500000\n"
            "Sensor(1).Ids=17,1,2,3\n");
}

TEST_F(TreePersistence, ALoadedTreeEqualsTheSavedOne) {
  CAttributeMap tree = SampleTree();
  FileObject saved;
  ASSERT_TRUE(SaveAttributes(tree, saved, L"Survey") && saved.Save(L"survey.cfg"));
  FileObject file;
  CAttributeMap loaded;
  ASSERT_TRUE(file.Load(L"survey.cfg") && LoadAttributes(loaded, file, L"Survey", false));
  tree.Remove(L"Scratch");
  CAttributeMap difference;
  EXPECT_FALSE(tree.Compare(loaded, difference, 0x07));
  EXPECT_EQ(loaded.Count(), 4);
  EXPECT_EQ(loaded.Find(L"Sensor", 1).Find(L"Ids").Flags(), 0x11U);
}

TEST_F(TreePersistence, SavingKeepsWhatIsNoAttribute) {
  MemoryFiles::Write(L"survey.cfg",
                     "[Other]\nX=1,2\n[Survey]\nTitle=free text\nAttrVersion=0,2\nOld=0,1\n");
  FileObject file;
  ASSERT_TRUE(file.Load(L"survey.cfg"));
  ASSERT_TRUE(SaveAttributes(SampleTree(), file, L"Survey") && file.Save(L"survey.cfg"));
  const std::string& bytes = *MemoryFiles::Find(L"survey.cfg");
  EXPECT_TRUE(bytes.starts_with("[Other]\nX=1,2\n[Survey]\nTitle=free text\nAttrVersion=0,2\n"));
  EXPECT_EQ(bytes.find("Old="), std::string::npos);
}

TEST_F(TreePersistence, AFailedLoadLeavesTheFileObjectAsItWas) {
  FileObject file;
  ASSERT_TRUE(file.SetItem(L"S", L"K", L"V", true));
  EXPECT_FALSE(file.Load(L"missing"));
  CString value;
  EXPECT_TRUE(file.GetItem(L"S", L"K", value));
}

TEST_F(TreePersistence, OrderedLoadFollowsTheLinesOfTheTextFile) {
  MemoryFiles::Write(L"survey.cfg",
                     "[Before]\r\nZ=0,0\r\n[Survey]\r\n; comment\r\n@tr.First=0,1\r\n"
                     "AttrVersion=0,2\r\nB=0,2 // depth\r\nA=0x80,3\r\n[Next]\r\nC=0,4\r\n");
  CAttributeMap tree;
  ASSERT_TRUE(LoadAttributesOrdered(tree, L"survey.cfg", L"Survey", true));
  ASSERT_EQ(tree.Count(), 3);
  EXPECT_EQ(TextOf(tree[0], L"First"), L"1");  // The old form's paths begin with an empty name.
  EXPECT_EQ(tree[1].Mnemonic(), ATTRIB_VERSION_KEY);
  EXPECT_EQ(tree[2].Mnemonic(), L"B");
  EXPECT_EQ(TextOf(tree, L"B"), L"2");
  EXPECT_FALSE(LoadAttributesOrdered(tree, L"survey.cfg", L"Missing", true));
  EXPECT_FALSE(LoadAttributesOrdered(tree, L"missing", L"Survey", true));
}

TEST_F(TreePersistence, ANodeIsStoredUnderItsOwnName) {
  CAttributeMap ship(L"Ship");
  ship.Add(L"Draught", CLumDouble(2.5), 0);
  FileObject file;
  ASSERT_TRUE(ship.SaveToFObj(&file, L"S"));
  CString value;
  EXPECT_TRUE(file.GetItem(L"S", L"@tr.Ship.Draught", value));
  EXPECT_EQ(value, L"0,2.500000");
  ship.RemoveAll();
  ASSERT_TRUE(ship.LoadFromFObj(&file, L"S", true, true, false));
  EXPECT_EQ(TextOf(ship, L"Draught"), L"2.500000");
  ASSERT_TRUE(RemoveAttributesWithKey(file, L"S", L"@tr.Ship."));
  EXPECT_FALSE(file.GetItem(L"S", L"@tr.Ship.Draught", value));
}

TEST(CatalogueOfTheStart, TextsAreThereBeforeTheProgramsOwnObjects) {
  EXPECT_EQ(g_nameOfStart, L"MaxDepth");
}

}  // namespace
