#include "tools/lumattr/PlotScript.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "decoding/NumberText.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

/// Time stamps beyond it (March 1973) count from 1970, smaller ones from a start of their own.
constexpr double kLeastDate = 1e8;
/// Shorter drawings need parts of seconds at their axis.
constexpr double kShortSpan = 10.0;
constexpr int kWidth = 1200;
constexpr int kPanelHeight = 260;
constexpr int kFrameHeight = 90;

using Panel = std::vector<const PlotCurve*>;

/// In double quotes, with octal codes for what has a meaning there. Single quotes will not do: a
/// text that begins with one would end there.
std::string Literal(std::string_view text) {
  std::string literal = "\"";
  for (const char ch : Printable(FromUtf8(text))) {
    switch (ch) {
      case '"':
        literal += "\\042";
        break;
      case '\\':
        literal += "\\134";
        break;
      case '`':
        literal += "\\140";
        break;
      default:
        literal += ch;
    }
  }
  return literal + '"';
}

std::vector<Panel> PanelsOf(const std::vector<PlotCurve>& curves) {
  std::vector<Panel> panels;
  for (const PlotCurve& curve : curves) {
    if (curve.series.Points().empty()) {
      continue;
    }
    const auto panel = std::find_if(panels.begin(), panels.end(), [&](const Panel& other) {
      return other.front()->unit == curve.unit;
    });
    if (panel == panels.end()) {
      panels.push_back({&curve});
    } else {
      panel->push_back(&curve);
    }
  }
  return panels;
}

struct Span {
  double first = 0.0;
  double last = 0.0;
};

Span SpanOf(const std::vector<Panel>& panels) {
  Span span{panels.front().front()->series.Points().front().first,
            panels.front().front()->series.Points().front().last};
  for (const Panel& panel : panels) {
    for (const PlotCurve* curve : panel) {
      for (const PlotPoint& point : curve->series.Points()) {
        span.first = std::min(span.first, point.first);
        span.last = std::max(span.last, point.last);
      }
    }
  }
  return span;
}

void AppendPoint(std::string& text, double at, double value) {
  decoding::AppendFixed(text, at, 6);
  text += ' ';
  decoding::AppendShortest(text, value);
  text += '\n';
}

bool IsOnePlace(const PlotPoint& point) {
  return point.minimum == point.maximum && point.first == point.last;
}

/// A line through all points; an empty line where the column has no value.
void AppendData(std::string& text, const PlotCurve& curve, std::size_t number) {
  text += "$curve" + std::to_string(number) + " << END\n";
  for (const PlotPoint& point : curve.series.Points()) {
    text += point.isAfterGap ? "\n" : "";
    AppendPoint(text, point.first, point.minimum);
    if (!IsOnePlace(point)) {
      AppendPoint(text, point.last, point.maximum);
    }
  }
  text += "END\n";
}

/// Single values are seen as points, many as a line.
bool IsLine(const PlotCurve& curve) {
  constexpr std::size_t kMostMarked = 500;
  return curve.series.Points().size() > kMostMarked;
}

/// The points between two gaps that a line without marks does not show.
std::vector<PlotPoint> LonePoints(const PlotCurve& curve) {
  std::vector<PlotPoint> lone;
  const std::vector<PlotPoint>& points = curve.series.Points();
  for (std::size_t i = 0; IsLine(curve) && i < points.size(); ++i) {
    const bool begins = i == 0 || points[i].isAfterGap;
    const bool ends = i + 1 == points.size() || points[i + 1].isAfterGap;
    if (begins && ends && IsOnePlace(points[i])) {
      lone.push_back(points[i]);
    }
  }
  return lone;
}

void AppendLonePoints(std::string& text, const PlotCurve& curve, std::size_t number) {
  const std::vector<PlotPoint> lone = LonePoints(curve);
  if (lone.empty()) {
    return;
  }
  text += "$lone" + std::to_string(number) + " << END\n";
  for (const PlotPoint& point : lone) {
    AppendPoint(text, point.first, point.minimum);
  }
  text += "END\n";
}

std::string AxisCommands(const PlotLayout& layout, const Span& span) {
  if (layout.hasTime && span.first >= kLeastDate) {
    const bool isShort = span.last - span.first < kShortSpan;
    return std::string("set xdata time\nset timefmt '%s'\nlabel = 'time (UTC)'\nset format x ") +
           (isShort ? "\"%H:%M:%.3S\\n%Y-%m-%d\"\n" : "\"%H:%M:%S\\n%Y-%m-%d\"\n");
  }
  return std::string("label = ") + (layout.hasTime ? "'time (s)'" : "'line'") + "\n";
}

/// One value alone has no width: the axis gets some.
std::string RangeCommand(const Span& span) {
  const double margin = span.first == span.last ? 1.0 : 0.0;
  std::string text = "set xrange [";
  decoding::AppendFixed(text, span.first - margin, 6);
  text += ":";
  decoding::AppendFixed(text, span.last + margin, 6);
  return text + "]\n";
}

/// A panel of one value alone has no height either.
std::string HeightCommand(const Panel& panel) {
  double least = panel.front()->series.Points().front().minimum;
  double greatest = least;
  for (const PlotCurve* curve : panel) {
    for (const PlotPoint& point : curve->series.Points()) {
      least = std::min(least, point.minimum);
      greatest = std::max(greatest, point.maximum);
    }
  }
  if (least != greatest) {
    return "set yrange [*:*]\n";
  }
  const double margin = std::max(1.0, std::abs(least) / 100);
  std::string text = "set yrange [";
  decoding::AppendShortest(text, least - margin);
  text += ":";
  decoding::AppendShortest(text, least + margin);
  return text + "]\n";
}

/// The line type is told, for lone points have the colour of their curve.
std::string CurveCommands(const PlotCurve& curve, std::size_t number, std::size_t lineType) {
  const std::string type = " linetype " + std::to_string(lineType);
  std::string text = "$curve" + std::to_string(number) + " using 1:2 with " +
                     (IsLine(curve) ? "lines" + type : "linespoints" + type + " pointsize 0.3") +
                     " title " + Literal(curve.title);
  if (!LonePoints(curve).empty()) {
    text += ", $lone" + std::to_string(number) + " using 1:2 with points" + type +
            " pointtype 7 pointsize 0.5 notitle";
  }
  return text;
}

std::string PanelCommands(const Panel& panel, std::size_t& number, bool isLast) {
  const std::string unit = panel.front()->unit;
  std::string text = isLast ? "set xlabel label\n" : "";
  text += HeightCommand(panel) + "set ylabel " + Literal(unit) + "\nplot ";
  for (std::size_t i = 0; i < panel.size(); ++i) {
    text += (i == 0 ? "" : ", ");
    text += CurveCommands(*panel[i], number++, i + 1);
  }
  return text + "\n";
}

}  // namespace

std::string PlotScript(const std::vector<PlotCurve>& curves, const PlotLayout& layout,
                       const std::string& output) {
  const std::vector<Panel> panels = PanelsOf(curves);
  if (panels.empty()) {
    return {};
  }
  const Span span = SpanOf(panels);
  const std::string size =
      std::to_string(kWidth) + "," +
      std::to_string(kFrameHeight + kPanelHeight * static_cast<int>(panels.size()));
  std::string text = "set terminal " +
                     std::string(layout.isPng ? "pngcairo" : "svg dynamic background 'white'") +
                     " noenhanced size " + size + "\nset output " + Literal(output) + "\n";
  text +=
      "set encoding utf8\nset grid\nset key outside right top\nset lmargin 12\nset rmargin 26\n";
  std::size_t number = 0;
  for (const Panel& panel : panels) {
    for (const PlotCurve* curve : panel) {
      AppendData(text, *curve, number);
      AppendLonePoints(text, *curve, number++);
    }
  }
  text += AxisCommands(layout, span) + RangeCommand(span);
  text += "set multiplot layout " + std::to_string(panels.size()) + ",1\n";
  number = 0;
  for (std::size_t i = 0; i < panels.size(); ++i) {
    text += PanelCommands(panels[i], number, i + 1 == panels.size());
  }
  return text + "unset multiplot\nset output\n";
}

}  // namespace lum::tool
