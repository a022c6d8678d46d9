// Comma-separated values by RFC 4180.
#pragma once

#include "tools/lumattr/Columns.h"

namespace lum::tool {

/// Writes one line: fields in quotes where they must be, CR LF at its end.
void PrintCsvLine(ToolContext& context, const TableRow& fields);

}  // namespace lum::tool
