#include "tools/lumattr/SectionItems.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "catalogue/AttributeNames.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"
#include "values/LumType.h"

namespace lum::tool {
namespace {

bool IsBlank(wchar_t ch) { return ch == L' ' || (ch >= L'\t' && ch <= L'\r'); }

bool HasHexadecimalPrefix(std::wstring_view field) {
  return field.size() > 1 && field[0] == L'0' && (field[1] == L'x' || field[1] == L'X');
}

/// Takes a leading sign off and says whether it was a minus.
bool TakeSign(std::wstring_view& field) {
  const bool negative = !field.empty() && field.front() == L'-';
  if (negative || (!field.empty() && field.front() == L'+')) {
    field.remove_prefix(1);
  }
  return negative;
}

/// As the C runtime's "%x" reads: what follows the digits is ignored, too large a number saturates
/// at 64 bits and is then cut.
std::optional<unsigned int> ReadHexadecimal(std::wstring_view field) {
  while (!field.empty() && IsBlank(field.front())) {
    field.remove_prefix(1);
  }
  const bool negative = TakeSign(field);
  if (HasHexadecimalPrefix(field) && field.size() > 2 && HexVal(field[2]) >= 0) {
    field.remove_prefix(2);
  }
  if (field.empty() || HexVal(field.front()) < 0) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  bool tooLarge = false;
  for (; !field.empty() && HexVal(field.front()) >= 0; field.remove_prefix(1)) {
    tooLarge = tooLarge || number >> 60 != 0;
    number = number << 4 | static_cast<std::uint64_t>(HexVal(field.front()));
  }
  number = tooLarge ? UINT64_MAX : negative ? 0 - number : number;
  return static_cast<unsigned int>(number);
}

/// As readers take a flags field: hexadecimal after "0x", else as "%u" reads, which is what the
/// free-form value does.
std::optional<unsigned int> ReadFlagsField(const CString& field) {
  if (HasHexadecimalPrefix(View(field))) {
    return ReadHexadecimal(View(field).substr(2));
  }
  unsigned int flags = 0;
  return CLumAnything(field).Get(flags) ? std::optional(flags) : std::nullopt;
}

bool EndsWithOrderInfo(const CString& path) {
  return path.Right(ATTRIB_ORDERINFO.GetLength()) == ATTRIB_ORDERINFO;
}

void Reject(SectionItem& item, const char* problem) {
  item.role = ItemRole::Unreadable;
  item.problem = problem;
}

void ReadFlagsAndValue(SectionItem& item, int version) {
  const int comma = item.text.Find(L',');
  if (comma < 0) {
    if (version == 1) {
      Reject(item, "there is no comma after the flags");
    }
    return;
  }
  item.hasFlags = true;
  item.flagsText = item.text.Left(comma);
  item.value = item.text.Mid(comma + 1);
  item.value.TrimLeft();
  const std::optional<unsigned int> flags = ReadFlagsField(item.flagsText);
  if (!flags) {
    Reject(item, "the flags are no number");
    return;
  }
  item.flags = *flags;
  item.role = ItemRole::Attribute;
}

template <typename Items>
auto* FindLast(Items& items, const AttributePath& path, ItemRole role) {
  const auto found = std::find_if(items.rbegin(), items.rend(), [&](const SectionItem& item) {
    return item.role == role && ReadPath(item.dottedPath) == path;
  });
  return found != items.rend() ? &*found : nullptr;
}

}  // namespace

const SectionItem* SectionItems::Find(const AttributePath& path) const {
  return FindLast(items, path, ItemRole::Attribute);
}

const SectionItem* SectionItems::FindUnreadable(const AttributePath& path) const {
  return FindLast(items, path, ItemRole::Unreadable);
}

int SectionVersion(const FileObject& file, const CString& section) {
  CString text;
  if (!file.GetItem(section, ATTRIB_VERSION_KEY, text)) {
    return 1;
  }
  int version = 0;
  CLumString(text, L',', true, false).GetItem(1, version);
  return version;
}

SectionItem ReadSectionItem(const CString& key, const CString& text, int version) {
  SectionItem item;
  item.key = key;
  item.text = text;
  const std::optional<CString> dotted = DottedPathOfKey(key, version);
  if (!dotted) {
    return item;
  }
  item.dottedPath = *dotted;
  if (EndsWithOrderInfo(*dotted)) {
    item.role = ItemRole::Attribute;
    item.value = text;
  } else {
    ReadFlagsAndValue(item, version);
  }
  if (item.role == ItemRole::Attribute && !ReadPath(*dotted)) {
    Reject(item, "an occurrence in the key is negative or too large");
  }
  return item;
}

SectionItems ReadSectionItems(const FileObject& file, const CString& section) {
  SectionItems result;
  result.version = SectionVersion(file, section);
  FobjSection walk;
  CString key;
  CString text;
  for (bool more = file.GetFirstMapEntry(walk, section, key, text); more;
       more = file.GetNextMapEntry(walk, key, text)) {
    result.items.push_back(ReadSectionItem(key, text, result.version));
  }
  return result;
}

CString ItemText(const CString& flagsText, const CString& value) {
  return flagsText + L"," + value;
}

void RequireKnownVersion(int version, const CString& section) {
  if (version != 1 && version != 2) {
    throw ToolError("section " + Quoted(section) + " has the unknown format version " +
                    std::to_string(version));
  }
}

}  // namespace lum::tool
