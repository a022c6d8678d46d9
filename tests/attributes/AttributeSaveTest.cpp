// Saving trees as items of a section.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

/// Refuses items after so many.
class CFullFile : public FileObject {
 public:
  explicit CFullFile(int room) : m_room(room) {}

  bool SetItem(const CString& section, const CString& key, const CString& value,
               bool create) override {
    EXPECT_TRUE(create);
    return m_room-- > 0 && FileObject::SetItem(section, key, value, create);
  }

 private:
  int m_room;
};

CAttributeMap Sensors() {
  CAttributeMap map;
  map.Add(L"Unit", CLumName(L"m"), 1);
  map.Add(L"Sensor").Add(L"Offset", CLumAnything(L"1.5"), 0);
  return map;
}

TEST(AttributeSave, WritesPathsAndNoItemForPureGroups) {
  CAttributeMap map = Sensors();
  map.Add(L"AttrVersion", CLumInt(2), 0);
  FileObject file;
  EXPECT_TRUE(SaveAttributes(map, file, L"S"));
  EXPECT_EQ(Items(file, L"S"), "Unit=1,m|Sensor.Offset=0,1.5|AttrVersion=0,2");
}

TEST(AttributeSave, TreeWithoutVersionIsWrittenAsVersionOne) {
  FileObject file;
  EXPECT_TRUE(SaveAttributes(Sensors(), file, L"S"));
  EXPECT_EQ(Items(file, L"S"), "@trUnit=1,m|@trSensor.Offset=0,1.5");
}

struct VersionRow {
  const wchar_t* text;
  const char* items;  ///< Null when saving is refused.
};

TEST(AttributeSave, VersionComesFromTheRootsFirstVersionAttribute) {
  const VersionRow rows[] = {
      {L"1", "Title=x|@trAttrVersion=0,1|@trAttrVersion(1)=0,7"},
      {L"2", "Title=x|AttrVersion=0,2|AttrVersion(1)=0,7"},
      {L"0", nullptr},
      {L"3", nullptr},
      {L"-1", nullptr},
      {L"none", "Title=x|@trAttrVersion=0,none|@trAttrVersion(1)=0,7"},
  };
  for (const VersionRow& row : rows) {
    CAttributeMap map;
    map.Add(L"AttrVersion", CLumAnything(row.text), 0);
    map.Add(L"AttrVersion", CLumInt(7), 0);
    FileObject file = FileWithItems("Title=x|@trOld=0,1");
    EXPECT_EQ(SaveAttributes(map, file, L"S"), row.items != nullptr) << Narrow(row.text);
    EXPECT_EQ(Items(file, L"S"), row.items != nullptr ? row.items : "Title=x|@trOld=0,1");
  }
}

TEST(AttributeSave, ReplacesAttributesAndKeepsOtherItems) {
  CAttributeMap map = Sensors();
  map.Add(L"AttrVersion", CLumInt(2), 0);
  FileObject file = FileWithItems("Title=Survey|AttrVersion=0,2|Depth=0,3|Unit=0,old");
  EXPECT_TRUE(SaveAttributes(map, file, L"S"));
  EXPECT_EQ(Items(file, L"S"), "Title=Survey|Unit=1,m|Sensor.Offset=0,1.5|AttrVersion=0,2");
}

TEST(AttributeSave, NumbersOccurrencesCountingTransientOnes) {
  CAttributeMap map;
  map.Add(L"A", CLumInt(0), 0);
  map.Add(L"B", CLumInt(1), 0);
  map.Add(L"A", CLumInt(2), CAttributeRec::FLAG_TRANSIENT).Add(L"Below", CLumInt(3), 0);
  map.Add(L"A", CLumInt(4), 0).Add(L"Below", CLumInt(5), 0);
  FileObject file;
  EXPECT_TRUE(SaveAttributesWithKey(map, file, L"S", L""));
  EXPECT_EQ(Items(file, L"S"), "A=0,0|B=0,1|A(2)=0,4|A(2).Below=0,5");
}

TEST(AttributeSave, GroupWithFlagsOrValueHasAnItem) {
  CAttributeMap map;
  map.Add(L"Flags", CLumUndefined(), 1).Add(L"B", CLumInt(1), 0);
  map.Add(L"Value", CLumInt(2), 0).Add(L"B", CLumInt(3), 0);
  map.Add(L"Pure").Add(L"B", CLumInt(4), 0);
  map.Add(L"Leaf");
  FileObject file;
  EXPECT_TRUE(SaveAttributesWithKey(map, file, L"S", L"p."));
  EXPECT_EQ(Items(file, L"S"),
            "p.Flags=1,|p.Flags.B=0,1|p.Value=0,2|p.Value.B=0,3|p.Pure.B=0,4|p.Leaf=0,");
}

TEST(AttributeSave, EmptyMapWritesNothing) {
  FileObject file = FileWithItems("A=0,1");
  EXPECT_TRUE(SaveAttributesWithKey(CAttributeMap(), file, L"S", L""));
  EXPECT_EQ(Items(file, L"S"), "A=0,1");
  EXPECT_TRUE(SaveAttributesWithKey(CAttributeMap(), file, L"New", L""));
  EXPECT_FALSE(file.HasSection(L"New"));
}

TEST(AttributeSave, StopsAtTheFirstRefusedItem) {
  CAttributeMap map;
  map.Add(L"A").Add(L"B", CLumInt(1), 0);
  map.Add(L"C", CLumInt(2), 0);
  map.Add(L"D", CLumInt(3), 0);
  for (int room = 0; room <= 3; ++room) {
    CFullFile file(room);
    EXPECT_EQ(SaveAttributesWithKey(map, file, L"S", L""), room == 3);
    EXPECT_EQ(file.ItemCount(L"S"), room);
  }
}

TEST(AttributeSave, EverySaveTellsThatTheFileRefusedAnItem) {
  CAttributeMap map = Sensors();
  CFullFile forSection(1);
  EXPECT_FALSE(SaveAttributes(map, forSection, L"S"));
  map.SetGroup(L"Ship");
  CFullFile forNode(1);
  EXPECT_FALSE(map.SaveToFObj(&forNode, L"S"));
}

TEST(AttributeSave, NodeByItselfCarriesMarkAndName) {
  CAttributeMap map = Sensors();
  map.SetGroup(L"Ship");
  FileObject file = FileWithItems("Title=x");
  EXPECT_TRUE(map.SaveToFObj(&file, L"S"));
  EXPECT_EQ(Items(file, L"S"), "Title=x|@tr.Ship.Unit=1,m|@tr.Ship.Sensor.Offset=0,1.5");
  EXPECT_FALSE(map.SaveToFObj(nullptr, L"S"));
}

}  // namespace
