// The factory when memory is short. The test replaces the global operator new, which on Windows
// does not reach into a DLL.
#include <gtest/gtest.h>

#if !defined(_WIN32)

#include <cstdlib>
#include <memory>
#include <new>

#include "tests/values/ValueSamples.h"
#include "values/LumTypeCreator.h"

namespace {

// How many allocations succeed from now on; negative: all.
int g_allocationsLeft = -1;

bool IsAllowed() {
  if (g_allocationsLeft < 0) {
    return true;
  }
  return g_allocationsLeft > 0 && g_allocationsLeft-- > 0;
}

}  // namespace

// Not inlined: the compiler would see "new" meet free() and call them mismatched.
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* memory = IsAllowed() ? std::malloc(size > 0 ? size : 1) : nullptr;
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

// Calls `make` with room for 0, 1, 2 ... allocations until it has enough. Returns how often it gave
// null.
template <typename Make>
int CountFailures(const Make& make) {
  for (int allowed = 0; allowed < 100; ++allowed) {
    g_allocationsLeft = allowed;
    CLumType* made = make();
    g_allocationsLeft = -1;
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

#endif
