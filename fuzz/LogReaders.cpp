// The readers of logs on any lines: each gives a record or a problem whose parts agree with the
// line and with each other, however the log was cut into reads. And any bytes as compressed data.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/DecodingError.h"
#include "decoding/FormulaInputs.h"
#include "decoding/LogReader.h"
#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "tests/decoding/LogFiles.h"
#include "tests/decoding/ReaderTesting.h"

using namespace lum::decoding;

namespace {

const lum::fuzz::CFuzzFiles& Files() { return lum::fuzz::CFuzzFiles::Instance(); }

std::string InputPath() {
  const CStringA path = WideToUtf8(Files().Input());
  return {path.GetString(), static_cast<std::size_t>(path.GetLength())};
}

struct Choices {
  LogFormat format;
  ReaderOptions options;
  std::size_t partLength;
};

Choices TakeChoices(lum::fuzz::CFuzzInput& in) {
  constexpr char kSeparators[] = {'\0', ';', '\t', '"'};
  const unsigned int first = in.Byte();
  return {static_cast<LogFormat>(first % 5),
          {kSeparators[first / 8 % 4], first >= 128},
          1 + in.Below(64)};
}

bool IsWithin(std::string_view part, std::string_view line) {
  return part.empty() ||
         (line.data() <= part.data() && part.data() + part.size() <= line.data() + line.size());
}

void CheckBus(const BusParts& bus, const LogRecord& record) {
  EXPECT_TRUE(IsWithin(bus.channel, record.line));
  EXPECT_LE(bus.id, bus.isExtended ? 0x1FFFFFFFU : 0x7FFU);
  EXPECT_EQ(bus.frame.empty(), record.kind != RecordKind::Part && bus.frames != 1);
  const std::string digits = lum::test::HexText(bus.data);
  if (!bus.frame.empty()) {
    char id[16];
    std::snprintf(id, sizeof(id), bus.isExtended ? "%08X%zu" : "%03X%zu",
                  static_cast<unsigned int>(bus.id | (bus.isExtended ? 1U << 31 : 0U)),
                  bus.data.size());
    EXPECT_EQ(bus.frame, id + digits);
  }
  EXPECT_EQ(bus.message.empty(), !bus.isExtended);
  if (!bus.message.empty()) {
    char header[16];
    std::snprintf(header, sizeof(header), ">%02X%02X%05X%u", static_cast<unsigned int>(bus.source),
                  static_cast<unsigned int>(bus.destination), static_cast<unsigned int>(bus.pgn),
                  static_cast<unsigned int>(bus.priority));
    EXPECT_EQ(bus.message, header + digits + ";");
  }
}

void CheckRecord(const LogRecord& record, const LogLine& line, LogFormat format) {
  EXPECT_EQ(record.line.data(), line.text.data());
  EXPECT_EQ(record.line.size(), line.text.size());
  EXPECT_EQ(record.number, line.number);
  EXPECT_EQ(record.offset, line.offset);
  EXPECT_TRUE(!record.time || std::isfinite(*record.time));
  EXPECT_LE(record.fields.size(), CFormulaInputs::kMaxFields);
  std::size_t inFields = 0;
  for (const std::string_view field : record.fields) {
    EXPECT_TRUE(format == LogFormat::Csv || IsWithin(field, line.text));
    inFields += field.size();
  }
  EXPECT_LE(inFields, line.text.size());
  EXPECT_TRUE(IsWithin(record.address, line.text));
  const bool hasParts = record.kind == RecordKind::Data || record.kind == RecordKind::Part;
  if (record.isBus && hasParts) {
    CheckBus(record.bus, record);
  }
}

/// What became of each line of the file.
std::vector<std::string> ReadLog(const Choices& choices) {
  CLogInput input(InputPath());
  CLineReader lines(input);
  const auto reader = MakeLogReader(choices.format, choices.options);
  std::vector<std::string> outcomes;
  LogLine line;
  LogRecord record;
  LineProblem problem;
  while (lines.Next(line)) {
    const LineOutcome outcome = reader->Take(line, record, problem);
    EXPECT_TRUE(outcome.hasRecord || outcome.hasProblem);
    outcomes.emplace_back();
    if (outcome.hasRecord) {
      CheckRecord(record, line, choices.format);
      outcomes.back() = lum::test::Describe(record);
    }
    if (outcome.hasProblem) {
      EXPECT_TRUE(problem.column >= 1 && problem.column <= line.text.size() + 1);
      EXPECT_EQ(problem.line, line.number);
      EXPECT_FALSE(problem.reason.empty());
      outcomes.back() += lum::test::Describe(problem, 0);
    }
  }
  while (reader->Finish(problem)) {
    EXPECT_TRUE(problem.line >= 1 && problem.line <= line.number);
    outcomes.push_back(lum::test::Describe(problem, 0));
  }
  return outcomes;
}

std::vector<std::string> SplitLines(std::string_view log) {
  std::vector<std::string> lines;
  while (!log.empty()) {
    const std::size_t feed = std::min(log.find('\n'), log.size());
    std::string_view line = log.substr(0, feed);
    line.remove_suffix(line.ends_with('\r') ? 1 : 0);
    lines.emplace_back(line);
    log.remove_prefix(std::min(feed + 1, log.size()));
  }
  return lines;
}

/// The lines without a file, reader and all else the same.
void CheckLines(const std::vector<std::string>& lines, const Choices& choices,
                const std::vector<std::string>& outcomes) {
  ASSERT_GE(outcomes.size(), lines.size());
  lum::test::CTestReader reader(choices.format, choices.options);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const LineOutcome outcome = reader.Take(lines[i]);
    const std::string record = outcome.hasRecord ? lum::test::Describe(reader.record) : "";
    const std::string problem = outcome.hasProblem ? lum::test::Describe(reader.problem, 0) : "";
    EXPECT_EQ(outcomes[i], record + problem);
  }
}

std::string InParts(std::string_view log, std::size_t length) {
  std::string parts;
  do {
    parts += lum::test::Gzip(log.substr(0, length));
    log.remove_prefix(std::min(length, log.size()));
  } while (!log.empty());
  return parts;
}

/// Ends, with an error of its own kind or without one.
void CheckCompressed(std::string_view bytes) {
  Files().WriteInput("\x1F\x8B" + std::string(bytes));
  CLogInput input(InputPath());
  EXPECT_TRUE(input.IsCompressed());
  std::string all;
  try {
    lum::test::ReadAll(input, all);
  } catch (const DecodingError& error) {
    EXPECT_NE(std::string_view(error.what()).find(" at byte "), std::string_view::npos);
  }
  EXPECT_LE(all.size(), 2000 * (bytes.size() + 1));
}

}  // namespace

// Format and options, how long the compressed parts are, then the log.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const Choices choices = TakeChoices(in);
  const std::string_view log = in.Rest();
  CheckCompressed(log);
  if (log.starts_with("\x1F\x8B")) {
    return 0;
  }
  Files().WriteInput(log);
  const std::vector<std::string> outcomes = ReadLog(choices);
  const std::vector<std::string> lines = SplitLines(log);
  CheckLines(lines, choices, outcomes);
  Files().WriteInput(InParts(log, choices.partLength));
  EXPECT_EQ(ReadLog(choices), outcomes);
  const LogFormat detected = DetectLogFormat(lines);
  EXPECT_NE(detected, LogFormat::J1939);
  return 0;
}
