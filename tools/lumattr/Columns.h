// Tables for people: columns aligned by what a terminal shows, printed row by row.
#pragma once

#include <string>
#include <vector>

#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

using TableRow = std::vector<std::string>;

/// Measure every row first, then print every row: no table is ever held, however long. A cell wider
/// than kMaxWidth does not widen its column, it pushes the rest of its own row aside.
class CColumns {
 public:
  static constexpr int kMaxWidth = 40;

  /// Measures the titles.
  explicit CColumns(TableRow titles);

  void Measure(const TableRow& row);
  /// The titles, bold on a terminal.
  void PrintTitles(ToolContext& context) const;
  void PrintRow(ToolContext& context, const TableRow& row) const;

 private:
  std::string Line(const TableRow& row) const;

  TableRow m_titles;
  std::vector<int> m_widths;
};

/// Prints titles and rows at once, for tables that are held anyway.
void PrintTable(ToolContext& context, const TableRow& titles, const std::vector<TableRow>& rows);

}  // namespace lum::tool
