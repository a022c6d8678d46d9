// Look-ups of children that exist allocate nothing.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/Allocations.h"

namespace {

/// How many allocations a call makes.
template <typename Call>
int CountAllocations(Call call) {
  const int before = CountedAllocations();
  call();
  return CountedAllocations() - before;
}

// Where a library does not share the program's allocation functions there is nothing to count.
#ifndef _WIN32
TEST(LookupAllocation, CounterSeesTheLibrarysAllocations) {
  CAttributeMap map;
  EXPECT_GT(CountAllocations([&] { map.Add(L"A"); }), 0);
}
#endif

// Few children are never indexed; many are while they are searched for the first time.
TEST(LookupAllocation, LookUpsOfExistingChildrenAllocateNothing) {
  CAttributeMap map;
  for (int i = 0; i < 40; ++i) {
    map.Add(i % 2 == 0 ? L"Even" : L"Odd", CLumInt(i), 0);
  }
  for (int search = 0; search < 40; ++search) {
    map.Has(L"Odd", search);
  }
  map.GetAttrMap(L"Even")->Add(L"Below", CLumDouble(1.5), 0);
  const CAttributeMap& constMap = map;
  const CString even(L"Even");
  const CString below(L"Below");
  const CString missing(L"Missing");
  map.FindValue(missing);
  constMap.FindValue(missing);
  int value = 0;
  unsigned int flags = 0;
  int found = 0;
  const int allocated = CountAllocations([&] {
    found += map.FindAttribute(even, 7);
    found += map.Has(even, 19) ? 1 : 0;
    found += map.Find(even).Find(below).Count();
    found += map.FindCreate(even, 5).Count();
    found += map.GetAttrMap(even, 19) != nullptr ? 1 : 0;
    found += constMap.GetAttrMap(even, 20) != nullptr ? 1 : 0;
    found += map.FindValue(even, 3).Type() + constMap.FindValue(even, 3).Type();
    found += constMap.Find(missing).Count() + map.FindValue(missing).Type();
    found += map.Count(even) + map.RetrieveIndex(39) + map[39].Count();
    found += map.FindCreateIndex(39).Count();
    found += map.GetAttribValue(even, value, flags) ? 1 : 0;
    found += map.SetAttribValue(even, 3, true, 1) ? 1 : 0;
    found += map.DisableAttribute(even, true) ? 1 : 0;
  });
  EXPECT_EQ(allocated, 0);
  EXPECT_EQ(found, 14 + 1 + 0 + 0 + 1 + 0 + 202 + 0 + 20 + 19 + 0 + 0 + 3);
}

TEST(LookupAllocation, FewChildrenAreSearchedWithoutAnIndexHoweverOften) {
  CAttributeMap map;
  for (int i = 0; i < 16; ++i) {
    map.Add(L"Sensor", CLumInt(i), 0);
  }
  const CString name(L"Sensor");
  int found = 0;
  const int allocated = CountAllocations([&] {
    for (int search = 0; search < 1000; ++search) {
      found += map.FindAttribute(name, search % 16);
    }
  });
  EXPECT_EQ(allocated, 0);
  EXPECT_EQ(found, 62 * 120 + 28);
}

}  // namespace
