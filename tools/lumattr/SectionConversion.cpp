// Version 1 marks attributes by "@tr" before the key; version 2 knows them by the comma in the
// value and states itself in an item of its own. An item belongs to the attributes, for this
// purpose, when writers of the version would replace it.
#include "tools/lumattr/SectionConversion.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "catalogue/AttributeNames.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"
#include "tools/lumattr/TreeDifference.h"

namespace lum::tool {
namespace {

constexpr const wchar_t* kVersionTwoText = L"0,2";

bool StartsWith(const CString& text, const CString& start) {
  return View(text).starts_with(View(start));
}

// What version 2 takes for an attribute whatever its key begins with.
bool IsAttributeInTwo(const CString& key, const CString& value) {
  return value.Find(L',') >= 0 || View(key).ends_with(View(ATTRIB_ORDERINFO));
}

bool CanBeKey(const CString& key) {
  FileObject scratch;
  return scratch.SetItem(L"s", key, CString(), true);
}

class CPlanner {
 public:
  CPlanner(const FileObject& file, const CString& section, int toVersion)
      : m_file(file), m_section(section) {
    m_plan.fromVersion = SectionVersion(file, section);
    m_plan.toVersion = toVersion;
    RequireKnownVersion(m_plan.fromVersion, section);
  }

  ConversionPlan Run() {
    if (m_plan.fromVersion == m_plan.toVersion) {
      return std::move(m_plan);
    }
    FobjSection walk;
    CString key;
    CString value;
    for (bool more = m_file.GetFirstMapEntry(walk, m_section, key, value); more;
         more = m_file.GetNextMapEntry(walk, key, value)) {
      PlanItem(key, value);
    }
    CheckLines();
    DropCollisions();
    OrderRenames();
    return std::move(m_plan);
  }

 private:
  void PlanItem(const CString& key, const CString& value) {
    if (key == ATTRIB_VERSION_KEY) {
      PlanVersion(value);
    } else if (StartsWith(key, ATTRIB_MARK + L".")) {
      Keep(key, "was saved by itself and reads alike in both versions: it stays as it is");
    } else if (m_plan.toVersion == 2) {
      PlanForTwo(key, value);
    } else {
      PlanForOne(key, value);
    }
  }

  void PlanVersion(const CString& value) {
    if (m_plan.toVersion == 2) {
      m_plan.notes.push_back("AttrVersion, which stood there with " + Quoted(value) +
                             ", is written anew");
      return;
    }
    const SectionItem item = ReadSectionItem(ATTRIB_VERSION_KEY, value, 2);
    if (item.flags != 0) {
      m_plan.findings.push_back("'AttrVersion' has flags, which version 1 cannot hold: " +
                                Quoted(item.flagsText));
    } else if (value != kVersionTwoText) {
      m_plan.notes.push_back("AttrVersion stood there with " + Quoted(value));
    }
  }

  void PlanForTwo(const CString& key, const CString& value) {
    if (!StartsWith(key, ATTRIB_MARK)) {
      if (IsAttributeInTwo(key, value)) {
        Keep(key, "is no attribute, but would be one in version 2");
      } else {
        m_kept.insert(key);
      }
      return;
    }
    const CString newKey = key.Mid(ATTRIB_MARK.GetLength());
    if (newKey == ATTRIB_VERSION_KEY) {
      Keep(key, "is an attribute that version 2 uses for itself");
    } else if (!IsAttributeInTwo(key, value)) {
      Keep(key, "has no comma: no reader reads it, and version 2 takes it for no attribute");
    } else if (!CanBeKey(newKey)) {
      Keep(key, "would have a key that a file cannot hold");
    } else {
      m_plan.renames.push_back({key, newKey});
    }
  }

  void PlanForOne(const CString& key, const CString& value) {
    if (IsAttributeInTwo(key, value)) {
      m_plan.renames.push_back({key, ATTRIB_MARK + key});
    } else if (StartsWith(key, ATTRIB_MARK)) {
      Keep(key, "is no attribute, but has the key of one in version 1");
    } else {
      m_kept.insert(key);
    }
  }

  void Keep(const CString& key, const char* why) {
    m_kept.insert(key);
    m_plan.findings.push_back(Quoted(key) + ' ' + why);
  }

  // What only the lines themselves show.
  void CheckLines() {
    std::set<CString> keys;
    bool isBelowVersion = false;
    for (const FileObjectLine& line : m_file.LoadedLines()) {
      if (line.section != m_section || line.kind == FileObjectLine::Kind::Section) {
        isBelowVersion = false;
        continue;
      }
      const bool isItem = line.kind == FileObjectLine::Kind::Item;
      if (isItem && !keys.insert(line.key).second) {
        m_plan.findings.push_back(Quoted(line.key) + " stands in several lines, one of them line " +
                                  std::to_string(line.number));
      }
      const bool isVersion = isItem && line.key == ATTRIB_VERSION_KEY;
      if ((isVersion && !IsPlainVersionLine(line, keys.size())) || (isBelowVersion && !isItem)) {
        NoteVersionMoves();
      }
      isBelowVersion = isVersion;
    }
  }

  // As a conversion to version 2 writes it.
  static bool IsPlainVersionLine(const FileObjectLine& line, std::size_t itemsSoFar) {
    return itemsSoFar == 1 && line.text == ATTRIB_VERSION_KEY + L"=" + kVersionTwoText;
  }

  void NoteVersionMoves() {
    if (m_plan.toVersion == 1) {
      m_plan.notes.push_back(
          "a conversion back would write AttrVersion=0,2 right above the first item");
    }
  }

  void DropCollisions() {
    // An item that stays can stand in the way of another one, whose key is then the next in length.
    for (const ConversionPlan::Rename& rename : InOrder(m_plan.renames)) {
      if (m_kept.contains(rename.to)) {
        m_kept.insert(rename.from);
      }
    }
    std::erase_if(m_plan.renames, [this](const ConversionPlan::Rename& rename) {
      if (!m_kept.contains(rename.from)) {
        return false;
      }
      m_plan.findings.push_back(Quoted(rename.from) + " would become " + Quoted(rename.to) +
                                ", which is another item's key");
      return true;
    });
  }

  // Only keys that differ by marks can meet: those are moved aside first.
  void OrderRenames() { m_plan.renames = InOrder(std::move(m_plan.renames)); }

  std::vector<ConversionPlan::Rename> InOrder(std::vector<ConversionPlan::Rename> renames) const {
    const bool shorter = m_plan.toVersion == 2;
    std::stable_sort(renames.begin(), renames.end(),
                     [shorter](const ConversionPlan::Rename& a, const ConversionPlan::Rename& b) {
                       return shorter ? a.from.GetLength() < b.from.GetLength()
                                      : a.from.GetLength() > b.from.GetLength();
                     });
    return renames;
  }

  const FileObject& m_file;
  const CString& m_section;
  ConversionPlan m_plan;
  std::set<CString> m_kept;
};

void WriteVersionTwo(FileObject& file, const CString& section) {
  file.RemoveItem(section, ATTRIB_VERSION_KEY);
  FobjSection walk;
  CString first;
  CString value;
  const bool done = file.GetFirstMapEntry(walk, section, first, value)
                        ? file.InsertItem(section, first, ATTRIB_VERSION_KEY, kVersionTwoText)
                        : file.SetItem(section, ATTRIB_VERSION_KEY, kVersionTwoText, true);
  if (!done) {
    throw ToolError("section " + Quoted(section) + " cannot hold the version item");
  }
}

}  // namespace

ConversionPlan PlanConversion(const FileObject& file, const CString& section, int toVersion) {
  return CPlanner(file, section, toVersion).Run();
}

void CarryOut(const ConversionPlan& plan, FileObject& file, const CString& section) {
  const CAttributeMap before = LoadTreeWithoutVersion(file, section);
  for (const ConversionPlan::Rename& rename : plan.renames) {
    if (!file.RenameItem(section, rename.from, rename.to)) {
      throw ToolError("cannot rename the item " + Quoted(rename.from) + " to " + Quoted(rename.to));
    }
  }
  if (plan.toVersion == 2) {
    WriteVersionTwo(file, section);
  } else {
    file.RemoveItem(section, ATTRIB_VERSION_KEY);
  }
  const CAttributeMap after = LoadTreeWithoutVersion(file, section);
  if (plan.findings.empty() &&
      !FindTreeDifferences({before, before}, {after, after}, true).empty()) {
    throw ToolError("section " + Quoted(section) + " would not read back with the same attributes");
  }
}

}  // namespace lum::tool
