// The rules of `lumattr check` for the keys of one section: can readers find the node that a key
// names, and is it the one that was meant?
#pragma once

#include <cstddef>
#include <map>

#include "attributes/AttributePersistence.h"
#include "platform/FrameworkString.h"
#include "tools/lumattr/Finding.h"

class CAttribDefMap;

namespace lum::tool {

/// The path of one item: names joined by ".", without the mark of its version.
struct CKeyPath {
  int line = 0;
  int column = 0;  ///< Of the path's first character.
  CString key;     ///< The whole key.
  CString path;
  bool nodeScoped = false;  ///< Saved with the node's own name in front, beside the section's tree.
};

/// Follows the keys of one section in the order of their lines, as a reader builds its tree.
class CKeyRules {
 public:
  /// Names beyond this many in one section are checked by themselves, not against each other.
  static constexpr std::size_t kMaxNodes = 1'000'000;

  /// Unknown names beyond this many get no suggestion: each costs a walk over all definitions.
  static constexpr int kMaxSuggestions = 1000;

  /// `definitions` may be null. Both must outlive this object.
  CKeyRules(CAttribDefMap* definitions, CFindingList& findings);

  /// Checks a key. With `isRead` false the item is one that readers skip for another reason: its
  /// names are checked, but it takes no place in the tree.
  void Check(const CKeyPath& path, bool isRead);
  /// Reports what only the whole section shows. To be called once, after the last key.
  void Finish();

 private:
  struct CNode {
    std::size_t id = 0;
    int line = 0;
    int column = 0;
    int itemLine = 0;  // Of the item that names the node itself.
    CString itemKey;
  };
  struct CSiblingsKey {
    std::size_t parent;
    CString name;
    friend bool operator<(const CSiblingsKey& a, const CSiblingsKey& b) {
      return a.parent != b.parent ? a.parent < b.parent : a.name < b.name;
    }
  };
  /// The nodes of one name below one parent.
  struct CSiblings {
    int count = 0;  // As many as a reader has created, placeholders included.
    std::map<int, CNode> byOccurrence;
  };
  struct CName {
    CString text;  // As it stands in the key.
    CString name;
    int occurrence = 0;
    int column = 0;
  };

  bool CheckName(const CKeyPath& path, CName& name);
  void CheckParentheses(const CKeyPath& path, const CName& name);
  bool CheckOccurrence(const CKeyPath& path, const CName& name);
  bool CheckNumber(const CKeyPath& path, const CName& name, const CString& number);
  std::string NearestMnemonic(const CString& name);
  void CheckMnemonic(const CKeyPath& path, const CName& name);
  CNode* Descend(const CKeyPath& path, const CName& name, std::size_t parent);
  void TakePlace(const CKeyPath& path, CNode& node);
  void Report(const CKeyPath& path, const CName& name, CheckRule rule, const std::string& expected,
              const std::string& suggestion = {});

  CAttribDefMap* m_definitions;
  CFindingList& m_findings;
  std::map<CSiblingsKey, CSiblings> m_siblings;
  std::size_t m_nodeCount = 2;  // The section's tree is node 0, the nodes saved by themselves 1.
  int m_suggestionsLeft = kMaxSuggestions;
  int m_placeholdersLeft = kMaxPlaceholdersPerLoad;
};

}  // namespace lum::tool
