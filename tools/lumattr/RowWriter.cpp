#include "tools/lumattr/RowWriter.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "decoding/NumberText.h"
#include "tools/lumattr/Csv.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/RowColumns.h"
#include "tools/lumattr/RowText.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

using decoding::Cell;
using decoding::CellReason;
using decoding::CellState;
using decoding::ColumnRule;
using decoding::MessageRule;
using decoding::Profile;
using decoding::Row;

/// Digits of a time stamp: logs count microseconds.
constexpr int kTimeDigits = 6;

std::string JsonText(const std::string& text) { return CJson(ToUtf8(FromUtf8(text))).Text(); }

// ---- CSV by RFC 4180: a cell without a value is empty

class CCsvRows : public CRowWriter {
 public:
  CCsvRows(const Profile& profile, const RowLayout& layout)
      : m_profile(profile), m_layout(layout), m_columns(profile) {
    for (const MessageRule& message : profile.messages) {
      m_messages.push_back(Field(message.name));
    }
  }

  void SetFile(const std::string& name) override {
    m_file = m_layout.hasFile ? Field(name) + "," : "";
  }

  void AppendTitles(std::string& text) const override {
    text += m_layout.hasFile ? "file,line" : "line";
    text += m_layout.hasTime ? ",time" : "";
    text += HasMessages() ? ",message" : "";
    for (const RowColumn& column : m_columns.Columns()) {
      text += "," + Field(column.name);
    }
    text += "\r\n";
  }

  void AppendRow(std::string& text, const Row& row) const override {
    CRowText pieces(text);
    pieces.Add(m_file);
    pieces.AddWhole(row.record->number);
    if (m_layout.hasTime) {
      pieces.Add(',');
      if (row.record->time) {
        pieces.AddFixed(*row.record->time, kTimeDigits);
      }
    }
    if (HasMessages()) {
      pieces.Add(',');
      pieces.Add(m_messages[row.messageIndex]);
    }
    AddCells(pieces, row);
    pieces.Add("\r\n");
    pieces.Finish();
  }

 private:
  bool HasMessages() const { return m_profile.messages.size() > 1; }

  std::string Field(const std::string& text) const {
    return CsvField(m_layout.isTerminal ? Printable(FromUtf8(text)) : text);
  }

  void AddCells(CRowText& pieces, const Row& row) const {
    std::size_t next = 0;
    for (const auto& [place, column] : m_columns.PlacesOf(row.messageIndex)) {
      AddCommas(pieces, place + 1 - next);
      next = place + 1;
      const Cell& cell = row.cells[column];
      if (cell.state == CellState::Value) {
        pieces.AddNumber(cell.value, row.message->columns[column].digits);
      }
    }
    AddCommas(pieces, m_columns.Columns().size() - next);
  }

  static void AddCommas(CRowText& pieces, std::size_t count) {
    for (; count > 0; --count) {
      pieces.Add(',');
    }
  }

  const Profile& m_profile;
  RowLayout m_layout;
  CRowColumns m_columns;
  std::vector<std::string> m_messages;
  std::string m_file;
};

// ---- JSON: an object a line; what a message does not have is not there

class CJsonRows : public CRowWriter {
 public:
  CJsonRows(const Profile& profile, const RowLayout& layout) : m_layout(layout) {
    for (const MessageRule& message : profile.messages) {
      CMessage& texts = m_messages.emplace_back();
      texts.start = message.name.empty() ? "" : ",\"message\":" + JsonText(message.name);
      texts.start += ",\"values\":{";
      for (const ColumnRule& column : message.columns) {
        texts.keys.push_back((texts.keys.empty() ? "" : ",") + JsonText(column.name) + ":");
      }
    }
  }

  void SetFile(const std::string& name) override {
    m_file = m_layout.hasFile ? "\"file\":" + JsonText(name) + "," : "";
  }

  void AppendTitles(std::string&) const override {}

  void AppendRow(std::string& text, const Row& row) const override {
    const CMessage& message = m_messages[row.messageIndex];
    CRowText pieces(text);
    pieces.Add('{');
    pieces.Add(m_file);
    pieces.Add("\"line\":");
    pieces.AddWhole(row.record->number);
    if (m_layout.hasTime && row.record->time) {
      pieces.Add(",\"time\":");
      pieces.AddFixed(*row.record->time, kTimeDigits);
    }
    pieces.Add(message.start);
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      pieces.Add(message.keys[i]);
      AddCell(pieces, row.cells[i]);
    }
    pieces.Add("}}\n");
    pieces.Finish();
  }

 private:
  struct CMessage {
    std::string start;
    std::vector<std::string> keys;
  };

  static void AddCell(CRowText& pieces, const Cell& cell) {
    if (cell.state == CellState::Value) {
      pieces.AddNumber(cell.value, std::nullopt);
      return;
    }
    pieces.Add("{\"state\":\"");
    pieces.Add(CellStateName(cell.state));
    pieces.Add("\",\"reason\":\"");
    pieces.Add(CellReasonName(cell.reason));
    pieces.Add('"');
    AddRefused(pieces, cell);
    pieces.Add('}');
  }

  /// The number that was found and is none of the column's values.
  static void AddRefused(CRowText& pieces, const Cell& cell) {
    if (cell.reason == CellReason::OutOfRange || cell.reason == CellReason::NotAvailableNumber ||
        cell.reason == CellReason::ErrorNumber) {
      pieces.Add(",\"value\":");
      pieces.AddNumber(cell.value, std::nullopt);
    }
  }

  RowLayout m_layout;
  std::vector<CMessage> m_messages;
  std::string m_file;
};

// ---- Tables: numbers to the right, widths known before the first row comes

class CTableRows : public CRowWriter {
 public:
  CTableRows(const Profile& profile, const RowLayout& layout)
      : m_profile(profile), m_layout(layout), m_columns(profile) {
    for (const RowColumn& column : m_columns.Columns()) {
      m_titles.push_back(Printable(FromUtf8(column.title)));
      m_widths.push_back(std::max(DisplayWidth(m_titles.back()), kLeastWidth));
    }
    for (const MessageRule& message : profile.messages) {
      m_messages.push_back(Printable(FromUtf8(message.name)));
      m_messageWidth = std::max(m_messageWidth, DisplayWidth(m_messages.back()));
    }
    m_cells.resize(m_titles.size());
  }

  void SetFile(const std::string& name) override { m_file = Printable(FromUtf8(name)); }

  void AppendTitles(std::string& text) const override {
    AppendLeft(text, m_layout.hasFile ? "FILE" : "", m_layout.hasFile ? kFileWidth : 0);
    AppendRight(text, "LINE", kLineWidth);
    if (m_layout.hasTime) {
      AppendRight(text, "TIME", kTimeWidth);
    }
    if (HasMessages()) {
      text += "  ";
      AppendLeft(text, "MESSAGE", m_messageWidth);
    }
    for (std::size_t i = 0; i < m_titles.size(); ++i) {
      AppendRight(text, m_titles[i], m_widths[i]);
    }
    EndLine(text);
  }

  void AppendRow(std::string& text, const Row& row) const override {
    AppendLeft(text, m_layout.hasFile ? m_file : "", m_layout.hasFile ? kFileWidth : 0);
    m_cell.clear();
    decoding::AppendWhole(m_cell, row.record->number);
    AppendRight(text, m_cell, kLineWidth);
    if (m_layout.hasTime) {
      m_cell.clear();
      if (row.record->time) {
        decoding::AppendFixed(m_cell, *row.record->time, kTimeDigits);
      }
      AppendRight(text, m_cell, kTimeWidth);
    }
    if (HasMessages()) {
      text += "  ";
      AppendLeft(text, m_messages[row.messageIndex], m_messageWidth);
    }
    AppendCells(text, row);
    EndLine(text);
  }

 private:
  static constexpr int kLeastWidth = 9;
  static constexpr int kLineWidth = 6;
  static constexpr int kTimeWidth = 17;
  static constexpr int kGap = 2;
  static constexpr int kFileWidth = 20;

  bool HasMessages() const { return m_profile.messages.size() > 1; }

  static void Fill(std::string& text, int width) {
    text.append(static_cast<std::size_t>(std::max(width, 0)), ' ');
  }
  static void AppendLeft(std::string& text, const std::string& cell, int width) {
    text += cell;
    Fill(text, width - DisplayWidth(cell));
  }
  /// A cell that is wider than its column pushes the rest of the row aside.
  static void AppendRight(std::string& text, const std::string& cell, int width) {
    Fill(text, kGap + width - std::min(DisplayWidth(cell), width));
    text += cell;
  }
  static void EndLine(std::string& text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
  }

  void AppendCells(std::string& text, const Row& row) const {
    for (std::string& cell : m_cells) {
      cell.clear();
    }
    for (const auto& [place, column] : m_columns.PlacesOf(row.messageIndex)) {
      AppendCell(m_cells[place], row.cells[column], row.message->columns[column]);
    }
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
      AppendRight(text, m_cells[i], m_widths[i]);
    }
  }

  static void AppendCell(std::string& text, const Cell& cell, const ColumnRule& column) {
    switch (cell.state) {
      case CellState::Value:
        return decoding::AppendNumber(text, cell.value, column.digits);
      case CellState::NotAvailable:
        text += "n/a";
        return;
      case CellState::Error:
        text += "error";
        return;
      case CellState::Undecodable:
        text += "?";
        return;
    }
  }

  const Profile& m_profile;
  RowLayout m_layout;
  CRowColumns m_columns;
  std::vector<std::string> m_titles;
  std::vector<int> m_widths;
  std::vector<std::string> m_messages;
  int m_messageWidth = 7;
  std::string m_file;
  mutable std::string m_cell;
  mutable std::vector<std::string> m_cells;  // Of one row, by columns.
};

}  // namespace

std::unique_ptr<CRowWriter> MakeRowWriter(const Profile& profile, const RowLayout& layout) {
  switch (layout.format) {
    case RowFormat::Csv:
      return std::make_unique<CCsvRows>(profile, layout);
    case RowFormat::Json:
      return std::make_unique<CJsonRows>(profile, layout);
    default:
      return std::make_unique<CTableRows>(profile, layout);
  }
}

const char* CellStateName(CellState state) {
  constexpr const char* kNames[] = {"value", "not available", "error", "undecodable"};
  return kNames[static_cast<std::size_t>(state)];
}

const char* CellReasonName(CellReason reason) {
  constexpr const char* kNames[] = {"",
                                    "an empty field",
                                    "no such field",
                                    "the operation has no value",
                                    "the number for not available",
                                    "a number for errors",
                                    "out of range",
                                    "not a finite number"};
  return kNames[static_cast<std::size_t>(reason)];
}

}  // namespace lum::tool
