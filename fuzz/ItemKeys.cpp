// The codec of the items that store tree nodes: keys and values against the naive reader, and what
// was written reads back.
#include <gtest/gtest.h>

#include <cwchar>
#include <string>

#include "attributes/ItemCodec.h"
#include "fuzz/FuzzInput.h"
#include "tests/attributes/NaiveTree.h"
#include "tests/attributes/TreeTesting.h"
#include "values/TextView.h"

namespace {

using namespace lum::detail;

/// "Name(n)" as it is laid down.
int NaiveStrip(CString& name) {
  const int open = name.Find(L'(');
  if (name.Right(1) != L")" || open < 0) {
    return 0;
  }
  const CString inside = name.Mid(open + 1, name.GetLength() - open - 2);
  name = name.Left(open);
  int occurrence = 0;
  std::swscanf(inside.GetString(), L"%d", &occurrence);
  return occurrence;
}

void CheckName(const CString& name) {
  CString expected = name;
  const int occurrence = NaiveStrip(expected);
  const CKeyPiece piece = SplitOccurrence(View(name));
  EXPECT_EQ(ToCString(piece.name), expected);
  EXPECT_EQ(piece.occurrence, occurrence);
  CString stripped = name;
  EXPECT_EQ(StripAttributeIndex(stripped), occurrence);
  EXPECT_EQ(stripped, expected);
}

/// A name without a parenthesis carries every occurrence.
void CheckWrittenName(const CString& name, int occurrence) {
  if (name.FindOneOf(L"()") >= 0) {
    return;
  }
  CString written = name;
  AppendAttributeIndex(written, occurrence);
  EXPECT_EQ(StripAttributeIndex(written), occurrence);
  EXPECT_EQ(written, name);
}

void CheckPath(const CString& key) {
  CKeyPath path(View(key));
  CString rest = key;
  for (bool last = false; !last;) {
    ASSERT_FALSE(path.AtEnd());
    EXPECT_EQ(ToCString(path.Rest()), rest);
    const int dot = rest.Find(L'.');
    last = dot < 0;
    CString piece = last ? rest : rest.Left(dot);
    const int occurrence = NaiveStrip(piece);
    const CKeyPiece next = path.Next();
    EXPECT_EQ(ToCString(next.name), piece);
    EXPECT_EQ(next.occurrence, occurrence);
    rest = last ? CString() : rest.Mid(dot + 1);
  }
  EXPECT_TRUE(path.AtEnd());
}

void CheckItem(const CString& key, const CString& value, int version) {
  // Nobody asks for the items of any other version.
  if (!IsKnownVersion(version)) {
    return;
  }
  CNaiveItem expected;
  const bool isItem = NaiveReadItem(key, value, version, expected);
  const auto item = ReadItem(View(key), View(value), version);
  ASSERT_EQ(item.has_value(), isItem);
  if (isItem) {
    EXPECT_EQ(ToCString(item->path), expected.key);
    EXPECT_EQ(item->flags, expected.flags);
    EXPECT_EQ(item->text, expected.text);
  }
  const bool looksSo = version == 1 ? key.Left(3) == L"@tr" : version != 2 || value.Find(L',') >= 0;
  EXPECT_EQ(IsAttributeItem(View(key), View(value), version), looksSo);
}

void CheckWrittenItem(const CString& name, const CString& text, unsigned int flags) {
  const CAttributeMap node(name, CLumAnything(text), flags);
  std::wstring value;
  AppendItemValue(value, node, text);
  const auto item = ReadItem(View(name), value, 2);
  if (name.Right(9) == L"OrderInfo" && name != L"OrderInfo") {
    return;  // Written with flags and read without them.
  }
  ASSERT_TRUE(item.has_value());
  const bool hasLineBreak = text.FindOneOf(L"\r\n") >= 0;
  CString expected = hasLineBreak ? CString() : text;
  if (!IsOrderInfo(node)) {
    EXPECT_EQ(item->flags, flags);
    expected.TrimLeft();
  }
  EXPECT_EQ(item->text, expected);
}

}  // namespace

// Version, flags or occurrence, the key up to a line feed, the value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const int version = static_cast<int>(in.Below(4));
  unsigned int number = 0;
  for (int i = 0; i < 4; ++i) {
    number = number << 8 | in.Byte();
  }
  const CString key = lum::fuzz::ToWide(in.Line());
  const CString value = lum::fuzz::ToWide(in.Rest());
  CheckName(key);
  CheckWrittenName(key, static_cast<int>(number));
  CheckPath(key);
  CheckItem(key, value, version);
  CheckWrittenItem(key, value, number);
  return 0;
}
