// The rows of decoded messages as text: a table for people, CSV, or a JSON object a line.
#pragma once

#include <memory>
#include <string>

#include "decoding/Decoder.h"

namespace lum::tool {

enum class RowFormat { Table, Csv, Json };

struct RowLayout {
  RowFormat format = RowFormat::Table;
  bool hasTime = true;
  bool hasFile = false;     ///< A column for the file that a row comes from.
  bool isTerminal = false;  ///< Nothing that a profile or a file is called may steer it.
};

/// Appends rows to a text, whole lines only. Columns of several messages that share name and unit
/// share a column of the table and of CSV.
class CRowWriter {
 public:
  virtual ~CRowWriter() = default;

  /// What stands above the rows; nothing for JSON.
  virtual void AppendTitles(std::string& text) const = 0;
  virtual void AppendRow(std::string& text, const decoding::Row& row) const = 0;
  /// The file that the next rows come from.
  virtual void SetFile(const std::string& name) = 0;
};

/// The profile must outlive the writer.
std::unique_ptr<CRowWriter> MakeRowWriter(const decoding::Profile& profile,
                                          const RowLayout& layout);

/// "not available", "error", "undecodable"; "value".
const char* CellStateName(decoding::CellState state);
/// Why a cell holds no value: "an empty field", "out of range".
const char* CellReasonName(decoding::CellReason reason);

}  // namespace lum::tool
