#include "decoding/FormulaInputs.h"

#include <algorithm>

namespace lum::decoding {
namespace {

constexpr std::array<InputName, kInputCount> kInputs = {{
    {"line", true, "the whole line"},
    {"frame", true, "the CAN frame, for CanVal"},
    {"message", true, "the J1939 message, for J1939Val"},
    {"channel", true, "the name of the bus interface"},
    {"address", true, "talker and formatter of an NMEA 0183 sentence"},
    {"time", false, "the time stamp, in seconds"},
    {"number", false, "the number of the line, from 1"},
    {"id", false, "the identifier of the CAN frame"},
    {"pgn", false, "the parameter group number"},
    {"source", false, "the source address"},
    {"destination", false, "the destination address, 255 for all"},
    {"priority", false, "the priority of the message"},
    {"length", false, "how many data bytes there are"},
    {"raw", false, "what the column's raw formula gave"},
}};

}  // namespace

std::span<const InputName, kInputCount> InputTable() { return kInputs; }

std::optional<Input> FindInput(std::string_view name) {
  const auto found = std::find_if(kInputs.begin(), kInputs.end(),
                                  [name](const InputName& input) { return input.name == name; });
  return found == kInputs.end() ? std::nullopt
                                : std::optional(static_cast<Input>(found - kInputs.begin()));
}

CFormulaInputs::CFormulaInputs() : m_fieldSlots(kMaxFields) {}

void CFormulaInputs::Make(Input input) {
  if (IsText(input)) {
    m_slots[Place(input)].Fill(m_texts[Place(input)]);
  } else {
    m_numberValues[Place(input)].SetDouble(m_numbers[Place(input)]);
  }
  m_made |= Bit(input);
}

// A text that two own is copied when it is written: the value lets go of it first.
void CFormulaInputs::TextSlot::Fill(std::string_view text) {
  value.CLumIoName::SetName(CStringA());
  const auto length = static_cast<int>(text.size());
  text.copy(buffer.GetBuffer(length), text.size());
  buffer.ReleaseBuffer(length);
  value.CLumIoName::SetName(buffer);
}

}  // namespace lum::decoding
