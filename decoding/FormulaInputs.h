// What formulas can name: the texts and numbers of one record of a log, as values that the
// operations take.
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

/// The inputs' values for one record after the other. Texts are not copied before a formula asks
/// for them: the record's, and the list of its fields, must live until the next Clear. Setting and
/// reading allocate nothing once the longest texts have been seen. Used by one thread at a time.
class CFormulaInputs {
 public:
  /// field(0) to field(kMaxFields - 1).
  static constexpr std::size_t kMaxFields = 256;

  CFormulaInputs();
  CFormulaInputs(const CFormulaInputs&) = delete;
  CFormulaInputs& operator=(const CFormulaInputs&) = delete;

  /// Makes all inputs missing.
  void Clear() {
    m_set = 0;
    SetFields({});
  }
  /// Precondition: InputTable() says that the input is a text.
  void SetText(Input input, std::string_view text) {
    m_texts[Place(input)] = text;
    m_set |= Bit(input);
    m_made &= ~Bit(input);
  }
  /// Precondition: InputTable() says that the input is a number.
  void SetNumber(Input input, double number) {
    m_numbers[Place(input)] = number;
    m_set |= Bit(input);
    m_made &= ~Bit(input);
  }
  /// What is behind the last that has a number is left out.
  void SetFields(std::span<const std::string_view> fields) {
    m_fields = fields.first(fields.size() < kMaxFields ? fields.size() : kMaxFields);
    ++m_record;
  }

  InputState State(Input input) const {
    if ((m_set & Bit(input)) == 0) {
      return InputState::Missing;
    }
    const bool isEmpty = IsText(input) && m_texts[Place(input)].empty();
    return isEmpty ? InputState::Empty : InputState::Present;
  }
  InputState FieldState(std::size_t field) const {
    if (field >= m_fields.size()) {
      return InputState::Missing;
    }
    return m_fields[field].empty() ? InputState::Empty : InputState::Present;
  }
  /// The value of an input that is not missing; it stays as it is until the next Clear. Operations
  /// that write their bounds back into an argument must get a copy.
  CLumType& Value(Input input) {
    if ((m_made & Bit(input)) == 0) {
      Make(input);
    }
    return IsText(input) ? static_cast<CLumType&>(m_slots[Place(input)].value)
                         : m_numberValues[Place(input)];
  }
  CLumType& Field(std::size_t field) {
    FieldSlot& slot = m_fieldSlots[field];
    if (slot.record != m_record) {
      slot.text.Fill(m_fields[field]);
      slot.record = m_record;
    }
    return slot.text.value;
  }
  /// The same as they were set. Precondition: the state is not Missing.
  std::string_view Text(Input input) const { return m_texts[Place(input)]; }
  std::string_view FieldText(std::size_t field) const { return m_fields[field]; }
  double ReadNumber(Input input) const { return m_numbers[Place(input)]; }

  /// As InputTable() says it.
  static constexpr bool IsText(Input input) { return input <= Input::Address; }

 private:
  /// A text as a value: the two share their characters, which stay where they are for the next.
  struct TextSlot {
    CStringA buffer;
    CLumIoName value;

    void Fill(std::string_view text);
  };
  struct FieldSlot {
    TextSlot text;
    std::uint64_t record = 0;  ///< For which the text was made.
  };

  static constexpr std::size_t Place(Input input) { return static_cast<std::size_t>(input); }
  static constexpr std::uint32_t Bit(Input input) { return std::uint32_t{1} << Place(input); }
  /// Makes the value of what was set.
  void Make(Input input);

  std::uint32_t m_set = 0;   ///< A bit for each input that has been set.
  std::uint32_t m_made = 0;  ///< And one for each whose value has been made.
  std::array<std::string_view, kInputCount> m_texts;
  std::array<TextSlot, kInputCount> m_slots;
  std::array<double, kInputCount> m_numbers{};
  std::array<CLumDouble, kInputCount> m_numberValues;
  std::span<const std::string_view> m_fields;
  std::uint64_t m_record = 1;
  std::vector<FieldSlot> m_fieldSlots;  ///< One for each field that can be named: they never move.
};

}  // namespace lum::decoding
