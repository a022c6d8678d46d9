// Library-internal codec of the items that store tree nodes: key paths, the flags field, the value
// text, versions. AttributePersistence.h describes the format.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "attributes/AttributeMap.h"

namespace lum::detail {

/// Whether a node is one of those that are stored without flags.
bool IsOrderInfo(const CAttributeMap& node);

/// One name of a key path.
struct CKeyPiece {
  std::wstring_view name;
  int occurrence;
};

/// Splits the occurrence off a name. Between the first "(" and the final ")" a number is read as
/// "%d" reads it: what follows it does not count, and no number is 0.
CKeyPiece SplitOccurrence(std::wstring_view name);

/// An occurrence as it follows its name: "(3)".
CString OccurrenceText(int occurrence);

/// Takes a key path apart, from the front. Every key has at least one piece, which may be empty.
class CKeyPath {
 public:
  explicit CKeyPath(std::wstring_view key) : m_rest(key) {}

  bool AtEnd() const noexcept { return m_atEnd; }
  /// The names that are left.
  std::wstring_view Rest() const noexcept { return m_rest; }
  /// Precondition: not AtEnd().
  CKeyPiece Next();

 private:
  std::wstring_view m_rest;
  bool m_atEnd = false;
};

/// The version a section is stored in: 1, 2, or a number that stands for no version.
int StoredVersion(const FileObject& file, const CString& section);
bool IsKnownVersion(int version);

/// Whether an item is an attribute as far as its key and its comma tell, which is what decides
/// whether saving replaces it.
bool IsAttributeItem(std::wstring_view key, std::wstring_view value, int version);

/// What one item says about a node.
struct CAttributeItem {
  std::wstring_view path;  ///< The key without its mark, within the key that was read.
  unsigned int flags = 0;
  CString text;
};

/// Reads an item; nothing when it is no attribute or its flags field holds no number. Precondition:
/// a known version.
std::optional<CAttributeItem> ReadItem(std::wstring_view key, std::wstring_view value, int version);

/// Appends the item value that stores a node with that value text.
void AppendItemValue(std::wstring& value, const CAttributeMap& node, const CString& text);

/// The key prefix of a node that is stored by itself.
CString NodeKeyPrefix(const CAttributeMap& node);

}  // namespace lum::detail
