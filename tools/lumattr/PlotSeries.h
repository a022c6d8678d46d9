// One column over time, in constant memory: what a drawing can show of it.
#pragma once

#include <cstddef>
#include <vector>

namespace lum::tool {

/// A stretch of time with the least and the greatest value in it.
struct PlotPoint {
  double first = 0.0;  ///< Where it begins.
  double last = 0.0;
  double minimum = 0.0;
  double maximum = 0.0;
  bool isAfterGap = false;  ///< Before it the column had no value.
};

/// Takes the values in the order of the log. Once there are more than kMaxPoints, neighbours become
/// one, so extremes stay. Gaps stay as well unless they are too many: then half of them vanish.
class CPlotSeries {
 public:
  static constexpr std::size_t kMaxPoints = 8192;

  void AddValue(double at, double value);
  /// The column has no value here.
  void AddGap() { m_isGap = true; }

  const std::vector<PlotPoint>& Points() const { return m_points; }

 private:
  /// Points of both sides of a gap are joined when they have to.
  void JoinNeighbours(bool acrossGaps);
  void MakeRoom();

  std::vector<PlotPoint> m_points;
  std::size_t m_valuesEach = 1;    // How many values become one point.
  std::size_t m_valuesInLast = 0;  // How many the last point has.
  bool m_isGap = false;
};

}  // namespace lum::tool
