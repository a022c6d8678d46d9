#include "tools/lumattr/AttributeLookup.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>
#include <utility>

#include "decoding/NearMiss.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

AttributePath Parent(AttributePath path) {
  path.pop_back();
  return path;
}

std::string Suggest(const LoadedSection& loaded) {
  decoding::CNearMiss nearMiss(FormatPath(loaded.path));
  for (const SectionItem& item : loaded.items.items) {
    if (item.role == ItemRole::Attribute &&
        item.dottedPath.GetLength() <= decoding::CNearMiss::kMaxLength) {
      nearMiss.Offer(item.dottedPath);
    }
  }
  return nearMiss.Suggestion();
}

}  // namespace

void AddAttributeArguments(CLI::App& command, AttributeArguments& arguments) {
  command.add_option("FILE", arguments.file, "Configuration file")->required();
  command.add_option("SECTION", arguments.section, "Section of the file")->required();
  command.add_option("PATH", arguments.path, "Path of the attribute, such as Sensor(1).Offset")
      ->required();
  AddDefinitionOptions(command, arguments.definitions);
}

LoadedSection LoadSection(const AttributeArguments& arguments, ToolContext& context) {
  LoadDefinitions(arguments.definitions, context);
  LoadedSection loaded;
  loaded.file = LoadConfigFile(arguments.file);
  loaded.section = RequireSection(loaded.file, arguments.file, arguments.section);
  loaded.items = ReadSectionItems(loaded.file, loaded.section);
  RequireKnownVersion(loaded.items.version, loaded.section);
  loaded.path = ParsePathArgument(arguments.path);
  return loaded;
}

int CountSiblings(const SectionItems& items, const AttributePath& path) {
  const AttributePath parent = Parent(path);
  int count = 0;
  for (const SectionItem& item : items.items) {
    if (item.role != ItemRole::Attribute) {
      continue;
    }
    const std::optional<AttributePath> other = ReadPath(item.dottedPath);
    if (other && other->size() >= path.size() && BeginsWith(*other, parent) &&
        (*other)[parent.size()].name == path.back().name) {
      count = std::max(count, (*other)[parent.size()].occurrence + 1);
    }
  }
  return count;
}

void ThrowMissing(const LoadedSection& loaded) {
  const std::string path = Quoted(FormatPath(loaded.path));
  const std::string place = " in section " + Quoted(loaded.section);
  if (const SectionItem* item = loaded.items.FindUnreadable(loaded.path)) {
    throw ToolError("the item " + path + place + " cannot be read: " + item->problem);
  }
  if (loaded.path.back().occurrence < CountSiblings(loaded.items, loaded.path)) {
    throw ToolError(path + place + " is a group without a value of its own");
  }
  throw ToolError("no attribute " + path + place + Suggest(loaded));
}

}  // namespace lum::tool
