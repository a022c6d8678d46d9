// Puts the messages of SAE J1939-21's transport protocol together. A message is given only when all
// its packets came in their order; whatever else happens to it is a problem, told once.
#include "decoding/J1939.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lum::decoding {

namespace {

constexpr std::uint32_t kManagementPgn = 60'416;  // TP.CM
constexpr std::uint32_t kPacketPgn = 60'160;      // TP.DT
constexpr std::size_t kManagementBytes = 8;
constexpr std::size_t kPacketBytes = 7;
constexpr std::uint8_t kEverybody = 0xFF;

// The first byte of TP.CM.
constexpr std::uint8_t kRequestToSend = 16;
constexpr std::uint8_t kClearToSend = 17;
constexpr std::uint8_t kAcknowledgement = 19;
constexpr std::uint8_t kBroadcastAnnouncement = 32;
constexpr std::uint8_t kConnectionAbort = 255;

std::uint32_t MakeSessionKey(std::uint8_t from, std::uint8_t to) {
  return std::uint32_t{from} << 8 | to;
}

struct Announcement {
  std::size_t bytes;
  std::size_t packets;
  std::uint32_t pgn;
};

/// The parameter group that TP.CM is about: three bytes, the lowest first.
std::uint32_t CarriedPgn(std::span<const std::uint8_t> data) {
  return std::uint32_t{data[5]} | std::uint32_t{data[6]} << 8 | std::uint32_t{data[7]} << 16;
}

Announcement ReadAnnouncement(std::span<const std::uint8_t> data) {
  return {data[1] | static_cast<std::size_t>(data[2]) << 8, data[3], CarriedPgn(data)};
}

std::string_view FindFault(const Announcement& announced, bool isBroadcast,
                           std::uint8_t destination) {
  constexpr std::uint32_t kMaxPgn = 0x3FFFF;
  if (announced.bytes < CJ1939Assembler::kMinBytes ||
      announced.bytes > CJ1939Assembler::kMaxBytes) {
    return "announced message has fewer than 9 or more than 1785 bytes";
  }
  if (announced.packets != (announced.bytes + kPacketBytes - 1) / kPacketBytes) {
    return "announced numbers of bytes and packets do not fit";
  }
  if (announced.pgn > kMaxPgn || (IsForOne(announced.pgn) && (announced.pgn & 0xFF) != 0)) {
    return "announced parameter group is none";
  }
  if (isBroadcast != (destination == kEverybody)) {
    return isBroadcast ? "broadcast is announced to one address only"
                       : "request to send goes to all addresses";
  }
  return {};
}

using enum AssemblyResult;

}  // namespace

struct CJ1939Assembler::Session {
  std::array<char, kMaxChannelName> channelText{};
  std::size_t channelSize = 0;
  J1939Id id;
  std::size_t size = 0;
  std::size_t packets = 0;
  std::size_t next = 1;  ///< The packet that comes next; behind the last when all are there.
  double time = 0.0;     ///< Of the last frame, as are line and turn.
  std::uint64_t line = 0;
  std::uint64_t turn = 0;
  bool isBroadcast = false;
  bool isComplete = false;  ///< Given already; it waits for the receiver's acknowledgement.
  std::array<std::uint8_t, kMaxBytes> data{};

  std::string_view Channel() const { return {channelText.data(), channelSize}; }
  void Begin(const J1939Frame& frame, const Announcement& announced, bool isForAll);
  void Touch(const J1939Frame& frame, std::uint64_t turnNow);
  bool IsTimedOut(double now) const;
  std::string_view TakePacket(std::span<const std::uint8_t> packet);
};

void CJ1939Assembler::Session::Begin(const J1939Frame& frame, const Announcement& announced,
                                     bool isForAll) {
  channelSize = std::min(frame.channel.size(), channelText.size());
  std::copy_n(frame.channel.begin(), channelSize, channelText.begin());
  id = frame.id;
  id.pgn = announced.pgn;
  size = announced.bytes;
  packets = announced.packets;
  next = 1;
  isBroadcast = isForAll;
  isComplete = false;
}

void CJ1939Assembler::Session::Touch(const J1939Frame& frame, std::uint64_t turnNow) {
  time = frame.time;
  line = frame.line;
  turn = turnNow;
}

bool CJ1939Assembler::Session::IsTimedOut(double now) const {
  // Seconds since 1970 are doubles a quarter of a microsecond apart.
  constexpr double kRounding = 0.5e-6;
  return now - time > (isBroadcast ? kBroadcastTimeout : kHandshakeTimeout) + kRounding;
}

/// Why the packet does not continue the message; empty when it does.
std::string_view CJ1939Assembler::Session::TakePacket(std::span<const std::uint8_t> packet) {
  const std::size_t number = packet.empty() ? 0 : packet.front();
  if (number == 0 || number > packets) {
    return "packet has a number that was not announced";
  }
  if (number < next) {
    return "packet came again or too late";
  }
  if (number > next) {
    return "a packet before this one is missing";
  }
  const std::size_t first = (number - 1) * kPacketBytes;
  const std::size_t wanted = std::min(kPacketBytes, size - first);
  if (packet.size() < 1 + wanted) {
    return "packet has fewer bytes than the message needs of it";
  }
  std::copy_n(packet.begin() + 1, wanted, data.begin() + static_cast<std::ptrdiff_t>(first));
  ++next;
  return {};
}

CJ1939Assembler::CJ1939Assembler() = default;
CJ1939Assembler::~CJ1939Assembler() = default;

AssemblyOutcome CJ1939Assembler::Take(const J1939Frame& frame, J1939Message& message) {
  if (frame.id.pgn == kPacketPgn) {
    ++m_taken;
    return TakePacket(frame, message);
  }
  if (frame.id.pgn != kManagementPgn) {
    return {NotTransport, {}, 0};
  }
  ++m_taken;
  if (frame.data.size() < kManagementBytes) {
    return {Passed, "frame of the transport protocol has fewer than 8 bytes", frame.line};
  }
  switch (frame.data.front()) {
    case kRequestToSend:
    case kBroadcastAnnouncement:
      return TakeAnnouncement(frame, frame.data.front() == kBroadcastAnnouncement);
    case kClearToSend:
      return TakeClearance(frame);
    case kAcknowledgement:
      return TakeAcknowledgement(frame);
    case kConnectionAbort:
      return TakeAbort(frame);
    default:
      return {Passed, {}, 0};
  }
}

AssemblyOutcome CJ1939Assembler::TakeAnnouncement(const J1939Frame& frame, bool isBroadcast) {
  const Announcement announced = ReadAnnouncement(frame.data);
  const std::string_view fault = FindFault(announced, isBroadcast, frame.id.destination);
  if (!fault.empty()) {
    return {Passed, fault, frame.line};
  }
  Outcome outcome;
  const std::size_t earlier = Find(frame.channel, frame.id.source, frame.id.destination);
  if (earlier != m_count) {
    const bool isLate = m_sessions[earlier]->IsTimedOut(frame.time);
    outcome = Drop(earlier,
                   isLate ? "message was not continued in time"
                          : "message is announced while one is not complete",
                   frame.line);
  } else if (m_count == kMaxSessions) {
    outcome = Drop(FindOldest(), "too many messages at a time: the oldest is given up", frame.line);
  }
  if (m_count == m_sessions.size()) {
    m_sessions.push_back(std::make_unique<Session>());
    m_keys.push_back(0);
  }
  Session& session = *m_sessions[m_count];
  session.Begin(frame, announced, isBroadcast);
  session.Touch(frame, m_taken);
  m_keys[m_count++] = MakeSessionKey(frame.id.source, frame.id.destination);
  outcome.result = UnderWay;
  return outcome;
}

/// The receiver asks for packets: for the next ones, or once more for earlier ones.
AssemblyOutcome CJ1939Assembler::TakeClearance(const J1939Frame& frame) {
  const std::size_t place = Find(frame.channel, frame.id.destination, frame.id.source);
  if (place == m_count || m_sessions[place]->id.pgn != CarriedPgn(frame.data)) {
    return {Passed, {}, 0};
  }
  Session& session = *m_sessions[place];
  if (session.IsTimedOut(frame.time)) {
    return Drop(place, "message was not continued in time", frame.line);
  }
  const std::size_t count = frame.data[1];
  const std::size_t first = frame.data[2];
  // A count of 0 only holds the session.
  if (count != 0 && !session.isComplete) {
    if (first == 0 || first > session.packets) {
      return Drop(place, "packets are asked for that were not announced", frame.line);
    }
    if (first > session.next) {
      return Drop(place, "packets before those that are asked for are missing", frame.line);
    }
    session.next = first;
  }
  session.Touch(frame, m_taken);
  return {UnderWay, {}, 0};
}

AssemblyOutcome CJ1939Assembler::TakeAcknowledgement(const J1939Frame& frame) {
  const std::size_t place = Find(frame.channel, frame.id.destination, frame.id.source);
  if (place == m_count || m_sessions[place]->id.pgn != CarriedPgn(frame.data)) {
    return {Passed, {}, 0};
  }
  return Drop(place, "message is acknowledged, but packets are missing", frame.line);
}

AssemblyOutcome CJ1939Assembler::TakeAbort(const J1939Frame& frame) {
  std::size_t place = Find(frame.channel, frame.id.source, frame.id.destination);
  if (place == m_count || m_sessions[place]->id.pgn != CarriedPgn(frame.data)) {
    place = Find(frame.channel, frame.id.destination, frame.id.source);
  }
  if (place == m_count || m_sessions[place]->id.pgn != CarriedPgn(frame.data)) {
    return {Passed, {}, 0};
  }
  return Drop(place, "message is aborted", frame.line);
}

AssemblyOutcome CJ1939Assembler::TakePacket(const J1939Frame& frame, J1939Message& message) {
  const std::size_t place = Find(frame.channel, frame.id.source, frame.id.destination);
  if (place == m_count) {
    return {Passed, {}, 0};
  }
  Session& session = *m_sessions[place];
  if (session.IsTimedOut(frame.time)) {
    return Drop(place, "message was not continued in time", frame.line);
  }
  if (session.isComplete) {
    session.Touch(frame, m_taken);
    return {Passed, {}, 0};
  }
  const std::string_view fault = session.TakePacket(frame.data);
  if (!fault.empty()) {
    return Drop(place, fault, frame.line);
  }
  session.Touch(frame, m_taken);
  if (session.next <= session.packets) {
    return {UnderWay, {}, 0};
  }
  message = {
      session.id, {session.data.data(), session.size}, static_cast<std::uint32_t>(session.packets)};
  session.isComplete = true;
  if (session.isBroadcast) {
    Remove(place);
  }
  return {Complete, {}, 0};
}

bool CJ1939Assembler::Finish(AssemblyOutcome& outcome) {
  while (m_count != 0) {
    const std::size_t place = FindOldest();
    outcome = Drop(place, "log ends before the message is complete", m_sessions[place]->line);
    if (!outcome.problem.empty()) {
      return true;
    }
  }
  return false;
}

std::size_t CJ1939Assembler::Find(std::string_view channel, std::uint8_t from,
                                  std::uint8_t to) const {
  const std::uint32_t key = MakeSessionKey(from, to);
  for (std::size_t place = 0; place < m_count; ++place) {
    if (m_keys[place] == key && m_sessions[place]->Channel() == channel) {
      return place;
    }
  }
  return m_count;
}

std::size_t CJ1939Assembler::FindOldest() const {
  std::size_t oldest = 0;
  for (std::size_t place = 1; place < m_count; ++place) {
    if (m_sessions[place]->turn < m_sessions[oldest]->turn) {
      oldest = place;
    }
  }
  return oldest;
}

AssemblyOutcome CJ1939Assembler::Drop(std::size_t place, std::string_view problem,
                                      std::uint64_t line) {
  const bool isComplete = m_sessions[place]->isComplete;
  Remove(place);
  return isComplete ? AssemblyOutcome{Passed, {}, 0} : AssemblyOutcome{Passed, problem, line};
}

void CJ1939Assembler::Remove(std::size_t place) {
  --m_count;
  std::swap(m_sessions[place], m_sessions[m_count]);
  std::swap(m_keys[place], m_keys[m_count]);
}

}  // namespace lum::decoding
