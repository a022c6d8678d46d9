// What a column held over a whole log.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "decoding/Decoder.h"

namespace lum::decoding {

/// Numbers of values and of each kind of absence, and the values' least, greatest and mean.
class CColumnStatistics {
 public:
  void Add(const Cell& cell);

  /// How many cells held a value.
  std::uint64_t Count() const { return Count(CellReason::None); }
  /// How many cells held none for that reason.
  std::uint64_t Count(CellReason reason) const {
    return m_counts[static_cast<std::size_t>(reason)];
  }
  /// How many cells were added.
  std::uint64_t Total() const;

  /// Preconditions: Count() > 0.
  double Minimum() const { return m_minimum; }
  double Maximum() const { return m_maximum; }
  /// Taken step by step, so that no sum grows beyond what a double holds.
  double Mean() const { return m_mean; }

 private:
  std::array<std::uint64_t, kCellReasonCount> m_counts{};
  double m_minimum = 0.0;
  double m_maximum = 0.0;
  double m_mean = 0.0;
};

}  // namespace lum::decoding
