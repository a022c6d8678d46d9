// What a drawing keeps of a column: extremes and gaps, in constant memory.
#include "tools/lumattr/PlotSeries.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lum::tool {
namespace {

constexpr std::size_t kMany = CPlotSeries::kMaxPoints;

std::size_t CountGaps(const CPlotSeries& series) {
  return static_cast<std::size_t>(
      std::count_if(series.Points().begin(), series.Points().end(),
                    [](const PlotPoint& point) { return point.isAfterGap; }));
}

TEST(PlotSeries, KeepsEachOfFewValues) {
  CPlotSeries series;
  series.AddValue(1.5, 20.0);
  series.AddValue(2.5, -3.0);
  ASSERT_EQ(series.Points().size(), 2U);
  EXPECT_EQ(series.Points()[1].first, 2.5);
  EXPECT_EQ(series.Points()[1].last, 2.5);
  EXPECT_EQ(series.Points()[1].minimum, -3.0);
  EXPECT_EQ(series.Points()[1].maximum, -3.0);
}

TEST(PlotSeries, MarksTheFirstValueBehindAGap) {
  CPlotSeries series;
  series.AddValue(1.0, 1.0);
  series.AddGap();
  series.AddGap();
  series.AddValue(4.0, 2.0);
  series.AddValue(5.0, 3.0);
  ASSERT_EQ(series.Points().size(), 3U);
  EXPECT_FALSE(series.Points()[0].isAfterGap);
  EXPECT_TRUE(series.Points()[1].isAfterGap);
  EXPECT_FALSE(series.Points()[2].isAfterGap);
}

TEST(PlotSeries, OfManyValuesKeepsExtremesAndEndsInBoundedMemory) {
  CPlotSeries series;
  constexpr std::size_t kCount = kMany * 9 + 5;
  for (std::size_t i = 0; i < kCount; ++i) {
    const double value = i == 12'345 ? 1e6 : i == 54'321 ? -1e6 : static_cast<double>(i % 7);
    series.AddValue(static_cast<double>(i), value);
    ASSERT_LE(series.Points().size(), kMany);
  }
  const auto& points = series.Points();
  EXPECT_GE(points.size(), kMany / 2);
  EXPECT_EQ(points.front().first, 0.0);
  EXPECT_EQ(points.back().last, static_cast<double>(kCount - 1));
  const auto high = std::find_if(points.begin(), points.end(),
                                 [](const PlotPoint& point) { return point.maximum == 1e6; });
  ASSERT_NE(high, points.end());
  EXPECT_LE(high->first, 12'345.0);
  EXPECT_GE(high->last, 12'345.0);
  EXPECT_TRUE(std::any_of(points.begin(), points.end(),
                          [](const PlotPoint& point) { return point.minimum == -1e6; }));
  for (std::size_t i = 1; i < points.size(); ++i) {
    ASSERT_LT(points[i - 1].last, points[i].first) << i;
  }
}

TEST(PlotSeries, JoiningValuesKeepsALongGap) {
  CPlotSeries series;
  for (std::size_t i = 0; i < kMany * 8; ++i) {
    if (i == 1001) {
      series.AddGap();
    }
    series.AddValue(static_cast<double>(i < 1001 ? i : i + 3600), 1.0);
  }
  ASSERT_EQ(CountGaps(series), 1U);
  const auto& points = series.Points();
  const auto behind = std::find_if(points.begin(), points.end(),
                                   [](const PlotPoint& point) { return point.isAfterGap; });
  EXPECT_EQ(behind->first, 4601.0);
  EXPECT_EQ(std::prev(behind)->last, 1000.0);
}

TEST(PlotSeries, OfNothingButGapsStaysInBoundedMemory) {
  CPlotSeries series;
  for (std::size_t i = 0; i < kMany * 5; ++i) {
    series.AddGap();
    series.AddValue(static_cast<double>(i), static_cast<double>(i));
    ASSERT_LE(series.Points().size(), kMany);
  }
  EXPECT_EQ(series.Points().front().minimum, 0.0);
  EXPECT_EQ(series.Points().back().maximum, static_cast<double>(kMany * 5 - 1));
}

}  // namespace
}  // namespace lum::tool
