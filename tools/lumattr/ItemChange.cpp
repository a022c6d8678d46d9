#include "tools/lumattr/ItemChange.h"

#include <algorithm>
#include <optional>

#include "catalogue/AttributeNames.h"
#include "tools/lumattr/FlagNames.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

void RequireAccepted(const AttributePath& path, const CString& value) {
  const int kind = KindOfName(path.back().name);
  std::optional<std::string> reason = WhyFileRefuses(value);
  if (!reason) {
    reason = WhyKindRefuses(kind, value);
  }
  if (reason) {
    throw ToolError(Quoted(FormatPath(path)) + " is of kind " + KindName(kind) +
                    " and cannot take " + Quoted(value) + ": " + *reason);
  }
}

// ---- Making items

/// Occurrences are made in their order: a gap would be filled with empty attributes.
void RequireNextOccurrences(const LoadedSection& loaded) {
  for (auto end = loaded.path.begin() + 1;; ++end) {
    const AttributePath path(loaded.path.begin(), end);
    const int count = CountSiblings(loaded.items, path);
    if (path.back().occurrence > count) {
      throw ToolError("cannot create " + Quoted(FormatPath(path)) + ": the next occurrence is " +
                      std::to_string(count));
    }
    if (end == loaded.path.end()) {
      return;
    }
  }
}

SectionItem MakeItem(const LoadedSection& loaded, const CString& key) {
  if (!CanBeWritten(loaded.path)) {
    throw ToolError("cannot create " + Quoted(FormatPath(loaded.path)) +
                    ": a name is empty or holds what paths give a meaning to");
  }
  RequireNextOccurrences(loaded);
  CString other;
  if (loaded.file.GetItem(loaded.section, key, other)) {
    throw ToolError("cannot create " + Quoted(FormatPath(loaded.path)) +
                    ": the section has an item of that key that is no readable attribute");
  }
  return ReadSectionItem(key, L"0,", loaded.items.version);
}

/// The item of the loaded path as it is, or as it begins when it is to be made.
SectionItem ItemToChange(const LoadedSection& loaded, bool create) {
  if (const SectionItem* item = loaded.items.Find(loaded.path)) {
    return *item;
  }
  if (!create) {
    ThrowMissing(loaded);
  }
  return MakeItem(loaded, KeyOfPath(loaded.path, loaded.items.version));
}

// ---- Changing items

CString NewFlagsText(const SectionItem& item, const std::string& argument) {
  const unsigned int flags = ParseFlagsArgument(argument, item.flags);
  return flags == item.flags ? item.flagsText : FormatFlagsLike(flags, item.flagsText);
}

CString NewText(const SectionItem& item, const NewContent& content) {
  if (item.hasFlags) {
    const CString flags =
        content.flags.empty() ? item.flagsText : NewFlagsText(item, content.flags);
    // An unchanged value keeps the blanks before it, and so the line its bytes.
    const bool keep = content.value == item.value && flags == item.flagsText;
    return keep ? item.text : ItemText(flags, content.value);
  }
  if (!content.flags.empty()) {
    throw ToolError(Quoted(item.dottedPath) + " is stored without flags");
  }
  return content.value;
}

}  // namespace

void RefuseVersion(const LoadedSection& loaded) {
  if (KeyOfPath(loaded.path, loaded.items.version) == ATTRIB_VERSION_KEY) {
    throw ToolError(Quoted(ATTRIB_VERSION_KEY) +
                    " is the section's format version; lumattr convert changes it");
  }
}

void ProveItems(const LoadedSection& loaded, const std::vector<SectionItem>& expected) {
  const SectionItems found = ReadSectionItems(loaded.file, loaded.section);
  const auto isSame = [](const SectionItem& a, const SectionItem& b) {
    return a.key == b.key && a.text == b.text && a.role == b.role;
  };
  if (found.version != loaded.items.version ||
      !std::equal(found.items.begin(), found.items.end(), expected.begin(), expected.end(),
                  isSame)) {
    throw ToolError("the change would not read back as it should; nothing was written");
  }
}

bool ChangeAttribute(LoadedSection& loaded, const NewContent& content) {
  RefuseVersion(loaded);
  SectionItem item = ItemToChange(loaded, content.create);
  RequireAccepted(loaded.path, content.value);
  const CString text = NewText(item, content);
  std::vector<SectionItem> expected = loaded.items.items;
  const auto place = std::find_if(expected.begin(), expected.end(),
                                  [&](const SectionItem& other) { return other.key == item.key; });
  if (place == expected.end()) {
    item.text = text;
    expected.push_back(item);
  } else if (place->text == text) {
    return false;
  } else {
    place->text = text;
  }
  if (!loaded.file.SetItem(loaded.section, item.key, text, content.create)) {
    throw ToolError("the file cannot hold an item with the key " + Quoted(item.key));
  }
  ProveItems(loaded, expected);
  return true;
}

}  // namespace lum::tool
