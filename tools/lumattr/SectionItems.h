// The items of a section as readers of its format version take them: which are attributes, which
// are something else, and which a reader skips in silence.
#pragma once

#include <string>
#include <vector>

#include "platform/LumBase.h"
#include "tools/lumattr/AttributePath.h"

namespace lum::tool {

/// What a reader makes of an item.
enum class ItemRole {
  Attribute,
  Other,       ///< Belongs to something else: no comma in version 2, no "@tr" in version 1.
  Unreadable,  ///< Meant as an attribute, but skipped: see SectionItem::problem.
};

/// One item, read.
struct SectionItem {
  CString key;   ///< As it stands in the file.
  CString text;  ///< The whole text after "=".
  ItemRole role = ItemRole::Other;
  CString dottedPath;     ///< The key without the version's mark; ReadPath gives the steps.
  bool hasFlags = false;  ///< False for "OrderInfo", whose text is the value alone.
  CString flagsText;      ///< As it stands in the file.
  unsigned int flags = 0;
  CString value;        ///< Without leading blanks.
  std::string problem;  ///< Why the item is unreadable.
};

/// A section's items in their order. `version` may be any number; only in 1 and 2 are there
/// attributes.
struct SectionItems {
  int version = 1;
  std::vector<SectionItem> items;

  /// The item whose attribute has this path: the last of several, as readers take it. Null when
  /// there is none.
  const SectionItem* Find(const AttributePath& path) const;
  /// The same among the items that readers skip.
  const SectionItem* FindUnreadable(const AttributePath& path) const;
};

/// The format version that the section states; 1 when it states none, 0 when that is no number.
int SectionVersion(const FileObject& file, const CString& section);

SectionItem ReadSectionItem(const CString& key, const CString& text, int version);
SectionItems ReadSectionItems(const FileObject& file, const CString& section);

/// The text of an item with this flags field and value, in the form of ReadSectionItem.
CString ItemText(const CString& flagsText, const CString& value);

/// Throws ToolError unless the version is 1 or 2.
void RequireKnownVersion(int version, const CString& section);

}  // namespace lum::tool
