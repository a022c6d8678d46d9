// Copies of a table share its records: whoever goes first, the others keep them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>

#include "definitions/AttribDefMap.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

void Fill(CStringArray& list) { list.Add(L"filled"); }

CAttribDefMap SampleTable() {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,1,Name of A,501,2,a.bmp,text\nA,2,Again,101,0,,7\n@A,x\n"));
  table.RegisterFunctionListItem(L"List", &Fill);
  return table;
}

void ExpectSample(CAttribDefMap& table) {
  ASSERT_EQ(table.Count(), 2);
  EXPECT_EQ(ValueText(table[0]), CString(L"text"));
  EXPECT_EQ(table.GetAttribDefRec(L"A"), &table[1]);
  EXPECT_EQ(table.GetAttribDefRec(1), &table[0]);
  CString text;
  EXPECT_TRUE(table.GetCtlAttribs(L"A", text));
  EXPECT_EQ(text, CString(L"x"));
  CStringArray list;
  EXPECT_TRUE(table.FillList(L"List", list));
  EXPECT_TRUE(table.FileInitialised());
}

TEST(TableCopies, ReferToTheSameRecords) {
  CAttribDefMap table = SampleTable();
  CAttribDefMap copy(table);
  ExpectSample(copy);
  EXPECT_EQ(&copy[0], &table[0]);
  EXPECT_EQ(&copy[1], &table[1]);
  table.GetAttribDefRec(L"A")->SetCtlAttribs(L"changed");
  EXPECT_EQ(CtlText(*copy.GetAttribDefRec(L"A")), CString(L"changed"));
}

TEST(TableCopies, MayBeDestroyedInAnyOrder) {
  std::array<int, 3> order{0, 1, 2};
  do {
    std::array<std::unique_ptr<CAttribDefMap>, 3> tables;
    tables[0] = std::make_unique<CAttribDefMap>(SampleTable());
    tables[1] = std::make_unique<CAttribDefMap>(*tables[0]);
    tables[2] = std::make_unique<CAttribDefMap>();
    *tables[2] = *tables[1];
    for (int which : order) {
      tables[static_cast<std::size_t>(which)].reset();
      for (const std::unique_ptr<CAttribDefMap>& left : tables) {
        if (left != nullptr) {
          ExpectSample(*left);
        }
      }
    }
  } while (std::next_permutation(order.begin(), order.end()));
}

TEST(TableCopies, GoTheirOwnWayAfterwards) {
  CAttribDefMap table = SampleTable();
  CAttribDefMap copy(table);
  EXPECT_TRUE(Load(table, "B,3,,101,0,\n@A,other\n"));
  table.RemoveFunctionListItem(L"List");
  ExpectSample(copy);
  EXPECT_EQ(copy.GetAttribDefRec(L"B"), nullptr);
  EXPECT_EQ(table.Count(), 1);
}

TEST(TableCopies, AssignmentReplacesEverything) {
  CAttribDefMap target;
  EXPECT_TRUE(Load(target, "B,3,,101,0,\n@B,y\n"));
  target.RegisterFunctionListItem(L"Other", &Fill);
  target = SampleTable();
  ExpectSample(target);
  EXPECT_EQ(target.GetAttribDefRec(L"B"), nullptr);
  EXPECT_EQ(target.GetAttribDefRec(3), nullptr);
  CString text(L"untouched");
  EXPECT_FALSE(target.GetCtlAttribs(L"B", text));
  CStringArray list;
  EXPECT_FALSE(target.FillList(L"Other", list));
  target = CAttribDefMap();
  EXPECT_EQ(target.Count(), 0);
  EXPECT_FALSE(target.FileInitialised());
}

TEST(TableCopies, AssignmentKeepsTheTargetsRecordsForTheirHolders) {
  CAttribDefMap target;
  EXPECT_TRUE(Load(target, "B,3,Held,501,0,,text\n"));
  CAttribDefRec* held = target.GetAttribDefRec(L"B");
  const CAttribDefMap source = SampleTable();
  target = source;
  target = source;
  target = CAttribDefMap();
  EXPECT_EQ(held->Name(), CString(L"Held"));
  EXPECT_EQ(ValueText(*held), CString(L"text"));
}

TEST(TableCopies, AssignmentToItselfDoesNothing) {
  CAttribDefMap table = SampleTable();
  const CAttribDefRec* first = &table[0];
  CAttribDefMap& same = table;
  table = same;
  ExpectSample(table);
  EXPECT_EQ(&table[0], first);
}

TEST(TableCopies, RecordsOutliveTheTableTheyWereLoadedInto) {
  CAttribDefMap copy;
  CAttribDefRec* held = nullptr;
  {
    CAttribDefMap table = SampleTable();
    copy = table;
    held = table.GetAttribDefRec(1);
  }
  EXPECT_EQ(held->Name(), CString(L"Name of A"));
  EXPECT_EQ(held, copy.GetAttribDefRec(1));
}

}  // namespace
