// The names of the formats.
#include "decoding/LogRecord.h"

#include <array>

namespace lum::decoding {

namespace {

constexpr std::array<std::string_view, 5> kFormatNames = {"plain", "candump", "j1939", "nmea",
                                                          "csv"};

}  // namespace

std::string_view LogFormatName(LogFormat format) {
  return kFormatNames[static_cast<std::size_t>(format)];
}

std::optional<LogFormat> FindLogFormat(std::string_view name) {
  for (std::size_t i = 0; i < kFormatNames.size(); ++i) {
    if (kFormatNames[i] == name) {
      return static_cast<LogFormat>(i);
    }
  }
  return std::nullopt;
}

}  // namespace lum::decoding
