// Identifiers of SAE J1939-21, and its multi-packet messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "decoding/LogRecord.h"

namespace lum::decoding {

/// The parts of a 29-bit identifier. PDU1 (the PF byte below 240): the PS byte is the destination
/// and does not belong to the parameter group number. PDU2: it does, and the message is for all.
struct J1939Id {
  std::uint8_t priority = 0;
  std::uint32_t pgn = 0;  ///< 18 bits, data page and extended data page included.
  std::uint8_t source = 0;
  std::uint8_t destination = 0xFF;
};

/// Whether a parameter group is of PDU1: its messages have a destination.
inline bool IsForOne(std::uint32_t pgn) { return (pgn >> 8 & 0xFF) < 240; }

inline J1939Id SplitJ1939Id(std::uint32_t id) {
  J1939Id parts;
  parts.priority = static_cast<std::uint8_t>(id >> 26 & 0x7);
  parts.source = static_cast<std::uint8_t>(id & 0xFF);
  parts.pgn = id >> 8 & 0x3FFFF;
  if (IsForOne(parts.pgn)) {
    parts.destination = static_cast<std::uint8_t>(parts.pgn & 0xFF);
    parts.pgn &= 0x3FF00;
  }
  return parts;
}

/// One frame for the assembler.
struct J1939Frame {
  J1939Id id;
  std::string_view channel;
  std::span<const std::uint8_t> data;
  double time = 0.0;  ///< Seconds; without time stamps 0 throughout, and nothing times out.
  std::uint64_t line = 0;
};

/// A whole message of several frames.
struct J1939Message {
  J1939Id id;                          ///< Of the parameter group that was carried.
  std::span<const std::uint8_t> data;  ///< Valid until the next call.
  std::uint32_t frames = 0;            ///< How many packets it came in.
};

enum class AssemblyResult : std::uint8_t {
  NotTransport,  ///< An ordinary message: TP.CM and TP.DT it is not.
  UnderWay,
  Complete,
  Passed,  ///< Transport protocol, but nothing of a session that is known: acknowledgements,
           ///< aborts.
};

struct AssemblyOutcome {
  AssemblyResult result = AssemblyResult::NotTransport;
  std::string_view problem;  ///< Static text, or empty: "packet 3 is missing …".
  std::uint64_t problemLine = 0;
};

/// Puts multi-packet messages together (SAE J1939-21, transport protocol): announced to all (BAM)
/// and with a handshake (RTS/CTS), interleaved from several senders on several channels. At most
/// kMaxSessions at a time: the one that has waited longest is given up for a new one, with a
/// problem.
class CJ1939Assembler {
 public:
  CJ1939Assembler();
  CJ1939Assembler(const CJ1939Assembler&) = delete;
  CJ1939Assembler& operator=(const CJ1939Assembler&) = delete;
  ~CJ1939Assembler();

  static constexpr std::size_t kMaxSessions = 1024;
  /// A message of several packets has 9 bytes at least and 255 packets of 7 bytes at most.
  static constexpr std::size_t kMinBytes = 9;
  static constexpr std::size_t kMaxBytes = 1785;
  /// T1 of the standard: the longest wait between packets, and T2 of a handshake, in seconds.
  static constexpr double kBroadcastTimeout = 0.75;
  static constexpr double kHandshakeTimeout = 1.25;

  /// Precondition: the channel's name has at most kMaxChannelName bytes.
  AssemblyOutcome Take(const J1939Frame& frame, J1939Message& message);
  /// One of the sessions under way as a problem, and forgets it; false when there is none.
  bool Finish(AssemblyOutcome& outcome);

 private:
  struct Session;
  using Outcome = AssemblyOutcome;

  Outcome TakeAnnouncement(const J1939Frame& frame, bool isBroadcast);
  Outcome TakeClearance(const J1939Frame& frame);
  Outcome TakeAcknowledgement(const J1939Frame& frame);
  Outcome TakeAbort(const J1939Frame& frame);
  Outcome TakePacket(const J1939Frame& frame, J1939Message& message);

  /// The place of the session from one sender to one receiver; m_count when there is none.
  std::size_t Find(std::string_view channel, std::uint8_t from, std::uint8_t to) const;
  std::size_t FindOldest() const;
  /// Ends the session, with a problem unless its message was complete.
  Outcome Drop(std::size_t place, std::string_view problem, std::uint64_t line);
  void Remove(std::size_t place);

  /// The first m_count are under way; the others wait to be used again.
  std::vector<std::unique_ptr<Session>> m_sessions;
  std::vector<std::uint32_t> m_keys;  ///< Sender and receiver of the session at the same place.
  std::size_t m_count = 0;
  std::uint64_t m_taken = 0;
};

}  // namespace lum::decoding
