// Readers by lines, and what became of a line as one text that tables can hold.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "decoding/LogReader.h"
#include "decoding/NumberText.h"

namespace lum::test {

inline std::string KindName(decoding::RecordKind kind) {
  constexpr std::string_view kNames[] = {"data",     "remote", "bus error",
                                         "unusable", "remark", "part"};
  return std::string(kNames[static_cast<std::size_t>(kind)]);
}

inline std::string SecondsText(double seconds) {
  std::string text;
  decoding::AppendFixed(text, seconds, 6);
  return text;
}

inline std::string HexText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof(digits), "%02X", static_cast<unsigned int>(byte));
    text += digits;
  }
  return text;
}

inline std::string DescribeBus(const decoding::BusParts& bus) {
  char id[16];
  std::snprintf(id, sizeof(id), bus.isExtended ? "%08X" : "%03X",
                static_cast<unsigned int>(bus.id));
  std::string text = " " + std::string(bus.channel) + " " + id + " " + HexText(bus.data);
  text += bus.frame.empty() ? "" : " frame " + std::string(bus.frame);
  text += bus.message.empty() ? "" : " message " + std::string(bus.message);
  return text;
}

/// "data 1.500000 can0 123 1122 frame 12321122", "data [1|2]".
inline std::string Describe(const decoding::LogRecord& record) {
  std::string text = KindName(record.kind);
  text += record.time ? " " + SecondsText(*record.time) : "";
  if (record.isBus) {
    return text + DescribeBus(record.bus);
  }
  text += record.address.empty() ? "" : " " + std::string(record.address);
  if (record.kind != decoding::RecordKind::Data) {
    return text;
  }
  std::string fields;
  for (const std::string_view field : record.fields) {
    fields += "|" + std::string(field);
  }
  return text + " [" + fields.substr(fields.empty() ? 0 : 1) + "]";
}

/// "column 5: reason"; with the line when it is another than the one that was taken.
inline std::string Describe(const decoding::LineProblem& problem, std::uint64_t line) {
  const std::string place = "column " + std::to_string(problem.column) + ": ";
  const std::string other =
      problem.line == line ? "" : "line " + std::to_string(problem.line) + ", ";
  return other + place + std::string(problem.reason);
}

/// A reader that numbers its lines by itself.
class CTestReader {
 public:
  explicit CTestReader(decoding::LogFormat format, const decoding::ReaderOptions& options = {})
      : m_reader(decoding::MakeLogReader(format, options)) {}

  decoding::LineOutcome Take(std::string_view text) {
    m_line.text = text;
    ++m_line.number;
    return m_reader->Take(m_line, record, problem);
  }
  /// What became of the line: its record, "; " and its problem, as far as there are any.
  std::string Read(std::string_view text) {
    const decoding::LineOutcome outcome = Take(text);
    const std::string first = outcome.hasRecord ? Describe(record) : "";
    const std::string between = outcome.hasRecord && outcome.hasProblem ? "; " : "";
    return first + between + (outcome.hasProblem ? Describe(problem, m_line.number) : "");
  }
  std::string ReadTooLong(std::string_view text) {
    m_line.isTooLong = true;
    return Read(text);
  }
  /// The problems at the end, one behind the other.
  std::string Finish() {
    std::string all;
    while (m_reader->Finish(problem)) {
      all += (all.empty() ? "" : "; ") + Describe(problem, 0);
    }
    return all;
  }

  decoding::LogRecord record;
  decoding::LineProblem problem;

 private:
  std::unique_ptr<decoding::CLogReader> m_reader;
  decoding::LogLine m_line;
};

/// A line and what becomes of it.
struct ReaderCase {
  std::string line;
  std::string outcome;
};

/// Reads the lines of a table one after the other.
template <std::size_t kCount>
void CheckReader(decoding::LogFormat format, const ReaderCase (&rows)[kCount],
                 const decoding::ReaderOptions& options = {}) {
  CTestReader reader(format, options);
  for (const ReaderCase& row : rows) {
    EXPECT_EQ(reader.Read(row.line), row.outcome) << row.line;
  }
}

}  // namespace lum::test
