#include "tools/lumattr/ShowTree.h"

#include <algorithm>
#include <optional>

#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Csv.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/FlagNames.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/TreeWalk.h"

namespace lum::tool {
namespace {

/// What is shown of a node.
struct ShownNode {
  std::optional<CString> value;  ///< The text of the file; none for a group without a value.
  std::string kind;
  bool readable = true;  ///< Whether the kind reads the text wholly.
  std::optional<CString> displayName;
};

ShownNode Describe(const CTreeWalk& walk) {
  const int kind = walk.Node().Value().Type();
  ShownNode shown{std::nullopt, KindName(kind), true, DisplayName(walk.Node().Mnemonic())};
  CString text;
  if (walk.Other().Value().GetValueStr(text) != 0) {
    shown.readable = !WhyKindRefuses(kind, text);
    shown.value = text;
  }
  return shown;
}

std::optional<CString> ShownPath(const CTreeWalk& walk) {
  if (walk.Path().size() > kMaxShownPath) {
    return std::nullopt;
  }
  return ToCString(walk.Path());
}

std::optional<std::string> Utf8(const std::optional<CString>& text) {
  return text ? std::optional(ToUtf8(*text)) : std::nullopt;
}

// ---- The table

std::string Indented(const CTreeWalk& walk) {
  const int depth = walk.Depth() - 1;
  const std::string name = Printable(FormatStep(walk.Step()));
  const auto indent = 2 * static_cast<std::size_t>(std::min(depth, kMaxIndentedDepth));
  const std::string mark = depth > kMaxIndentedDepth ? "[" + std::to_string(depth) + "] " : "";
  return std::string(indent, ' ') + mark + name;
}

TableRow TreeRow(const CTreeWalk& walk) {
  const ShownNode shown = Describe(walk);
  std::string value = shown.value ? Printable(*shown.value) : "";
  if (!shown.readable) {
    value += "  (no " + shown.kind + ")";
  }
  return {Indented(walk), shown.kind, FlagNamesText(walk.Node().Flags()), value,
          shown.displayName ? Printable(*shown.displayName) : ""};
}

bool HasDisplayNames(const ShownSection& shown) {
  for (CTreeWalk walk(shown.tree.typed); walk.Next();) {
    if (DisplayName(walk.Node().Mnemonic())) {
      return true;
    }
  }
  return false;
}

void PrintOtherItems(const ShownSection& shown, ToolContext& context) {
  bool first = true;
  for (const SectionItem& item : shown.items.items) {
    if (item.role == ItemRole::Attribute) {
      continue;
    }
    context.out << (first ? "\nOther items:\n" : "") << "  " << Printable(item.key) << '='
                << Printable(item.text);
    context.out << (item.problem.empty() ? "" : "  (unreadable: " + item.problem + ")") << '\n';
    first = false;
  }
}

// ---- JSON

CJson NodeJson(const CTreeWalk& walk) {
  const ShownNode shown = Describe(walk);
  CJson json;
  json.Set("path", JsonOrNull(ShownPath(walk)));
  json.Set("name", ToUtf8(walk.Node().Mnemonic()));
  json.Set("occurrence", walk.Occurrence());
  json.Set("depth", walk.Depth());
  json.Set("kind", shown.kind);
  json.Set("flags", walk.Node().Flags());
  json.Set("flagNames", FlagNames(walk.Node().Flags()));
  json.Set("value", JsonOrNull(shown.value));
  json.Set("readable", shown.readable);
  json.Set("displayName", JsonOrNull(shown.displayName));
  json.Set("children", walk.Node().Count());
  return json;
}

CJson ItemJson(const SectionItem& item) {
  CJson json;
  json.Set("key", ToUtf8(item.key));
  json.Set("text", ToUtf8(item.text));
  json.Set("problem", item.problem.empty() ? CJson() : CJson(item.problem));
  return json;
}

/// Writes the elements of an array one on a line.
class CJsonLines {
 public:
  CJsonLines(ToolContext& context, const char* name) : m_context(context) {
    m_context.out << CJson(name).Text() << ": [";
  }
  void Add(const CJson& element) {
    m_context.out << (m_first ? "\n" : ",\n") << element.Text();
    m_first = false;
  }
  void End() { m_context.out << (m_first ? "]" : "\n]"); }

 private:
  ToolContext& m_context;
  bool m_first = true;
};

// ---- CSV

TableRow CsvRow(const CTreeWalk& walk) {
  const ShownNode shown = Describe(walk);
  const unsigned int flags = walk.Node().Flags();
  return {Utf8(ShownPath(walk)).value_or(""),
          ToUtf8(walk.Node().Mnemonic()),
          std::to_string(walk.Occurrence()),
          std::to_string(walk.Depth()),
          shown.kind,
          std::to_string(flags),
          flags == 0 ? "" : FlagNamesText(flags),
          Utf8(shown.value).value_or(""),
          Utf8(shown.displayName).value_or("")};
}

}  // namespace

void PrintTreeTable(const ShownSection& shown, ToolContext& context) {
  TableRow titles = {"NAME", "KIND", "FLAGS", "VALUE"};
  if (HasDisplayNames(shown)) {
    titles.emplace_back("DISPLAY NAME");
  }
  CColumns columns(titles);
  for (CTreeWalk walk(shown.tree.typed, shown.tree.stored); walk.Next();) {
    columns.Measure(TreeRow(walk));
  }
  columns.PrintTitles(context);
  for (CTreeWalk walk(shown.tree.typed, shown.tree.stored); walk.Next();) {
    columns.PrintRow(context, TreeRow(walk));
  }
  PrintOtherItems(shown, context);
}

void PrintTreeJson(const ShownSection& shown, ToolContext& context) {
  context.out << "{\"file\": " << CJson(ToUtf8(FromUtf8(shown.file))).Text()
              << ",\n\"section\": " << CJson(ToUtf8(shown.section)).Text()
              << ",\n\"version\": " << shown.items.version << ",\n";
  CJsonLines attributes(context, "attributes");
  for (CTreeWalk walk(shown.tree.typed, shown.tree.stored); walk.Next();) {
    attributes.Add(NodeJson(walk));
  }
  attributes.End();
  context.out << ",\n";
  CJsonLines otherItems(context, "otherItems");
  for (const SectionItem& item : shown.items.items) {
    if (item.role != ItemRole::Attribute) {
      otherItems.Add(ItemJson(item));
    }
  }
  otherItems.End();
  context.out << "}\n";
}

void PrintTreeCsv(const ShownSection& shown, ToolContext& context) {
  PrintCsvLine(context, {"path", "name", "occurrence", "depth", "kind", "flags", "flagNames",
                         "value", "displayName"});
  for (CTreeWalk walk(shown.tree.typed, shown.tree.stored); walk.Next();) {
    PrintCsvLine(context, CsvRow(walk));
  }
}

}  // namespace lum::tool
