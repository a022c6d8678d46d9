// The one object for the whole process: made late, made once, taken down.
#include "values/SharedObject.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

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

TEST(SharedObject, IsOneForThreadsThatMeetAtTheFirstCall) {
  constexpr int kThreads = 8;
  for (int round = 0; round < 100; ++round) {
    CSharedObject<Counted> shared;
    std::atomic<int> ready = 0;
    std::vector<const Counted*> seen(kThreads);
    std::vector<std::thread> threads;
    for (const Counted*& mine : seen) {
      threads.emplace_back([&] {
        for (++ready; ready < kThreads;) {
          std::this_thread::yield();
        }
        mine = &shared.Get();
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    ASSERT_EQ(std::set<const Counted*>(seen.begin(), seen.end()).size(), 1u);
    ASSERT_EQ(g_living, 1);
  }
  EXPECT_EQ(g_living, 0);
}

TEST(SharedObject, CostsNothingWhereNobodyAsks) { EXPECT_EQ(sizeof g_unused, sizeof(void*)); }

}  // namespace
