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

class CAttribDefMap;

namespace lum::decoding {

/// No profile has more messages, and no message more columns.
inline constexpr std::size_t kMaxProfileMessages = 10'000;
inline constexpr std::size_t kMaxMessageColumns = 256;
/// A larger profile is refused, in bytes: what is made of it is many times its size.
inline constexpr std::size_t kMaxProfileBytes = 16'777'216;
/// More faults of a profile are not told.
inline constexpr std::size_t kMaxProfileFaults = 10'000;
/// No pattern is longer, in bytes: it is held against every record.
inline constexpr std::size_t kMaxMatchPattern = 256;
/// No column has more digits after the point.
inline constexpr int kMaxColumnDigits = 17;

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
  std::string text;     ///< "Match.Pgn=61444", as the profile says it.
};

struct MessageRule {
  std::string name;
  std::vector<MatchTerm> match;  ///< All must hold.
  std::vector<ColumnRule> columns;
  int line = 0;
};

/// What is wrong in a profile, and where: the first line and column are 1, columns in characters.
struct ProfileFault {
  int line = 1;
  int column = 1;
  std::string found;       ///< "unknown key 'Speed.Formla'".
  std::string expected;    ///< May be empty.
  std::string suggestion;  ///< "Speed.Formula", or empty.
};

struct Profile {
  std::string path;
  std::optional<LogFormat> format;
  ReaderOptions reader;
  std::vector<MessageRule> messages;
};

/// Reads a profile; every fault of the file is in `faults`, in the order of their places, and then
/// the profile must not be used. Of more than kMaxProfileFaults the last one says so. A profile
/// that does not name its format, but tells messages apart by what SAE J1939-21 puts into an
/// identifier, is one for the format J1939. Throws DecodingError for a file that cannot be read or
/// is larger than kMaxProfileBytes.
Profile LoadProfile(const std::string& path, std::vector<ProfileFault>& faults);

/// A profile of one message that matches every record, with a column for each formula ("NAME=…" or
/// the formula alone, whose column is called by its text). A fault's line is the formula's number,
/// from 1, and its column counts from the beginning of the formula's text, line breaks included.
Profile ProfileOfFormulas(const std::vector<std::string>& formulas,
                          std::vector<ProfileFault>& faults);

/// Gives the columns whose names are mnemonics of the definitions the display names that stand
/// there.
void ApplyDisplayNames(Profile& profile, const CAttribDefMap& definitions);

}  // namespace lum::decoding
