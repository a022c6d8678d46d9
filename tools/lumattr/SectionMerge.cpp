// The library's Overload merges the trees; what it changed is found by holding the merged tree
// against the items that the section has.
#include "tools/lumattr/SectionMerge.h"

#include <algorithm>
#include <map>
#include <set>

#include "catalogue/AttributeNames.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/FlagNames.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"
#include "tools/lumattr/TreeDifference.h"
#include "tools/lumattr/TreeWalk.h"

namespace lum::tool {
namespace {

bool HasValue(const CAttributeMap& node) { return node.Value().Type() != CLumType::TYPE_UNDEFINED; }

bool HasItem(const CAttributeMap& node) { return HasValue(node) || node.Flags() != 0; }

CString ValueText(const CAttributeMap& node) {
  CString text;
  node.Value().GetValueStr(text);
  return text;
}

class CSectionMerge {
 public:
  CSectionMerge(FileObject& base, const FileObject& over, const CString& section,
                const MergeSwitches& switches)
      : m_base(base),
        m_section(section),
        m_items(ReadSectionItems(base, section)),
        m_merged(LoadTreeWithoutVersion(base, section)),
        m_over(LoadTreeWithoutVersion(over, section)) {
    m_merged.Overload(m_over, switches.add, switches.flags, switches.order, switches.strict);
  }

  MergeResult Run() {
    IndexItems();
    CTreeWalk walk(m_merged);
    while (walk.Next()) {
      if (HasItem(walk.Node())) {
        Write(walk.Path(), walk.Node());
      }
    }
    FindWhatIsMissing();
    Verify();
    return std::move(m_result);
  }

 private:
  // Of several items of one attribute the last counts.
  void IndexItems() {
    for (const SectionItem& item : m_items.items) {
      const auto path = ReadPath(item.dottedPath);
      if (item.role == ItemRole::Attribute && path) {
        m_itemByPath[FormatPath(*path)] = &item;
      }
    }
  }

  void Write(const std::wstring& path, const CAttributeMap& node) {
    const CString dotted = ToCString(path);
    const auto found = m_itemByPath.find(dotted);
    if (found == m_itemByPath.end()) {
      Add(dotted, node);
      return;
    }
    const SectionItem& item = *found->second;
    const CString value = ValueText(node);
    if (value != item.value || node.Flags() != item.flags) {
      Set(item.key, item.hasFlags ? ChangedText(item, node, value) : value);
      ++m_result.changed;
    }
  }

  // Flags keep their form, an unchanged value the blanks before it.
  static CString ChangedText(const SectionItem& item, const CAttributeMap& node,
                             const CString& value) {
    const CString flags =
        node.Flags() == item.flags ? item.flagsText : FormatFlagsLike(node.Flags(), item.flagsText);
    return value == item.value ? flags + item.text.Mid(item.flagsText.GetLength())
                               : ItemText(flags, value);
  }

  void Add(const CString& dotted, const CAttributeMap& node) {
    const CString key = m_items.version == 1 ? ATTRIB_MARK + dotted : dotted;
    CString other;
    if (m_base.GetItem(m_section, key, other)) {
      m_blocked.insert(ToWide(dotted));
      m_result.blocked.push_back(Printable(dotted));
      return;
    }
    const CString value = ValueText(node);
    const CString flags = ToCString(std::to_wstring(node.Flags()));
    Set(key, node.Mnemonic() == ATTRIB_ORDERINFO ? value : ItemText(flags, value));
    ++m_result.added;
  }

  void Set(const CString& key, const CString& text) {
    if (!m_base.SetItem(m_section, key, text, true)) {
      throw ToolError("section " + Quoted(m_section) + " cannot hold the item " + Quoted(key));
    }
  }

  void FindWhatIsMissing() {
    std::map<std::wstring, CString> values;
    CTreeWalk merged(m_merged);
    while (merged.Next()) {
      if (HasValue(merged.Node())) {
        values.emplace(merged.Path(), ValueText(merged.Node()));
      }
    }
    CTreeWalk over(m_over);
    while (over.Next()) {
      if (!HasValue(over.Node())) {
        continue;
      }
      const auto value = values.find(over.Path());
      if (value == values.end()) {
        m_result.leftOut.push_back(Printable(ToCString(over.Path())));
      } else if (value->second != ValueText(over.Node())) {
        ++m_result.kept;
      }
    }
  }

  // What is blocked differs on purpose.
  void Verify() {
    const CAttributeMap written = LoadTreeWithoutVersion(m_base, m_section);
    const std::vector<TreeDifference> differences =
        FindTreeDifferences({m_merged, m_merged}, {written, written}, true);
    for (const TreeDifference& difference : differences) {
      if (!m_blocked.contains(difference.path)) {
        throw ToolError("section " + Quoted(m_section) + ": " + Quoted(ToCString(difference.path)) +
                        " would not read back as merged");
      }
    }
  }

  static std::wstring ToWide(const CString& text) { return std::wstring(View(text)); }

  FileObject& m_base;
  const CString& m_section;
  const SectionItems m_items;
  CAttributeMap m_merged;
  const CAttributeMap m_over;
  std::map<CString, const SectionItem*> m_itemByPath;
  std::set<std::wstring> m_blocked;
  MergeResult m_result;
};

}  // namespace

MergeResult MergeSection(FileObject& base, const FileObject& over, const CString& section,
                         const MergeSwitches& switches) {
  return CSectionMerge(base, over, section, switches).Run();
}

int CopyWholeSection(FileObject& base, const FileObject& over, const CString& section) {
  base.CreateSection(section, false);
  FobjSection walk;
  CString key;
  CString value;
  int count = 0;
  for (bool more = over.GetFirstMapEntry(walk, section, key, value); more;
       more = over.GetNextMapEntry(walk, key, value)) {
    if (!base.SetItem(section, key, value, true)) {
      throw ToolError("section " + Quoted(section) + " cannot hold the item " + Quoted(key));
    }
    ++count;
  }
  return count;
}

}  // namespace lum::tool
