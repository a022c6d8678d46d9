// Queries allocate no memory: a program asks for definitions while it draws. Counts every
// allocation of the process, so it is a program of its own.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <new>

#include "definitions/AttribDefMap.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

long g_allocations = 0;

void* CountedAllocate(std::size_t size) {
  ++g_allocations;
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return CountedAllocate(size); }
void* operator new[](std::size_t size) { return CountedAllocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++g_allocations;
  return std::malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

TEST(LookupCost, CountsTheLibrariesAllocationsToo) {
  const long before = g_allocations;
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "Height,1,The height,103,2,height.bmp,1.5\n"));
  EXPECT_GT(g_allocations, before + 3);
}

TEST(LookupCost, QueriesAllocateNothing) {
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, "Height,1,The height,103,2,height.bmp,1.5\nWidth,2,,103,2,,1\n"));
  CTranslations translations;
  const CString known(L"Height");
  const CString unknown(L"No such mnemonic, and a rather long one");
  CString text;
  int number = 0;
  unsigned short id = 0;
  CLumType::LUM_TYPE type = CLumType::TYPE_UNDEFINED;
  int answers = 0;
  const long before = g_allocations;
  for (const CString& mnemonic : {std::cref(known), std::cref(unknown)}) {
    answers += table.GetAttribName(mnemonic, text) + table.GetAttribType(mnemonic, type) +
               table.GetAttribControlType(mnemonic, number) + table.GetAttribID(mnemonic, id) +
               table.GetBitmapFilename(mnemonic, text) +
               (table.GetAttribDefRec(mnemonic) != nullptr ? 1 : 0);
  }
  for (unsigned short which : {std::uint16_t{1}, std::uint16_t{99}}) {
    answers += table.GetAttribName(which, text) + table.GetAttribType(which, type) +
               table.GetAttribControlType(which, number) + table.GetAttribMnemo(which, text) +
               (table.GetAttribDefRec(which) != nullptr ? 1 : 0);
  }
  EXPECT_EQ(g_allocations, before);
  EXPECT_EQ(answers, 11);
}

}  // namespace
