// What is made once for the whole process, when it is first asked for. Each test runs in a process
// of its own, where nobody has asked yet.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "attributes/AttributeMap.h"
#include "definitions/AttribDefMap.h"
#include "tests/Allocations.h"

namespace {

/// Ends the process with 0 when the call throws std::bad_alloc or succeeds without memory, and
/// succeeds with memory; with 1 otherwise.
template <typename Call>
[[noreturn]] void CallFirst(Call call) {
  LimitAllocations(0);
  try {
    call();
  } catch (const std::bad_alloc&) {
  }
  const bool refused = RefusedAllocations() != 0;
  LimitAllocations(-1);
  std::exit(refused && call() ? 0 : 1);
}

/// The process starts anew for each death test.
class FirstUseMemory : public testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(FirstUseMemory, OfTheEmptyNode) {
  const CAttributeMap map;
  const CString name(L"Missing");
  EXPECT_EXIT(CallFirst([&] { return map.Find(name).Count() == 0; }), testing::ExitedWithCode(0),
              "");
}

TEST_F(FirstUseMemory, OfTheValueThatIsMissing) {
  CAttributeMap map;
  const CString name(L"Missing");
  EXPECT_EXIT(CallFirst([&] { return map.FindValue(name).SetInt(1) == 0; }),
              testing::ExitedWithCode(0), "");
}

TEST_F(FirstUseMemory, OfTheDefinitions) {
  EXPECT_EXIT(CallFirst([&] { return CAttribDefMap::GetAttribDefMap().Count() == 0; }),
              testing::ExitedWithCode(0), "");
}

// The only allocation that could fail is the copy's own.
TEST_F(FirstUseMemory, OfTheValueOfNodesThatWereMovedFrom) {
  CAttributeMap map;
  CAttributeMap& child = map.Add(L"Child");
  const CAttributeMap moved(std::move(child));
  EXPECT_EXIT(
      {
        int allowed = 0;
        for (bool done = false; !done; ++allowed) {
          LimitAllocations(allowed);
          try {
            const CAttributeMap copy(map);
            done = copy[0].Value().Type() == CLumType::TYPE_UNDEFINED;
          } catch (const std::bad_alloc&) {
          }
          LimitAllocations(-1);
        }
        std::exit(allowed > 1 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
