// Loading trees from the items of a section, in the order of the file object's walk.
#include <string>

#include "attributes/AttributeMap.h"
#include "attributes/ItemCodec.h"
#include "attributes/Overload.h"
#include "attributes/SectionWalk.h"
#include "attributes/TreeInserter.h"
#include "values/TextView.h"

using namespace lum::detail;

namespace {

/// In files of the old form that hold several trees, items of the documents and of the window
/// layout belong to the first one whatever the index, and so do items that name theirs themselves.
bool TakesRootIndex(std::wstring_view path) {
  return !path.starts_with(L'(') && !path.starts_with(L".doc.") &&
         path.find(L".splitter.") == std::wstring_view::npos;
}

}  // namespace

bool LoadAttributes(CAttributeMap& map, const FileObject& file, const CString& section,
                    bool merge) {
  if (!merge) {
    map.RemoveAll();
  }
  const int version = StoredVersion(file, section);
  if (!IsKnownVersion(version)) {
    return false;
  }
  CTreeInserter inserter(map);
  ForEachItem(file, section, [&](const CString& key, const CString& value) {
    if (const auto item = ReadItem(View(key), View(value), version)) {
      inserter.Insert(*item);
    }
  });
  return true;
}

bool LoadAttributesWithKey(CAttributeMap& map, const FileObject& file, const CString& section,
                           const CString& keyPrefix, bool merge) {
  if (!merge) {
    map.RemoveAll();
  }
  const std::wstring_view prefix = View(keyPrefix);
  CTreeInserter inserter(map);
  ForEachItem(file, section, [&](const CString& key, const CString& value) {
    if (!View(key).starts_with(prefix)) {
      return;
    }
    // What a prefix leaves is a plain path, in sections of either version.
    if (const auto item = ReadItem(View(key).substr(prefix.size()), View(value), 2)) {
      inserter.Insert(*item);
    }
  });
  return true;
}

bool LoadOldPcfFileAttributes(CAttributeMap& map, const FileObject& file, const CString& section,
                              int index) {
  map.RemoveAll();
  if (StoredVersion(file, section) != 1) {
    return false;
  }
  CString rootIndex;
  AppendAttributeIndex(rootIndex, index);
  CTreeInserter inserter(map);
  ForEachItem(file, section, [&](const CString& key, const CString& value) {
    const auto item = ReadItem(View(key), View(value), 1);
    if (!item) {
      return;
    }
    std::wstring path(TakesRootIndex(item->path) ? View(rootIndex) : std::wstring_view());
    path += item->path;
    inserter.Insert(path, item->flags, item->text);
  });
  return true;
}

bool CAttributeMap::LoadFromFObj(const FileObject* file, const CString& section, bool addNew,
                                 bool copyFlags, bool orderInfo) {
  if (file == nullptr) {
    return false;
  }
  const CString keyPrefix = NodeKeyPrefix(*this);
  if (Count() == 0) {
    // Apart: a load that ran out of memory midway would have left kinds for the next one to keep.
    CAttributeMap filled;
    if (addNew && LoadAttributesWithKey(filled, *file, section, keyPrefix, false)) {
      NodeAccess::ReplaceChildren(*this, filled);
    }
    return true;
  }
  // The load decides the kinds afresh; merging its result keeps those that the node has.
  CAttributeMap loaded(*this);
  if (!LoadAttributesWithKey(loaded, *file, section, keyPrefix, addNew)) {
    return false;
  }
  Overlay(*this, loaded, {addNew, copyFlags, orderInfo, false});
  return true;
}
