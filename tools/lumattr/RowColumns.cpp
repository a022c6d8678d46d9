#include "tools/lumattr/RowColumns.h"

namespace lum::tool {

using decoding::ColumnRule;
using decoding::MessageRule;

CRowColumns::CRowColumns(const decoding::Profile& profile) {
  Index index;
  for (const MessageRule& message : profile.messages) {
    std::vector<std::size_t>& places = m_places.emplace_back();
    for (const ColumnRule& column : message.columns) {
      places.push_back(PlaceOf(message, column, index));
    }
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
