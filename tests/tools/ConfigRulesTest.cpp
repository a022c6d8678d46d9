// The rules for configuration files, held against what the library's readers do. The wording of the
// findings is a matter of the command-line cases.
#include "tools/lumattr/ConfigRules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "attributes/AttributeMap.h"

namespace lum::tool {
namespace {

FileObjectLine ItemLine(int number, const CString& key, const CString& value) {
  FileObjectLine line;
  line.kind = FileObjectLine::Kind::Item;
  line.number = number;
  line.section = L"S";
  line.key = key;
  line.value = value;
  line.text = key + L"=" + value;
  line.keyColumn = 1;
  line.valueColumn = key.GetLength() + 2;
  return line;
}

std::vector<FileObjectLine> WithHeader(std::vector<FileObjectLine> items) {
  FileObjectLine header;
  header.kind = FileObjectLine::Kind::Section;
  header.number = 1;
  header.section = L"S";
  header.text = L"[S]";
  items.insert(items.begin(), header);
  return items;
}

std::set<CheckRule> RulesOf(const std::vector<FileObjectLine>& lines) {
  CFindingList list(1000);
  CheckConfigLines(lines, nullptr, list);
  std::set<CheckRule> rules;
  for (const CFinding& finding : list.TakeSorted()) {
    rules.insert(finding.rule);
  }
  return rules;
}

bool SaysSkipped(const std::set<CheckRule>& rules) {
  static const CheckRule kSkipping[] = {CheckRule::MissingFlags, CheckRule::UnreadableFlags,
                                        CheckRule::NameHoldsEquals, CheckRule::NegativeOccurrence,
                                        CheckRule::HugeOccurrence};
  return std::any_of(std::begin(kSkipping), std::end(kSkipping),
                     [&rules](CheckRule rule) { return rules.contains(rule); });
}

CString RandomText(std::mt19937& random, const CString& alphabet, int longest) {
  CString text;
  for (int left = static_cast<int>(random() % static_cast<unsigned int>(longest + 1)); left > 0;
       --left) {
    text += alphabet[static_cast<int>(random() % static_cast<unsigned int>(alphabet.GetLength()))];
  }
  return text;
}

/// A node that an item names, as readers leave it: "A" of "A=0,1", not the groups on the way.
bool HoldsAnyValue(const CAttributeMap& node) {
  for (int pos = 0; pos < node.Count(); ++pos) {
    if (node[pos].Value().Type() != CLumType::TYPE_UNDEFINED || HoldsAnyValue(node[pos])) {
      return true;
    }
  }
  return false;
}

// One attribute item in a section of its own: it is read exactly when no finding says it is
// skipped.
TEST(ConfigRules, SayOfRandomAttributesWhetherReadersSkipThem) {
  std::mt19937 random(3);
  int skipped = 0;
  int read = 0;
  for (int round = 0; round < 20000; ++round) {
    const CString key = L"@tr" + RandomText(random, L"AB.()019-x ", 7);
    const CString value =
        RandomText(random, L"0019xX,,-+= a", 6) + (random() % 2 == 0 ? L",t" : L"");
    FileObject file;
    if (key[3] == L'.' || !file.SetItem(L"S", key, value, true) || value.Left(1) == L" ") {
      continue;
    }
    CAttributeMap tree;
    ASSERT_TRUE(LoadAttributes(tree, file, L"S", false));
    const bool isRead = HoldsAnyValue(tree);
    const std::set<CheckRule> rules = RulesOf(WithHeader({ItemLine(2, key, value)}));
    EXPECT_EQ(SaysSkipped(rules), !isRead)
        << std::string(CStringA(key)) << "=" << std::string(CStringA(value));
    ++(isRead ? read : skipped);
  }
  EXPECT_GT(read, 1000);
  EXPECT_GT(skipped, 1000);
}

// What writers write has no findings, however the tree looks.
TEST(ConfigRules, FindNothingInWhatWritersWrite) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    CAttributeMap tree;
    std::vector<CAttributeMap*> all{&tree};
    for (int count = static_cast<int>(random() % 20); count > 0; --count) {
      CAttributeMap& parent = *all[random() % all.size()];
      CAttributeMap& node = parent.Add(random() % 2 == 0 ? L"A" : L"B 2");
      node.SetValue(CLumAnything(L"some text"));
      node.SetFlags(static_cast<unsigned int>(random()) & 0xFFFF7FFFU);
      all.push_back(&node);
    }
    FileObject file;
    ASSERT_TRUE(SaveAttributes(tree, file, L"S"));
    std::vector<FileObjectLine> lines;
    FobjSection walk;
    CString key;
    CString value;
    for (bool more = file.GetFirstMapEntry(walk, L"S", key, value); more;
         more = file.GetNextMapEntry(walk, key, value)) {
      lines.push_back(ItemLine(static_cast<int>(lines.size()) + 2, key, value));
    }
    EXPECT_TRUE(RulesOf(WithHeader(lines)).empty()) << round;
  }
}

TEST(ConfigRules, FindNothingInNoLines) { EXPECT_TRUE(RulesOf({}).empty()); }

}  // namespace
}  // namespace lum::tool
