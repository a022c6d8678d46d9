// Objects that link each other by index instead of by address: a copy of the pool is a copy of the
// whole structure, and freed places are used again. Many objects are kept in pieces, so that growth
// moves none of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <vector>

namespace lum::detail {

using CPoolIndex = std::uint32_t;
constexpr CPoolIndex kNoIndex = std::numeric_limits<CPoolIndex>::max();

template <typename T>
class CIndexPool {
 public:
  CPoolIndex Add(const T& object) {
    if (m_free.empty()) {
      Append(object);
      return static_cast<CPoolIndex>(m_count++);
    }
    const CPoolIndex index = m_free.back();
    (*this)[index] = object;
    m_free.pop_back();
    return index;
  }
  /// Needs no memory: without it to note the place, nobody takes the place again.
  void Free(CPoolIndex index) noexcept {
    (*this)[index] = T();
    try {
      m_free.push_back(index);
    } catch (const std::bad_alloc&) {
    }
  }

  /// How many places there are, freed ones included.
  std::size_t Size() const { return m_count; }

  /// Valid until the next Add. Precondition: Add gave the index and it was not freed.
  T& operator[](CPoolIndex index) { return m_pieces[index / kPiece][index % kPiece]; }
  const T& operator[](CPoolIndex index) const { return m_pieces[index / kPiece][index % kPiece]; }

 private:
  static constexpr std::size_t kPiece = 1024;

  // The first piece grows as it is needed: most pools are small. A piece may be there already, left
  // by an object that found no memory in it.
  void Append(const T& object) {
    if (m_count % kPiece == 0) {
      m_pieces.resize(m_count / kPiece + 1);
      m_pieces.back().reserve(m_count == 0 ? 0 : kPiece);
    }
    m_pieces.back().push_back(object);
  }

  std::vector<std::vector<T>> m_pieces;
  std::size_t m_count = 0;
  std::vector<CPoolIndex> m_free;
};

}  // namespace lum::detail
