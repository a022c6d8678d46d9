// Pools of few and of many objects.
#include "platform/portable/IndexPool.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using lum::detail::CIndexPool;
using lum::detail::CPoolIndex;

constexpr int kMany = 5000;

TEST(IndexPool, KeepsEveryObjectAtItsIndex) {
  CIndexPool<std::string> pool;
  for (int i = 0; i < kMany; ++i) {
    EXPECT_EQ(pool.Add(std::to_string(i)), static_cast<CPoolIndex>(i));
  }
  EXPECT_EQ(pool.Size(), static_cast<std::size_t>(kMany));
  for (int i = 0; i < kMany; ++i) {
    EXPECT_EQ(pool[static_cast<CPoolIndex>(i)], std::to_string(i));
  }
}

TEST(IndexPool, UsesFreedPlacesAgain) {
  CIndexPool<std::string> pool;
  pool.Add("a");
  const CPoolIndex freed = pool.Add("b");
  pool.Add("c");
  pool.Free(freed);
  EXPECT_EQ(pool[freed], "");
  EXPECT_EQ(pool.Add("d"), freed);
  EXPECT_EQ(pool[freed], "d");
  EXPECT_EQ(pool.Size(), 3U);
}

TEST(IndexPool, CopiesAreIndependent) {
  CIndexPool<int> pool;
  for (int i = 0; i < kMany; ++i) {
    pool.Add(i);
  }
  CIndexPool<int> copy = pool;
  for (int i = 0; i < kMany; ++i) {
    copy[copy.Add(-i)] = kMany + i;
    pool[static_cast<CPoolIndex>(i)] = -1;
  }
  for (int i = 0; i < 2 * kMany; ++i) {
    EXPECT_EQ(copy[static_cast<CPoolIndex>(i)], i);
  }
}

}  // namespace
