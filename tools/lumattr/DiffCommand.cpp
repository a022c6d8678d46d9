// lumattr diff: which attributes changed, were added or were removed between two files.
#include <algorithm>
#include <memory>
#include <utility>

#include "catalogue/AttributeNames.h"
#include "decoding/NearMiss.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/FlagNames.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/TreeDifference.h"

namespace lum::tool {
namespace {

using Change = TreeDifference::Change;

constexpr const char* kFooter =
    "Prints one line an attribute: '~' changed, '+' only in B, '-' only in A, '!' other flags.\n"
    "Exit codes: 0 no difference, 1 differences, 2 trouble.\n"
    "Examples:\n"
    "  lumattr diff survey.cfg backup.cfg\n"
    "  lumattr diff survey.cfg backup.cfg Survey --defs survey.def\n"
    "  lumattr diff --json --ignore-flags survey.cfg backup.cfg";

struct DiffOptions {
  std::string fileA;
  std::string fileB;
  std::string section;
  DefinitionOptions definitions;
  bool ignoreFlags = false;
  bool json = false;
};

/// How a change shows.
struct ChangeForm {
  char sign;
  const char* name;   ///< In JSON.
  const char* color;  ///< The terminal's code.
};

ChangeForm FormOf(Change change) {
  switch (change) {
    case Change::Added:
      return {'+', "added", "32"};
    case Change::Removed:
      return {'-', "removed", "31"};
    case Change::Flags:
      return {'!', "flags", "36"};
    case Change::Value:
      break;
  }
  return {'~', "changed", "33"};
}

std::string ValueText(const std::optional<CString>& value) {
  return value ? Printable(*value) : "(no value)";
}

// All of A's sections, then what only B has.
std::vector<CString> AllSections(const FileObject& a, const FileObject& b) {
  std::vector<CString> sections = a.SectionNames();
  for (const CString& section : b.SectionNames()) {
    if (!a.HasSection(section)) {
      sections.push_back(section);
    }
  }
  return sections;
}

// The version is how a section is written, not one of its attributes.
SectionTree LoadAttributesOf(const FileObject& file, const CString& section) {
  if (!file.HasSection(section)) {
    return {};
  }
  SectionTree tree = LoadSectionTree(file, section);
  tree.typed.RemoveAll(ATTRIB_VERSION_KEY);
  tree.stored.RemoveAll(ATTRIB_VERSION_KEY);
  return tree;
}

class CDiffRun {
 public:
  CDiffRun(const DiffOptions& options, ToolContext& context)
      : m_options(options),
        m_context(context),
        m_a(LoadConfigFile(options.fileA)),
        m_b(LoadConfigFile(options.fileB)) {}

  void Run() {
    for (const CString& section : Sections()) {
      CompareSection(section);
    }
    if (m_options.json) {
      m_context.out << m_json.IndentedText() << '\n';
    }
  }

 private:
  std::vector<CString> Sections() const {
    std::vector<CString> all = AllSections(m_a, m_b);
    if (m_options.section.empty()) {
      return all;
    }
    CString section = ArgumentText(m_options.section, "SECTION");
    if (std::find(all.begin(), all.end(), section) == all.end()) {
      throw ToolError("no section " + Quoted(section) + " in either file" +
                      decoding::DidYouMean(section, all));
    }
    return {std::move(section)};
  }

  void CompareSection(const CString& section) {
    NoteVersions(section);
    const std::vector<TreeDifference> differences = FindTreeDifferences(
        LoadAttributesOf(m_a, section), LoadAttributesOf(m_b, section), !m_options.ignoreFlags);
    if (differences.empty()) {
      return;
    }
    m_context.exitCode = kExitFinding;
    if (!m_options.json) {
      m_context.out << '[' << Printable(section) << "]\n";
    }
    for (const TreeDifference& difference : differences) {
      if (m_options.json) {
        AddJson(section, difference);
      } else {
        Print(difference);
      }
    }
  }

  void NoteVersions(const CString& section) {
    const int versionA = SectionVersion(m_a, section);
    const int versionB = SectionVersion(m_b, section);
    if (m_a.HasSection(section) && m_b.HasSection(section) && versionA != versionB) {
      m_context.Warn("section " + Quoted(section) + " has version " + std::to_string(versionA) +
                     " in A and " + std::to_string(versionB) + " in B");
    }
  }

  void Print(const TreeDifference& difference) {
    const ChangeForm form = FormOf(difference.change);
    if (m_context.color) {
      m_context.out << "\x1b[" << form.color << 'm';
    }
    m_context.out << form.sign << ' ' << Printable(ToCString(difference.path))
                  << Description(difference);
    if (m_context.color) {
      m_context.out << "\x1b[0m";
    }
    m_context.out << '\n';
  }

  static std::string Description(const TreeDifference& difference) {
    switch (difference.change) {
      case Change::Added:
        return " = " + ValueText(difference.newValue);
      case Change::Removed:
        return " = " + ValueText(difference.oldValue);
      case Change::Flags:
        return " flags: " + FlagNamesText(difference.oldFlags) + " -> " +
               FlagNamesText(difference.newFlags);
      case Change::Value:
        break;
    }
    return ": " + ValueText(difference.oldValue) + " -> " + ValueText(difference.newValue);
  }

  void AddJson(const CString& section, const TreeDifference& difference) {
    CJson json;
    json.Set("section", ToUtf8(section));
    json.Set("path", ToUtf8(ToCString(difference.path)));
    json.Set("change", FormOf(difference.change).name);
    if (difference.change != Change::Added) {
      AddSide(json, "old", "oldFlags", difference.oldValue, difference.oldFlags);
    }
    if (difference.change != Change::Removed) {
      AddSide(json, "new", "newFlags", difference.newValue, difference.newFlags);
    }
    m_json.Add(std::move(json));
  }

  static void AddSide(CJson& json, const char* valueName, const char* flagsName,
                      const std::optional<CString>& value, unsigned int flags) {
    json.Set(valueName, JsonOrNull(value));
    json.Set(flagsName, flags);
  }

  const DiffOptions& m_options;
  ToolContext& m_context;
  FileObject m_a;
  FileObject m_b;
  CJson m_json = CJson::Array();
};

void RunDiff(const DiffOptions& options, ToolContext& context) {
  LoadDefinitions(options.definitions, context);
  CDiffRun(options, context).Run();
}

}  // namespace

void AddDiffCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<DiffOptions>();
  const CCommand command = app.Subcommand("diff", "Show how the attributes of two files differ");
  command.Option("A", options->fileA, "The file to compare from").Required();
  command.Option("B", options->fileB, "The file to compare to").Required();
  command.Option("SECTION", options->section, "Compare this section only");
  command.Flag("--ignore-flags", options->ignoreFlags, "Compare values only");
  command.Flag("--json", options->json, "Print a JSON array");
  AddDefinitionOptions(command, options->definitions);
  command.Footer(kFooter);
  command.Action([options, &context] { RunDiff(*options, context); });
}

}  // namespace lum::tool
