// The words by which gnuplot draws columns over time: a panel for each unit, one above the other.
#pragma once

#include <string>
#include <vector>

#include "tools/lumattr/PlotSeries.h"

namespace lum::tool {

struct PlotCurve {
  std::string title;
  std::string unit;
  CPlotSeries series;
};

struct PlotLayout {
  bool isPng = false;   ///< Else SVG.
  bool hasTime = true;  ///< Else the places are numbers of lines.
};

/// The script, with the data in it, that writes the drawing to a file; empty when no curve has a
/// point.
std::string PlotScript(const std::vector<PlotCurve>& curves, const PlotLayout& layout,
                       const std::string& output);

}  // namespace lum::tool
