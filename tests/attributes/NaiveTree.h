// A second implementation of the attribute tree for the random tests: the rules written down as
// plainly as they can be, by recursion and scanning, without regard to time or depth.
#pragma once

#include <memory>
#include <vector>

#include "attributes/AttributeMap.h"

struct CNaiveNode {
  CNaiveNode() : CNaiveNode(CString()) {}
  explicit CNaiveNode(const CString& nodeName) : CNaiveNode(nodeName, CLumUndefined(), 0) {}
  CNaiveNode(const CString& nodeName, const CLumType& nodeValue, unsigned int nodeFlags)
      : name(nodeName), value(nodeValue.MakeCopy()), flags(nodeFlags) {}
  CNaiveNode(const CNaiveNode& other)
      : name(other.name),
        value(other.value->MakeCopy()),
        flags(other.flags),
        lastSelected(other.lastSelected),
        children(other.children) {}
  CNaiveNode(CNaiveNode&&) = default;
  CNaiveNode& operator=(CNaiveNode&&) = default;
  CNaiveNode& operator=(const CNaiveNode& other) { return *this = CNaiveNode(other); }

  int Occurrence(int pos) const;
  int Position(const CString& childName, int occurrence) const;
  /// The child or null.
  CNaiveNode* Child(const CString& childName, int occurrence);
  const CNaiveNode* Child(const CString& childName, int occurrence) const;
  CNaiveNode& FindCreate(const CString& childName, int occurrence);
  int NodeCount() const;

  void Overload(const CNaiveNode& source, unsigned int word);
  void Overload(const CNaiveNode& source, bool addNew, bool copyFlags, bool orderInfo, bool strict);
  bool Compare(const CNaiveNode& other, CNaiveNode& diff, unsigned int word) const;
  bool HasEditable() const;

  CString name;
  std::unique_ptr<CLumType> value;
  unsigned int flags;
  bool lastSelected = false;
  std::vector<CNaiveNode> children;
};

/// The text that Describe gives for a CAttributeMap of the same content.
std::string Describe(const CNaiveNode& node);
std::string DescribeNode(const CNaiveNode& node);

/// The same content as a CAttributeMap.
CAttributeMap ToMap(const CNaiveNode& node);

// Saving and loading, written down as plainly.

bool NaiveSaveWithKey(const CNaiveNode& map, FileObject& file, const CString& section,
                      const CString& prefix);
bool NaiveSave(const CNaiveNode& map, FileObject& file, const CString& section);
struct CNaiveItem {
  CString key;
  CString text;
  unsigned int flags = 0;
};
bool NaiveReadItem(CString key, const CString& value, int version, CNaiveItem& item);
bool NaiveInsert(CNaiveNode& map, const CString& key, const CString& text, unsigned int flags);
bool NaiveLoad(CNaiveNode& map, const FileObject& file, const CString& section, bool merge);
bool NaiveLoadWithKey(CNaiveNode& map, const FileObject& file, const CString& section,
                      const CString& prefix, bool merge);
/// The lines are those of the whole file.
bool NaiveLoadOrdered(CNaiveNode& map, const std::vector<CString>& lines, const CString& section,
                      bool skipMarked);
