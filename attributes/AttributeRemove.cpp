// Removing attribute items from a section.
#include "attributes/AttributeMap.h"
#include "attributes/ItemCodec.h"
#include "attributes/SectionWalk.h"
#include "values/TextView.h"

using namespace lum::detail;

bool RemoveAttributes(FileObject& file, const CString& section) {
  return RemoveAttributesWithKey(file, section, CString());
}

bool RemoveAttributesWithKey(FileObject& file, const CString& section, const CString& keyPrefix) {
  const int version = StoredVersion(file, section);
  FileObject kept;
  kept.CreateSection(section, false);
  bool keptAll = true;
  ForEachItem(file, section, [&](const CString& key, const CString& value) {
    if (!View(key).starts_with(View(keyPrefix)) ||
        !IsAttributeItem(View(key), View(value), version)) {
      keptAll = kept.SetItem(section, key, value, true) && keptAll;
    }
  });
  // Only a file that was damaged elsewhere holds items that no section can take.
  return keptAll && file.CopySection(section, kept);
}
