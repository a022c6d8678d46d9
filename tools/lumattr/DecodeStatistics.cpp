#include "tools/lumattr/DecodeStatistics.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "decoding/NumberText.h"
#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Csv.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

using decoding::CColumnStatistics;
using decoding::CellReason;
using decoding::ColumnRule;
using decoding::MessageRule;
using decoding::Profile;

std::uint64_t NotAvailable(const CColumnStatistics& column) {
  return column.Count(CellReason::EmptyInput) + column.Count(CellReason::NotAvailableNumber);
}

std::uint64_t Errors(const CColumnStatistics& column) {
  return column.Count(CellReason::ErrorNumber) + column.Count(CellReason::OutOfRange) +
         column.Count(CellReason::NotANumber);
}

std::uint64_t Undecodable(const CColumnStatistics& column) {
  return column.Count(CellReason::MissingInput) + column.Count(CellReason::NoValue);
}

std::string NumberText(double number, std::optional<int> digits) {
  std::string text;
  decoding::AppendNumber(text, number, digits);
  return text;
}

/// A text of a profile or a command line as JSON takes it: some UTF-8.
std::string JsonText(const std::string& text) { return ToUtf8(FromUtf8(text)); }

TableRow Line(const MessageRule& message, const ColumnRule& rule, const CColumnStatistics& column) {
  const auto number = [&](double value) {
    return column.Count() > 0 ? NumberText(value, rule.digits) : std::string();
  };
  return {message.name,
          rule.name,
          std::to_string(column.Count()),
          number(column.Minimum()),
          number(column.Maximum()),
          number(column.Mean()),
          rule.unit,
          std::to_string(NotAvailable(column)),
          std::to_string(Errors(column)),
          std::to_string(Undecodable(column))};
}

CJson ColumnJson(const ColumnRule& rule, const CColumnStatistics& column) {
  const bool hasValues = column.Count() > 0;
  CJson json;
  json.Set("column", JsonText(rule.name));
  json.Set("unit", JsonText(rule.unit));
  json.Set("count", column.Count());
  json.Set("minimum", hasValues ? CJson(column.Minimum()) : CJson());
  json.Set("maximum", hasValues ? CJson(column.Maximum()) : CJson());
  json.Set("mean", hasValues ? CJson(column.Mean()) : CJson());
  CJson absent = CJson::Object();
  for (std::size_t i = 1; i < decoding::kCellReasonCount; ++i) {
    const auto reason = static_cast<CellReason>(i);
    if (column.Count(reason) > 0) {
      absent.Set(CellReasonName(reason), column.Count(reason));
    }
  }
  json.Set("absent", std::move(absent));
  return json;
}

}  // namespace

CDecodeStatistics::CDecodeStatistics(const Profile& profile) : m_profile(profile) {
  for (const MessageRule& message : profile.messages) {
    m_messages.emplace_back().columns.resize(message.columns.size());
  }
}

void CDecodeStatistics::Add(const decoding::Row& row) {
  CMessage& message = m_messages[row.messageIndex];
  ++message.rows;
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    message.columns[i].Add(row.cells[i]);
  }
}

void CDecodeStatistics::PrintJson(ToolContext& context) const {
  CJson json = CJson::Array();
  for (std::size_t i = 0; i < m_messages.size(); ++i) {
    const MessageRule& rule = m_profile.messages[i];
    CJson columns = CJson::Array();
    for (std::size_t j = 0; j < rule.columns.size(); ++j) {
      columns.Add(ColumnJson(rule.columns[j], m_messages[i].columns[j]));
    }
    CJson message;
    message.Set("message", JsonText(rule.name));
    message.Set("rows", m_messages[i].rows);
    message.Set("columns", std::move(columns));
    json.Add(std::move(message));
  }
  context.out << json.IndentedText() << '\n';
}

void CDecodeStatistics::Print(RowFormat format, ToolContext& context) const {
  if (format == RowFormat::Json) {
    PrintJson(context);
    return;
  }
  const TableRow titles = {"MESSAGE", "COLUMN", "COUNT",         "MINIMUM", "MAXIMUM",
                           "MEAN",    "UNIT",   "NOT AVAILABLE", "ERROR",   "UNDECODABLE"};
  std::vector<TableRow> rows;
  for (std::size_t i = 0; i < m_messages.size(); ++i) {
    const MessageRule& rule = m_profile.messages[i];
    for (std::size_t j = 0; j < rule.columns.size(); ++j) {
      rows.push_back(Line(rule, rule.columns[j], m_messages[i].columns[j]));
    }
  }
  if (format == RowFormat::Table) {
    for (TableRow& row : rows) {
      std::transform(row.begin(), row.end(), row.begin(),
                     [](const std::string& text) { return Printable(FromUtf8(text)); });
    }
    PrintTable(context, titles, rows);
    return;
  }
  PrintCsvLine(context, {"message", "column", "count", "minimum", "maximum", "mean", "unit",
                         "not available", "error", "undecodable"});
  for (const TableRow& row : rows) {
    PrintCsvLine(context, row);
  }
}

}  // namespace lum::tool
