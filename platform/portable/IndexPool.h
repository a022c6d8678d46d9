// Objects that link each other by index instead of by address: a copy of the pool is a copy of the
// whole structure, and freed places are used again.
#pragma once

#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace lum::detail {

using CPoolIndex = std::uint32_t;
constexpr CPoolIndex kNoIndex = std::numeric_limits<CPoolIndex>::max();

template <typename T>
class CIndexPool {
 public:
  CPoolIndex Add(T object) {
    if (m_free.empty()) {
      m_objects.push_back(std::move(object));
      return static_cast<CPoolIndex>(m_objects.size() - 1);
    }
    const CPoolIndex index = m_free.back();
    m_objects[index] = std::move(object);
    m_free.pop_back();
    return index;
  }
  void Free(CPoolIndex index) {
    m_objects[index] = T();
    m_free.push_back(index);
  }

  /// Valid until the next Add. Precondition: Add gave the index and it was not freed.
  T& operator[](CPoolIndex index) { return m_objects[index]; }
  const T& operator[](CPoolIndex index) const { return m_objects[index]; }

 private:
  std::vector<T> m_objects;
  std::vector<CPoolIndex> m_free;
};

}  // namespace lum::detail
