// Which messages a record is, remembered for records alike in what the conditions look at.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "decoding/Profile.h"

namespace lum::decoding {

/// What conditions look at without reading a record's fields or line.
struct MatchKey {
  /// Longer texts are not remembered.
  static constexpr std::size_t kMaxText = 16;
  using Words = std::array<std::uint64_t, 6>;

  Words words{};
  bool operator==(const MatchKey&) const = default;
};

/// Remembers lists of messages by key. What is forgotten is only found anew.
class CMatchMemo {
 public:
  /// Keys at a time; beyond that, one takes another's place.
  static constexpr std::size_t kMaxKeys = 16'384;
  /// All lists together have no more numbers: beyond that, everything is forgotten.
  static constexpr std::size_t kMaxNumbers = 1'048'576;

  CMatchMemo();

  /// Whether the key is remembered; its list is then in `messages`, valid until the next Remember.
  bool Find(const MatchKey& key, std::span<const std::size_t>& messages) const;
  std::span<const std::size_t> Remember(const MatchKey& key, std::span<const std::size_t> messages);

 private:
  struct Entry {
    MatchKey key;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    bool isUsed = false;
  };

  Entry& Place(const MatchKey& key);
  std::span<const std::size_t> List(const Entry& entry) const;

  std::vector<Entry> m_entries;
  std::vector<std::size_t> m_numbers;
};

}  // namespace lum::decoding
