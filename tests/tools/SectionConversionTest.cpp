// Conversions of random sections, there and back.
#include "tools/lumattr/SectionConversion.h"

#include <gtest/gtest.h>

#include <random>

#include "attributes/AttributeMap.h"
#include "tools/lumattr/TreeDifference.h"

namespace lum::tool {
namespace {

using Items = std::vector<std::pair<CString, CString>>;

Items ItemsOf(const FileObject& file) {
  Items items;
  FobjSection walk;
  CString key;
  CString value;
  for (bool more = file.GetFirstMapEntry(walk, L"S", key, value); more;
       more = file.GetNextMapEntry(walk, key, value)) {
    items.emplace_back(key, value);
  }
  return items;
}

FileObject RandomSection(std::mt19937& random, bool versionTwo) {
  static const wchar_t* const kKeys[] = {L"A",        L"@trA",    L"@tr@trA", L"A(1)",
                                         L"B.C",      L"@trB.C",  L"Title",   L"OrderInfo",
                                         L"@trTitle", L"@tr.D.E", L"@F",      L"@trOrderInfo"};
  static const wchar_t* const kValues[] = {L"0,1", L"0x10,a,b", L"text", L"x,1", L""};
  FileObject file;
  file.CreateSection(L"S", false);
  if (versionTwo) {
    file.SetItem(L"S", L"AttrVersion", L"0,2", true);
  }
  for (int count = static_cast<int>(random() % 6); count > 0; --count) {
    file.SetItem(L"S", kKeys[random() % 12], kValues[random() % 5], true);
  }
  return file;
}

CAttributeMap TreeOf(const FileObject& file) {
  CAttributeMap tree;
  EXPECT_TRUE(LoadAttributes(tree, file, L"S", false));
  tree.RemoveAll(L"AttrVersion");
  return tree;
}

void Convert(FileObject& file, int version, bool& isClean) {
  const ConversionPlan plan = PlanConversion(file, L"S", version);
  isClean = plan.findings.empty();
  if (isClean) {
    CarryOut(plan, file, L"S");
  }
}

TEST(SectionConversion, ThereAndBackIsTheSameWhereNothingWasReported) {
  std::mt19937 random(11);
  int converted = 0;
  int refused = 0;
  for (int round = 0; round < 4000; ++round) {
    const bool fromTwo = round % 2 == 0;
    FileObject file = RandomSection(random, fromTwo);
    const Items items = ItemsOf(file);
    const CAttributeMap before = TreeOf(file);
    bool isClean = false;
    Convert(file, fromTwo ? 1 : 2, isClean);
    if (!isClean) {
      EXPECT_EQ(ItemsOf(file), items);
      ++refused;
      continue;
    }
    const CAttributeMap between = TreeOf(file);
    EXPECT_TRUE(FindTreeDifferences({before, before}, {between, between}, true).empty()) << round;
    Convert(file, fromTwo ? 2 : 1, isClean);
    EXPECT_TRUE(isClean) << round;
    EXPECT_EQ(ItemsOf(file), items) << round;
    ++converted;
  }
  EXPECT_GT(converted, 500);
  EXPECT_GT(refused, 500);
}

}  // namespace
}  // namespace lum::tool
