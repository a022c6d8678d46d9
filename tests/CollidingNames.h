// Names whose hashes are all equal, as somebody would choose them who wants look-ups to be slow;
// and how the time that something takes grows.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <random>
#include <set>
#include <vector>

#include "values/TextView.h"

namespace lum::test {

/// The hashes of texts mix in eight bytes at a time by a multiplication, which can be undone: the
/// eight bytes that come last are calculated from those before and from the wanted hash. They must
/// be characters that a file can hold, though, which is what the table below is for.
class CCollidingNames {
 public:
  static constexpr std::uint32_t kHash = 0x12345678;

  /// Names with that HashText().
  static std::vector<CString> Make(std::size_t count) {
    return CCollidingNames(2 * kHalf, 0).MakeAll(count);
  }
  /// Keys and names of sections with that HashKey(), which begins with the size in bytes and mixes
  /// in the last eight bytes first.
  static std::vector<CString> MakeKeys(std::size_t count) {
    return CCollidingNames(2 * sizeof(std::uint64_t), kHalf).MakeAll(count);
  }

 private:
  static constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
  static constexpr std::size_t kHalf = sizeof(std::uint64_t) / sizeof(wchar_t);
  static constexpr std::size_t kEnds = std::size_t{1} << 19;
  /// The bits that no character has.
  static constexpr std::uint64_t kUnused = sizeof(wchar_t) == 4 ? 0xFFF00000FFF00000U : 0U;

  CCollidingNames(std::uint64_t size, std::size_t firstMixed)
      : m_size(size), m_firstMixed(firstMixed) {
    for (std::uint64_t& end : m_ends) {
      // The last two steps undone: what gives the hash, and what the shift made of the product.
      std::uint64_t state = (std::uint64_t{kHash} << 32 | (m_random() & 0xFFFFFFFFU)) * Inverse();
      state ^= state >> 32;
      end = state * Inverse();
    }
    std::sort(m_ends.begin(), m_ends.end(), IsBefore);
  }

  std::vector<CString> MakeAll(std::size_t count) {
    std::vector<CString> names;
    while (names.size() < count) {
      AddSome(names, count);
    }
    return names;
  }

  static bool IsBefore(std::uint64_t a, std::uint64_t b) { return (a & kUnused) < (b & kUnused); }

  static constexpr std::uint64_t Inverse() {
    std::uint64_t inverse = kFactor;
    for (int i = 0; i < 6; ++i) {
      inverse *= 2 - kFactor * inverse;
    }
    return inverse;
  }

  static bool IsUsable(wchar_t ch) {
    const auto code = static_cast<std::uint32_t>(ch);
    return code > 0xA0 && code < 0xFFFFE && !(code >= 0xD800 && code <= 0xFFFF);
  }
  static bool IsUsable(const wchar_t (&chars)[2 * kHalf]) {
    return std::all_of(std::begin(chars), std::end(chars), [](wchar_t ch) { return IsUsable(ch); });
  }

  void AddSome(std::vector<CString>& names, std::size_t count) {
    wchar_t chars[2 * kHalf];
    for (std::size_t i = 0; i < kHalf; ++i) {
      chars[m_firstMixed + i] = static_cast<wchar_t>(0xA1 + m_random() % 0xD000);
    }
    std::uint64_t begin = 0;
    std::memcpy(&begin, chars + m_firstMixed, sizeof begin);
    std::uint64_t state = (m_size ^ begin) * kFactor;
    state ^= state >> 32;
    const auto [first, last] = std::equal_range(m_ends.begin(), m_ends.end(), state, IsBefore);
    for (auto end = first; end != last && names.size() < count; ++end) {
      const std::uint64_t rest = state ^ *end;
      std::memcpy(chars + kHalf - m_firstMixed, &rest, sizeof rest);
      const CString name(chars, static_cast<int>(2 * kHalf));
      if (IsUsable(chars) && m_made.insert(name).second) {
        names.push_back(name);
      }
    }
  }

  std::uint64_t m_size;
  std::size_t m_firstMixed;  ///< The half that is.
  std::mt19937_64 m_random{20260314};
  std::set<CString> m_made;
  std::vector<std::uint64_t> m_ends = std::vector<std::uint64_t>(kEnds);
};

/// A name whose hash has this home in a table of so many slots.
template <typename Hash>
CString NameAt(Hash hash, std::uint32_t slots, std::uint32_t home) {
  CString name;
  for (unsigned int number = 0; name.IsEmpty() || ((hash(name) ^ home) & (slots - 1)) != 0;
       ++number) {
    name.Format(L"Name%u", number);
  }
  return name;
}

/// How many times the processor time of `small()` the one of `large()` is, the least of three.
template <typename Small, typename Large>
double Growth(Small small, Large large) {
  const auto timeOf = [](const auto& action) {
    const std::clock_t start = std::clock();
    action();
    return static_cast<double>(std::clock() - start);
  };
  double least = 1e9;
  for (int i = 0; i < 3; ++i) {
    const double before = std::max(timeOf(small), 1.0);
    least = std::min(least, timeOf(large) / before);
  }
  return least;
}

}  // namespace lum::test
