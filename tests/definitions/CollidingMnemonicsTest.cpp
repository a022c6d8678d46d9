// Definition files whose mnemonics have equal hashes: all are found, in linear time.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "definitions/AttribDefMap.h"
#include "platform/TextEncoding.h"
#include "tests/CollidingNames.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

using lum::test::CCollidingNames;
using lum::test::Growth;

std::string LinesOf(const std::vector<CString>& mnemonics, std::size_t count, int type) {
  std::string lines;
  for (std::size_t i = 0; i < count; ++i) {
    lines += WideToUtf8(mnemonics[i]).GetString();
    lines += ',' + std::to_string(i) + ",," + std::to_string(type) + ",0,,1\n";
  }
  return lines;
}

TEST(CollidingMnemonics, AreAllFoundAndLaterLinesTakeOver) {
  const std::vector<CString> mnemonics = CCollidingNames::Make(1000);
  CAttribDefMap table;
  ASSERT_TRUE(Load(
      table, LinesOf(mnemonics, 1000, 101) + LinesOf(mnemonics, 500, 103) + "Plain,1,,101,0,\n"));
  ASSERT_EQ(table.Count(), 1501);
  for (std::size_t i = 0; i < mnemonics.size(); ++i) {
    const CAttribDefRec* record = table.GetAttribDefRec(mnemonics[i]);
    ASSERT_NE(record, nullptr);
    ASSERT_EQ(record->Mnemonic(), mnemonics[i]);
    ASSERT_EQ(record->Type(), i < 500 ? 103U : 101U);
  }
  EXPECT_NE(table.GetAttribDefRec(L"Plain"), nullptr);
  EXPECT_EQ(table.GetAttribDefRec(L"Absent"), nullptr);
}

CString NameAt(std::uint32_t slots, std::uint32_t home) {
  const auto hash = [](const CString& name) {
    return lum::detail::HashText(lum::detail::View(name));
  };
  return lum::test::NameAt(hash, slots, home);
}

// A slot of the run gets free when the table grows: a name that stood elsewhere keeps its place.
TEST(CollidingMnemonics, AreFoundAsTheyWereDefinedLastWhenRoomHasComeSince) {
  constexpr std::uint32_t kSlots = 512;
  constexpr std::uint32_t kHome = CCollidingNames::kHash;
  const std::vector<CString> colliding = CCollidingNames::Make(128);
  std::vector<CString> mnemonics = {NameAt(2 * kSlots, kHome ^ kSlots)};
  mnemonics.insert(mnemonics.end(), colliding.begin(), colliding.end());
  for (std::uint32_t away = 0; away < 128; ++away) {
    mnemonics.push_back(NameAt(kSlots, kHome + kSlots / 2 + away));
  }
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, LinesOf(mnemonics, mnemonics.size(), 101) +
                              LinesOf({colliding.back()}, 1, 103) +
                              LinesOf({colliding.back()}, 1, 102)));
  for (const CString& mnemonic : mnemonics) {
    const CAttribDefRec* record = table.GetAttribDefRec(mnemonic);
    ASSERT_NE(record, nullptr);
    ASSERT_EQ(record->Mnemonic(), mnemonic);
    ASSERT_EQ(record->Type(), mnemonic == colliding.back() ? 102U : 101U);
  }
}

TEST(CollidingMnemonics, AreLoadedInLinearTime) {
  constexpr std::size_t kFew = 2000;
  constexpr std::size_t kMany = 8 * kFew;
  const std::vector<CString> mnemonics = CCollidingNames::Make(kMany);
  const std::string few = LinesOf(mnemonics, kFew, 101);
  const std::string many = LinesOf(mnemonics, kMany, 101);
  CAttribDefMap table;
  // Linear work takes eight times as long, quadratic work 64 times.
  EXPECT_LT(Growth([&] { Load(table, few); }, [&] { Load(table, many); }), 24.0);
  EXPECT_EQ(table.Count(), static_cast<int>(kMany));
}

}  // namespace
