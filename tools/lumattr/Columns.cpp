#include "tools/lumattr/Columns.h"

#include <algorithm>
#include <utility>

#include "tools/lumattr/Text.h"

namespace lum::tool {

CColumns::CColumns(TableRow titles) : m_titles(std::move(titles)), m_widths(m_titles.size(), 0) {
  Measure(m_titles);
}

void CColumns::Measure(const TableRow& row) {
  for (std::size_t i = 0; i < row.size() && i < m_widths.size(); ++i) {
    const int width = DisplayWidth(row[i]);
    if (width <= kMaxWidth) {
      m_widths[i] = std::max(m_widths[i], width);
    }
  }
}

void CColumns::PrintTitles(ToolContext& context) const {
  const std::string line = Line(m_titles);
  context.out << (context.color ? "\x1b[1m" + line + "\x1b[0m" : line) << '\n';
}

void CColumns::PrintRow(ToolContext& context, const TableRow& row) const {
  context.out << Line(row) << '\n';
}

std::string CColumns::Line(const TableRow& row) const {
  std::string line;
  int missing = 0;  // Blanks are added only before a cell that follows: lines have no blank end.
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (!row[i].empty()) {
      line.append(static_cast<std::size_t>(missing), ' ');
      line += row[i];
      missing = 0;
    }
    const int width = i < m_widths.size() ? m_widths[i] : 0;
    missing += std::max(width - DisplayWidth(row[i]), 0) + 2;
  }
  return line;
}

void PrintTable(ToolContext& context, const TableRow& titles, const std::vector<TableRow>& rows) {
  CColumns columns(titles);
  for (const TableRow& row : rows) {
    columns.Measure(row);
  }
  columns.PrintTitles(context);
  for (const TableRow& row : rows) {
    columns.PrintRow(context, row);
  }
}

}  // namespace lum::tool
