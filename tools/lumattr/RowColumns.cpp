#include "tools/lumattr/RowColumns.h"

#include <algorithm>

namespace lum::tool {

using decoding::ColumnRule;
using decoding::MessageRule;

CRowColumns::CRowColumns(const decoding::Profile& profile) {
  Index index;
  for (const MessageRule& message : profile.messages) {
    std::vector<RowPlace>& places = m_places.emplace_back();
    for (const ColumnRule& column : message.columns) {
      places.push_back({PlaceOf(message, column, index), places.size()});
    }
    std::sort(places.begin(), places.end(),
              [](const RowPlace& a, const RowPlace& b) { return a.place < b.place; });
  }
}

std::size_t CRowColumns::PlaceOf(const MessageRule& message, const ColumnRule& column,
                                 Index& index) {
  auto& units = index[column.name];
  const std::string prefix = units.empty() ? "" : message.name + ".";
  const auto [place, isNew] = units.try_emplace(column.unit, m_columns.size());
  if (isNew) {
    const std::string unit = column.unit.empty() ? "" : " (" + column.unit + ")";
    m_columns.push_back({prefix + column.name, prefix + column.displayName + unit});
  }
  return place->second;
}

}  // namespace lum::tool
