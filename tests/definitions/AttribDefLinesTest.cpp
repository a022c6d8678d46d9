// The line rules that derived tables may use: classification and splitting of definition lines.
#include <gtest/gtest.h>

#include <memory>

#include "definitions/AttribDefMap.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

/// Makes the protected members reachable.
struct OpenTable : CAttribDefMap {
  using CAttribDefMap::GetAttributeItems;
  using CAttribDefMap::GetDefaultValue;
  using CAttribDefMap::IsCommentOrBlank;
  using CAttribDefMap::IsCtlTypeAttrib;
};

/// Outputs that no line of these tests gives.
struct Items {
  CString mnemonic = L"untouched";
  unsigned short id = 4711;
  CString name = L"untouched";
  int type = 501;
  int controlType = -5;
  CString bitmapFile = L"untouched";
  CLumType* rawValue = nullptr;
  std::unique_ptr<CLumType> value;
  bool ok = false;
};

Items Split(const wchar_t* line) {
  OpenTable table;
  Items items;
  items.ok = line[0] == L'!';  // Pre-set to what must be overwritten in most of the cases.
  table.GetAttributeItems(line, items.mnemonic, items.id, items.name, items.type, items.controlType,
                          items.bitmapFile, items.rawValue, items.ok);
  items.value.reset(items.rawValue);
  return items;
}

TEST(DefinitionLines, CommentOrBlankDoesNotTrim) {
  const struct {
    const wchar_t* line;
    bool expected;
  } rows[] = {{L"", true},    {L"//", true},     {L"// text", true}, {L"///", true},
              {L"/", false},  {L"/ /", false},   {L" //", false},    {L" ", false},
              {L"\t", false}, {L"A // b", false}};
  const OpenTable table;
  for (const auto& row : rows) {
    EXPECT_EQ(table.IsCommentOrBlank(row.line), row.expected) << testing::PrintToString(row.line);
  }
}

TEST(DefinitionLines, ControlLinesAreFoundAfterTrimming) {
  const struct {
    const wchar_t* line;
    bool expected;
  } rows[] = {{L"@", true}, {L"@M,a", true}, {L"  \t@M,a", true}, {L"@@", true},
              {L"", false}, {L"   ", false}, {L"M@", false},      {L"// @M", false}};
  const OpenTable table;
  for (const auto& row : rows) {
    const CString line(row.line);
    EXPECT_EQ(table.IsCtlTypeAttrib(line), row.expected) << testing::PrintToString(row.line);
    EXPECT_EQ(line, CString(row.line));
  }
}

TEST(DefinitionLines, SplitsAWholeLine) {
  const Items items = Split(L"A, 66000 ,Name, 103 ,-2,b.bmp,1.5");
  EXPECT_EQ(items.mnemonic, CString(L"A"));
  EXPECT_EQ(items.id, 66000 - 65536);
  EXPECT_EQ(items.name, CString(L"Name"));
  EXPECT_EQ(items.type, 103);
  EXPECT_EQ(items.controlType, -2);
  EXPECT_EQ(items.bitmapFile, CString(L"b.bmp"));
  EXPECT_TRUE(items.ok);
  double value = 0.0;
  ASSERT_NE(items.value, nullptr);
  EXPECT_EQ(items.value->GetDouble(value), 1);
  EXPECT_EQ(value, 1.5);
}

TEST(DefinitionLines, ItemsThatCannotBeReadLeaveTheirOutputs) {
  const Items items = Split(L"A,x");
  EXPECT_EQ(items.mnemonic, CString(L"A"));
  EXPECT_EQ(items.id, 4711);
  EXPECT_EQ(items.name, CString(L"untouched"));
  EXPECT_EQ(items.type, 501);
  EXPECT_EQ(items.controlType, -5);
  EXPECT_EQ(items.bitmapFile, CString(L"untouched"));
  // Unread items do not matter in the end: the type made a value.
  EXPECT_TRUE(items.ok);
  EXPECT_NE(items.value, nullptr);
}

TEST(DefinitionLines, AnEmptyLineLeavesEveryOutputButTheValue) {
  const Items items = Split(L"");
  EXPECT_EQ(items.mnemonic, CString(L"untouched"));
  EXPECT_TRUE(items.ok);
  ASSERT_NE(items.value, nullptr);
  EXPECT_EQ(items.value->Type(), CLumType::TYPE_NAME);
}

TEST(DefinitionLines, OnlyAMissingValueClearsOk) {
  for (const wchar_t* line : {L"!,1,Name,999,2,b,5", L"A,1,Name,105,2,b,5", L"A,1,Name,-1,2,b,5"}) {
    const Items items = Split(line);
    EXPECT_FALSE(items.ok);
    EXPECT_EQ(items.value, nullptr);
    EXPECT_EQ(items.controlType, 2);
  }
}

TEST(DefinitionLines, DefaultValueTakesTheItemsFromTheSeventhOn) {
  OpenTable table;
  const CLumString items(L"a,b,c,d,e,f, 1 ,, 2", L',', true, false);
  CLumType* raw = nullptr;
  bool ok = false;
  table.GetDefaultValue(items, CLumType::TYPE_NAME, raw, ok);
  const std::unique_ptr<CLumType> value(raw);
  EXPECT_TRUE(ok);
  CString text(L"untouched");
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->GetValueStr(text), 1);
  EXPECT_EQ(text, CString(L"1,,2"));
  EXPECT_EQ(items.Count(), 9);
}

TEST(DefinitionLines, DefaultValueOfAnUnknownTypeIsNull) {
  OpenTable table;
  CLumInt other(0);
  CLumType* value = &other;
  bool ok = true;
  table.GetDefaultValue(CLumString(L','), CLumType::TYPE_ANYTHING, value, ok);
  EXPECT_EQ(value, nullptr);
  EXPECT_FALSE(ok);
}

}  // namespace
