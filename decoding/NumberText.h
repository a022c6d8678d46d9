// Numbers as rows show them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lum::decoding {

/// The room that the writers below need, in characters: the largest double has 309 digits before
/// the point, and what they write behind the text does not count.
inline constexpr std::size_t kNumberRoom = 352;

/// Writes a number with so many digits after the point, 0 to 17, correctly rounded (a tie to even,
/// as IEEE 754 has it); what is no number as "nan", "inf", "-inf". Returns the end of the text,
/// here as below, behind which the room may be written, too.
char* WriteFixed(char* at, double number, int digits);
/// Writes the shortest text that reads back to the same double; what is no number as above.
char* WriteShortest(char* at, double number);
/// Writes a number as a column shows it: with so many digits, or as short as it can be.
char* WriteNumber(char* at, double number, std::optional<int> digits);
char* WriteWhole(char* at, std::uint64_t number);

/// The same at the end of a text.
void AppendFixed(std::string& text, double number, int digits);
void AppendShortest(std::string& text, double number);
void AppendNumber(std::string& text, double number, std::optional<int> digits);
void AppendWhole(std::string& text, std::uint64_t number);

}  // namespace lum::decoding
