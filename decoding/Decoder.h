// From records to rows: which message a record is, and what its columns hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "decoding/Profile.h"

namespace lum::decoding {

enum class CellState : std::uint8_t {
  Value,
  NotAvailable,  ///< The device says so: an empty field, a number that the profile names for it.
  Error,         ///< The device reports an error, or the value is out of its range or no number.
  Undecodable,   ///< The data do not hold the field: an operation answered 0.
};

enum class CellReason : std::uint8_t {
  None,
  EmptyInput,
  MissingInput,
  NoValue,
  NotAvailableNumber,
  ErrorNumber,
  OutOfRange,
  NotANumber,
};
inline constexpr std::size_t kCellReasonCount = 8;

struct Cell {
  CellState state = CellState::Value;
  CellReason reason = CellReason::None;
  double value = 0.0;      ///< Of what was computed, also where that is no value.
  std::uint32_t step = 0;  ///< Which step of the formula ended it, when nothing was computed.
  bool isOfRaw = false;    ///< The step is one of the raw formula.
};

struct Row {
  const LogRecord* record = nullptr;
  const MessageRule* message = nullptr;
  std::size_t messageIndex = 0;
  std::span<const Cell> cells;  ///< One for each of the message's columns.
};

/// Decodes records by a profile, which must outlive it. Allocates nothing for a record like one
/// before. A record may match several messages; it gives a row for each, in the profile's order.
class CDecoder {
 public:
  explicit CDecoder(const Profile& profile);
  CDecoder(const CDecoder&) = delete;
  CDecoder& operator=(const CDecoder&) = delete;
  ~CDecoder();

  /// Which messages a record is; empty when it is none of them, as whatever is no RecordKind::Data.
  /// Valid until the next call.
  std::span<const std::size_t> Match(const LogRecord& record);
  /// The row of a record that matches. For each column, in this order: the raw formula; numbers for
  /// "not available", then for errors, of the raw number (without one: of the value); the formula;
  /// what is no finite number; the range. Valid until the next call.
  Row Decode(const LogRecord& record, std::size_t message);

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

/// Whether one condition holds.
bool Holds(const MatchTerm& term, const LogRecord& record);

/// Fills the inputs that formulas can name from a record, but for Raw. What the record does not
/// have is missing; only texts of the device itself, its line and fields, can be empty.
void SetInputs(CFormulaInputs& inputs, const LogRecord& record);

}  // namespace lum::decoding
