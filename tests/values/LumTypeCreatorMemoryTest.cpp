// The factory when memory is short.
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/Allocations.h"
#include "values/LumTypeCreator.h"

namespace {

// Calls `make` with room for 0, 1, 2 ... allocations until it has enough. Returns how often it gave
// null.
template <typename Make>
int CountFailures(const Make& make) {
  for (int allowed = 0; allowed < 100; ++allowed) {
    LimitAllocations(allowed);
    CLumType* made = make();
    LimitAllocations(-1);
    if (made != nullptr) {
      delete made;
      return allowed;
    }
  }
  return -1;
}

TEST(LumTypeCreatorMemory, EveryCodeGivesNullWithoutMemory) {
  for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
    if (kind.make != nullptr) {
      EXPECT_GE(CountFailures([&] { return LumTypeCreator::MakeLumType(kind.type); }), 1);
    }
  }
}

TEST(LumTypeCreatorMemory, TextsAndListsGiveNullWithoutMemory) {
  const CString text = L"1,2,3,4";
  const std::vector<CString> names = {L"a", L"b"};
  std::vector<double> numbers = {1.0, 2.0};
  EXPECT_GE(CountFailures([&] { return LumTypeCreator::MakeLumType(603, text); }), 2);
  EXPECT_GE(CountFailures([&] { return LumTypeCreator::MakeLumType(613, text); }), 2);
  EXPECT_GE(CountFailures([&] { return LumTypeCreator::MakeValue(names); }), 2);
  EXPECT_GE(CountFailures([&] { return LumTypeCreator::MakeValue(L"a longer name"); }), 2);
  EXPECT_GE(CountFailures([&] { return LumTypeCreator::MakeValue("a longer name"); }), 2);
  EXPECT_EQ(CountFailures([&] { return LumTypeCreator::MakeValue(std::move(numbers)); }), 1);
  EXPECT_TRUE(numbers.empty());  // NOLINT(bugprone-use-after-move)
}

}  // namespace
