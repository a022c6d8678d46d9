// The forms of show on trees that no case file could hold: very deep and very wide ones.
#include "tools/lumattr/ShowTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/DeepTree.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/TreeWalk.h"

namespace lum::tool {
namespace {

constexpr int kDepth = lum::test::kDeepestLevel;
constexpr int kWidth = 200'000;

ShownSection DeepSection(int depth) {
  std::wstring key(L"A");
  for (int i = 1; i < depth; ++i) {
    key += L".A";
  }
  FileObject file;
  EXPECT_TRUE(file.SetItem(L"S", L"AttrVersion", L"0,2", true));
  EXPECT_TRUE(file.SetItem(L"S", ToCString(key), L"1,deep", true));
  return {"deep.cfg", L"S", ReadSectionItems(file, L"S"), LoadSectionTree(file, L"S")};
}

int CountLines(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

TEST(ShowTree, PrintsTheDeepestTreeInEveryForm) {
  const ShownSection shown = DeepSection(kDepth);
  const struct {
    void (*print)(const ShownSection&, ToolContext&);
    int lines;
  } forms[] = {{PrintTreeTable, kDepth + 2}, {PrintTreeCsv, kDepth + 2}};
  for (const auto& form : forms) {
    std::ostringstream out;
    ToolContext context{out, out};
    form.print(shown, context);
    EXPECT_EQ(CountLines(out.str()), form.lines);
  }
}

TEST(ShowTree, JsonOfADeepTreeIsFlatAndLeavesOutLongPaths) {
  const int depth = 5000;
  const ShownSection shown = DeepSection(depth);
  std::ostringstream out;
  ToolContext context{out, out};
  PrintTreeJson(shown, context);
  const auto json = nlohmann::json::parse(out.str());
  ASSERT_EQ(json["attributes"].size(), static_cast<std::size_t>(depth + 1));
  const auto& last = json["attributes"].back();
  EXPECT_EQ(last["depth"], depth);
  EXPECT_EQ(last["value"], "deep");
  EXPECT_TRUE(last["path"].is_null());
  EXPECT_EQ(json["attributes"][3]["path"], "A.A.A");
  EXPECT_TRUE(json["attributes"][3]["value"].is_null());
}

TEST(TreeWalk, CountsOccurrencesOfManySiblingsInOnePass) {
  CAttributeMap root;
  for (int i = 0; i < kWidth; ++i) {
    root.Add(L"A");
  }
  root.Add(L"B").Add(L"C");
  CTreeWalk walk(root);
  for (int i = 0; i < kWidth; ++i) {
    ASSERT_TRUE(walk.Next());
    ASSERT_EQ(walk.Occurrence(), i);
    ASSERT_EQ(walk.Depth(), 1);
  }
  ASSERT_TRUE(walk.Next());
  EXPECT_EQ(walk.Path(), L"B");
  ASSERT_TRUE(walk.Next());
  EXPECT_EQ(walk.Path(), L"B.C");
  EXPECT_EQ(walk.Depth(), 2);
  EXPECT_FALSE(walk.Next());
}

TEST(TreeWalk, HasNothingToVisitInAnEmptyTree) {
  const CAttributeMap root;
  CTreeWalk walk(root);
  EXPECT_FALSE(walk.Next());
  EXPECT_FALSE(walk.Next());
}

}  // namespace
}  // namespace lum::tool
