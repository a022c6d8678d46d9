// Numbers as rows show them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lum::decoding {

/// Appends a number with so many digits after the point, 0 to 17, correctly rounded (a tie to even,
/// as IEEE 754 has it); what is no number as "nan", "inf", "-inf".
void AppendFixed(std::string& text, double number, int digits);
/// Appends the shortest text that reads back to the same double; what is no number as above.
void AppendShortest(std::string& text, double number);
/// Appends a number as a column shows it: with so many digits, or as short as it can be.
void AppendNumber(std::string& text, double number, std::optional<int> digits);
void AppendWhole(std::string& text, std::uint64_t number);

}  // namespace lum::decoding
