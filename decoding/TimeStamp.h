// The time stamps that logs write in front of their lines.
#pragma once

#include <optional>
#include <string_view>

#include "decoding/LogText.h"

namespace lum::decoding::detail {

/// Takes "1436509052.249713": seconds, as many digits behind the point as there are. Nothing is
/// taken when there is no such number.
std::optional<double> TakeSeconds(CLogCursor& cursor);

/// Takes "2015-07-10 06:17:32.249713", with 'T' in place of the blank, 'Z' or an offset ("+02:00")
/// behind it: seconds since 1970-01-01 00:00 UTC; without an offset it is UTC. The years 1 to 9999
/// (ISO 8601). Nothing is taken of anything else.
std::optional<double> TakeCivilTime(CLogCursor& cursor);

/// Takes "(…)" around either form. Nothing is taken of anything else.
std::optional<double> TakeTimeInParentheses(CLogCursor& cursor);

}  // namespace lum::decoding::detail
