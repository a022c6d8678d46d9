// The words for gnuplot: panels, titles, axes and data.
#include "tools/lumattr/PlotScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lum::tool {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

PlotCurve Curve(const std::string& title, const std::string& unit,
                const std::vector<std::pair<double, double>>& values) {
  PlotCurve curve{title, unit, {}};
  for (const auto& [at, value] : values) {
    curve.series.AddValue(at, value);
  }
  return curve;
}

TEST(PlotScript, OfNoValueIsEmpty) {
  EXPECT_EQ(PlotScript({}, {}, "a.svg"), "");
  EXPECT_EQ(PlotScript({Curve("A", "m", {})}, {}, "a.svg"), "");
}

TEST(PlotScript, DrawsCurvesOfOneUnitInOnePanel) {
  const std::string script =
      PlotScript({Curve("A", "m", {{1, 2}, {2, 3}}), Curve("B", "s", {{1, 5}, {2, 7}}),
                  Curve("None", "kg", {}), Curve("C", "m", {{1, 8}})},
                 {}, "a.svg");
  EXPECT_THAT(script, HasSubstr("set multiplot layout 2,1\n"));
  EXPECT_THAT(
      script,
      HasSubstr("set ylabel \"m\"\n"
                "plot $curve0 using 1:2 with linespoints linetype 1 pointsize 0.3 title \"A\", "
                "$curve1 using 1:2 with linespoints linetype 2 pointsize 0.3 title \"C\"\n"));
  EXPECT_THAT(
      script,
      HasSubstr("set xlabel label\nset yrange [*:*]\nset ylabel \"s\"\n"
                "plot $curve2 using 1:2 with linespoints linetype 1 pointsize 0.3 title \"B\"\n"));
  EXPECT_THAT(script, HasSubstr("$curve1 << END\n1.000000 8\nEND\n"));
  EXPECT_THAT(script, HasSubstr("$curve2 << END\n1.000000 5\n2.000000 7\nEND\n"));
  EXPECT_THAT(script, Not(HasSubstr("None")));
  EXPECT_THAT(script, Not(HasSubstr("$curve3")));
}

TEST(PlotScript, BreaksACurveAtItsGaps) {
  PlotCurve curve = Curve("A", "", {{1, 2}});
  curve.series.AddGap();
  curve.series.AddValue(3, 4);
  EXPECT_THAT(PlotScript({curve}, {}, "a.svg"),
              HasSubstr("$curve0 << END\n1.000000 2\n\n3.000000 4\nEND\n"));
}

TEST(PlotScript, DrawsJoinedValuesFromLeastToGreatest) {
  PlotCurve curve = Curve("A", "", {});
  for (std::size_t i = 0; i <= CPlotSeries::kMaxPoints; ++i) {
    curve.series.AddValue(static_cast<double>(i), i % 2 == 0 ? 9.5 : -1.0);
  }
  const std::string script = PlotScript({curve}, {}, "a.svg");
  EXPECT_THAT(script, HasSubstr("$curve0 << END\n0.000000 -1\n1.000000 9.5\n2.000000 -1\n"));
  EXPECT_THAT(script, HasSubstr("with lines linetype 1 title \"A\"\n"));
}

PlotCurve LongCurve() {
  PlotCurve curve = Curve("A", "m", {});
  for (int i = 0; i < 600; ++i) {
    curve.series.AddValue(i, i);
  }
  return curve;
}

/// A value by itself at a place.
void AddLone(PlotCurve& curve, double at, double value) {
  curve.series.AddGap();
  curve.series.AddValue(at, value);
  curve.series.AddGap();
}

TEST(PlotScript, MarksValuesBetweenTwoGapsInALine) {
  PlotCurve curve = LongCurve();
  AddLone(curve, 700, 7);
  AddLone(curve, 800, 8);
  curve.series.AddValue(900, 1);
  curve.series.AddValue(901, 2);
  AddLone(curve, 1000, 9);
  const std::string script = PlotScript({curve, Curve("B", "m", {{1, 2}})}, {}, "a.svg");
  EXPECT_THAT(script, HasSubstr("$lone0 << END\n700.000000 7\n800.000000 8\n1000.000000 9\nEND\n"));
  EXPECT_THAT(
      script,
      HasSubstr("plot $curve0 using 1:2 with lines linetype 1 title \"A\", "
                "$lone0 using 1:2 with points linetype 1 pointtype 7 pointsize 0.5 notitle, "
                "$curve1 using 1:2 with linespoints linetype 2 pointsize 0.3 title \"B\"\n"));
}

TEST(PlotScript, MarksNothingInALineWithoutLoneValues) {
  PlotCurve curve = LongCurve();
  // Of the same time, so these are a line upwards.
  curve.series.AddGap();
  for (int i = 0; i < 600; ++i) {
    curve.series.AddValue(700, i);
  }
  EXPECT_THAT(PlotScript({curve}, {}, "a.svg"), Not(HasSubstr("$lone")));
}

TEST(PlotScript, TakesNamesAsTheyAre) {
  const std::string script =
      PlotScript({Curve("it's\nsystem(\"`x`\")", "'; \\%", {{1, 2}})}, {}, "it's.svg");
  EXPECT_THAT(script, HasSubstr("set output \"it's.svg\"\n"));
  EXPECT_THAT(script, HasSubstr("title \"it's\\134nsystem(\\042\\140x\\140\\042)\""));
  EXPECT_THAT(script, HasSubstr("set ylabel \"'; \\134%\"\n"));
  EXPECT_THAT(script, HasSubstr(" noenhanced "));
}

TEST(PlotScript, GivesOneValueAloneSomeWidthAndHeight) {
  const std::string script = PlotScript({Curve("A", "m", {{5, -2}})}, {}, "a.svg");
  EXPECT_THAT(script, HasSubstr("set xrange [4.000000:6.000000]\n"));
  EXPECT_THAT(script, HasSubstr("set yrange [-3:-1]\n"));
  EXPECT_THAT(PlotScript({Curve("A", "m", {{5, 1500}, {6, 1500}})}, {}, "a.svg"),
              HasSubstr("set yrange [1485:1515]\n"));
}

TEST(PlotScript, ShowsTimeAsTheLogCountsIt) {
  const PlotCurve start = Curve("A", "", {{0.5, 1}, {2, 3}});
  EXPECT_THAT(PlotScript({start}, {false, true}, "a.svg"), HasSubstr("label = 'time (s)'\n"));
  EXPECT_THAT(PlotScript({start}, {false, false}, "a.svg"), HasSubstr("label = 'line'\n"));
  const PlotCurve brief = Curve("A", "", {{1749463200, 1}, {1749463209, 3}});
  const PlotCurve whole = Curve("A", "", {{1749463200, 1}, {1749463210, 3}});
  EXPECT_THAT(PlotScript({brief}, {false, true}, "a.svg"), HasSubstr("%H:%M:%.3S"));
  EXPECT_THAT(PlotScript({whole}, {false, true}, "a.svg"), HasSubstr("%H:%M:%S"));
  EXPECT_THAT(PlotScript({whole}, {false, true}, "a.svg"), HasSubstr("label = 'time (UTC)'\n"));
  EXPECT_THAT(PlotScript({whole}, {false, false}, "a.svg"), HasSubstr("label = 'line'\n"));
}

TEST(PlotScript, NamesTheTerminalAndTheHeightOfItsPanels) {
  const std::vector<PlotCurve> curves = {Curve("A", "m", {{1, 2}}), Curve("B", "s", {{1, 2}})};
  EXPECT_THAT(PlotScript(curves, {true, true}, "a.png"),
              HasSubstr("set terminal pngcairo noenhanced size 1200,610\n"));
  EXPECT_THAT(PlotScript(curves, {false, true}, "a.svg"),
              HasSubstr("set terminal svg dynamic background 'white' noenhanced size 1200,610\n"));
}

}  // namespace
}  // namespace lum::tool
