// What formulas can name: the texts and numbers of one record of a log, as values that the operations
// take.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "values/LumType.h"

namespace lum::decoding {

/// Everything a formula can name, fields apart. InputTable() has one row for each, in this order.
enum class Input : std::uint8_t {
  Line,         ///< The whole line.
  Frame,        ///< A CAN frame as CanVal reads it.
  Message,      ///< A J1939 message as J1939Val reads it.
  Channel,      ///< The name of the bus interface.
  Address,      ///< The address of an NMEA 0183 sentence: talker and formatter.
  Time,         ///< Seconds, as the log's time stamps count them.
  Number,       ///< The line's number, from 1.
  Id,           ///< The identifier of a CAN frame.
  Pgn,          ///< The parameter group number (SAE J1939-21).
  Source,       ///< The source address.
  Destination,  ///< The destination address; 255 for all.
  Priority,
  Length,  ///< How many data bytes.
  Raw,     ///< What the column's raw formula gave.
};
inline constexpr std::size_t kInputCount = 14;

struct InputName {
  std::string_view name;  ///< As formulas write it: "frame", "pgn".
  bool isText;
  std::string_view meaning;  ///< A few words.
};

/// The names, in the order of the enumeration.
std::span<const InputName, kInputCount> InputTable();
/// The input of that name; nothing when there is none.
std::optional<Input> FindInput(std::string_view name);

/// Whether an input has a value in the present record.
enum class InputState : std::uint8_t {
  Present,
  Missing,  ///< The record has no such thing.
  Empty,    ///< A text of no characters, by which devices say "not available".
};

/// The inputs' values for one record after the other. Texts are not copied before a formula asks for
/// them: the record's must live until the next Clear. Setting and reading allocate nothing once the
/// longest texts have been seen.
class CFormulaInputs {
 public:
  /// field(0) to field(kMaxFields - 1).
  static constexpr std::size_t kMaxFields = 256;

  CFormulaInputs();
  CFormulaInputs(const CFormulaInputs&) = delete;
  CFormulaInputs& operator=(const CFormulaInputs&) = delete;

  /// Makes all inputs missing.
  void Clear();
  void SetText(Input input, std::string_view text);
  void SetNumber(Input input, double number);
  void SetFields(std::span<const std::string_view> fields);

  InputState State(Input input) const;
  InputState FieldState(std::size_t field) const;
  /// The value of an input that is not missing; it stays as it is until the next Clear. Operations
  /// that write their bounds back into an argument must get a copy.
  CLumType& Value(Input input);
  CLumType& Field(std::size_t field);
  /// The same as they were set. Precondition: the state is not Missing.
  std::string_view Text(Input input) const;
  std::string_view FieldText(std::size_t field) const;
  double ReadNumber(Input input) const;
  // Private part: whatever its author needs.
};

}  // namespace lum::decoding
