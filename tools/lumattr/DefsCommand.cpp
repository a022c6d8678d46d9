// lumattr defs: shows the definitions of a definition file.
#include <charconv>
#include <memory>
#include <optional>

#include "decoding/NearMiss.h"
#include "definitions/AttribDefMap.h"
#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct DefsOptions {
  DefinitionOptions definitions;
  std::string wanted;
  bool json = false;
};

constexpr const char* kFooter =
    "Without MNEMONIC|ID: all definitions in the order of the file.\n"
    "Examples:\n"
    "  lumattr defs survey.def\n"
    "  lumattr defs survey.def MaxDepth\n"
    "  lumattr defs survey.def 17 --json";

CAttribDefMap& Table() { return CAttribDefMap::GetAttribDefMap(); }

std::optional<CString> DefaultText(const CAttribDefRec& definition) {
  CString text;
  if (definition.DefaultValue() == nullptr || definition.DefaultValue()->GetValueStr(text) == 0) {
    return std::nullopt;
  }
  return text;
}

/// The translated name, if there is one; a definition that a later line took over keeps its own.
CString ShownName(const CAttribDefRec& definition) {
  if (Table().GetAttribDefRec(definition.Mnemonic()) != &definition) {
    return definition.Name();
  }
  return DisplayName(definition.Mnemonic()).value_or(definition.Name());
}

CString ControlText(const CAttribDefRec& definition) {
  CString text;
  Table().GetCtlAttribs(definition.Mnemonic(), text);
  return text;
}

int KindCode(const CAttribDefRec& definition) { return static_cast<int>(definition.Type()); }

CJson DefinitionJson(const CAttribDefRec& definition) {
  CJson json;
  json.Set("mnemonic", ToUtf8(definition.Mnemonic()));
  json.Set("id", definition.Id());
  json.Set("displayName", ToUtf8(ShownName(definition)));
  json.Set("type", KindCode(definition));
  json.Set("kind", KindName(KindCode(definition)));
  json.Set("control", static_cast<int>(definition.ControlType()));
  json.Set("bitmap", ToUtf8(definition.BitmapFile()));
  json.Set("default", JsonOrNull(DefaultText(definition)));
  json.Set("controlAttributes", ToUtf8(ControlText(definition)));
  return json;
}

// ---- All definitions

TableRow DefinitionRow(const CAttribDefRec& definition) {
  return {std::to_string(definition.Id()), Printable(definition.Mnemonic()),
          KindName(KindCode(definition)), Printable(DefaultText(definition).value_or(CString())),
          Printable(ShownName(definition))};
}

void PrintAll(const DefsOptions& options, ToolContext& context) {
  std::vector<TableRow> rows;
  CJson list = CJson::Array();
  for (int i = 0; i < Table().Count(); ++i) {
    if (options.json) {
      list.Add(DefinitionJson(Table()[i]));
    } else {
      rows.push_back(DefinitionRow(Table()[i]));
    }
  }
  if (options.json) {
    context.out << list.IndentedText() << '\n';
  } else {
    PrintTable(context, {"ID", "MNEMONIC", "KIND", "DEFAULT", "DISPLAY NAME"}, rows);
  }
}

// ---- One definition

std::optional<unsigned short> ReadId(const std::string& text) {
  unsigned short id = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  return error == std::errc() && rest == text.data() + text.size() ? std::optional(id)
                                                                   : std::nullopt;
}

/// A mnemonic goes before an identifier that is written alike.
const CAttribDefRec& Find(const std::string& wanted) {
  const CString mnemonic = ArgumentText(wanted, "MNEMONIC");
  const CAttribDefRec* definition = Table().GetAttribDefRec(mnemonic);
  const std::optional<unsigned short> id = ReadId(wanted);
  if (definition == nullptr && id) {
    definition = Table().GetAttribDefRec(*id);
  }
  if (definition != nullptr) {
    return *definition;
  }
  decoding::CNearMiss nearMiss(mnemonic);
  for (int i = 0; i < Table().Count(); ++i) {
    nearMiss.Offer(Table()[i].Mnemonic());
  }
  throw ToolError("no definition " + Quoted(mnemonic) + nearMiss.Suggestion());
}

void PrintOne(const CAttribDefRec& definition, ToolContext& context) {
  const std::vector<TableRow> rows = {
      {"mnemonic:", Printable(definition.Mnemonic())},
      {"id:", std::to_string(definition.Id())},
      {"display name:", Printable(ShownName(definition))},
      {"kind:", KindName(KindCode(definition)) + " (" + std::to_string(KindCode(definition)) + ")"},
      {"control:", std::to_string(static_cast<int>(definition.ControlType()))},
      {"bitmap:", Printable(definition.BitmapFile())},
      {"default:", Printable(DefaultText(definition).value_or(CString()))},
      {"control attributes:", Printable(ControlText(definition))},
  };
  CColumns columns(rows.front());
  for (const TableRow& row : rows) {
    columns.Measure(row);
  }
  for (const TableRow& row : rows) {
    columns.PrintRow(context, row);
  }
}

void Run(const DefsOptions& options, bool hasWanted, ToolContext& context) {
  LoadDefinitions(options.definitions, context);
  if (!hasWanted) {
    return PrintAll(options, context);
  }
  const CAttribDefRec& definition = Find(options.wanted);
  if (options.json) {
    context.out << DefinitionJson(definition).IndentedText() << '\n';
  } else {
    PrintOne(definition, context);
  }
}

}  // namespace

void AddDefsCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<DefsOptions>();
  const CCommand command = app.Subcommand("defs", "Show the definitions of a definition file");
  command.Option("DEF", options->definitions.definitionFile, "Definition file").Required();
  const COption wanted = command.Option("MNEMONIC|ID", options->wanted, "One definition");
  AddTranslationOption(command, options->definitions);
  command.Flag("--json", options->json, "Print JSON");
  command.Footer(kFooter);
  command.Action([options, wanted, &context] { Run(*options, wanted.IsGiven(), context); });
}

}  // namespace lum::tool
