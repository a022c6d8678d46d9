// What conditions and formulas see of a record.
#pragma once

#include "decoding/LogRecord.h"

namespace lum::decoding {

/// Whether a bus record's identifier was taken apart as SAE J1939-21 says. One whose parts are all
/// as they begin was not, unless these are its parts.
bool HasJ1939Parts(const BusParts& bus);

}  // namespace lum::decoding
