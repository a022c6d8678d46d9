// How the operations on records read their fields, in words: which bytes and bits, in which order.
#pragma once

#include <string>

#include "decoding/Expression.h"
#include "decoding/LogRecord.h"

namespace lum::tool {

/// "bytes 3..4 = E0 2E, least significant first: 0x2EE0, an unsigned 16-bit integer"; empty for
/// steps that read no field.
std::string ExplainField(const decoding::EvaluationStep& step, const decoding::LogRecord& record);

/// The bytes as "E0 2E".
std::string HexBytes(std::string_view bytes);

}  // namespace lum::tool
