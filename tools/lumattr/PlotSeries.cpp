#include "tools/lumattr/PlotSeries.h"

#include <algorithm>

namespace lum::tool {

void CPlotSeries::AddValue(double at, double value) {
  const bool isNew = m_points.empty() || m_isGap || m_valuesInLast >= m_valuesEach;
  if (isNew && m_points.size() == kMaxPoints) {
    JoinNeighbours();
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

void CPlotSeries::JoinNeighbours() {
  std::size_t count = 0;
  for (std::size_t i = 0; i + 1 < m_points.size(); i += 2) {
    const PlotPoint& a = m_points[i];
    const PlotPoint& b = m_points[i + 1];
    m_points[count++] = {a.first, b.last, std::min(a.minimum, b.minimum),
                         std::max(a.maximum, b.maximum), a.isAfterGap};
  }
  m_points.resize(count);
  m_valuesEach *= 2;
}

}  // namespace lum::tool
