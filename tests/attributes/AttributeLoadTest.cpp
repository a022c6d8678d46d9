// Loading trees from the items of a section.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

std::string Loaded(const std::string& items) {
  const FileObject file = FileWithItems(items);
  CAttributeMap map;
  return LoadAttributes(map, file, L"S", false) ? Describe(map) : "refused";
}

TEST(AttributeLoad, BuildsGroupsAndOccurrences) {
  EXPECT_EQ(Loaded("AttrVersion=0,2|Sensor(1).Offset=0,1.5"),
            "AttrVersion:999:2:0 Sensor:0:-:0 Sensor:0:-:0{Offset:999:1.5:0}");
  EXPECT_EQ(Loaded("AttrVersion=0,2|A.B=1,x|A=2,y|A.B(1)=3,z"),
            "AttrVersion:999:2:0 A:999:y:2{B:999:x:1 B:999:z:3}");
  EXPECT_EQ(Loaded("AttrVersion=0,2|A..B=0,x|C.=0,y"),
            "AttrVersion:999:2:0 A:0:-:0{:0:-:0{B:999:x:0}} C:0:-:0{:999:y:0}");
}

struct VersionRow {
  const char* items;
  const char* loaded;
};

TEST(AttributeLoad, ReadsTheSectionInItsVersion) {
  const VersionRow rows[] = {
      {"@trA=0,1|B=0,2|@tr=0,3", "A:999:1:0 :999:3:0"},
      {"AttrVersion=0,1|@trA=0,1|B=0,2", "A:999:1:0"},
      {"AttrVersion=0,2|@trA=0,1|B=0,2|C=x", "AttrVersion:999:2:0 @trA:501:1:0 B:999:2:0"},
      {"AttrVersion=9, 2 |B=0,2", "AttrVersion:999:2 :9 B:999:2:0"},
      {"AttrVersion=0,3|@trA=0,1", "refused"},
      {"AttrVersion=0,0|@trA=0,1", "refused"},
      {"AttrVersion=2|@trA=0,1", "refused"},
      {"AttrVersion=0,x|@trA=0,1", "refused"},
      {"AttrVersion=0,2x|@trA=0,1", "refused"},
      {"AttrVersion=|@trA=0,1", "refused"},
      {"", ""},
  };
  for (const VersionRow& row : rows) {
    EXPECT_EQ(Loaded(row.items), row.loaded) << row.items;
  }
}

TEST(AttributeLoad, ClearsUnlessMergingEvenWhenItRefuses) {
  for (const char* items : {"@trNew=0,1", "AttrVersion=0,5"}) {
    const FileObject file = FileWithItems(items);
    for (const bool merge : {false, true}) {
      CAttributeMap map(L"root", CLumInt(1), 2);
      map.Add(L"Old");
      const bool done = LoadAttributes(map, file, L"S", merge);
      EXPECT_EQ(done, items[0] == '@');
      EXPECT_EQ(map.Has(L"Old"), merge);
      EXPECT_EQ(map.Has(L"New"), done);
      EXPECT_EQ(DescribeNode(map).substr(0, 12), "root:101:1:2");
    }
  }
}

TEST(AttributeLoad, KindIsDecidedByTheName) {
  LoadTestDefinitions();
  EXPECT_EQ(Loaded("AttrVersion=0,2|DefInt=1,42|DefDouble=0,1.25|DefName=0,x|DefArray=0,4,5|"
                   "@DefInt=0,42|DefNone=0,n|Other=0,42|G.DefInt(1)=0,6"),
            "AttrVersion:999:2:0 DefInt:101:42:1 DefDouble:103:1.250000:0 DefName:501:x:0 "
            "DefArray:603:4,5:0 @DefInt:501:42:0 DefNone:999:n:0 Other:999:42:0 "
            "G:0:-:0{DefInt:0:-:0 DefInt:101:6:0}");
}

TEST(AttributeLoad, TextTheKindRefusesLeavesTheDefault) {
  LoadTestDefinitions();
  EXPECT_EQ(Loaded("@trDefInt=3,no number"), "DefInt:101:7:3");
}

TEST(AttributeLoad, KindIsDecidedAfreshForEveryItem) {
  LoadTestDefinitions();
  const FileObject file = FileWithItems("@trDefInt=1,5|@trPlain=2,6");
  CAttributeMap map;
  map.Add(L"DefInt", CLumName(L"x"), 9).Add(L"Below");
  map.Add(L"Plain", CLumInt(1), 9).SetLastSelected(true);
  ASSERT_TRUE(LoadAttributes(map, file, L"S", true));
  EXPECT_EQ(Describe(map), "DefInt:101:5:1{Below:0:-:0} Plain:999:6:2*");
}

TEST(AttributeLoad, RejectsNegativeOccurrences) {
  EXPECT_EQ(Loaded("@trA(-1)=0,1|@trB=0,2"), "B:999:2:0");
  // Groups on the way to the rejected name are there by then.
  EXPECT_EQ(Loaded("@trA.B(-1).C=0,1"), "A:0:-:0");
}

TEST(AttributeLoad, OddOccurrencesAreWellDefined) {
  EXPECT_EQ(Loaded("@trA()=0,1"), "A:999:1:0");
  EXPECT_EQ(Loaded("@trA(x)=0,1"), "A:999:1:0");
  EXPECT_EQ(Loaded("@trA(1)(2)=0,1"), "A:0:-:0 A:999:1:0");
  EXPECT_EQ(Loaded("@trA(=0,1"), "A(:999:1:0");
  EXPECT_EQ(Loaded("@trA)=0,1"), "A):999:1:0");
  EXPECT_EQ(Loaded("@trA(99999999999)=0,1|@trB=0,2"), "B:999:2:0");
  EXPECT_EQ(Loaded("@trA(2000000000).B(2000000000).C=0,1|@trB=0,2"), "B:999:2:0");
}

TEST(AttributeLoad, OneLoadCreatesALimitedNumberOfPlaceholders) {
  const std::string limit = std::to_string(kMaxPlaceholdersPerLoad);
  const std::string over = std::to_string(kMaxPlaceholdersPerLoad + 1);
  const std::string half = std::to_string(kMaxPlaceholdersPerLoad / 2);
  {
    CAttributeMap map;
    LoadAttributes(map, FileWithItems("@trG.X(" + over + ")=0,1|@trA=0,2"), L"S", false);
    EXPECT_EQ(Describe(map), "A:999:2:0");
  }
  {
    CAttributeMap map;
    LoadAttributes(map, FileWithItems("@trX(" + limit + ")=0,1|@trY(1)=0,2|@trX(" + half + ")=0,3"),
                   L"S", false);
    EXPECT_EQ(map.Count(L"X"), kMaxPlaceholdersPerLoad + 1);
    EXPECT_EQ(map.Count(L"Y"), 0);
    EXPECT_EQ(TextOf(map.Find(L"X", kMaxPlaceholdersPerLoad / 2).Value()), "3");
  }
  {
    // Both halves of one key count; what an item names itself does not.
    CAttributeMap map;
    LoadAttributes(map,
                   FileWithItems("@trX(" + half + ").Y(" + half + ").Z(1)=0,1|@trX(" + half +
                                 ").Y(" + half + ").Z=0,2"),
                   L"S", false);
    EXPECT_EQ(map.Count(L"X"), kMaxPlaceholdersPerLoad / 2 + 1);
    EXPECT_EQ(
        Describe(
            map.Find(L"X", kMaxPlaceholdersPerLoad / 2).Find(L"Y", kMaxPlaceholdersPerLoad / 2)),
        "Z:999:2:0");
  }
}

TEST(AttributeLoad, OccurrencesThatFollowEachOtherNeedNoPlaceholders) {
  constexpr int kOccurrences = 3000;
  std::string items;
  for (int occurrence = 0; occurrence < kOccurrences; ++occurrence) {
    items += "@trX(" + std::to_string(occurrence) + ")=0,1|";
  }
  CAttributeMap map;
  LoadAttributes(map, FileWithItems(items + "@trLast=0,2"), L"S", false);
  EXPECT_EQ(map.Count(L"X"), kOccurrences);
  EXPECT_EQ(map.Count(), kOccurrences + 1);
}

TEST(AttributeLoad, WithKeyTakesItemsOfThePrefixAsVersionTwo) {
  const FileObject file = FileWithItems("p.A=0,1|P.B=0,2|p.C=none|xp.D=0,3|p.E.F=0x2,4|p.=0,5");
  CAttributeMap map;
  map.Add(L"Old");
  EXPECT_TRUE(LoadAttributesWithKey(map, file, L"S", L"p.", true));
  EXPECT_EQ(Describe(map), "Old:0:-:0 A:999:1:0 E:0:-:0{F:999:4:2} :999:5:0");
  EXPECT_TRUE(LoadAttributesWithKey(map, file, L"S", L"p.", false));
  EXPECT_EQ(Names(map), "A E ");
  EXPECT_TRUE(LoadAttributesWithKey(map, file, L"none", L"p.", false));
  EXPECT_EQ(map.Count(), 0);
}

TEST(AttributeLoad, WithKeyIgnoresTheStoredVersion) {
  const FileObject file = FileWithItems("AttrVersion=0,9|@trA=0,1");
  CAttributeMap map;
  EXPECT_TRUE(LoadAttributesWithKey(map, file, L"S", L"@tr", false));
  EXPECT_EQ(Describe(map), "A:999:1:0");
}

TEST(AttributeLoad, OldFilesPutTheIndexBeforeTheKey) {
  const FileObject file =
      FileWithItems("@tr.A=0,1|@tr(2).B=0,2|@tr.doc.C=0,3|@tr.D.splitter.E=0,4|@tr.docs=0,5|F=0,6");
  CAttributeMap map;
  map.Add(L"Old");
  EXPECT_TRUE(LoadOldPcfFileAttributes(map, file, L"S", 1));
  EXPECT_EQ(Describe(map),
            ":0:-:0{doc:0:-:0{C:999:3:0} D:0:-:0{splitter:0:-:0{E:999:4:0}}} "
            ":0:-:0{A:999:1:0 docs:999:5:0} :0:-:0{B:999:2:0}");
  EXPECT_TRUE(LoadOldPcfFileAttributes(map, file, L"S", 0));
  EXPECT_EQ(Describe(map),
            ":0:-:0{A:999:1:0 doc:0:-:0{C:999:3:0} D:0:-:0{splitter:0:-:0{E:999:4:0}} "
            "docs:999:5:0} :0:-:0 :0:-:0{B:999:2:0}");
}

TEST(AttributeLoad, OldFilesHaveVersionOne) {
  CAttributeMap map;
  map.Add(L"Old");
  EXPECT_FALSE(LoadOldPcfFileAttributes(map, FileWithItems("AttrVersion=0,2|A=0,1"), L"S", 1));
  EXPECT_EQ(map.Count(), 0);
}

TEST(AttributeLoad, NodeByItselfReadsItsOwnKeys) {
  const FileObject file = FileWithItems("@tr.Ship.A=1,5|@tr.Boat.A=0,6|@tr.Ship.G.B=0,7");
  CAttributeMap empty(L"Ship");
  EXPECT_TRUE(empty.LoadFromFObj(&file, L"S", false, true, true));
  EXPECT_EQ(DescribeNode(empty), "Ship:0:-:0");
  EXPECT_TRUE(empty.LoadFromFObj(&file, L"S", true, false, false));
  EXPECT_EQ(DescribeNode(empty), "Ship:0:-:0{A:999:5:1 G:0:-:0{B:999:7:0}}");
  EXPECT_FALSE(empty.LoadFromFObj(nullptr, L"S", true, true, true));
}

TEST(AttributeLoad, NodeWithChildrenKeepsItsKindsAndProtectedValues) {
  const FileObject file = FileWithItems("@tr.Ship.A=1,5|@tr.Ship.P=2,6|@tr.Ship.New=0,7");
  CAttributeMap ship(L"Ship");
  ship.Add(L"A", CLumInt(1), 0x40);
  ship.Add(L"P", CLumInt(1), 0x400);
  ship.Add(L"Kept", CLumInt(1), 0);
  CAttributeMap copy = ship;
  EXPECT_TRUE(ship.LoadFromFObj(&file, L"S", false, false, false));
  EXPECT_EQ(Describe(ship), "A:101:5:64 P:101:1:1024 Kept:101:1:0");
  // With what is new, the load starts from the node's own attributes: flags come from the file.
  EXPECT_TRUE(copy.LoadFromFObj(&file, L"S", true, true, false));
  EXPECT_EQ(Describe(copy), "A:101:5:1 P:101:1:2 Kept:101:1:0 New:999:7:0");
}

/// Answers its own version whatever the items say.
class CVersionTwoFile : public FileObject {
 public:
  using FileObject::FileObject;
  bool GetItem(const CString& section, const CString& key, CString& value) const override {
    EXPECT_EQ(section, L"S");
    EXPECT_EQ(key, L"AttrVersion");
    value = L"0,2";
    return true;
  }
};

TEST(AttributeLoad, ReadsTheVersionThroughTheFilesOwnReading) {
  CVersionTwoFile file;
  file.SetItem(L"S", L"A", L"0,1", true);
  CAttributeMap map;
  EXPECT_TRUE(LoadAttributes(map, file, L"S", false));
  EXPECT_EQ(Describe(map), "A:999:1:0");
}

}  // namespace
