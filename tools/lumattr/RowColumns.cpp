#include "tools/lumattr/RowColumns.h"

#include <algorithm>
#include <iterator>

namespace lum::tool {

using decoding::ColumnRule;
using decoding::MessageRule;

CRowColumns::CRowColumns(const decoding::Profile& profile) {
  for (const MessageRule& message : profile.messages) {
    std::vector<std::size_t>& places = m_places.emplace_back();
    for (const ColumnRule& column : message.columns) {
      places.push_back(PlaceOf(message, column));
    }
  }
}

std::size_t CRowColumns::PlaceOf(const MessageRule& message, const ColumnRule& column) {
  const auto isSame = [&](const CSource& source) {
    return source.name == column.name && source.unit == column.unit;
  };
  const auto found = std::find_if(m_sources.begin(), m_sources.end(), isSame);
  const auto place = static_cast<std::size_t>(std::distance(m_sources.begin(), found));
  if (found != m_sources.end()) {
    return place;
  }
  const bool isTaken = std::any_of(m_sources.begin(), m_sources.end(), [&](const CSource& source) {
    return source.name == column.name;
  });
  const std::string prefix = isTaken ? message.name + "." : "";
  const std::string unit = column.unit.empty() ? "" : " (" + column.unit + ")";
  m_sources.push_back({column.name, column.unit});
  m_columns.push_back({prefix + column.name, prefix + column.displayName + unit});
  return place;
}

}  // namespace lum::tool
