// lumattr merge: lays the attributes of one file over those of another.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/SectionMerge.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr const char* kFooter =
    "Values of OVER replace those of BASE; lines that do not change keep their bytes.\n"
    "Exit codes: 0 merged, 1 an item of BASE stood in the way, 2 trouble.\n"
    "Examples:\n"
    "  lumattr merge survey.cfg update.cfg\n"
    "  lumattr merge survey.cfg update.cfg -o merged.cfg --add\n"
    "  lumattr merge survey.cfg update.cfg --section Survey --flags --strict";

struct MergeOptions {
  std::string base;
  std::string over;
  std::string out;
  std::string section;
  MergeSwitches switches;
  SaveSettings saving;
};

bool HoldsAttributes(const FileObject& file, const CString& section) {
  const SectionItems items = ReadSectionItems(file, section);
  RequireKnownVersion(items.version, section);
  return std::any_of(items.items.begin(), items.items.end(),
                     [](const SectionItem& item) { return item.role == ItemRole::Attribute; });
}

class CMergeRun {
 public:
  CMergeRun(const MergeOptions& options, ToolContext& context)
      : m_options(options),
        m_context(context),
        m_base(LoadConfigFile(options.base)),
        m_over(LoadConfigFile(options.over)) {}

  /// False when the merge must be made again, see UntilSaved.
  bool Run() {
    for (const CString& section : Sections()) {
      Merge(section);
    }
    const bool elsewhere = !m_options.out.empty();
    if ((elsewhere || !m_summary.empty()) &&
        !SaveConfigFile(m_base, elsewhere ? m_options.out : m_options.base, m_options.saving,
                        FileConflict::Refuse)) {
      return false;
    }
    for (const std::string& warning : m_warnings) {
      m_context.Warn(warning);
    }
    m_context.exitCode = m_exitCode;
    m_context.out << (m_summary.empty() ? "nothing to change\n" : m_summary);
    return true;
  }

 private:
  std::vector<CString> Sections() const {
    if (m_options.section.empty()) {
      return m_over.SectionNames();
    }
    return {RequireSection(m_over, m_options.over, m_options.section)};
  }

  void Merge(const CString& section) {
    if (!HoldsAttributes(m_over, section)) {
      return;
    }
    if (m_base.ItemCount(section) > 0) {
      Report(section, MergeSection(m_base, m_over, section, m_options.switches));
    } else if (m_options.switches.add) {
      const int count = CopyWholeSection(m_base, m_over, section);
      Summarise(section, std::to_string(count) + " copied");
    } else {
      Warn("section " + Quoted(section) + " is only in OVER: left out, see --add");
    }
  }

  void Report(const CString& section, const MergeResult& result) {
    if (result.changed + result.added > 0) {
      Summarise(section, std::to_string(result.changed) + " changed, " +
                             std::to_string(result.added) + " added");
    }
    if (!result.leftOut.empty()) {
      Warn("section " + Quoted(section) +
           ": left out, not in BASE (see --add): " + FirstOf(result.leftOut));
    }
    if (result.kept > 0) {
      Warn("section " + Quoted(section) +
           ": protected values kept: " + std::to_string(result.kept));
    }
    if (!result.blocked.empty()) {
      Warn("section " + Quoted(section) +
           ": not merged, BASE uses the key for an item that is no readable attribute: " +
           FirstOf(result.blocked));
      m_exitCode = kExitFinding;
    }
  }

  // The count and the first few paths.
  static std::string FirstOf(const std::vector<std::string>& paths) {
    constexpr std::size_t kShown = 5;
    std::string text = std::to_string(paths.size()) + " (";
    for (std::size_t place = 0; place < std::min(paths.size(), kShown); ++place) {
      text += (place == 0 ? "" : ", ") + paths[place];
    }
    return text + (paths.size() > kShown ? ", ...)" : ")");
  }

  /// Told when the merge is done.
  void Warn(const std::string& warning) { m_warnings.push_back(warning); }

  void Summarise(const CString& section, const std::string& what) {
    m_summary += '[' + Printable(section) + "] " + what + '\n';
  }

  const MergeOptions& m_options;
  ToolContext& m_context;
  FileObject m_base;
  FileObject m_over;
  std::string m_summary;
  std::vector<std::string> m_warnings;
  int m_exitCode = kExitFine;
};

}  // namespace

void AddMergeCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<MergeOptions>();
  const CCommand command = app.Subcommand("merge", "Lay the attributes of a file over another's");
  command.Option("BASE", options->base, "The file to change").Required();
  command.Option("OVER", options->over, "The file whose attributes are laid over it").Required();
  command.Option("-o,--output", options->out, "Write this file and leave BASE as it is")
      .TypeName("OUT");
  command.Option("--section", options->section, "Merge this section only");
  command.Flag("--add", options->switches.add, "Add what only OVER has");
  command.Flag("--flags", options->switches.flags, "Take over flags as well");
  command.Flag("--order", options->switches.order, "Take over 'OrderInfo' as well");
  command.Flag("--strict", options->switches.strict,
               "Keep values with keep-value-strict, too, on the first level");
  AddSaveOptions(command, options->saving);
  command.Footer(kFooter);
  command.Action(
      [options, &context] { UntilSaved([&] { return CMergeRun(*options, context).Run(); }); });
}

}  // namespace lum::tool
