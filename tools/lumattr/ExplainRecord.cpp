#include "tools/lumattr/ExplainRecord.h"

#include "decoding/Decoder.h"
#include "decoding/NumberText.h"
#include "tools/lumattr/ExplainField.h"

namespace lum::tool {
namespace {

using decoding::LineProblem;
using decoding::LogFormat;
using decoding::LogLine;
using decoding::LogRecord;
using decoding::MatchTerm;
using decoding::MessageRule;
using decoding::RecordKind;

const char* KindText(RecordKind kind) {
  switch (kind) {
    case RecordKind::Data:
      return "data";
    case RecordKind::Remote:
      return "a remote frame: it asks for data and has none";
    case RecordKind::BusError:
      return "an error frame of the bus";
    case RecordKind::Unusable:
      return "a frame of CAN FD, which is not decoded";
    case RecordKind::Remark:
      return "empty, or a remark";
    default:
      return "one frame of a message that is not whole yet";
  }
}

void ReportBus(const decoding::BusParts& bus, LogFormat format, CReport& report) {
  std::string id;
  for (int digit = bus.isExtended ? 7 : 2; digit >= 0; --digit) {
    id += "0123456789ABCDEF"[bus.id >> (4 * digit) & 0xFU];
  }
  report.Line("frame", (bus.isExtended ? "extended identifier " : "standard identifier ") + id +
                           (bus.channel.empty() ? "" : " on " + Shown(bus.channel)));
  if (bus.isExtended && format == LogFormat::J1939) {
    report.Line("", "priority " + std::to_string(bus.priority) + ", parameter group " +
                        std::to_string(bus.pgn) + ", source " + std::to_string(bus.source) +
                        ", destination " + std::to_string(bus.destination));
  }
  const std::string data(bus.data.begin(), bus.data.end());
  report.Line("data",
              Counted(data.size(), "byte", "bytes") + (data.empty() ? "" : ": " + HexBytes(data)) +
                  (bus.frames > 1 ? " from " + Counted(bus.frames, "frame", "frames") : ""));
}

std::string FoundPart(const MatchTerm& term, const LogRecord& record) {
  using Part = MatchTerm::Part;
  switch (term.part) {
    case Part::Pgn:
      return std::to_string(record.bus.pgn);
    case Part::Source:
      return std::to_string(record.bus.source);
    case Part::Destination:
      return std::to_string(record.bus.destination);
    case Part::Priority:
      return std::to_string(record.bus.priority);
    case Part::Channel:
      return Quoted(FromUtf8(record.bus.channel));
    case Part::Sentence:
      return Quoted(FromUtf8(record.address));
    case Part::FieldCount:
      return std::to_string(record.fields.size());
    case Part::Field:
      return term.number < record.fields.size() ? Quoted(FromUtf8(record.fields[term.number]))
                                                : "no such field";
    default:
      return {};
  }
}

}  // namespace

void ReportRecord(const LogRecord& record, LogFormat format, CReport& report) {
  report.Line("record", KindText(record.kind));
  if (record.time) {
    std::string time;
    decoding::AppendFixed(time, *record.time, 6);
    report.Line("time", time + " s");
  }
  if (record.isBus) {
    ReportBus(record.bus, format, report);
  }
  for (std::size_t i = 0; i < record.fields.size(); ++i) {
    report.Line("field(" + std::to_string(i) + ")", Quoted(FromUtf8(record.fields[i])));
  }
}

void ReportProblem(const LogLine& line, const LineProblem& problem, CReport& report) {
  report.Line("problem",
              "column " + std::to_string(problem.column) + ": " + std::string(problem.reason));
  constexpr std::size_t kMostShown = 100;
  if (problem.column > kMostShown) {
    return;
  }
  const std::string before = Shown(line.text.substr(0, problem.column - 1));
  report.Line("", Shown(line.text.substr(0, kMostShown)));
  report.Line("", std::string(static_cast<std::size_t>(DisplayWidth(before)), ' ') + "^");
}

void ReportMatch(const MessageRule& message, const LogRecord& record, CReport& report) {
  for (const MatchTerm& term : message.match) {
    const bool holds = decoding::Holds(term, record);
    const std::string found = holds ? "" : FoundPart(term, record);
    report.Line("", Shown(term.text) + (holds ? ": holds" : ": does not hold") +
                        (found.empty() ? "" : ", the line has " + found));
  }
}

}  // namespace lum::tool
