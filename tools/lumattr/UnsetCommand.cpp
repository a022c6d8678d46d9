// lumattr unset: removes one attribute with everything below it.
#include <CLI/CLI.hpp>
#include <memory>

#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/ItemRemoval.h"

namespace lum::tool {
namespace {

constexpr const char* kFooter =
    "Everything below the attribute goes with it. Later occurrences of its name move down by one:\n"
    "after unset Sensor, what was Sensor(1) is Sensor.\n"
    "Examples:\n"
    "  lumattr unset survey.cfg Survey MaxDepth\n"
    "  lumattr unset survey.cfg Survey 'Sensor(1)'";

void Run(const AttributeArguments& arguments, ToolContext& context) {
  LoadedSection loaded = LoadSection(arguments, context);
  const RemovalCount count = RemoveAttribute(loaded);
  SaveConfigFile(loaded.file, arguments.file);
  context.out << "items removed: " << count.removed << ", renamed: " << count.renamed << '\n';
}

}  // namespace

void AddUnsetCommand(CLI::App& app, ToolContext& context) {
  auto arguments = std::make_shared<AttributeArguments>();
  CLI::App* command = app.add_subcommand("unset", "Remove an attribute and everything below it");
  AddAttributeArguments(*command, *arguments);
  command->footer(kFooter);
  command->callback([arguments, &context] { Run(*arguments, context); });
}

}  // namespace lum::tool
