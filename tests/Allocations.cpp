// The program-wide allocation functions that count and refuse.
#include "tests/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

int g_counted = 0;
int g_live = 0;
int g_left = -1;
int g_leftAfterRefusal = 0;
int g_refused = 0;

bool IsAllowed() {
  if (g_left < 0 || g_left-- > 0) {
    return true;
  }
  ++g_refused;
  g_left = g_leftAfterRefusal;
  return false;
}

void Limit(int allowed, int leftAfterRefusal) {
  g_left = allowed;
  g_leftAfterRefusal = leftAfterRefusal;
  g_refused = 0;
}

}  // namespace

int CountedAllocations() { return g_counted; }

int LiveAllocations() { return g_live; }

void LimitAllocations(int allowed) { Limit(allowed, 0); }

void RefuseOneAllocation(int allowed) { Limit(allowed, -1); }

int RefusedAllocations() { return g_refused; }

// Every form is replaced, so that none of them meets memory of another one's making. Not inlined:
// the compiler would see "new" meet free() and call them mismatched.

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++g_counted;
  void* memory = IsAllowed() ? std::malloc(size == 0 ? 1 : size) : nullptr;
  g_live += memory != nullptr ? 1 : 0;
  return memory;
}
void* operator new(std::size_t size) {
  if (void* memory = operator new(size, std::nothrow)) {
    return memory;
  }
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  g_live -= memory != nullptr ? 1 : 0;
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { operator delete(memory); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { operator delete(memory); }
