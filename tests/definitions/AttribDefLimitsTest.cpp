// Files that are no definition files, or far too large ones: nothing may crash or blow up.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "definitions/AttribDefMap.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

TEST(DefinitionLimits, BinaryFilesAreReadLikeAnyOther) {
  std::mt19937 random(20260314);
  std::uniform_int_distribution<int> byte(0, 255);
  for (int round = 0; round < 50; ++round) {
    std::string bytes(4096, '\0');
    for (char& ch : bytes) {
      ch = static_cast<char>(byte(random));
    }
    CAttribDefMap table;
    Load(table, bytes);
    for (int i = 0; i < table.Count(); ++i) {
      EXPECT_NE(table.GetAttribDefRec(table[i].Mnemonic()), nullptr);
      EXPECT_NE(table.GetAttribDefRec(table[i].Id()), nullptr);
    }
  }
}

TEST(DefinitionLimits, LinesOfTheFormatsOwnCharactersKeepTheIndexesWhole) {
  const char alphabet[] = ",,,,@@//  AB019-\t\n\n";
  std::mt19937 random(7);
  std::uniform_int_distribution<std::size_t> place(0, sizeof alphabet - 2);
  for (int round = 0; round < 200; ++round) {
    std::string bytes(300, '\0');
    for (char& ch : bytes) {
      ch = alphabet[place(random)];
    }
    CAttribDefMap table;
    Load(table, bytes);
    for (int i = 0; i < table.Count(); ++i) {
      const CAttribDefRec* last = table.GetAttribDefRec(table[i].Mnemonic());
      ASSERT_NE(last, nullptr);
      EXPECT_EQ(last->Mnemonic(), table[i].Mnemonic());
    }
  }
}

TEST(DefinitionLimits, KeepsNulCharactersInsideALine) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, std::string("A\0B,1,,501,0,,x\0y\n", 18)));
  ASSERT_EQ(table.Count(), 1);
  EXPECT_EQ(table[0].Mnemonic().GetLength(), 3);
  EXPECT_EQ(ValueText(table[0]).GetLength(), 3);
}

TEST(DefinitionLimits, ReadsLongLines) {
  std::string numbers;
  for (int i = 0; i < 200000; ++i) {
    numbers += "7,";
  }
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,1,,603,0,," + numbers + "7\n" + std::string(100000, ' ') + "\n@A," +
                              numbers + "\n"));
  ASSERT_EQ(table.Count(), 1);
  std::vector<int> values;
  EXPECT_EQ(table[0].DefaultValue()->GetIntArray(values), 1);
  EXPECT_EQ(values.size(), 200001u);
  EXPECT_EQ(CtlText(table[0]).GetLength(), 400000);
}

TEST(DefinitionLimits, LeavesOutALineThatIsTooLong) {
  const auto length = static_cast<std::size_t>(CAttribDefMap::kMaxLineLength);
  const std::string start = "A,1,,501,0,,";
  const std::string longest = start + std::string(length - start.size(), 'x');
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, longest + "\n"));
  EXPECT_EQ(table.Count(), 1);
  EXPECT_FALSE(Load(table, "B,2,,101,0,\n" + longest + "x\n"));
  EXPECT_EQ(table.Count(), 1);
  EXPECT_NE(table.GetAttribDefRec(L"B"), nullptr);
  EXPECT_TRUE(Load(table, longest + "x\nB,2,,101,0,\n"));
  EXPECT_EQ(table.Count(), 1);
  EXPECT_TRUE(Load(table, "//" + longest + "\n"));
}

TEST(DefinitionLimits, EndsTheLoadAfterTheLastRecordAllowed) {
  std::string bytes;
  for (int i = 0; i < CAttribDefMap::kMaxRecords; ++i) {
    bytes += "a\n";
  }
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, bytes + "// a comment\n@a,x\n"));
  EXPECT_EQ(table.Count(), CAttribDefMap::kMaxRecords);
  EXPECT_FALSE(Load(table, bytes + "b\nc\n"));
  EXPECT_EQ(table.Count(), CAttribDefMap::kMaxRecords);
  EXPECT_EQ(table.GetAttribDefRec(L"b"), nullptr);
}

}  // namespace
