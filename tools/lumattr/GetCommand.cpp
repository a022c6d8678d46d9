// lumattr get: prints the value of one attribute.
#include <memory>

#include "tools/lumattr/AttributeLookup.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/FlagNames.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct GetOptions {
  AttributeArguments attribute;
  bool flags = false;
  bool json = false;
};

constexpr const char* kFooter =
    "Prints the value's text as the file holds it.\n"
    "Examples:\n"
    "  lumattr get survey.cfg Survey MaxDepth\n"
    "  lumattr get survey.cfg Survey 'Sensor(1).Offset' --flags\n"
    "  lumattr get survey.cfg Survey MaxDepth --defs survey.def --json";

void PrintJson(const LoadedSection& loaded, const SectionItem& item, ToolContext& context) {
  const CString& name = loaded.path.back().name;
  CJson json;
  json.Set("path", ToUtf8(FormatPath(loaded.path)));
  json.Set("kind", KindName(KindOfName(name)));
  json.Set("flags", item.flags);
  json.Set("flagNames", FlagNames(item.flags));
  json.Set("value", ToUtf8(item.value));
  json.Set("displayName", JsonOrNull(DisplayName(name)));
  context.out << json.Text() << '\n';
}

void Run(const GetOptions& options, ToolContext& context) {
  const LoadedSection loaded = LoadSection(options.attribute, context);
  const SectionItem* item = loaded.items.Find(loaded.path);
  if (item == nullptr) {
    ThrowMissing(loaded);
  }
  if (options.json) {
    PrintJson(loaded, *item, context);
  } else {
    context.out << (options.flags ? FlagNamesText(item->flags) : Shown(context, item->value))
                << '\n';
  }
}

}  // namespace

void AddGetCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<GetOptions>();
  const CCommand command = app.Subcommand("get", "Print the value of an attribute");
  AddAttributeArguments(command, options->attribute);
  const COption flags = command.Flag("--flags", options->flags, "Print the flags by name instead");
  command.Flag("--json", options->json, "Print everything about the attribute as JSON")
      .Excludes(flags);
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
