// Numbers and ranges of numbers as profiles write them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "decoding/ProfileFaults.h"

namespace lum::decoding {

/// A whole number, decimal or hexadecimal after "0x".
std::optional<std::uint64_t> ReadWholeNumber(std::string_view text);
/// Up to 8 hexadecimal digits and nothing else.
std::optional<std::uint32_t> ReadHexDigits(std::string_view text);

/// "1", "-2.5e3", "0xFF00", "-inf".
std::optional<double> ReadProfileNumber(std::string_view text);

/// "FIRST..LAST"; a fault otherwise.
std::optional<NumberRange> ReadRange(const PlacedText& text, CProfileFaults& faults);
/// Numbers and ranges, separated by commas. What is wrong becomes a fault at its place.
std::vector<NumberRange> ReadRangeList(const PlacedText& text, CProfileFaults& faults);

}  // namespace lum::decoding
