// The texts that describe trees and sections.
#include "tests/attributes/TreeTesting.h"

#include "platform/TextEncoding.h"

std::string Narrow(const CString& text) {
  const CStringA bytes = WideToUtf8(text);
  return std::string(bytes.GetString(), static_cast<std::size_t>(bytes.GetLength()));
}

std::string TextOf(const CLumType& value) {
  CString text;
  return value.GetValueStr(text) != 0 ? Narrow(text) : "-";
}

std::string DescribeNode(const CAttributeMap& node) {
  std::string text = Narrow(node.Mnemonic()) + ":" + std::to_string(node.Value().Type()) + ":" +
                     TextOf(node.Value()) + ":" + std::to_string(node.Flags());
  if (node.IsLastSelected()) {
    text += "*";
  }
  return node.Count() != 0 ? text + "{" + Describe(node) + "}" : text;
}

std::string Describe(const CAttributeMap& map) {
  std::string text;
  for (int pos = 0; pos < map.Count(); ++pos) {
    text += (pos != 0 ? " " : "") + DescribeNode(map[pos]);
  }
  return text;
}

std::string Names(const CAttributeMap& map) {
  std::string text;
  for (int pos = 0; pos < map.Count(); ++pos) {
    text += (pos != 0 ? " " : "") + Narrow(map[pos].Mnemonic());
  }
  return text;
}

std::string Items(const FileObject& file, const CString& section) {
  std::string text;
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, section, key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    text += (text.empty() ? "" : "|") + Narrow(key) + "=" + Narrow(value);
  }
  return text;
}

FileObject FileWithItems(const std::string& items) {
  FileObject file;
  file.CreateSection(L"S", false);
  for (std::size_t start = 0; start < items.size();) {
    const std::size_t end = std::min(items.find('|', start), items.size());
    const std::string item = items.substr(start, end - start);
    const std::size_t equals = item.find('=');
    file.SetItem(L"S", Utf8ToWide(item.substr(0, equals).c_str()),
                 Utf8ToWide(item.substr(equals + 1).c_str()), true);
    start = end + 1;
  }
  return file;
}
