// The numbers by which devices on a bus of SAE J1939 say "not available" and "error".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "decoding/Profile.h"

namespace lum::decoding {

struct Sentinels {
  NumberRange notAvailable;
  NumberRange error;
};

/// The ranges that SAE J1939-71 keeps for fields of so many bits: for whole bytes those whose
/// highest byte is 0xFF and 0xFE, for bit fields the highest number and the one below.
/// Precondition: 2 to 32.
Sentinels J1939Sentinels(int bits);

/// The same for what a formula reads, or why they are not known: the formula must be one J1939Val,
/// J1939BitsVal or CanVal whose type and length are numbers and which reads an unsigned integer.
std::variant<Sentinels, std::string> SentinelsOfFormula(std::string_view formula);

}  // namespace lum::decoding
