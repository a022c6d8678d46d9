// What the tool asks the terminal.
#pragma once

namespace lum::tool {

/// Whether standard output is a terminal that understands colour and the user has not switched it
/// off (a non-empty NO_COLOR, or TERM=dumb).
bool MayColorOutput();

}  // namespace lum::tool
