// What conditions and formulas see of a record.
#include "decoding/RecordParts.h"
#include "decoding/Decoder.h"
#include "decoding/Glob.h"

namespace lum::decoding {
namespace {

using Part = MatchTerm::Part;

void SetPresentText(CFormulaInputs& inputs, Input input, std::string_view text) {
  if (!text.empty()) {
    inputs.SetText(input, text);
  }
}

void SetBusInputs(CFormulaInputs& inputs, const BusParts& bus) {
  // A message of several frames is no frame, and a standard frame no message: these are missing,
  // and not empty, as a device's own texts can be.
  SetPresentText(inputs, Input::Frame, bus.frame);
  SetPresentText(inputs, Input::Message, bus.message);
  SetPresentText(inputs, Input::Channel, bus.channel);
  inputs.SetNumber(Input::Id, bus.id);
  inputs.SetNumber(Input::Length, static_cast<double>(bus.data.size()));
  if (HasJ1939Parts(bus)) {
    inputs.SetNumber(Input::Pgn, bus.pgn);
    inputs.SetNumber(Input::Source, bus.source);
    inputs.SetNumber(Input::Destination, bus.destination);
    inputs.SetNumber(Input::Priority, bus.priority);
  }
}

bool HoldsForBus(const MatchTerm& term, const BusParts& bus) {
  switch (term.part) {
    case Part::Id:
      return bus.isExtended == term.isExtended && (bus.id & term.mask) == (term.number & term.mask);
    case Part::Channel:
      return MatchesGlob(term.pattern, bus.channel);
    case Part::Pgn:
      return HasJ1939Parts(bus) && bus.pgn == term.number;
    case Part::Source:
      return HasJ1939Parts(bus) && bus.source == term.number;
    case Part::Destination:
      return HasJ1939Parts(bus) && bus.destination == term.number;
    default:
      return HasJ1939Parts(bus) && bus.priority == term.number;
  }
}

}  // namespace

bool HasJ1939Parts(const BusParts& bus) {
  constexpr std::uint32_t kIdOfDefaults = 0xFF00;
  const bool areDefaults =
      bus.pgn == 0 && bus.source == 0 && bus.destination == 0xFF && bus.priority == 0;
  return bus.isExtended && (!areDefaults || bus.id == kIdOfDefaults);
}

bool Holds(const MatchTerm& term, const LogRecord& record) {
  switch (term.part) {
    case Part::Sentence:
      return !record.address.empty() && MatchesGlob(term.pattern, record.address);
    case Part::FieldCount:
      return record.fields.size() == term.number;
    case Part::Field:
      return term.number < record.fields.size() &&
             MatchesGlob(term.pattern, record.fields[term.number]);
    case Part::Line:
      return MatchesGlob(term.pattern, record.line);
    default:
      return record.isBus && HoldsForBus(term, record.bus);
  }
}

void SetInputs(CFormulaInputs& inputs, const LogRecord& record) {
  inputs.Clear();
  inputs.SetText(Input::Line, record.line);
  inputs.SetNumber(Input::Number, static_cast<double>(record.number));
  inputs.SetFields(record.fields);
  SetPresentText(inputs, Input::Address, record.address);
  if (record.time) {
    inputs.SetNumber(Input::Time, *record.time);
  }
  if (record.isBus) {
    SetBusInputs(inputs, record.bus);
  }
}

}  // namespace lum::decoding
