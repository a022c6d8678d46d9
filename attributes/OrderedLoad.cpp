// Loading a section from the lines of the text file itself, which keeps the order of the file.
#include <optional>
#include <string_view>

#include "attributes/AttributeMap.h"
#include "attributes/ItemCodec.h"
#include "attributes/TreeInserter.h"
#include "catalogue/AttributeNames.h"
#include "platform/Framework.h"
#include "values/TextView.h"

using namespace lum::detail;

namespace {

struct CKeyAndValue {
  CString key;
  CString value;
};

/// Reads up to and with the line that opens the section; what follows the "]" does not count.
bool SkipToSection(CStdioFile& file, const CString& section) {
  const CString header = L"[" + section + L"]";
  CString line;
  while (file.ReadString(line)) {
    if (View(line).starts_with(View(header))) {
      return true;
    }
  }
  return false;
}

bool ReadSectionLine(CStdioFile& file, CString& line) {
  return file.ReadString(line) && !View(line).starts_with(L'[');
}

/// Takes a line of the section apart; nothing when it is no item.
std::optional<CKeyAndValue> SplitLine(CString line) {
  if (View(line).starts_with(L';')) {
    return std::nullopt;
  }
  if (const int comment = line.Find(L"//"); comment >= 0) {
    line = line.Left(comment);
  }
  line.TrimRight();
  const int equals = line.Find(L'=');
  if (equals < 0) {
    return std::nullopt;
  }
  CKeyAndValue split{line.Left(equals), line.Mid(equals + 1)};
  split.key.TrimRight();
  split.value.TrimLeft();
  return split;
}

}  // namespace

bool LoadAttributesOrdered(CAttributeMap& map, const CString& filePath, const CString& section,
                           const bool& skipMarked) {
  map.RemoveAll();
  CStdioFile file;
  if (!file.Open(filePath.GetString(),
                 CStdioFile::modeRead | CStdioFile::shareDenyWrite | CStdioFile::typeText) ||
      !SkipToSection(file, section)) {
    return false;
  }
  CTreeInserter inserter(map);
  int version = 1;
  CString line;
  while (ReadSectionLine(file, line)) {
    const auto split = SplitLine(line);
    if (!split) {
      continue;
    }
    if (split->key == ATTRIB_VERSION_KEY) {
      version = 2;
    }
    const auto item = ReadItem(View(split->key), View(split->value), version);
    if (item && !(skipMarked && (item->flags & CAttributeRec::FLAG_SKIP_ON_LOAD) != 0)) {
      inserter.Insert(*item);
    }
  }
  return true;
}
