// What a column held over a whole log.
#include "decoding/ColumnStatistics.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace lum::decoding {
namespace {

Cell ValueCell(double value) { return {CellState::Value, CellReason::None, value}; }

TEST(ColumnStatistics, OfValuesAreCountMinimumMaximumAndMean) {
  constexpr double kMax = std::numeric_limits<double>::max();
  const struct {
    std::vector<double> values;
    double minimum;
    double maximum;
    double mean;
  } rows[] = {
      {{3}, 3, 3, 3},
      {{1, 2, 3, 4}, 1, 4, 2.5},
      {{-5, 5}, -5, 5, 0},
      {{7, 7, 7, 7, 7}, 7, 7, 7},
      {{0.1, 0.1, 0.1}, 0.1, 0.1, 0.1},
      {{kMax, kMax, kMax}, kMax, kMax, kMax},
      {{kMax, -kMax}, -kMax, kMax, 0},
  };
  for (const auto& row : rows) {
    CColumnStatistics statistics;
    for (const double value : row.values) {
      statistics.Add(ValueCell(value));
    }
    EXPECT_EQ(statistics.Count(), row.values.size());
    EXPECT_EQ(statistics.Minimum(), row.minimum);
    EXPECT_EQ(statistics.Maximum(), row.maximum);
    EXPECT_DOUBLE_EQ(statistics.Mean(), row.mean);
  }
}

TEST(ColumnStatistics, OfManyValuesFarFromZeroKeepTheMean) {
  CColumnStatistics statistics;
  for (int i = 0; i < 1'000'000; ++i) {
    statistics.Add(ValueCell(1e9 + i % 2));
  }
  EXPECT_NEAR(statistics.Mean(), 1e9 + 0.5, 1e-4);
}

TEST(ColumnStatistics, CountEachAbsenceByItself) {
  CColumnStatistics statistics;
  for (std::size_t reason = 1; reason < kCellReasonCount; ++reason) {
    for (std::size_t i = 0; i < reason; ++i) {
      statistics.Add({CellState::Error, static_cast<CellReason>(reason), 1e6});
    }
  }
  statistics.Add(ValueCell(5));
  for (std::size_t reason = 1; reason < kCellReasonCount; ++reason) {
    EXPECT_EQ(statistics.Count(static_cast<CellReason>(reason)), reason);
  }
  EXPECT_EQ(statistics.Count(), 1u);
  EXPECT_EQ(statistics.Total(), 29u);
  EXPECT_EQ(statistics.Maximum(), 5);
  EXPECT_EQ(kCellReasonCount, static_cast<std::size_t>(CellReason::NotANumber) + 1);
}

}  // namespace
}  // namespace lum::decoding
