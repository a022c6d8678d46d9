// Attribute trees in sectioned configuration files. One item stores one node:
//
//     AttrVersion=0,2
//     Unit=1,m
//     Sensor(1).Offset=0,1.5
//
// The key is the path of names joined by ".", each followed by its occurrence in parentheses when
// that is not 0. The value is the flag word (decimal, or hexadecimal after "0x"), a comma and the
// value's text; a node named "OrderInfo" is its text alone; a text with a line break is left out. A
// group without a value and flags has no item of its own. In format version 1 every key begins with
// "@tr"; in version 2 an item is an attribute when its value holds a comma. A section without the
// item "AttrVersion" has version 1.
//
// On reading, a name that begins with "@" gets a name value, a name with a default value in the
// definition table gets a copy of that default set from the text, any other name a CLumAnything.
// Items that cannot be read are skipped.
//
// When memory runs out midway, std::bad_alloc leaves: a load keeps the nodes that it has made, a
// save or a removal may have taken items off the section. Made again with memory, the call does it
// all.
#pragma once

#include "platform/LumBase.h"
#include "values/LumAttributesExport.h"

class CAttributeMap;

/// One load creates at most this many nodes that no item names themselves (earlier occurrences of a
/// name whose later occurrence an item has): an item that would go beyond is skipped. Groups on the
/// way to an item's own node do not count.
inline constexpr int kMaxPlaceholdersPerLoad = 1'000'000;

/// Takes the occurrence off the end of a name: "Name(3)" gives 3 and "Name". The number is read as
/// "%d" reads it from the first "(" on; where there is none it is 0. Gives 0, with the name
/// unchanged, when the name does not end with ")" or has no "(".
LUM_ATTRIBUTES_API int StripAttributeIndex(CString& name);

/// Appends "(n)"; nothing for 0.
LUM_ATTRIBUTES_API void AppendAttributeIndex(CString& name, int n);

/// Replaces all attribute items of the section by those of the tree, in the version its root child
/// "AttrVersion" holds (1 when there is none). False, with nothing changed, for a version other
/// than 1 and 2; false when the file refuses an item, items already written then stay.
LUM_ATTRIBUTES_API bool SaveAttributes(const CAttributeMap& map, FileObject& file,
                                       const CString& section);

/// Writes the items of the map's children and everything below under keys that begin with
/// `keyPrefix`. Removes nothing. False when the file refuses an item; items already written stay.
LUM_ATTRIBUTES_API bool SaveAttributesWithKey(const CAttributeMap& map, FileObject& file,
                                              const CString& section, const CString& keyPrefix);

/// Loads a section in the order of the file object's walk, in the section's own version. Without
/// `merge` the map is cleared first. False for a version other than 1 and 2.
LUM_ATTRIBUTES_API bool LoadAttributes(CAttributeMap& map, const FileObject& file,
                                       const CString& section, bool merge);

/// Loads the items whose key begins with `keyPrefix`, which is removed from it. Always true.
LUM_ATTRIBUTES_API bool LoadAttributesWithKey(CAttributeMap& map, const FileObject& file,
                                              const CString& section, const CString& keyPrefix,
                                              bool merge);

/// Loads a section from the text file itself, in the order of its lines, after clearing the map.
/// A line is cut at the first "//". The version is 1 up to the line of "AttrVersion" and 2 from
/// there on. With `skipMarked`, entries with FLAG_SKIP_ON_LOAD are left out. False when the file
/// cannot be opened or has no such section.
LUM_ATTRIBUTES_API bool LoadAttributesOrdered(CAttributeMap& map, const CString& filePath,
                                              const CString& section, const bool& skipMarked);

/// Loads a version-1 section after clearing the map. A non-zero `index` stands for the root's
/// occurrence in files that hold several: it is put, in parentheses, before every key that begins
/// with neither "(" nor ".doc." and does not hold ".splitter.". False for another version.
LUM_ATTRIBUTES_API bool LoadOldPcfFileAttributes(CAttributeMap& map, const FileObject& file,
                                                 const CString& section, int index);

/// Removes the attribute items of a section and keeps the others; a section of an unknown version
/// is emptied. False, with nothing changed, only when another item of the section cannot be written
/// again (a loaded value with a carriage return in it).
LUM_ATTRIBUTES_API bool RemoveAttributes(FileObject& file, const CString& section);

/// The same for the items whose key begins with `keyPrefix`.
LUM_ATTRIBUTES_API bool RemoveAttributesWithKey(FileObject& file, const CString& section,
                                                const CString& keyPrefix);
