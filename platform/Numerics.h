// Small numeric services: comparison tolerance, angle normalisation, hexadecimal digits.
#pragma once

#include <numbers>

#include "platform/PlatformExport.h"

/// Degrees to radians.
inline constexpr double D_TO_R = std::numbers::pi / 180.0;

/// The tolerance for values of magnitude `m`: m times the double's machine epsilon.
LUM_PLATFORM_API double Epsilon(double m);

/// An angle in degrees, normalised to (-180, 180]. What is no finite angle gives not-a-number.
LUM_PLATFORM_API double modgeo(double degrees);

/// The value of a hexadecimal digit, or -1 for any other character.
LUM_PLATFORM_API int HexVal(wchar_t digit);
