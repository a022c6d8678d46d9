// lumattr check: names every place of a file that readers skip or misread in silence.
#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "definitions/AttribDefMap.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/ConfigRules.h"
#include "tools/lumattr/DefinitionRules.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/Finding.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  lumattr check survey.cfg\n"
    "  lumattr check --defs survey.def survey.cfg vessel.cfg\n"
    "  lumattr check --json survey.def\n"
    "  lumattr check --rules";

struct CheckOptions {
  std::vector<std::string> files;
  DefinitionOptions definitions;
  std::string kind;
  std::size_t max = 1000;
  bool json = false;
  bool listRules = false;
};

bool EndsWithDef(const std::string& path) {
  return FromUtf8(path).Right(4).CompareNoCase(L".def") == 0;
}

bool LooksLikeDefinition(const CString& text) {
  const CLumString items(text, L',', true, false);
  int number = 0;
  return items.GetItem(1, number) && items.GetItem(3, number);
}

// A file without any section whose first line of content is a definition.
bool HoldsDefinitions(const std::vector<FileObjectLine>& lines) {
  using Kind = FileObjectLine::Kind;
  const bool hasSection = std::any_of(lines.begin(), lines.end(), [](const FileObjectLine& line) {
    return line.kind == Kind::Section;
  });
  const auto content = std::find_if(lines.begin(), lines.end(), [](const FileObjectLine& line) {
    return line.kind != Kind::Blank && line.kind != Kind::Comment;
  });
  return !hasSection && content != lines.end() && LooksLikeDefinition(content->text);
}

bool IsDefinitionFile(const CheckOptions& options, const std::string& path,
                      const std::vector<FileObjectLine>& lines) {
  if (!options.kind.empty()) {
    return options.kind == "definitions";
  }
  return EndsWithDef(path) || HoldsDefinitions(lines);
}

CFindingList CheckFile(const CheckOptions& options, const std::string& path,
                       CAttribDefMap* definitions) {
  const std::vector<FileObjectLine> lines = LoadConfigFile(path).LoadedLines();
  CFindingList findings(options.max);
  if (IsDefinitionFile(options, path, lines)) {
    CheckDefinitionLines(lines, findings);
  } else {
    CheckConfigLines(lines, definitions, findings);
  }
  return findings;
}

void PrintFinding(const std::string& path, const CFinding& finding, ToolContext& context) {
  context.out << Printable(FromUtf8(path)) << ':' << finding.line << ':' << finding.column << ": "
              << CheckRuleName(finding.rule) << ": found " << finding.found << ", expected "
              << finding.expected;
  if (!finding.suggestion.empty()) {
    context.out << "; did you mean " << Quoted(FromUtf8(finding.suggestion)) << '?';
  }
  context.out << '\n';
}

CJson ToJson(const std::string& path, const CFinding& finding) {
  CJson json;
  json.Set("file", ToUtf8(FromUtf8(path)));
  json.Set("line", finding.line);
  json.Set("column", finding.column);
  json.Set("rule", CheckRuleName(finding.rule));
  json.Set("found", finding.found);
  json.Set("expected", finding.expected);
  if (!finding.suggestion.empty()) {
    json.Set("suggestion", finding.suggestion);
  }
  return json;
}

class CCheckRun {
 public:
  CCheckRun(const CheckOptions& options, ToolContext& context)
      : m_options(options), m_context(context) {}

  void Run() {
    if (LoadDefinitions(m_options.definitions, m_context)) {
      m_definitions = &CAttribDefMap::GetAttribDefMap();
    }
    for (const std::string& path : m_options.files) {
      RunFile(path);
    }
    if (m_options.json) {
      m_context.out << m_json.IndentedText() << '\n';
    }
  }

 private:
  // A file that cannot be read must not keep the others from being checked.
  void RunFile(const std::string& path) {
    try {
      CFindingList findings = CheckFile(m_options, path, m_definitions);
      Show(path, findings);
    } catch (const ToolError& error) {
      m_context.err << "lumattr: " << error.what() << '\n';
      m_context.exitCode = kExitTrouble;
    }
  }

  void Show(const std::string& path, CFindingList& findings) {
    const std::vector<CFinding> kept = findings.TakeSorted();
    for (const CFinding& finding : kept) {
      if (m_options.json) {
        m_json.Add(ToJson(path, finding));
      } else {
        PrintFinding(path, finding, m_context);
      }
    }
    if (findings.Total() > kept.size()) {
      m_context.Warn(Printable(FromUtf8(path)) + ": " +
                     std::to_string(findings.Total() - kept.size()) + " more findings, see --max");
    }
    if (findings.Total() > 0) {
      m_context.exitCode = std::max(m_context.exitCode, static_cast<int>(kExitFinding));
    }
  }

  const CheckOptions& m_options;
  ToolContext& m_context;
  CAttribDefMap* m_definitions = nullptr;
  CJson m_json = CJson::Array();
};

CJson ToJson(const CCheckRule& rule) {
  CJson json;
  json.Set("rule", rule.name);
  json.Set("files", rule.files);
  json.Set("meaning", rule.meaning);
  return json;
}

void ListRules(const CheckOptions& options, ToolContext& context) {
  CJson json = CJson::Array();
  for (const CCheckRule& rule : CheckRules()) {
    if (options.json) {
      json.Add(ToJson(rule));
    } else {
      context.out << rule.name << " (" << rule.files << "): " << rule.meaning << '\n';
    }
  }
  if (options.json) {
    context.out << json.IndentedText() << '\n';
  }
}

void RunCheck(const CheckOptions& options, ToolContext& context) {
  if (options.listRules) {
    ListRules(options, context);
  } else if (options.files.empty()) {
    throw ToolError("check needs a file; see lumattr check --help");
  } else {
    CCheckRun(options, context).Run();
  }
}

}  // namespace

void AddCheckCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<CheckOptions>();
  const CCommand command =
      app.Subcommand("check", "Report what readers of files skip or misread in silence");
  command.Option("FILE", options->files, "Configuration or definition files");
  command.Flag("--json", options->json, "Print a JSON array");
  command.Flag("--rules", options->listRules, "List the rules and what they mean");
  command.Option("--as", options->kind, "Take the files as 'config' or 'definitions'")
      .OneOf({"config", "definitions"});
  command.Option("--max", options->max, "Print at most so many findings a file")
      .Within(1, 1'000'000)
      .ShowDefault();
  AddDefinitionOptions(command, options->definitions);
  command.Footer(kFooter);
  command.Action([options, &context] { RunCheck(*options, context); });
}

}  // namespace lum::tool
