#include "decoding/ColumnStatistics.h"

#include <algorithm>
#include <numeric>

namespace lum::decoding {

void CColumnStatistics::Add(const Cell& cell) {
  const std::uint64_t count = ++m_counts[static_cast<std::size_t>(cell.reason)];
  if (cell.state != CellState::Value) {
    return;
  }
  if (count == 1) {
    m_minimum = m_maximum = m_mean = cell.value;
    return;
  }
  m_minimum = std::min(m_minimum, cell.value);
  m_maximum = std::max(m_maximum, cell.value);
  // Two divisions: the difference of two values may be beyond what a double holds.
  const double weight = static_cast<double>(count);
  m_mean += cell.value / weight - m_mean / weight;
}

std::uint64_t CColumnStatistics::Total() const {
  return std::accumulate(m_counts.begin(), m_counts.end(), std::uint64_t{0});
}

}  // namespace lum::decoding
