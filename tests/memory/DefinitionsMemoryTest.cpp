// The definition table when memory runs out.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "definitions/AttribDefMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;
using lum::test::WalkRefusals;

constexpr const wchar_t* kListName = L"A list that is long enough for storage of its own";

struct Tables {
  CAttribDefMap table;
  CAttribDefMap other;
  CString text;
  CStringArray list;
};

using Operation = lum::test::Operation<Tables>;

void FillWithOne(CStringArray& list) { list.Add(L"one"); }

/// Twenty definitions of several kinds, some with control lines.
std::string DefinitionLines() {
  std::string lines = "// mnemonic,id,name,type,control,bitmap,default\n";
  for (int i = 0; i < 20; ++i) {
    const std::string number = std::to_string(i);
    lines += "Def" + number + "," + std::to_string(i * 7) + ",The display name number " + number +
             (i % 3 == 0 ? ",613,2,a.bmp,one,two" : ",501,2,,a default value that is long") + "\n";
  }
  return lines + "  Def3 , 9 , trimmed , 103 , 1 , , 2.5\n@Def3, 0 , 100\n@Def4,a,b\n";
}

std::string DescribeTable(CAttribDefMap table) {
  std::string text = table.FileInitialised() ? "loaded" : "";
  for (int i = 0; i < table.Count(); ++i) {
    const CAttribDefRec& record = table[i];
    CString control;
    table.GetCtlAttribs(record.Mnemonic(), control);
    text += " " + Narrow(record.Mnemonic()) + "," + std::to_string(record.Id()) + "," +
            Narrow(record.Name()) + "," +
            (record.DefaultValue() != nullptr ? TextOf(*record.DefaultValue()) : "-") + "," +
            Narrow(control);
    const CAttribDefRec* byName = table.GetAttribDefRec(record.Mnemonic());
    const CAttribDefRec* byId = table.GetAttribDefRec(record.Id());
    if (byName == nullptr || byName->Mnemonic() != record.Mnemonic() || byId == nullptr ||
        byId->Id() != record.Id()) {
      text += lum::test::kBroken;
    }
  }
  CStringArray list;
  text += table.FillList(kListName, list) ? " list" : "";
  return text;
}

std::string DescribeTables(const Tables& tables) {
  return DescribeTable(tables.table) + "\n  " + DescribeTable(tables.other) + "\n  " +
         Narrow(tables.text) + std::to_string(tables.list.GetSize());
}

class DefinitionsMemory : public testing::Test {
 protected:
  void SetUp() override {
    WriteBytes(m_folder.File("many.def"), DefinitionLines());
    WriteBytes(m_folder.File("few.def"), kTestDefinitions);
    m_many = PathText(m_folder.File("many.def"));
    m_few = PathText(m_folder.File("few.def"));
  }

  void Walk(const std::vector<Operation>& operations) const {
    for (Operation operation : operations) {
      operation.prepare = [this](Tables& tables) {
        tables.table.LoadDefFile(m_few, false);
        tables.other.LoadDefFile(m_many, false);
        tables.table.RegisterFunctionListItem(kListName, FillWithOne);
        tables.text = L"text";
      };
      WalkRefusals(operation, DescribeTables);
    }
  }

  CTemporaryFolder m_folder;
  CString m_many;
  CString m_few;
};

TEST_F(DefinitionsMemory, ALoadMayStopMidway) {
  Walk({{"LoadDefFile", Guarantee::Usable,
         [this](Tables& t) { return t.table.LoadDefFile(m_many, true); }}});
}

TEST_F(DefinitionsMemory, ATableThatCannotBeCopiedStaysAsItWas) {
  constexpr Guarantee kKept = Guarantee::Unchanged;
  Walk({
      {"copy", kKept,
       [](Tables& t) {
         const CAttribDefMap copy(t.other);
         return copy.Count() == t.other.Count();
       }},
      {"assign", kKept,
       [](Tables& t) {
         t.table = t.other;
         return true;
       }},
      {"RegisterFunctionListItem", kKept,
       [](Tables& t) { return t.other.RegisterFunctionListItem(kListName, FillWithOne); }},
      {"MakeCopy", kKept,
       [](Tables& t) {
         const std::unique_ptr<CAttribDefRec> copy(t.other[0].MakeCopy());
         return copy->Id() == 0;
       }},
      {"assign a record", kKept,
       [](Tables& t) {
         *t.other.GetAttribDefRec(static_cast<unsigned short>(21)) = t.other[20];
         return true;
       }},
      {"LoadRec", kKept,
       [](Tables& t) {
         CAttribDefRec record(t.other[0]);
         CLumName value(L"a default value that is long");
         record.LoadRec(L"M", 1, L"N", 501, 1, L"B", &value);
         return record.DefaultValue() != nullptr;
       }},
  });
}

TEST_F(DefinitionsMemory, OutputsOfQueriesStayAsTheyWere) {
  constexpr Guarantee kKept = Guarantee::Unchanged;
  Walk({
      {"GetCtlAttribs", kKept, [](Tables& t) { return t.other.GetCtlAttribs(L"Def3", t.text); }},
      {"GetAttribName", kKept, [](Tables& t) { return t.other.GetAttribName(L"Def3", t.text); }},
      {"GetBitmapFilename", kKept,
       [](Tables& t) { return t.other.GetBitmapFilename(L"Def6", t.text); }},
      {"FillList", kKept, [](Tables& t) { return t.table.FillList(kListName, t.list); }},
  });
}

}  // namespace
