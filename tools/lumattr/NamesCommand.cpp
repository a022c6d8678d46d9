// lumattr names: searches the catalogue of attribute names.
#include <memory>
#include <utility>

#include "catalogue/AttributeNames.h"
#include "decoding/Glob.h"
#include "decoding/NearMiss.h"
#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct NamesOptions {
  std::string pattern = "*";
  bool json = false;
};

constexpr const char* kFooter =
    "PATTERN matches the constant or its text as a whole, case apart; * stands for any "
    "characters,\n"
    "? for one.\n"
    "Examples:\n"
    "  lumattr names\n"
    "  lumattr names 'above*'\n"
    "  lumattr names ATTR_ABOVECOLOR";

std::vector<AttributeName> Matches(const CString& pattern) {
  const decoding::CGlob glob(pattern);
  std::vector<AttributeName> matches;
  for (const AttributeName& name : AttributeNames()) {
    if (glob.Matches(name.constant) || glob.Matches(name.mnemonic)) {
      matches.push_back(name);
    }
  }
  return matches;
}

[[noreturn]] void ThrowNoMatch(const CString& pattern) {
  decoding::CNearMiss nearMiss(pattern);
  for (const AttributeName& name : AttributeNames()) {
    nearMiss.Offer(name.mnemonic);
    nearMiss.Offer(name.constant);
  }
  throw ToolError("no name in the catalogue matches " + Quoted(pattern) + nearMiss.Suggestion());
}

void PrintJson(const std::vector<AttributeName>& names, ToolContext& context) {
  CJson list = CJson::Array();
  for (const AttributeName& name : names) {
    CJson entry;
    entry.Set("constant", ToUtf8(name.constant));
    entry.Set("mnemonic", ToUtf8(name.mnemonic));
    list.Add(std::move(entry));
  }
  context.out << list.IndentedText() << '\n';
}

void PrintNames(const std::vector<AttributeName>& names, ToolContext& context) {
  std::vector<TableRow> rows;
  rows.reserve(names.size());
  for (const AttributeName& name : names) {
    rows.push_back({ToUtf8(name.constant), ToUtf8(name.mnemonic)});
  }
  PrintTable(context, {"CONSTANT", "MNEMONIC"}, rows);
}

void Run(const NamesOptions& options, ToolContext& context) {
  const CString pattern = ArgumentText(options.pattern, "PATTERN");
  const std::vector<AttributeName> names = Matches(pattern);
  if (names.empty()) {
    ThrowNoMatch(pattern);
  }
  if (options.json) {
    PrintJson(names, context);
  } else {
    PrintNames(names, context);
  }
}

}  // namespace

void AddNamesCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<NamesOptions>();
  const CCommand command = app.Subcommand("names", "Search the catalogue of attribute names");
  command.Option("PATTERN", options->pattern, "Constant or text, with * and ?");
  command.Flag("--json", options->json, "Print JSON");
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
