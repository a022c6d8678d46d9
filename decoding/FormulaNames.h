// The names of formulas: what they stand for, how operations are written, and what a wrong name was
// meant to be.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "decoding/FormulaLexer.h"
#include "decoding/Operations.h"

namespace lum::decoding {

inline constexpr std::string_view kFieldName = "field";

/// The words for the last argument of operations that have a lenient form.
bool IsLenientWord(std::string_view word);

/// "CanVal(frame, typeCode, startByte)"
std::string CallText(const Operation& operation);

/// "2 arguments"
std::string Counted(std::size_t arguments);
/// "3 arguments: CanVal(frame, typeCode, startByte)"
std::string CountedArguments(const Operation& operation);

/// Why there is no such operation, or no such name.
FormulaFault UnknownOperation(const FormulaToken& name);
FormulaFault UnknownName(const FormulaToken& name);

}  // namespace lum::decoding
