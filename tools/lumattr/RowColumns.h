// Which columns a table of rows has, and where the cells of each message stand in it.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "decoding/Profile.h"

namespace lum::tool {

struct RowColumn {
  std::string name;
  std::string title;  ///< Display name and unit, for people.
};

/// Where a message's cell stands.
struct RowPlace {
  std::size_t place = 0;   ///< Among all columns.
  std::size_t column = 0;  ///< Among the message's own.
  bool operator==(const RowPlace&) const = default;
};

/// The columns of all messages side by side. Those with the same name and unit are one; those with
/// the same name alone are told apart by the first message that has them: "GGA.Altitude".
class CRowColumns {
 public:
  explicit CRowColumns(const decoding::Profile& profile);

  const std::vector<RowColumn>& Columns() const { return m_columns; }
  /// The places of a message's cells, from left to right.
  const std::vector<RowPlace>& PlacesOf(std::size_t message) const { return m_places[message]; }

 private:
  /// Places by name, then by unit.
  using Index = std::map<std::string, std::map<std::string, std::size_t>>;

  std::size_t PlaceOf(const decoding::MessageRule& message, const decoding::ColumnRule& column,
                      Index& index);

  std::vector<RowColumn> m_columns;
  std::vector<std::vector<RowPlace>> m_places;
};

}  // namespace lum::tool
