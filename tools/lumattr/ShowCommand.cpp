// lumattr show: the sections of a file, or the tree of one.
#include <memory>
#include <utility>

#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/Csv.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/ShowTree.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct ShowOptions {
  std::string file;
  std::string section;
  DefinitionOptions definitions;
  bool json = false;
  bool csv = false;
};

constexpr const char* kFooter =
    "Without SECTION: the sections with their format version and numbers of items.\n"
    "Examples:\n"
    "  lumattr show survey.cfg\n"
    "  lumattr show survey.cfg Survey --defs survey.def\n"
    "  lumattr show survey.cfg Survey --json | jq '.attributes[] | select(.depth == 1)'";

// ---- The overview

struct SectionSummary {
  CString name;
  int version = 1;
  int attributes = 0;
  int otherItems = 0;
  int unreadable = 0;
};

SectionSummary Summarise(const FileObject& file, const CString& section) {
  const SectionItems items = ReadSectionItems(file, section);
  SectionSummary summary{section, items.version, 0, 0, 0};
  for (const SectionItem& item : items.items) {
    ++(item.role == ItemRole::Attribute    ? summary.attributes
       : item.role == ItemRole::Unreadable ? summary.unreadable
                                           : summary.otherItems);
  }
  return summary;
}

TableRow SummaryRow(const SectionSummary& summary, std::string name) {
  return {std::move(name), std::to_string(summary.version), std::to_string(summary.attributes),
          std::to_string(summary.otherItems), std::to_string(summary.unreadable)};
}

void PrintSummaryTable(const std::vector<SectionSummary>& summaries, ToolContext& context) {
  std::vector<TableRow> rows;
  rows.reserve(summaries.size());
  for (const SectionSummary& summary : summaries) {
    rows.push_back(SummaryRow(summary, Printable(summary.name)));
  }
  PrintTable(context, {"SECTION", "VERSION", "ATTRIBUTES", "OTHER ITEMS", "UNREADABLE"}, rows);
}

void PrintSummaryCsv(const std::vector<SectionSummary>& summaries, ToolContext& context) {
  PrintCsvLine(context, {"section", "version", "attributes", "otherItems", "unreadable"});
  for (const SectionSummary& summary : summaries) {
    PrintCsvLine(context, SummaryRow(summary, ToUtf8(summary.name)));
  }
}

CJson SummaryJson(const SectionSummary& summary) {
  CJson json;
  json.Set("section", ToUtf8(summary.name));
  json.Set("version", summary.version);
  json.Set("attributes", summary.attributes);
  json.Set("otherItems", summary.otherItems);
  json.Set("unreadable", summary.unreadable);
  return json;
}

void PrintSummaryJson(const std::vector<SectionSummary>& summaries, const std::string& file,
                      ToolContext& context) {
  CJson sections = CJson::Array();
  for (const SectionSummary& summary : summaries) {
    sections.Add(SummaryJson(summary));
  }
  CJson json;
  json.Set("file", ToUtf8(FromUtf8(file)));
  json.Set("sections", std::move(sections));
  context.out << json.IndentedText() << '\n';
}

void ShowOverview(const FileObject& file, const ShowOptions& options, ToolContext& context) {
  std::vector<SectionSummary> summaries;
  for (const CString& section : file.SectionNames()) {
    summaries.push_back(Summarise(file, section));
  }
  if (options.json) {
    PrintSummaryJson(summaries, options.file, context);
  } else if (options.csv) {
    PrintSummaryCsv(summaries, context);
  } else {
    PrintSummaryTable(summaries, context);
  }
}

// ---- One section

void ShowSection(const FileObject& file, const ShowOptions& options, ToolContext& context) {
  const CString section = RequireSection(file, options.file, options.section);
  const ShownSection shown{options.file, section, ReadSectionItems(file, section),
                           LoadSectionTree(file, section)};
  if (options.json) {
    PrintTreeJson(shown, context);
  } else if (options.csv) {
    PrintTreeCsv(shown, context);
  } else {
    PrintTreeTable(shown, context);
  }
}

void Run(const ShowOptions& options, bool hasSection, ToolContext& context) {
  LoadDefinitions(options.definitions, context);
  const FileObject file = LoadConfigFile(options.file);
  if (hasSection) {
    ShowSection(file, options, context);
  } else {
    ShowOverview(file, options, context);
  }
}

}  // namespace

void AddShowCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<ShowOptions>();
  const CCommand command = app.Subcommand("show", "Show the sections of a file or the tree of one");
  command.Option("FILE", options->file, "Configuration file").Required();
  const COption section = command.Option("SECTION", options->section, "Section of the file");
  AddDefinitionOptions(command, options->definitions);
  const COption json = command.Flag("--json", options->json, "Print JSON");
  command.Flag("--csv", options->csv, "Print comma-separated values").Excludes(json);
  command.Footer(kFooter);
  command.Action([options, section, &context] { Run(*options, section.IsGiven(), context); });
}

}  // namespace lum::tool
