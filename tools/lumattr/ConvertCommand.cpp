// lumattr convert: rewrites a section in the other format version.
#include <memory>

#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/SectionConversion.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr const char* kFooter =
    "What the other version cannot say is reported, and the file then stays as it is.\n"
    "Exit codes: 0 converted or nothing to do, 1 something was reported, 2 trouble.\n"
    "Examples:\n"
    "  lumattr convert survey.cfg Survey --to-version 2\n"
    "  lumattr convert survey.cfg Survey --to-version 1 --force";

struct ConvertOptions {
  std::string file;
  std::string section;
  int toVersion = 0;
  bool force = false;
  SaveSettings saving;
};

void ReportPlan(const ConversionPlan& plan, const CString& section, ToolContext& context) {
  for (const std::string& note : plan.notes) {
    context.Warn("section " + Quoted(section) + ": " + note);
  }
  for (const std::string& finding : plan.findings) {
    context.err << "lumattr: section " << Quoted(section) << ": " << finding << '\n';
    context.exitCode = kExitFinding;
  }
}

bool Convert(const ConvertOptions& options, ToolContext& context) {
  FileObject file = LoadConfigFile(options.file);
  const CString section = RequireSection(file, options.file, options.section);
  const ConversionPlan plan = PlanConversion(file, section, options.toVersion);
  const std::string to = std::to_string(plan.toVersion);
  const std::string title = '[' + Printable(section) + "] ";
  if (plan.fromVersion == plan.toVersion) {
    context.out << title << "has version " << to << " already\n";
    return true;
  }
  ReportPlan(plan, section, context);
  if (!plan.findings.empty() && !options.force) {
    context.err << "lumattr: nothing was changed; --force converts what can be converted\n";
    return true;
  }
  CarryOut(plan, file, section);
  if (!SaveConfigFile(file, options.file, options.saving, FileConflict::Refuse)) {
    return false;
  }
  context.out << title << "version " << plan.fromVersion << " -> " << to << ", "
              << plan.renames.size() << " renamed\n";
  return true;
}

}  // namespace

void AddConvertCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<ConvertOptions>();
  const CCommand command = app.Subcommand("convert", "Write a section in the other format version");
  command.Option("FILE", options->file, "The file to change").Required();
  command.Option("SECTION", options->section, "The section to convert").Required();
  command.Option("--to-version", options->toVersion, "The version to write: 1 or 2")
      .Required()
      .OneOf({"1", "2"});
  command.Flag("--force", options->force, "Convert even when something is reported");
  AddSaveOptions(command, options->saving);
  command.Footer(kFooter);
  command.Action([options, &context] { UntilSaved([&] { return Convert(*options, context); }); });
}

}  // namespace lum::tool
