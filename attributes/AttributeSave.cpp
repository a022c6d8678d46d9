// Saving trees as items of a section.
#include <deque>
#include <string>

#include "attributes/AttributeMap.h"
#include "attributes/ItemCodec.h"
#include "attributes/SiblingWalk.h"
#include "catalogue/AttributeNames.h"
#include "values/TextView.h"

namespace lum::detail {
namespace {

/// A node whose children are being written under the first `prefixLength` characters of the key.
struct CSaveFrame {
  CSaveFrame(const CAttributeMap& node, std::size_t length)
      : children(node), prefixLength(length) {}

  CSiblingWalk children;
  std::size_t prefixLength;
};

/// Writes subtrees. One key is appended to and cut back on the way, so that the path to a deep node
/// is not copied level by level.
class CSubtreeWriter {
 public:
  CSubtreeWriter(FileObject& file, const CString& section, const CString& keyPrefix)
      : m_file(file), m_section(section), m_key(View(keyPrefix)) {}

  bool WriteChildren(const CAttributeMap& map) {
    m_frames.emplace_back(map, m_key.size());
    while (!m_frames.empty()) {
      CSaveFrame& frame = m_frames.back();
      const CAttributeMap* child = frame.children.Next();
      if (child == nullptr) {
        m_frames.pop_back();
      } else if (!child->IsFlagSet(CAttributeRec::FLAG_TRANSIENT)) {
        SetKey(frame, *child);
        if (!WriteNode(*child)) {
          return false;
        }
        EnterChild(*child);
      }
    }
    return true;
  }

 private:
  void SetKey(CSaveFrame& frame, const CAttributeMap& child) {
    m_key.resize(frame.prefixLength);
    m_key += View(child.Mnemonic());
    if (const int occurrence = frame.children.Occurrence(); occurrence != 0) {
      m_key += View(OccurrenceText(occurrence));
    }
  }

  /// A group without a value and flags is known from the keys below it and gets no item.
  bool WriteNode(const CAttributeMap& node) {
    if (node.Value().GetValueStr(m_text) == 0) {
      m_text.Empty();
      if (node.Flags() == 0 && node.Count() != 0) {
        return true;
      }
    }
    m_value.clear();
    AppendItemValue(m_value, node, m_text);
    Assign(m_itemKey, m_key);
    Assign(m_itemValue, m_value);
    return m_file.SetItem(m_section, m_itemKey, m_itemValue, true);
  }

  void EnterChild(const CAttributeMap& child) {
    if (child.Count() != 0) {
      m_key += L'.';
      m_frames.emplace_back(child, m_key.size());
    }
  }

  FileObject& m_file;
  const CString& m_section;
  std::wstring m_key;
  std::wstring m_value;
  CString m_text;     ///< Of the node being written.
  CString m_itemKey;  ///< What the file is given.
  CString m_itemValue;
  std::deque<CSaveFrame> m_frames;
};

int TreeVersion(const CAttributeMap& map) {
  int version = 1;
  map.FindValue(ATTRIB_VERSION_KEY).GetInt(version);
  return version;
}

}  // namespace
}  // namespace lum::detail

using namespace lum::detail;

bool SaveAttributes(const CAttributeMap& map, FileObject& file, const CString& section) {
  const int version = TreeVersion(map);
  if (!IsKnownVersion(version)) {
    return false;
  }
  return RemoveAttributes(file, section) &&
         SaveAttributesWithKey(map, file, section, version == 1 ? ATTRIB_MARK : CString());
}

bool SaveAttributesWithKey(const CAttributeMap& map, FileObject& file, const CString& section,
                           const CString& keyPrefix) {
  return CSubtreeWriter(file, section, keyPrefix).WriteChildren(map);
}

bool CAttributeMap::SaveToFObj(FileObject* file, const CString& section) const {
  return file != nullptr && SaveAttributesWithKey(*this, *file, section, NodeKeyPrefix(*this));
}
