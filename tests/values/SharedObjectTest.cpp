// The one object for the whole process: made late, made once, taken down. Threads that meet at the
// first call stand in tests/threads/FirstUseTest.cpp.
#include "values/SharedObject.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

using lum::detail::CSharedObject;

std::atomic<int> g_living = 0;

struct Counted {
  Counted() { ++g_living; }
  ~Counted() { --g_living; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
};

constinit CSharedObject<Counted> g_unused;

TEST(SharedObject, IsMadeWhenItIsFirstAskedForAndTakenDownOnce) {
  {
    CSharedObject<Counted> shared;
    EXPECT_EQ(g_living, 0);
    Counted& first = shared.Get();
    EXPECT_EQ(g_living, 1);
    EXPECT_EQ(&shared.Get(), &first);
    EXPECT_EQ(g_living, 1);
  }
  EXPECT_EQ(g_living, 0);
}

TEST(SharedObject, CostsNothingWhereNobodyAsks) { EXPECT_EQ(sizeof g_unused, sizeof(void*)); }

}  // namespace
