// Numbers as formulas and command lines write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lum::decoding {

/// A number without a sign, which the text is as a whole: decimal, with an exponent or without,
/// hexadecimal digits after 0x, "inf" or "nan". Nothing for anything else and for what a double
/// cannot hold.
std::optional<double> ReadUnsigned(std::string_view text);

/// The shortest text that reads back as the number. Not-a-number has no sign that would matter.
std::string NumberText(double number);

}  // namespace lum::decoding
