// Queries allocate no memory: a program asks for definitions while it draws.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>

#include "definitions/AttribDefMap.h"
#include "tests/Allocations.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

TEST(LookupCost, CountsTheLibrariesAllocationsToo) {
  const int before = CountedAllocations();
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "Height,1,The height,103,2,height.bmp,1.5\n"));
  EXPECT_GT(CountedAllocations(), before + 3);
}

TEST(LookupCost, QueriesAllocateNothing) {
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, "Height,1,The height,103,2,height.bmp,1.5\nWidth,2,,103,2,,1\n"));
  CTranslations translations;
  const CString known(L"Height");
  const CString unknown(L"No such mnemonic, and a rather long one");
  CString text;
  int number = 0;
  unsigned short id = 0;
  CLumType::LUM_TYPE type = CLumType::TYPE_UNDEFINED;
  int answers = 0;
  const int before = CountedAllocations();
  for (const CString& mnemonic : {std::cref(known), std::cref(unknown)}) {
    answers += table.GetAttribName(mnemonic, text) + table.GetAttribType(mnemonic, type) +
               table.GetAttribControlType(mnemonic, number) + table.GetAttribID(mnemonic, id) +
               table.GetBitmapFilename(mnemonic, text) +
               (table.GetAttribDefRec(mnemonic) != nullptr ? 1 : 0);
  }
  for (unsigned short which : {std::uint16_t{1}, std::uint16_t{99}}) {
    answers += table.GetAttribName(which, text) + table.GetAttribType(which, type) +
               table.GetAttribControlType(which, number) + table.GetAttribMnemo(which, text) +
               (table.GetAttribDefRec(which) != nullptr ? 1 : 0);
  }
  EXPECT_EQ(CountedAllocations(), before);
  EXPECT_EQ(answers, 11);
}

TEST(LookupCost, ATableThatIsEmptiedAndGivenBackKeepsItsRecordsOnce) {
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, "Height,1,The height,103,2,height.bmp,1.5\nWidth,2,,103,2,,1\n"));
  const CAttribDefMap definitions = table;
  const auto allocationsOfRounds = [&](int rounds) {
    const int before = CountedAllocations();
    for (int round = 0; round < rounds; ++round) {
      table = CAttribDefMap();
      table = definitions;
    }
    return CountedAllocations() - before;
  };
  allocationsOfRounds(2);  // The first ones make room for the records that went.
  const int once = allocationsOfRounds(1);
  EXPECT_EQ(allocationsOfRounds(1000), 1000 * once);
  EXPECT_EQ(table.Count(), 2);
}

}  // namespace
