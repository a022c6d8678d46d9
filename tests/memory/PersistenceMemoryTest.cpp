// Trees in configuration files when memory runs out.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "attributes/AttributeMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;
using lum::test::WalkRefusals;

constexpr const char* kFile =
    "[New]\n"
    "; kept\n"
    "AttrVersion=0,2\n"
    "DefName=1,a name that no small storage of a string holds\n"
    "DefArray=0,1,2,3\n"
    "Sensor(1).Offset=0x11,1.5\n"
    "Sensor.DefDouble=128,2.25\n"
    "Sensor.@Link=0,another name that is long enough\n"
    "OrderInfo=Sensor,DefName,DefArray,AttrVersion\n"
    "plain=no attribute\n"
    "[Old]\n"
    "@tr.Root.DefInt=1,9\n"
    "@tr.Root.Group.Text=0,a text that no small storage holds\n"
    "@tr.Root.Group(2)=0,x\n"
    "@trSingle=0,1\n"
    "other=kept\n";

struct Stored {
  FileObject file;
  CAttributeMap tree;
  CAttributeMap root = CAttributeMap(L"Root");
  CString name = L"Sensor";
};

using Operation = lum::test::Operation<Stored>;

class PersistenceMemory : public testing::Test {
 protected:
  void SetUp() override {
    LoadTestDefinitions();
    WriteBytes(m_folder.File("stored.cfg"), kFile);
    m_path = PathText(m_folder.File("stored.cfg"));
  }

  void Fill(Stored& stored) const {
    stored.file.Load(m_path);
    CAttributeMap& tree = stored.tree;
    tree.Add(L"AttrVersion", CLumAnything(L"2"), 0);
    tree.Add(L"DefName", CLumName(L"a name that goes into the file instead"), 1);
    CAttributeMap& sensor = tree.Add(L"Sensor", CLumInt(1), 0);
    sensor.Add(L"DefDouble", CLumDouble(7.5), 3);
    sensor.Add(L"List", CLumNameArray(std::vector<CString>{L"one", L"two"}), 0xFFFFFFFF);
    tree.Add(L"Sensor").Add(L"Offset", CLumDouble3D(1, 2, 3), 0);
    tree.Add(L"OrderInfo", CLumAnything(L"DefName,Sensor"), 0);
  }

  void Walk(const std::vector<Operation>& operations) const {
    for (Operation operation : operations) {
      const auto further = operation.prepare;
      operation.prepare = [&](Stored& stored) {
        Fill(stored);
        if (further) {
          further(stored);
        }
      };
      WalkRefusals(operation, [](const Stored& stored) {
        return Items(stored.file, L"New") + "\n  " + Items(stored.file, L"Old") + "\n  " +
               Items(stored.file, L"Saved") + "\n  " + DescribeNode(stored.tree) + "\n  " +
               DescribeNode(stored.root) + "\n  " + Narrow(stored.name);
      });
    }
  }

  CTemporaryFolder m_folder;
  CString m_path;
};

TEST_F(PersistenceMemory, LoadsMayStopMidway) {
  constexpr Guarantee kUsable = Guarantee::Usable;
  Walk({
      {"LoadAttributes", kUsable,
       [](Stored& s) { return LoadAttributes(s.tree, s.file, L"New", false); }},
      {"LoadAttributes, merged", kUsable,
       [](Stored& s) { return LoadAttributes(s.tree, s.file, L"New", true); }},
      {"LoadAttributes, version 1", kUsable,
       [](Stored& s) { return LoadAttributes(s.tree, s.file, L"Old", false); }},
      {"LoadAttributesWithKey", kUsable,
       [](Stored& s) { return LoadAttributesWithKey(s.tree, s.file, L"Old", L"@tr.Root.", true); }},
      {"LoadAttributesOrdered", kUsable,
       [this](Stored& s) { return LoadAttributesOrdered(s.tree, m_path, L"New", true); }},
      {"LoadOldPcfFileAttributes", kUsable,
       [](Stored& s) { return LoadOldPcfFileAttributes(s.tree, s.file, L"Old", 2); }},
      {"LoadFromFObj, empty", Guarantee::Unchanged,
       [](Stored& s) { return s.root.LoadFromFObj(&s.file, L"Old", true, true, true); }},
      {"LoadFromFObj, merged", kUsable,
       [](Stored& s) { return s.root.LoadFromFObj(&s.file, L"Old", true, true, true); },
       [](Stored& s) { s.root.Add(L"DefInt", CLumInt(3), 2); }},
  });
}

TEST_F(PersistenceMemory, SavesMayStopMidway) {
  constexpr Guarantee kUsable = Guarantee::Usable;
  Walk({
      {"SaveAttributes", kUsable, [](Stored& s) { return SaveAttributes(s.tree, s.file, L"New"); }},
      {"SaveAttributes, new section", kUsable,
       [](Stored& s) { return SaveAttributes(s.tree, s.file, L"Saved"); }},
      {"SaveAttributes, version 1", kUsable,
       [](Stored& s) { return SaveAttributes(s.tree, s.file, L"Old"); },
       [](Stored& s) { s.tree.SetAttribValue(L"AttrVersion", 1, false, 0); }},
      {"SaveAttributesWithKey", kUsable,
       [](Stored& s) { return SaveAttributesWithKey(s.tree, s.file, L"Saved", L"@tr.Root."); }},
      {"SaveToFObj", kUsable, [](Stored& s) { return s.tree.SaveToFObj(&s.file, L"Saved"); }},
      {"RemoveAttributes", kUsable, [](Stored& s) { return RemoveAttributes(s.file, L"New"); }},
      {"RemoveAttributesWithKey", kUsable,
       [](Stored& s) { return RemoveAttributesWithKey(s.file, L"Old", L"@tr.Root."); }},
  });
}

TEST_F(PersistenceMemory, NamesStayAsTheyWere) {
  constexpr Guarantee kKept = Guarantee::Unchanged;
  Walk({
      {"AppendAttributeIndex", kKept,
       [](Stored& s) {
         AppendAttributeIndex(s.name, 1234567890);
         return true;
       }},
      {"AppendAttributeIndex, nearly full", kKept,
       [](Stored& s) {
         AppendAttributeIndex(s.name, 1234567890);
         return true;
       },
       [](Stored& s) {
         s.name = L"";
         s.name.Preallocate(12);
         s.name += L"Sensor";
       }},
      {"StripAttributeIndex", kKept, [](Stored& s) { return StripAttributeIndex(s.name) == 3; },
       [](Stored& s) { s.name = L"Sensor(3)"; }},
  });
}

}  // namespace
