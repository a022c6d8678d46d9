// Prints what the readers make of a log, for the comparisons with Python: a line for each record,
// problem, and what is left at the end. With formulas' positions behind sentences that have one.
// Usage: decoding_print_log FORMAT FILE
#include <cstdio>
#include <string>

#include "decoding/LogInput.h"
#include "decoding/LogReader.h"
#include "tests/decoding/ReaderTesting.h"
#include "values/DoubleType.h"
#include "values/NameTypes.h"

using namespace lum::decoding;

namespace {

/// Degrees by the formula operation, with all their digits.
std::string PositionText(std::string_view digits, std::string_view hemisphere) {
  CLumIoName position(CStringA(digits.data(), static_cast<int>(digits.size())));
  CLumIoName letter(CStringA(hemisphere.data(), static_cast<int>(hemisphere.size())));
  CLumDouble degrees;
  if (degrees.NMEAPos(position, letter) == 0) {
    return "none";
  }
  double number = 0.0;
  degrees.GetDouble(number);
  char text[64];
  std::snprintf(text, sizeof(text), "%.17g", number);
  return text;
}

void PrintRecord(const LogRecord& record) {
  std::string text = lum::test::Describe(record);
  if (record.isBus) {
    text +=
        " pgn " + std::to_string(record.bus.pgn) + " frames " + std::to_string(record.bus.frames);
  } else if (record.address.ends_with("GGA") && record.fields.size() > 5) {
    text += " at " + PositionText(record.fields[2], record.fields[3]) + " " +
            PositionText(record.fields[4], record.fields[5]);
  }
  std::printf("%llu %s\n", static_cast<unsigned long long>(record.number), text.c_str());
}

void PrintProblem(const LineProblem& problem) {
  std::printf("%llu problem %s\n", static_cast<unsigned long long>(problem.line),
              std::string(problem.reason).c_str());
}

}  // namespace

int main(int count, char** arguments) {
  const auto format = count == 3 ? FindLogFormat(arguments[1]) : std::nullopt;
  if (!format) {
    std::fputs("Usage: decoding_print_log FORMAT FILE\n", stderr);
    return 2;
  }
  CLogInput input(arguments[2]);
  CLineReader lines(input);
  const auto reader = MakeLogReader(*format, {});
  LogLine line;
  LogRecord record;
  LineProblem problem;
  while (lines.Next(line)) {
    const LineOutcome outcome = reader->Take(line, record, problem);
    if (outcome.hasRecord) {
      PrintRecord(record);
    }
    if (outcome.hasProblem) {
      PrintProblem(problem);
    }
  }
  while (reader->Finish(problem)) {
    PrintProblem(problem);
  }
  return 0;
}
