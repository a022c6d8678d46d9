// lumattr plot: columns of a log over time, drawn by gnuplot.
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "decoding/LogRun.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/DecodeOptions.h"
#include "tools/lumattr/PlotScript.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

using decoding::Cell;
using decoding::CellState;
using decoding::CLogRun;
using decoding::ColumnRule;
using decoding::MessageRule;
using decoding::Profile;
using decoding::Row;

struct CommandOptions {
  DecodeOptions decode;
  std::string file = "-";
  std::string output;
  std::vector<std::string> columns;
};

constexpr const char* kFooter =
    "A panel for each unit, one above the other; a curve ends where its column has no value.\n"
    "Needs gnuplot (on Debian: gnuplot-nox).\n"
    "Examples:\n"
    "  lumattr plot -p engine.profile -o engine.svg engine.log\n"
    "  lumattr plot -p survey.profile -c Depth -c Speed -o depth.png survey.nmea";

/// More curves than anybody can tell apart; each costs memory.
constexpr std::size_t kMaxCurves = 64;

// ---- The curves

class CCurves {
 public:
  CCurves(const CommandOptions& options, const Profile& profile) : m_profile(profile) {
    for (const MessageRule& message : profile.messages) {
      std::vector<int>& places = m_places.emplace_back();
      for (const ColumnRule& column : message.columns) {
        places.push_back(Place(options, message, column));
      }
    }
    RequireColumns(options);
  }

  void Add(const Row& row) {
    if (!m_hasTime && row.record->time) {
      BeginTime();
    }
    const double at =
        m_hasTime ? row.record->time.value_or(m_last) : static_cast<double>(row.record->number);
    m_last = at;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      const int place = m_places[row.messageIndex][i];
      if (place >= 0) {
        AddCell(m_curves[static_cast<std::size_t>(place)].series, at, row.cells[i]);
      }
    }
  }

  const std::vector<PlotCurve>& Curves() const { return m_curves; }
  bool HasTime() const { return m_hasTime; }

 private:
  /// What came before the first time stamp has no place in time.
  void BeginTime() {
    m_hasTime = true;
    for (PlotCurve& curve : m_curves) {
      curve.series = {};
    }
  }

  static void AddCell(CPlotSeries& series, double at, const Cell& cell) {
    if (cell.state == CellState::Value) {
      series.AddValue(at, cell.value);
    } else {
      series.AddGap();
    }
  }

  /// The place of a column's curve, -1 for one that is not drawn.
  int Place(const CommandOptions& options, const MessageRule& message, const ColumnRule& column) {
    const std::string full = message.name + "." + column.name;
    const bool isWanted =
        options.columns.empty() ||
        std::any_of(options.columns.begin(), options.columns.end(),
                    [&](const std::string& name) { return name == column.name || name == full; });
    if (!isWanted) {
      return -1;
    }
    if (m_curves.size() == kMaxCurves) {
      throw ToolError("more than " + std::to_string(kMaxCurves) +
                      " columns to draw; choose some with --column");
    }
    const bool hasMessages = m_profile.messages.size() > 1;
    m_curves.push_back(
        {(hasMessages ? message.name + " " : "") + column.displayName, column.unit, {}});
    m_names.push_back(column.name);
    m_names.push_back(full);
    return static_cast<int>(m_curves.size()) - 1;
  }

  void RequireColumns(const CommandOptions& options) const {
    for (const std::string& name : options.columns) {
      if (std::find(m_names.begin(), m_names.end(), name) == m_names.end()) {
        throw ToolError("there is no column " + Quoted(FromUtf8(name)));
      }
    }
  }

  const Profile& m_profile;
  std::vector<PlotCurve> m_curves;
  std::vector<std::string> m_names;
  std::vector<std::vector<int>> m_places;
  bool m_hasTime = false;
  double m_last = 0.0;
};

// ---- gnuplot

/// A program that reads what is written to it, without the settings that a user has for it. Should
/// it end before, that is no signal to us; nor is an interruption, which ends it alone.
class CGnuplot {
 public:
  CGnuplot() {
#if defined(_WIN32)
    m_pipe = ::_popen("gnuplot --default-settings", "w");
#else
    m_handler = std::signal(SIGPIPE, SIG_IGN);
    // NOLINTNEXTLINE(cert-env33-c): nothing of the command comes from outside.
    m_pipe = ::popen("gnuplot --default-settings", "w");
#endif
    if (m_pipe == nullptr) {
      throw ToolError("cannot start gnuplot: " + std::generic_category().message(errno));
    }
    m_interrupt = std::signal(SIGINT, SIG_IGN);  // Now, for what is started takes it over.
  }
  CGnuplot(const CGnuplot&) = delete;
  CGnuplot& operator=(const CGnuplot&) = delete;
  ~CGnuplot() { End(); }

  void Write(const std::string& text) { std::fwrite(text.data(), 1, text.size(), m_pipe); }
  /// Whether it did what it was told.
  bool End() {
    if (m_pipe != nullptr) {
#if defined(_WIN32)
      m_status = ::_pclose(m_pipe);
#else
      m_status = ::pclose(m_pipe);
      std::signal(SIGPIPE, m_handler);
#endif
      std::signal(SIGINT, m_interrupt);
      m_pipe = nullptr;
    }
    return m_status == 0;
  }

 private:
  std::FILE* m_pipe = nullptr;
  int m_status = 0;
  void (*m_interrupt)(int) = nullptr;
#if !defined(_WIN32)
  void (*m_handler)(int) = nullptr;
#endif
};

std::filesystem::path PathOf(const std::string& utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

/// A new folder beside the drawing, in which that is made. Nothing of it stays.
class CPartFolder {
 public:
  explicit CPartFolder(const std::string& output) : m_output(output) {
    constexpr int kMostNames = 1000;
    std::error_code error;
    for (int i = 0; i < kMostNames && m_folder.empty(); ++i) {
      const std::string name = output + ".part" + (i == 0 ? "" : std::to_string(i));
      if (std::filesystem::create_directory(PathOf(name), error)) {
        m_folder = PathOf(name);
        m_drawing = name + "/drawing";
      } else if (error && error != std::errc::file_exists) {
        Complain(error);
      }
    }
    if (m_folder.empty()) {
      Complain(std::make_error_code(std::errc::file_exists));
    }
  }
  CPartFolder(const CPartFolder&) = delete;
  CPartFolder& operator=(const CPartFolder&) = delete;
  ~CPartFolder() {
    std::error_code error;
    std::filesystem::remove(PathOf(m_drawing), error);
    std::filesystem::remove(m_folder, error);
  }

  /// Where it is to be made.
  const std::string& Drawing() const { return m_drawing; }
  bool HasDrawing() const {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(PathOf(m_drawing), error);
    return !error && size > 0;
  }
  /// Gives its place to the drawing once that is whole.
  void PutInPlace() const {
    std::error_code error;
    std::filesystem::rename(PathOf(m_drawing), PathOf(m_output), error);
    if (error) {
      Complain(error);
    }
  }

 private:
  [[noreturn]] void Complain(const std::error_code& error) const {
    throw ToolError("cannot write " + Quoted(FromUtf8(m_output)) + ": " + error.message());
  }

  std::string m_output;
  std::filesystem::path m_folder;
  std::string m_drawing;
};

void Draw(const CCurves& curves, bool isPng, const std::string& output) {
  const CPartFolder folder(output);
  const std::string script =
      PlotScript(curves.Curves(), {isPng, curves.HasTime()}, folder.Drawing());
  if (script.empty()) {
    throw ToolError("no column has a value: there is nothing to draw");
  }
  CGnuplot gnuplot;
  gnuplot.Write(script);
  if (!gnuplot.End() || !folder.HasDrawing()) {
    throw ToolError("gnuplot made no drawing; is it installed (on Debian: gnuplot-nox)?");
  }
  folder.PutInPlace();
}

// ---- The command

bool EndsWith(const std::string& text, std::string_view end) {
  return std::string_view(text).ends_with(end);
}

void Run(const CommandOptions& options, ToolContext& context) {
  const bool isPng = EndsWith(options.output, ".png");
  if (!isPng && !EndsWith(options.output, ".svg")) {
    throw ToolError("--output is a file .svg or .png, not " + Quoted(FromUtf8(options.output)));
  }
  const Profile profile = ProfileOf(options.decode, "plot", context);
  CCurves curves(options, profile);
  decoding::CLogInput input(options.file);
  CLogRun run(input, profile, {FormatOf(options.decode), 0, nullptr});
  while (run.Next()) {
    for (const std::size_t message : run.Matches()) {
      curves.Add(run.Decode(message));
    }
  }
  Draw(curves, isPng, options.output);
}

}  // namespace

void AddPlotCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<CommandOptions>();
  const CCommand command = app.Subcommand("plot", "Draw columns of a device log over time");
  command.Option("FILE", options->file, "Log, also gzip-compressed; - or none for standard input");
  AddDecodeOptions(command, options->decode);
  command.Option("-c,--column", options->columns, "Draw this column: NAME or MESSAGE.NAME")
      .OneEach()
      .TypeName("NAME");
  command.Option("-o,--output", options->output, "The drawing: a file .svg or .png")
      .Required()
      .TypeName("FILE");
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
