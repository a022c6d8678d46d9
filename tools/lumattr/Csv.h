// Comma-separated values by RFC 4180.
#pragma once

#include "tools/lumattr/Columns.h"

namespace lum::tool {

/// A field: in quotes when it holds a comma, a quote or a line break.
std::string CsvField(const std::string& text);

/// Writes one line: fields in quotes where they must be, CR LF at its end.
void PrintCsvLine(ToolContext& context, const TableRow& fields);

}  // namespace lum::tool
