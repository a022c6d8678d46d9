// CValueSlot: the place where an attribute keeps its value. A copy of a small value lives in the
// slot itself, which saves an allocation for most attributes; any other value stands on the heap.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

#include "values/LumTypeBase.h"

namespace lum::detail {

/// Owns one value or none.
class CValueSlot {
 public:
  /// Takes ownership of `value`, which may be null.
  explicit CValueSlot(CLumType* value) noexcept : m_heap(value) {}
  /// Takes the value over. One that stands on the heap keeps its address.
  CValueSlot(CValueSlot&& other) noexcept : CValueSlot(nullptr) { TakeFrom(other); }
  CValueSlot& operator=(CValueSlot&& other) = delete;
  ~CValueSlot() { Clear(); }

  /// The value, or null.
  const CLumType* Get() const noexcept {
    return m_isInPlace ? std::launder(reinterpret_cast<const CLumType*>(m_place)) : m_heap;
  }
  CLumType* Get() noexcept {
    return m_isInPlace ? std::launder(reinterpret_cast<CLumType*>(m_place)) : m_heap;
  }

  /// Replaces the value by one on the heap, whose owner the slot becomes.
  void Adopt(CLumType* value) noexcept {
    Clear();
    m_heap = value;
  }
  /// Puts a copy of `value` into an empty slot, in place where that is possible.
  void EmplaceCopy(const CLumType& value) {
    if (!CopyInPlace(value)) {
      m_heap = value.MakeCopy();
    }
  }
  /// Replaces the value by that of another slot, which holds none afterwards.
  void TakeFrom(CValueSlot& other) noexcept {
    Clear();
    if (other.m_isInPlace) {
      CopyInPlace(*other.Get());
      other.Clear();
    } else {
      m_heap = std::exchange(other.m_heap, nullptr);
    }
  }

 private:
  /// As much as the scalar kinds need.
  static constexpr std::size_t kPlaceSize = 16;

  /// False when the value is not exactly of one of the kinds that fit: applications derive kinds of
  /// their own, which only MakeCopy can copy. Precondition: the slot holds none.
  bool CopyInPlace(const CLumType& value) noexcept;

  void Clear() noexcept {
    // The kinds that stand in place hold plain numbers: nothing is left behind by them.
    if (!m_isInPlace) {
      delete m_heap;
    }
    m_isInPlace = false;
    m_heap = nullptr;
  }

  union {
    CLumType* m_heap;
    alignas(void*) std::byte m_place[kPlaceSize];
  };
  bool m_isInPlace = false;
};

}  // namespace lum::detail
