#include "tools/lumattr/RunTool.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "catalogue/LumAttributes.h"
#include "decoding/NearMiss.h"
#include "tools/lumattr/Terminal.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr const char* kDescription =
    "Shows, changes, compares, merges, converts and checks configuration files of attributes,\n"
    "evaluates the operations of formulas, and decodes device logs.";

constexpr const char* kFooter =
    "A PATH is dotted, with occurrences: Sensor(1).Offset\n"
    "Exit codes: 0 fine, 1 a difference, a finding or no value, 2 trouble.\n"
    "Every command explains itself: lumattr set --help";

bool IsOption(std::string_view argument) { return !argument.empty() && argument[0] == '-'; }

std::vector<CString> CommandNames(const CLI::App& app) {
  std::vector<CString> names;
  for (const CLI::App* command : app.get_subcommands({})) {
    names.push_back(FromUtf8(command->get_name()));
  }
  return names;
}

/// CLI11 calls a mistyped command an unexpected argument; this says what was meant.
void RequireCommand(const CLI::App& app, int argc, char** argv) {
  if (argc < 2) {
    return;
  }
  const CString wanted = FromUtf8(argv[1]);
  if (IsOption(argv[1])) {
    if (app.get_option_no_throw(argv[1]) == nullptr) {
      throw ToolError("unknown option " + Quoted(wanted) + "; see lumattr --help");
    }
    return;
  }
  const std::vector<CString> names = CommandNames(app);
  if (std::find(names.begin(), names.end(), wanted) == names.end()) {
    throw ToolError("unknown command " + Quoted(wanted) + decoding::DidYouMean(wanted, names));
  }
}

std::string OneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

/// The one line for arguments that do not fit, with the way to the help that explains them.
std::string ArgumentMessage(const CLI::ParseError& error, int argc, char** argv) {
  std::string message = Printable(FromUtf8(OneLine(error.what())));
  const bool hasOption = std::any_of(argv + 1, argv + argc, IsOption);
  if (hasOption && error.get_name() == "RequiredError") {
    message += " (put -- before a value that begins with -)";
  }
  const bool hasCommand = argc > 1 && !IsOption(argv[1]);
  return message + "; see lumattr " + (hasCommand ? argv[1] + std::string(" --help") : "--help");
}

/// Writing a message also flushes the output, which must not throw once things have gone wrong.
void Complain(ToolContext& context, const std::string& message) {
  context.out.exceptions(std::ios::goodbit);
  context.err << "lumattr: " << message << '\n';
  context.exitCode = kExitTrouble;
}

/// A reader that closed the pipe has seen enough: that is no reason for a message.
void ComplainOfOutput(ToolContext& context, int systemError) {
  context.exitCode = kExitTrouble;
  context.out.exceptions(std::ios::goodbit);
  if (!IsClosedPipe(systemError)) {
    Complain(context, std::string("cannot write the output: ") + std::strerror(systemError));
  }
}

void ParseAndRun(CLI::App& app, int argc, char** argv, ToolContext& context) {
  RequireCommand(app, argc, argv);
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& help) {
    app.exit(help, context.out, context.err);
  } catch (const CLI::ParseError& error) {
    throw ToolError(ArgumentMessage(error, argc, argv));
  }
  context.out.flush();
}

void DescribeTool(CLI::App& app) {
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string("lumattr ") + LumAttributesVersion());
  app.footer(kFooter);
  app.get_formatter()->column_width(28);
}

}  // namespace

int RunTool(int argc, char** argv, ToolContext& context,
            const std::function<void(const CCommand&)>& addCommands) {
  // A failed write leaves at once, while the system's reason is still known.
  context.out.exceptions(std::ios::badbit | std::ios::failbit);
  try {
    CLI::App app(kDescription, "lumattr");
    DescribeTool(app);
    addCommands(CCommand(&app));
    ParseAndRun(app, argc, argv, context);
  } catch (const ToolError& error) {
    Complain(context, error.what());
  } catch (const std::ios_base::failure&) {
    ComplainOfOutput(context, errno);
  } catch (const std::bad_alloc&) {
    Complain(context, "out of memory");
  } catch (const std::exception& error) {
    Complain(context, error.what());
  }
  context.out.exceptions(std::ios::goodbit);
  return context.exitCode;
}

}  // namespace lum::tool
