// lumattr explain: how the values of one line come about, or why it gives none.
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/DecodingError.h"
#include "decoding/LogRun.h"
#include "decoding/NumberLiteral.h"
#include "decoding/NumberText.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/DecodeOptions.h"
#include "tools/lumattr/ExplainField.h"
#include "tools/lumattr/ExplainRecord.h"
#include "tools/lumattr/RowWriter.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

using decoding::Cell;
using decoding::CellState;
using decoding::ColumnRule;
using decoding::EvaluationStep;
using decoding::LineProblem;
using decoding::LogFormat;
using decoding::LogLine;
using decoding::LogRecord;
using decoding::MessageRule;
using decoding::NumberRange;
using decoding::NumberText;
using decoding::Profile;
using decoding::RecordKind;

struct CommandOptions {
  DecodeOptions decode;
  std::vector<std::string> lines;
  std::string log;
  std::size_t line = 0;
};

constexpr const char* kFooter =
    "Explains the last of the lines; those before it are the frames that begin its message.\n"
    "Exit codes: 0 it has values, 1 it has none, or one that is wrong, 2 trouble.\n"
    "Examples:\n"
    "  lumattr explain -f 'NMEAPos(field(2), field(3))' '$GPGLL,4916.45,N,12311.12,W,225444,A*31'\n"
    "  lumattr explain -p engine.profile '(1.5) can0 18F00400#F17D8DE02EFFFFFF'\n"
    "  lumattr explain -p engine.profile --log engine.log --line 17";

// ---- How a value came about

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : ", ") + word;
  }
  return text;
}

/// Naming a text has that for its result, where the number of the step is none.
bool NamesText(const EvaluationStep& step) {
  const bool isInput = step.operation == "field" || step.operation == step.text;
  return isInput && !step.arguments.empty() && std::isnan(step.numbers.front());
}

std::string StepResult(const EvaluationStep& step) {
  using decoding::AbsenceReason;
  switch (step.absence) {
    case AbsenceReason::EmptyInput:
      return "is empty";
    case AbsenceReason::MissingInput:
      return "is not there";
    case AbsenceReason::NoValue:
      return "has no value";
    default:
      return "= " + (NamesText(step) ? step.arguments.front() : NumberText(step.result));
  }
}

void ReportSteps(const std::vector<EvaluationStep>& steps, const LogRecord& record,
                 CReport& report) {
  for (const EvaluationStep& step : steps) {
    report.Line("", Shown(step.text) + " " + Shown(StepResult(step)));
    if (step.arguments.size() > 1) {
      report.Line("", "    of " + Shown(Joined(step.arguments)));
    }
    const std::string field = ExplainField(step, record);
    if (!field.empty()) {
      report.Line("", "    " + Shown(field));
    }
  }
}

std::string RangesText(const std::vector<NumberRange>& ranges) {
  std::string text;
  for (const NumberRange& range : ranges) {
    text += text.empty() ? "" : ", ";
    text += NumberText(range.first);
    text += range.first == range.last ? "" : ".." + NumberText(range.last);
  }
  return text;
}

void ReportSentinels(const char* label, const std::vector<NumberRange>& ranges, double number,
                     CReport& report) {
  if (ranges.empty()) {
    return;
  }
  const bool isOne = std::any_of(ranges.begin(), ranges.end(), [number](const NumberRange& range) {
    return range.Contains(number);
  });
  report.Line("", NumberText(number) + (isOne ? " is " : " is not ") + label + " (" +
                      RangesText(ranges) + ")");
}

/// Follows a column in the order of the decoder and ends where that ended.
class CColumnReport {
 public:
  CColumnReport(const ColumnRule& column, const LogRecord& record, CReport& report)
      : m_column(column), m_record(record), m_report(report) {
    m_inputs.Clear();
    decoding::SetInputs(m_inputs, record);
  }

  void Print(const Cell& cell) {
    std::optional<double> number = Evaluate(m_column.raw);
    if (number) {
      m_inputs.SetNumber(decoding::Input::Raw, *number);
    }
    if (m_column.raw && number) {
      Sentinels(*number);
    }
    if (m_column.formula && (!m_column.raw || (number && !IsTold(cell)))) {
      number = Evaluate(m_column.formula);
    }
    if (!m_column.raw && number) {
      Sentinels(*number);
    }
    if (m_column.range && number && !IsTold(cell)) {
      const bool isInside = m_column.range->Contains(*number);
      m_report.Line("", NumberText(*number) + (isInside ? " lies in " : " is beyond ") +
                            NumberText(m_column.range->first) + ".." +
                            NumberText(m_column.range->last));
    }
    Outcome(cell);
  }

 private:
  static bool IsTold(const Cell& cell) {
    return cell.reason == decoding::CellReason::NotAvailableNumber ||
           cell.reason == decoding::CellReason::ErrorNumber;
  }

  std::optional<double> Evaluate(const std::optional<decoding::CExpression>& formula) {
    if (!formula) {
      return std::nullopt;
    }
    std::vector<EvaluationStep> steps;
    const decoding::Evaluation result = formula->Trace(m_inputs, steps);
    ReportSteps(steps, m_record, m_report);
    return result.HasValue() ? std::optional(result.value) : std::nullopt;
  }

  void Sentinels(double number) {
    ReportSentinels("a number for \"not available\"", m_column.notAvailable, number, m_report);
    ReportSentinels("a number for errors", m_column.error, number, m_report);
  }

  void Outcome(const Cell& cell) {
    if (cell.state != CellState::Value) {
      m_report.Line(
          "", std::string("-> ") + CellStateName(cell.state) + ": " + CellReasonName(cell.reason));
      return;
    }
    std::string value;
    decoding::AppendNumber(value, cell.value, m_column.digits);
    m_report.Line("", "-> " + value + (m_column.unit.empty() ? "" : " " + Shown(m_column.unit)));
  }

  const ColumnRule& m_column;
  const LogRecord& m_record;
  CReport& m_report;
  decoding::CFormulaInputs m_inputs;
};

// ---- The report

class CExplanation {
 public:
  CExplanation(const Profile& profile, LogFormat format, ToolContext& context)
      : m_profile(profile), m_format(format), m_context(context), m_report(context) {}

  void Print(const LogLine& line, const LogRecord* record, const LineProblem* problem) {
    constexpr std::size_t kMostShown = 400;
    m_context.exitCode = kExitFinding;
    m_report.Line("line", Shown(line.text.substr(0, kMostShown)));
    m_report.Line("format", std::string(LogFormatName(m_format)));
    if (problem != nullptr) {
      ReportProblem(line, *problem, m_report);
    }
    if (record != nullptr) {
      ReportRecord(*record, m_format, m_report);
      Messages(*record);
    }
  }

 private:
  void Messages(const LogRecord& record) {
    if (record.kind != RecordKind::Data) {
      return;
    }
    decoding::CDecoder decoder(m_profile);
    const auto found = decoder.Match(record);
    const std::vector<std::size_t> matches(found.begin(), found.end());
    m_context.exitCode = matches.empty() ? kExitFinding : kExitFine;
    for (std::size_t i = 0; i < m_profile.messages.size(); ++i) {
      const bool isOne = std::find(matches.begin(), matches.end(), i) != matches.end();
      if (isOne || matches.empty()) {
        const MessageRule& message = m_profile.messages[i];
        if (!message.name.empty()) {
          m_report.Text("");
          m_report.Line("message", Shown(message.name) + (isOne ? "" : ": no"));
        }
        ReportMatch(message, record, m_report);
      }
      if (isOne) {
        Columns(decoder.Decode(record, i));
      }
    }
  }

  void Columns(const decoding::Row& row) {
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      const ColumnRule& column = row.message->columns[i];
      m_report.Text("");
      m_report.Line("column", Shown(column.name) + (column.displayName == column.name
                                                        ? ""
                                                        : " (" + Shown(column.displayName) + ")"));
      CColumnReport(column, *row.record, m_report).Print(row.cells[i]);
      const bool isFine =
          row.cells[i].state == CellState::Value || row.cells[i].state == CellState::NotAvailable;
      m_context.exitCode = isFine ? m_context.exitCode : static_cast<int>(kExitFinding);
    }
  }

  const Profile& m_profile;
  LogFormat m_format;
  ToolContext& m_context;
  CReport m_report;
};

// ---- Where the line comes from

void ExplainLines(const CommandOptions& options, const Profile& profile, ToolContext& context) {
  std::optional<LogFormat> format = FormatOf(options.decode);
  format = format ? format : profile.format;
  if (!format) {
    format = decoding::FitFormat(decoding::DetectLogFormat(options.lines), profile);
  }
  const auto reader = decoding::MakeLogReader(*format, profile.reader);
  LogLine line;
  LogRecord record;
  LineProblem problem;
  decoding::LineOutcome outcome;
  for (const std::string& text : options.lines) {
    line = {text, line.number + 1, line.end, line.end + text.size() + 1, false};
    outcome = reader->Take(line, record, problem);
  }
  CExplanation(profile, *format, context)
      .Print(line, outcome.hasRecord ? &record : nullptr, outcome.hasProblem ? &problem : nullptr);
}

void ExplainLogLine(const CommandOptions& options, const Profile& profile, ToolContext& context) {
  decoding::CLogInput input(options.log);
  decoding::CLogRun run(input, profile, {FormatOf(options.decode), 0, nullptr});
  while (run.Counts().lines < options.line && run.Next()) {
  }
  if (run.Counts().lines < options.line) {
    throw ToolError(Shown(options.log) + " has " + Counted(run.Counts().lines, "line", "lines") +
                    ", not " + std::to_string(options.line));
  }
  CExplanation(profile, run.Format(), context).Print(run.Line(), run.Record(), run.Problem());
}

void Run(const CommandOptions& options, ToolContext& context) {
  const bool hasPlace = !options.log.empty() && options.line > 0;
  const bool hasPartOfPlace = !options.log.empty() || options.line > 0;
  if (hasPlace != hasPartOfPlace || hasPlace != options.lines.empty()) {
    throw ToolError(
        "explain needs a line of a log, or --log and --line; see lumattr explain --help");
  }
  const Profile profile = ProfileOf(options.decode, "explain", context);
  if (hasPlace) {
    ExplainLogLine(options, profile, context);
  } else {
    ExplainLines(options, profile, context);
  }
}

}  // namespace

void AddExplainCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<CommandOptions>();
  const CCommand command =
      app.Subcommand("explain", "Show how the values of a log's line come about");
  command.Option("LINE", options->lines, "A line of a log, after those that begin its message");
  AddDecodeOptions(command, options->decode);
  command.Option("--log", options->log, "Explain a line of this file").TypeName("FILE");
  command.Option("--line", options->line, "The line's number, from 1").TypeName("N");
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
