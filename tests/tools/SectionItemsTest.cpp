// Items of a section as readers take them; compared with what loading makes of the same items.
#include "tools/lumattr/SectionItems.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "attributes/AttributeMap.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

TEST(SectionItems, TellsAttributesFromOtherAndUnreadableItems) {
  const struct {
    const wchar_t* key;
    const wchar_t* text;
    int version;
    ItemRole role;
  } rows[] = {
      {L"Unit", L"1,m", 2, ItemRole::Attribute},
      {L"Title", L"Survey", 2, ItemRole::Other},
      {L"Title", L"x,Survey", 2, ItemRole::Unreadable},
      {L"A(-1)", L"0,x", 2, ItemRole::Unreadable},
      {L"A(2000000000)", L"0,x", 2, ItemRole::Unreadable},
      {L"OrderInfo", L"text", 2, ItemRole::Attribute},
      {L"A.MyOrderInfo", L"text", 2, ItemRole::Attribute},
      {L"@trUnit", L"1,m", 1, ItemRole::Attribute},
      {L"Unit", L"1,m", 1, ItemRole::Other},
      {L"@trUnit", L"m", 1, ItemRole::Unreadable},
      {L"@trOrderInfo", L"m", 1, ItemRole::Attribute},
      {L"Unit", L"1,m", 3, ItemRole::Other},
  };
  for (const auto& row : rows) {
    const SectionItem item = ReadSectionItem(row.key, row.text, row.version);
    EXPECT_EQ(item.role, row.role) << ToUtf8(row.key) << "=" << ToUtf8(row.text);
    EXPECT_EQ(item.problem.empty(), row.role != ItemRole::Unreadable);
  }
}

TEST(SectionItems, SplitsFlagsAndValue) {
  const SectionItem item = ReadSectionItem(L"Unit", L"0x10, 1,5 ", 2);
  EXPECT_TRUE(item.hasFlags);
  EXPECT_EQ(item.flagsText, L"0x10");
  EXPECT_EQ(item.flags, 16u);
  EXPECT_EQ(item.value, L"1,5 ");
  EXPECT_EQ(ItemText(item.flagsText, L"2"), L"0x10,2");
}

TEST(SectionItems, ReadsTheVersion) {
  const struct {
    const wchar_t* text;
    int version;
  } rows[] = {{L"0,2", 2}, {L"0,1", 1}, {L"0, 2 ,9", 2}, {L"2", 0}, {L"0,x", 0}, {L"0,7", 7}};
  for (const auto& row : rows) {
    FileObject file;
    ASSERT_TRUE(file.SetItem(L"S", L"AttrVersion", row.text, true));
    EXPECT_EQ(SectionVersion(file, L"S"), row.version) << ToUtf8(row.text);
  }
  EXPECT_EQ(SectionVersion(FileObject(), L"S"), 1);
}

TEST(SectionItems, FindsTheLastItemOfAPathHoweverItIsSpelled) {
  FileObject file;
  file.SetItem(L"S", L"AttrVersion", L"0,2", true);
  file.SetItem(L"S", L"A", L"0,first", true);
  file.SetItem(L"S", L"A(0)", L"0,second", true);
  file.SetItem(L"S", L"B", L"x,third", true);
  const SectionItems items = ReadSectionItems(file, L"S");
  ASSERT_NE(items.Find({{L"A", 0}}), nullptr);
  EXPECT_EQ(items.Find({{L"A", 0}})->value, L"second");
  EXPECT_EQ(items.Find({{L"B", 0}}), nullptr);
  ASSERT_NE(items.FindUnreadable({{L"B", 0}}), nullptr);
  EXPECT_EQ(items.FindUnreadable({{L"A", 0}}), nullptr);
}

TEST(SectionItems, RefusesUnknownVersions) {
  EXPECT_NO_THROW(RequireKnownVersion(1, L"S"));
  EXPECT_NO_THROW(RequireKnownVersion(2, L"S"));
  EXPECT_THROW(RequireKnownVersion(0, L"S"), ToolError);
  EXPECT_THROW(RequireKnownVersion(3, L"S"), ToolError);
}

/// What loading makes of a single item: its role, flags and text must be the same.
void ExpectSameAsLoading(const CString& key, const CString& text, int version) {
  FileObject file;
  file.SetItem(L"S", L"AttrVersion", version == 2 ? L"0,2" : L"0,1", true);
  ASSERT_TRUE(file.SetItem(L"S", key, text, true));
  CAttributeMap tree;
  ASSERT_TRUE(LoadAttributes(tree, file, L"S", false));
  tree.Remove(L"AttrVersion");
  const SectionItem item = ReadSectionItem(key, text, version);
  const std::string what = ToUtf8(key) + "=" + ToUtf8(text);
  ASSERT_EQ(item.role == ItemRole::Attribute, tree.Count() > 0) << what;
  if (item.role != ItemRole::Attribute) {
    return;
  }
  const CAttributeMap* node = &tree;
  const auto path = ReadPath(item.dottedPath);
  for (const PathStep& step : *path) {
    node = node->GetAttrMap(step.name, step.occurrence);
    ASSERT_NE(node, nullptr) << what;
  }
  CString loaded(L"wrong");
  EXPECT_EQ(node->Value().GetValueStr(loaded), 1) << what;
  EXPECT_EQ(loaded, item.value) << what;
  EXPECT_EQ(node->Flags(), item.flags) << what;
}

TEST(SectionItems, AgreesWithLoadingOnRandomItems) {
  std::mt19937 random(11);
  const auto make = [&random](const wchar_t* letters, unsigned int count, unsigned int longest) {
    std::wstring text;
    for (auto length = random() % longest; length > 0; --length) {
      text += letters[random() % count];
    }
    return text;
  };
  for (int i = 0; i < 20'000; ++i) {
    const int version = 1 + static_cast<int>(random() % 2);
    const std::wstring mark = version == 1 && random() % 8 != 0 ? L"@tr" : L"";

    const std::wstring key = mark + L"A" + make(L"A.(1)2-", 7, 7);
    const std::wstring flags = (random() % 3 == 0 ? L"0x" : L"") + make(L"019afX+-x \t", 11, 24);
    const std::wstring text = flags + (random() % 8 != 0 ? L"," : L"") + make(L" ,a1", 4, 6);
    ExpectSameAsLoading(ToCString(key), CString(ToCString(text)).TrimLeft(), version);
    if (HasFatalFailure() || HasNonfatalFailure()) {
      return;
    }
  }
}

}  // namespace
}  // namespace lum::tool
