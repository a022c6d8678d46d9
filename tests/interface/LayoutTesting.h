// How the tests of the binary interface look at it: sizes and alignments of types, and the places
// (slots) of functions in the virtual tables. Programs that were built earlier rely on both.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <span>

namespace lum::test {

/// What a type was released with, and what it has now.
struct TypeLayout {
  const char* name;
  std::size_t releasedSize;
  std::size_t releasedAlignment;
  std::size_t size;
  std::size_t alignment;
};

#define LUM_LAYOUT(type, size, alignment) \
  { #type, size, alignment, sizeof(type), alignof(type) }

/// Why the sizes cannot be compared with this compiler and standard library; null when they can.
inline const char* WhyNoLayouts() {
#if !defined(__GLIBCXX__) || defined(_GLIBCXX_DEBUG)
  return "The sizes are those with GNU's standard library as programs use it.";
#else
  return sizeof(void*) == 8 ? nullptr : "The sizes are those of 64-bit systems.";
#endif
}

inline void ExpectReleasedLayouts(std::span<const TypeLayout> types) {
  if (WhyNoLayouts() != nullptr) {
    GTEST_SKIP() << WhyNoLayouts();
  }
  for (const TypeLayout& type : types) {
    EXPECT_EQ(type.size, type.releasedSize)
        << type.name << ": programs built earlier reserve the released size for it.";
    EXPECT_EQ(type.alignment, type.releasedAlignment) << type.name;
  }
}

/// The slot a virtual function was released with, and the one it has now.
struct VirtualSlot {
  const char* name;
  int releasedSlot;
  int slot;
};

#define LUM_SLOT(type, function, slot) \
  { #type "::" #function, slot, SlotOf(&type::function) }
#define LUM_OVERLOAD_SLOT(type, function, slot, ...) \
  { #type "::" #function ": " #__VA_ARGS__, slot, SlotOf < type, __VA_ARGS__>(&type::function) }

/// Whether pointers to members are those of the Itanium C++ ABI on x86-64 (GCC, Clang, MinGW-w64):
/// the first word of a virtual function's is 1 plus the offset of its slot.
#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
inline constexpr bool kSlotsShow = true;
#else
inline constexpr bool kSlotsShow = false;
#endif

/// The slot of a virtual function, or -1 when it is not virtual. A destructor takes two slots.
template <typename Class, typename Signature>
int SlotOf(Signature Class::*function) {
  std::ptrdiff_t word = 0;
  static_assert(sizeof function >= sizeof word);
  std::memcpy(&word, &function, sizeof word);
  const auto slotSize = static_cast<std::ptrdiff_t>(sizeof(void*));
  return word % 2 == 1 ? static_cast<int>((word - 1) / slotSize) : -1;
}

/// How many slots the class has: that of one more virtual function is the first one free.
template <typename Class>
int CountSlots() {
  struct Longer : Class {
    virtual void OneMore() = 0;
  };
  return SlotOf(&Longer::OneMore);
}

inline void ExpectReleasedSlots(std::span<const VirtualSlot> functions) {
  if (!kSlotsShow) {
    GTEST_SKIP() << "Slots are read from pointers to members as the Itanium C++ ABI has them on "
                    "x86-64.";
  }
  for (const VirtualSlot& function : functions) {
    EXPECT_EQ(function.slot, function.releasedSlot)
        << function.name
        << " moved. The slot order is part of the binary interface: add at the end only.";
  }
}

}  // namespace lum::test
