// The codec of the items that store tree nodes.
#include "attributes/ItemCodec.h"

#include "catalogue/AttributeNames.h"
#include "values/NumberScan.h"
#include "values/NumberText.h"
#include "values/TextView.h"

namespace lum::detail {
namespace {

/// The flag word, in decimal or after "0x" in hexadecimal.
bool ReadFlags(std::wstring_view field, unsigned int& flags) {
  if (field.starts_with(L"0x") || field.starts_with(L"0X")) {
    return ScanHex(field.substr(2), flags);
  }
  return ScanUInt(field, flags);
}

/// Most attributes have none.
void AppendFlags(std::wstring& value, unsigned int flags) {
  if (flags == 0) {
    value += L'0';
    return;
  }
  CString digits;
  AppendDecimal(digits, flags);
  value += View(digits);
}

}  // namespace

bool IsOrderInfo(const CAttributeMap& node) { return node.Mnemonic() == ATTRIB_ORDERINFO; }

CKeyPiece SplitOccurrence(std::wstring_view name) {
  const std::size_t open = name.ends_with(L')') ? name.find(L'(') : std::wstring_view::npos;
  if (open == std::wstring_view::npos) {
    return {name, 0};
  }
  int occurrence = 0;
  ScanInt(name.substr(open + 1, name.size() - open - 2), occurrence);
  return {name.substr(0, open), occurrence};
}

CString OccurrenceText(int occurrence) {
  CString text;
  text += L'(';  // Makes room for the rest at once.
  AppendDecimal(text, occurrence);
  text += L')';
  return text;
}

CKeyPiece CKeyPath::Next() {
  const std::size_t dot = m_rest.find(L'.');
  const std::wstring_view piece = m_rest.substr(0, dot);
  m_atEnd = dot == std::wstring_view::npos;
  m_rest.remove_prefix(m_atEnd ? m_rest.size() : dot + 1);
  return SplitOccurrence(piece);
}

int StoredVersion(const FileObject& file, const CString& section) {
  CString value;
  if (!file.GetItem(section, ATTRIB_VERSION_KEY, value)) {
    return 1;
  }
  int version = 0;
  CLumString(value, L',', true, false).GetItem(1, version);
  return version;
}

bool IsKnownVersion(int version) { return version == 1 || version == 2; }

bool IsAttributeItem(std::wstring_view key, std::wstring_view value, int version) {
  switch (version) {
    case 1:
      return key.starts_with(View(ATTRIB_MARK));
    case 2:
      return value.find(L',') != std::wstring_view::npos;
    default:
      return true;
  }
}

std::optional<CAttributeItem> ReadItem(std::wstring_view key, std::wstring_view value,
                                       int version) {
  if (version == 1 && !key.starts_with(View(ATTRIB_MARK))) {
    return std::nullopt;
  }
  CAttributeItem item;
  item.path = version == 1 ? key.substr(View(ATTRIB_MARK).size()) : key;
  if (key.ends_with(View(ATTRIB_ORDERINFO))) {
    item.text = ToCString(value);
    return item;
  }
  const std::size_t comma = value.find(L',');
  if (comma == std::wstring_view::npos || !ReadFlags(value.substr(0, comma), item.flags)) {
    return std::nullopt;
  }
  item.text = ToCString(value.substr(comma + 1));
  if (!item.text.IsEmpty() && MayBeTrimmed(item.text[0])) {
    item.text.TrimLeft();
  }
  return item;
}

void AppendItemValue(std::wstring& value, const CAttributeMap& node, const CString& text) {
  if (!IsOrderInfo(node)) {
    AppendFlags(value, node.Flags());
    value += L',';
  }
  if (text.Find(L'\n') < 0 && text.Find(L'\r') < 0) {
    value += View(text);
  }
}

CString NodeKeyPrefix(const CAttributeMap& node) {
  return ATTRIB_MARK + L"." + node.Mnemonic() + L".";
}

}  // namespace lum::detail

int StripAttributeIndex(CString& name) {
  const lum::detail::CKeyPiece piece = lum::detail::SplitOccurrence(lum::detail::View(name));
  const int occurrence = piece.occurrence;
  name = name.Left(static_cast<int>(piece.name.size()));
  return occurrence;
}

void AppendAttributeIndex(CString& name, int n) {
  if (n != 0) {
    name += lum::detail::OccurrenceText(n);
  }
}
