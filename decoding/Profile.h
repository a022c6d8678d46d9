// Decode profiles: which messages of a log are decoded, and into which columns.
// docs/decoding.md has the file format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/LogReader.h"
#include "decoding/LogRecord.h"

namespace lum::decoding {

/// No profile has more messages, and no message more columns.
inline constexpr std::size_t kMaxProfileMessages = 10'000;
inline constexpr std::size_t kMaxMessageColumns = 256;

/// Numbers from `first` to `last`, both included.
struct NumberRange {
  double first = 0.0;
  double last = 0.0;
  bool Contains(double number) const { return first <= number && number <= last; }
};

struct ColumnRule {
  std::string name;
  std::string displayName;  ///< From the definitions; else the name.
  std::string unit;
  std::optional<int> digits;  ///< After the point; without, as many as the number needs.
  std::optional<CExpression> raw;
  std::optional<CExpression> formula;  ///< Empty with a raw formula: the raw number is the value.
  std::vector<NumberRange> notAvailable;  ///< Of the raw number, or of the value without one.
  std::vector<NumberRange> error;
  std::optional<NumberRange> range;  ///< Of the value: beyond it is an error.
  int line = 0;                      ///< In the profile.
};

/// One condition of a message. Each kind is a concrete test of one part of a record.
struct MatchTerm {
  enum class Part : std::uint8_t {
    Id,           ///< number, under mask; isExtended
    Pgn,          ///< number
    Source,       ///< number
    Destination,  ///< number
    Priority,     ///< number
    Channel,      ///< pattern
    Sentence,     ///< pattern: the address of an NMEA 0183 sentence
    FieldCount,   ///< number
    Field,        ///< pattern: the text of field `number`
    Line,         ///< pattern: the whole line
  };
  Part part = Part::Line;
  std::uint32_t number = 0;
  std::uint32_t mask = 0xFFFFFFFF;
  bool isExtended = false;
  std::string pattern;  ///< "*" any characters, "?" any one.
  std::string text;     ///< "match.pgn=61444", as the profile says it.
};

struct MessageRule {
  std::string name;
  std::vector<MatchTerm> match;  ///< All must hold.
  std::vector<ColumnRule> columns;
  int line = 0;
};

struct ProfileFault {
  int line = 1;
  int column = 1;
  std::string found;
  std::string expected;
  std::string suggestion;
};

struct Profile {
  std::string path;
  std::optional<LogFormat> format;
  ReaderOptions reader;
  std::vector<MessageRule> messages;
};

/// Reads a profile; every fault of the file is in `faults`, in the order of their places, and then
/// the profile must not be used. Throws DecodingError for a file that cannot be read.
Profile LoadProfile(const std::string& path, std::vector<ProfileFault>& faults);

/// A profile of one message that matches every record, with a column for each formula ("NAME=…" or
/// the formula alone, whose column is called by its text).
Profile ProfileOfFormulas(const std::vector<std::string>& formulas,
                          std::vector<ProfileFault>& faults);

}  // namespace lum::decoding
