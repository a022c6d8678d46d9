// What the readers make of lines: one record each, with the parts that formulas name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace lum::decoding {

enum class LogFormat : std::uint8_t { Plain, Candump, J1939, Nmea, Csv };

/// "plain", "candump", "j1939", "nmea", "csv".
std::string_view LogFormatName(LogFormat format);
std::optional<LogFormat> FindLogFormat(std::string_view name);

/// The name of a bus interface is at most so many bytes; a line with a longer one is a problem.
inline constexpr std::size_t kMaxChannelName = 64;

enum class RecordKind : std::uint8_t {
  Data,
  Remote,    ///< A remote transmission request: no data.
  BusError,  ///< An error frame of the bus.
  Unusable,  ///< Well-formed, but nothing that can be decoded (a CAN FD frame).
  Remark,    ///< An empty line or a comment: nobody's data.
  Part,      ///< One frame of a multi-packet message that is not complete yet, or its handshake.
};

/// Where the columns of a bus record come from.
struct BusParts {
  std::string_view channel;
  std::uint32_t id = 0;  ///< 11 or 29 bits.
  bool isExtended = false;
  std::span<const std::uint8_t> data;
  std::string_view frame;    ///< As CanVal reads it; empty for messages of several frames.
  std::string_view message;  ///< As J1939Val reads it; empty for standard frames.
  std::uint32_t pgn = 0;     ///< Of extended frames, in the format J1939.
  std::uint8_t source = 0;
  std::uint8_t destination = 0xFF;
  std::uint8_t priority = 0;
  std::uint32_t frames = 1;  ///< How many frames the message came in.
};

/// Views lead into the line or into the reader, valid until its next call.
struct LogRecord {
  RecordKind kind = RecordKind::Data;
  std::string_view line;
  std::uint64_t number = 0;
  std::uint64_t offset = 0;
  std::optional<double> time;  ///< Seconds.
  std::span<const std::string_view> fields;
  std::string_view address;  ///< Of an NMEA 0183 sentence.
  BusParts bus;
  bool isBus = false;
};

/// What is wrong with a line: nothing of it is decoded.
struct LineProblem {
  std::uint64_t line = 0;
  std::size_t column = 1;   ///< From 1, in bytes.
  std::string_view reason;  ///< Static text: "odd number of hexadecimal digits".
};

}  // namespace lum::decoding
