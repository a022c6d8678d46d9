// lumattr decode: device logs as rows of engineering values, and an honest count of what was in
// them.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/DecodingError.h"
#include "decoding/LogRun.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/DecodeOptions.h"
#include "tools/lumattr/DecodeStatistics.h"
#include "tools/lumattr/Interruption.h"
#include "tools/lumattr/Progress.h"
#include "tools/lumattr/RowWriter.h"
#include "tools/lumattr/Terminal.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

using decoding::CellState;
using decoding::CLogInput;
using decoding::CLogRun;
using decoding::LineProblem;
using decoding::LogCounts;
using decoding::Profile;
using decoding::Row;

struct CommandOptions {
  DecodeOptions decode;
  std::vector<std::string> files;
  bool json = false;
  bool csv = false;
  bool table = false;
  bool strict = false;
  bool stats = false;
  bool checkProfile = false;
  std::size_t resumeFrom = 0;
  std::size_t showBad = 10;
};

constexpr const char* kFooter =
    "Rows go to standard output; bad lines and a summary to standard error. In a table \"n/a\" is\n"
    "a value that the device does not have, \"error\" one that it reports as wrong or that is out\n"
    "of its range, \"?\" a field that the data do not hold.\n"
    "Exit codes: 0 everything was decoded, 1 bad lines, errors or undecodable fields, 2 trouble,\n"
    "130 interrupted.\n"
    "Examples:\n"
    "  lumattr decode -f 'Speed=J1939Val(message, 7, 3) * 0.125' engine.log\n"
    "  lumattr decode --profile engine.profile --csv engine.log.gz >engine.csv\n"
    "  candump -L can0 | lumattr decode --profile engine.profile --json -\n"
    "  lumattr decode --check-profile --profile engine.profile\n"
    "Formulas: docs/formula-expressions.md. Profiles: docs/decoding.md.";

/// Rows are handed on in pieces of this size, or as soon as the log has to be waited for.
constexpr std::size_t kOutputBytes = 1 << 16;

// ---- The summary

std::string CountsText(const LogCounts& counts) {
  const struct {
    std::uint64_t count;
    const char* one;
    const char* many;
  } rows[] = {
      {counts.unmatched, "line of no message", "lines of no message"},
      {counts.parts, "frame of longer messages", "frames of longer messages"},
      {counts.remarks, "empty line or remark", "empty lines or remarks"},
      {counts.remote, "remote frame", "remote frames"},
      {counts.busErrors, "error frame", "error frames"},
      {counts.unusable, "frame of CAN FD", "frames of CAN FD"},
      {counts.problems, "problem", "problems"},
  };
  std::string text =
      Counted(counts.lines, "line", "lines") + ", " + Counted(counts.rows, "row", "rows");
  for (const auto& row : rows) {
    text += row.count == 0 ? "" : ", " + Counted(row.count, row.one, row.many);
  }
  return text;
}

// ---- The run

class CDecodeCommand {
 public:
  CDecodeCommand(const CommandOptions& options, const Profile& profile, ToolContext& context)
      : m_options(options),
        m_profile(profile),
        m_context(context),
        m_isInterrupted(WatchInterruption()),
        m_progress(context.err, IsErrorTerminal() && (options.stats || !context.terminal)),
        m_writer(MakeRowWriter(profile,
                               {Format(), HasTime(), options.files.size() > 1, context.terminal})),
        m_statistics(profile) {}

  void Run() {
    if (!m_options.stats) {
      m_writer->AppendTitles(m_rows);
    }
    std::size_t unread = m_options.files.size();
    for (; unread > 0 && !m_isInterrupted && !m_isStopped; --unread) {
      TryFile(m_options.files[m_options.files.size() - unread]);
    }
    if (unread > 0) {
      m_context.err << "lumattr: " << Counted(unread, "log was", "logs were") << " not read\n";
    }
    if (m_options.stats && m_hasRead) {
      m_statistics.Print(Format(), m_context);
    }
    m_context.exitCode = m_isTrouble       ? kExitTrouble
                         : m_isInterrupted ? kExitInterrupted
                         : m_isBad         ? kExitFinding
                                           : kExitFine;
  }

 private:
  RowFormat Format() const {
    return m_options.json ? RowFormat::Json : m_options.csv ? RowFormat::Csv : RowFormat::Table;
  }
  /// A table leaves the column out when it is known before the first line that no row has a time.
  /// CSV is for programs, which count on its columns.
  bool HasTime() const {
    const auto asked = FormatOf(m_options.decode);
    const auto format = asked ? asked : m_profile.format;
    return Format() != RowFormat::Table || format != decoding::LogFormat::Csv;
  }
  const char* ShownName(const std::string& file) const {
    return file == "-" ? "standard input" : file.c_str();
  }

  /// A log that cannot be read must not keep the others from being decoded.
  void TryFile(const std::string& file) {
    try {
      DecodeFile(file);
    } catch (const decoding::DecodingError& error) {
      // Compressed data that an interruption breaks off are not damaged.
      if (!m_isInterrupted) {
        m_isTrouble = true;
        m_context.err << "lumattr: " << Printable(FromUtf8(error.what())) << '\n';
      }
    }
  }

  void DecodeFile(const std::string& file) {
    m_file = Printable(FromUtf8(ShownName(file)));
    m_writer->SetFile(m_options.files.size() > 1 ? file : "");
    CLogInput input(file);
    input.EndWhen(m_isInterrupted);
    CLogRun run(input, m_profile,
                {FormatOf(m_options.decode), m_options.resumeFrom, &m_isInterrupted});
    try {
      DecodeLines(run, input);
    } catch (const decoding::DecodingError&) {
      Finish(run);
      throw;
    }
    Finish(run);
  }

  void DecodeLines(CLogRun& run, const CLogInput& input) {
    m_hasRead = true;
    m_progress.Begin(input.BytesTaken());
    while (!m_isStopped && run.Next()) {
      if (run.Problem() != nullptr) {
        TakeProblem(*run.Problem());
      }
      for (const std::size_t message : run.Matches()) {
        TakeRow(run.Decode(message));
      }
      if (!m_rows.empty() && !run.HasBuffered()) {
        HandOn();
      }
      m_progress.Show(input.BytesTaken(), input.Size());
    }
  }

  void TakeRow(const Row& row) {
    for (const decoding::Cell& cell : row.cells) {
      m_isBad |= cell.state == CellState::Error || cell.state == CellState::Undecodable;
    }
    if (m_options.stats) {
      m_statistics.Add(row);
    } else {
      m_writer->AppendRow(m_rows, row);
    }
    if (m_rows.size() >= kOutputBytes) {  // A line may give thousands of rows.
      HandOn();
    }
  }

  void TakeProblem(const LineProblem& problem) {
    m_isBad = true;
    m_isStopped = m_options.strict;
    if (m_problemsShown == m_options.showBad && !m_isStopped) {
      return;
    }
    ++m_problemsShown;
    HandOn();  // On a terminal the message stands behind the rows of the lines before.
    m_progress.Wipe();
    m_context.err << "lumattr: " << m_file << ':' << problem.line << ':' << problem.column << ": "
                  << problem.reason << '\n';
  }

  void HandOn() {
    m_context.out.write(m_rows.data(), static_cast<std::streamsize>(m_rows.size()));
    m_context.out.flush();
    m_rows.clear();
  }

  void Finish(const CLogRun& run) {
    HandOn();
    m_progress.Wipe();
    if (run.Counts().problems > m_problemsShown) {
      m_context.err << "lumattr: " << m_file << ": "
                    << Counted(run.Counts().problems - m_problemsShown, "problem", "problems")
                    << " more; --show-bad N shows so many\n";
    }
    m_problemsShown = 0;
    m_context.err << "lumattr: " << m_file << ": " << LogFormatName(run.Format())
                  << (run.IsFormatDetected() ? " by its looks" : "") << ": "
                  << CountsText(run.Counts()) << '\n';
    if (m_isInterrupted) {
      SayWhereToGoOn(run);
    }
  }

  /// Another run sees other first lines: it must not have to find the format out anew.
  void SayWhereToGoOn(const CLogRun& run) {
    const bool isFound = run.IsFormatDetected() && run.Counts().lines > 0;
    const std::string format =
        isFound ? "--format " + std::string(LogFormatName(run.Format())) + " " : "";
    m_context.err << "lumattr: " << m_file << ": interrupted; go on with " << format
                  << "--resume-from " << run.Offset() << '\n';
  }

  const CommandOptions& m_options;
  const Profile& m_profile;
  ToolContext& m_context;
  const std::atomic<bool>& m_isInterrupted;
  CProgress m_progress;
  std::unique_ptr<CRowWriter> m_writer;
  CDecodeStatistics m_statistics;
  std::string m_rows;
  std::string m_file;
  std::size_t m_problemsShown = 0;
  bool m_isBad = false;
  bool m_isStopped = false;
  bool m_isTrouble = false;
  bool m_hasRead = false;
};

// ---- --check-profile

void CheckProfile(const CommandOptions& options, ToolContext& context) {
  std::vector<decoding::ProfileFault> faults;
  const Profile profile = decoding::LoadProfile(options.decode.profile, faults);
  for (const decoding::ProfileFault& fault : faults) {
    context.out << FaultText(options.decode.profile, fault) << '\n';
  }
  std::size_t columns = 0;
  for (const decoding::MessageRule& message : profile.messages) {
    columns += message.columns.size();
  }
  if (faults.empty()) {
    context.out << Printable(FromUtf8(options.decode.profile)) << ": fine, "
                << Counted(profile.messages.size(), "message", "messages") << ", "
                << Counted(columns, "column", "columns") << '\n';
  }
  context.exitCode = faults.empty() ? kExitFine : kExitFinding;
}

// ---- The command

void Run(const CommandOptions& options, ToolContext& context) {
  if (options.checkProfile) {
    if (options.decode.profile.empty()) {
      throw ToolError("--check-profile needs --profile");
    }
    CheckProfile(options, context);
    return;
  }
  const Profile profile = ProfileOf(options.decode, "decode", context);
  CommandOptions run = options;
  if (run.files.empty()) {
    run.files.emplace_back("-");
  }
  if (run.resumeFrom != 0 && run.files.size() > 1) {
    throw ToolError("--resume-from takes one file");
  }
  CDecodeCommand(run, profile, context).Run();
}

}  // namespace

void AddDecodeCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<CommandOptions>();
  const CCommand command = app.Subcommand("decode", "Decode device logs into engineering values");
  command.Option("FILE", options->files,
                 "Logs, also gzip-compressed; - or none for standard input");
  AddDecodeOptions(command, options->decode);
  const COption table = command.Flag("--table", options->table, "Print a table, as without");
  const COption csv = command.Flag("--csv", options->csv, "Print comma-separated values");
  csv.Excludes(table);
  command.Flag("--json", options->json, "Print a JSON object a line").Excludes(table).Excludes(csv);
  command.Flag("--stats", options->stats,
               "Print count, minimum, maximum, mean and absences of columns, no rows");
  command.Flag("--strict", options->strict, "Stop at the first bad line");
  command.Option("--show-bad", options->showBad, "How many bad lines of a file to show")
      .TypeName("N")
      .ShowDefault();
  command.Option("--resume-from", options->resumeFrom, "Begin at this byte of the log")
      .TypeName("OFFSET");
  command.Flag("--check-profile", options->checkProfile,
               "Report every fault of the profile, decode nothing");
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
