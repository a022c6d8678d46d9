// Strict reading of numbers from wide text, independent of the process locale: the whole text must
// be one number that the type can hold. Nothing is allocated, however long the text is.
#pragma once

#include <cstdint>
#include <string_view>

namespace lum::detail {

/// Reads an optional sign and decimal digits. False, with the output untouched, for anything else
/// and for a number the type cannot hold.
bool ReadNumber(std::wstring_view text, int& value);
bool ReadNumber(std::wstring_view text, unsigned int& value);
bool ReadNumber(std::wstring_view text, unsigned short& value);
bool ReadNumber(std::wstring_view text, std::uint64_t& value);

/// Reads a decimal number with an optional sign, point and exponent, correctly rounded, or what
/// "%f" writes for an infinity or not-a-number, in any case. What is too small for the type reads
/// as zero of its sign; what is too large is refused.
bool ReadNumber(std::wstring_view text, float& value);
bool ReadNumber(std::wstring_view text, double& value);

/// Reads 1, 0, true or false in any case.
bool ReadNumber(std::wstring_view text, bool& value);

}  // namespace lum::detail
