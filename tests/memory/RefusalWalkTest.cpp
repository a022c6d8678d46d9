// The walks bite: operations that break their promise are found out.
#include "tests/memory/RefusalWalk.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using lum::test::Guarantee;
using lum::test::WalkRefusals;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

struct Numbers {
  std::vector<std::unique_ptr<int>> first;
  std::vector<std::unique_ptr<int>> second;
};

using Operation = lum::test::Operation<Numbers>;

std::string DescribeNumbers(const Numbers& numbers) {
  return std::to_string(numbers.first.size()) + " " + std::to_string(numbers.second.size());
}

bool AddToBoth(Numbers& numbers) {
  numbers.first.push_back(std::make_unique<int>(1));
  numbers.second.push_back(std::make_unique<int>(2));
  return true;
}

/// What the walk reports of an operation.
std::vector<std::string> FaultsOf(const Operation& operation) {
  testing::TestPartResultArray found;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &found);
    WalkRefusals(operation, DescribeNumbers);
  }
  std::vector<std::string> faults;
  for (int i = 0; i < found.size(); ++i) {
    faults.emplace_back(found.GetTestPartResult(i).message());
  }
  return faults;
}

TEST(RefusalWalk, RefusesEachAllocationOnceAloneAndOnceWithAllLaterOnes) {
  const int before = lum::test::AllRefusals();
  WalkRefusals(Operation{"adding to one", Guarantee::Unchanged,
                         [](Numbers& numbers) {
                           numbers.first.push_back(std::make_unique<int>(1));
                           return true;
                         }},
               DescribeNumbers);
  EXPECT_EQ(lum::test::AllRefusals() - before, 2 * 2);
}

TEST(RefusalWalk, FindsAStateThatIsHalfChanged) {
  EXPECT_THAT(FaultsOf({"adding to both", Guarantee::Unchanged, AddToBoth}),
              Each(HasSubstr("it left\n  1 0\nwhere there was\n  0 0")));
}

TEST(RefusalWalk, FindsAnOperationThatGivesSomethingElseWhenItIsDoneAgain) {
  EXPECT_THAT(FaultsOf({"adding to both", Guarantee::Usable, AddToBoth}),
              ElementsAre(HasSubstr("done again it gave\n  2 1"), HasSubstr("2 1")));
}

TEST(RefusalWalk, FindsMemoryThatIsLeftOver) {
  std::vector<std::unique_ptr<int>> kept;  // Not lost in truth: leak checkers look on, too.
  kept.reserve(100);
  const auto keep = [&kept](Numbers&) {
    kept.push_back(std::make_unique<int>(1));
    return true;
  };
  EXPECT_THAT(FaultsOf({"keeping", Guarantee::Unchanged, keep}),
              ElementsAre(HasSubstr("1 allocations are left over"), HasSubstr("left over")));
}

TEST(RefusalWalk, FindsAnOperationThatNeedsNoMemory) {
  EXPECT_THAT(FaultsOf({"nothing", Guarantee::Unchanged, [](Numbers&) { return true; }}),
              ElementsAre(HasSubstr("needs no memory"), HasSubstr("needs no memory")));
}

TEST(RefusalWalk, FindsAnOperationThatIsNotDone) {
  EXPECT_THAT(FaultsOf({"refusing", Guarantee::Unchanged, [](Numbers&) { return false; }}),
              Each(HasSubstr("refusing")));
}

}  // namespace
