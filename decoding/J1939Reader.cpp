// Hands the extended frames of a log to the assembler, and gives the messages that it completes.
#include "decoding/J1939Reader.h"

namespace lum::decoding::detail {

namespace {

/// The identifier that the message would have as a single frame.
std::uint32_t JoinJ1939Id(const J1939Id& id) {
  return std::uint32_t{id.priority} << 26 | id.pgn << 8 |
         (IsForOne(id.pgn) ? std::uint32_t{id.destination} << 8 : 0) | id.source;
}

}  // namespace

LineOutcome CJ1939Reader::Take(const LogLine& line, LogRecord& record, LineProblem& problem) {
  LineOutcome outcome = m_frames.Take(line, record, problem);
  BusParts& bus = record.bus;
  if (!outcome.hasRecord || record.kind != RecordKind::Data || !bus.isExtended) {
    return outcome;
  }
  const J1939Id id{bus.priority, bus.pgn, bus.source, bus.destination};
  J1939Message message;
  const AssemblyOutcome assembled = m_assembler.Take(
      {id, bus.channel, bus.data, record.time.value_or(0.0), line.number}, message);
  if (assembled.result == AssemblyResult::Complete) {
    Describe(message, record);
  } else if (assembled.result != AssemblyResult::NotTransport) {
    record.kind = RecordKind::Part;
  }
  if (!assembled.problem.empty()) {
    outcome.hasProblem = true;
    problem = {assembled.problemLine, 1, assembled.problem};
  }
  return outcome;
}

bool CJ1939Reader::Finish(LineProblem& problem) {
  AssemblyOutcome outcome;
  if (!m_assembler.Finish(outcome)) {
    return false;
  }
  problem = {outcome.problemLine, 1, outcome.problem};
  return true;
}

void CJ1939Reader::Describe(const J1939Message& message, LogRecord& record) {
  BusParts& bus = record.bus;
  bus.id = JoinJ1939Id(message.id);
  bus.pgn = message.id.pgn;
  bus.source = message.id.source;
  bus.destination = message.id.destination;
  bus.priority = message.id.priority;
  bus.data = message.data;
  bus.frames = message.frames;
  bus.frame = {};
  WriteMessageHeader(bus, m_message.data());
  char* to = m_message.data() + kMessageHeader;
  for (const std::uint8_t byte : message.data) {
    WriteHex(byte, 2, to);
    to += 2;
  }
  *to = ';';
  bus.message = {m_message.data(), MessageLength(message.data.size())};
}

}  // namespace lum::decoding::detail
