// Which columns a table of rows has, and where the cells of each message stand in it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "decoding/Profile.h"

namespace lum::tool {

struct RowColumn {
  std::string name;
  std::string title;  ///< Display name and unit, for people.
};

/// The columns of all messages side by side. Those with the same name and unit are one; those with
/// the same name alone are told apart by their message: "GGA.Altitude".
class CRowColumns {
 public:
  explicit CRowColumns(const decoding::Profile& profile);

  const std::vector<RowColumn>& Columns() const { return m_columns; }
  /// The place among Columns() of a message's columns.
  const std::vector<std::size_t>& PlacesOf(std::size_t message) const { return m_places[message]; }

 private:
  std::size_t PlaceOf(const decoding::MessageRule& message, const decoding::ColumnRule& column);

  struct CSource {
    std::string name;
    std::string unit;
  };
  std::vector<CSource> m_sources;  // Of m_columns.
  std::vector<RowColumn> m_columns;
  std::vector<std::vector<std::size_t>> m_places;
};

}  // namespace lum::tool
