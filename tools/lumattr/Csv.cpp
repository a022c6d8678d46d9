#include "tools/lumattr/Csv.h"

#include "tools/lumattr/Text.h"

namespace lum::tool {

std::string CsvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    return text;
  }
  std::string quoted = "\"";
  for (char ch : text) {
    quoted.append(ch == '"' ? 2 : 1, ch);
  }
  return quoted + '"';
}

void PrintCsvLine(ToolContext& context, const TableRow& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    context.out << (i == 0 ? "" : ",")
                << CsvField(context.terminal ? Printable(FromUtf8(fields[i])) : fields[i]);
  }
  context.out << "\r\n";
}

}  // namespace lum::tool
