#include "tools/lumattr/PlotSeries.h"

#include <algorithm>

namespace lum::tool {

void CPlotSeries::AddValue(double at, double value) {
  const bool isNew = m_points.empty() || m_isGap || m_valuesInLast >= m_valuesEach;
  if (isNew && m_points.size() == kMaxPoints) {
    MakeRoom();
  }
  if (isNew) {
    m_points.push_back({at, at, value, value, m_isGap});
    m_valuesInLast = 0;
    m_isGap = false;
  }
  PlotPoint& point = m_points.back();
  point.last = at;
  point.minimum = std::min(point.minimum, value);
  point.maximum = std::max(point.maximum, value);
  ++m_valuesInLast;
}

void CPlotSeries::JoinNeighbours(bool acrossGaps) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < m_points.size(); ++i) {
    PlotPoint& joined = m_points[count++];
    joined = m_points[i];
    if (i + 1 < m_points.size() && (acrossGaps || !m_points[i + 1].isAfterGap)) {
      const PlotPoint& next = m_points[++i];
      joined.last = next.last;
      joined.minimum = std::min(joined.minimum, next.minimum);
      joined.maximum = std::max(joined.maximum, next.maximum);
    }
  }
  m_points.resize(count);
}

void CPlotSeries::MakeRoom() {
  constexpr std::size_t kMostLeft = kMaxPoints / 4 * 3;
  JoinNeighbours(false);
  if (m_points.size() > kMostLeft) {
    JoinNeighbours(true);
  }
  m_valuesEach *= 2;
}

}  // namespace lum::tool
