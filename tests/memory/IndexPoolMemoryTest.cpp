// A pool whose places come in pieces, when memory runs out between them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/portable/IndexPool.h"
#include "tests/Allocations.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::detail::CIndexPool;
using lum::detail::CPoolIndex;

constexpr int kObjects = 2050;

struct Pool {
  CIndexPool<int> objects;
  std::vector<CPoolIndex> places;
};

std::string DescribePool(const Pool& pool) {
  int sum = 0;
  for (const CPoolIndex place : pool.places) {
    sum += pool.objects[place];
  }
  return std::to_string(pool.places.size()) + " objects, sum " + std::to_string(sum);
}

bool Fill(Pool& pool) {
  while (pool.places.size() < kObjects) {
    pool.places.push_back(pool.objects.Add(static_cast<int>(pool.places.size())));
  }
  return true;
}

TEST(IndexPoolMemory, ObjectsKeepTheirPlacesWhenAPieceCannotBeMade) {
  lum::test::WalkRefusals(
      lum::test::Operation<Pool>{"Add", lum::test::Guarantee::Usable, Fill,
                                 [](Pool& pool) { pool.places.reserve(kObjects); }},
      DescribePool);
}

TEST(IndexPoolMemory, FreeingNeedsNone) {
  Pool pool;
  Fill(pool);
  LimitAllocations(0);
  for (const CPoolIndex place : pool.places) {
    pool.objects.Free(place);
  }
  LimitAllocations(-1);
  EXPECT_EQ(pool.objects.Size(), std::size_t{kObjects});
  const CPoolIndex again = pool.objects.Add(7);
  EXPECT_EQ(pool.objects[again], 7);
}

}  // namespace
