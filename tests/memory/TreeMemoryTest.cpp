// Trees when memory runs out: editing, copies, look-ups, merging, comparing.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "attributes/AttributeMap.h"
#include "catalogue/AttributeNames.h"
#include "tests/Allocations.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;
using lum::test::WalkRefusals;

struct Trees {
  CAttributeMap tree;
  CAttributeMap other;
  CAttributeMap out;
  CString text;
};

using Operation = lum::test::Operation<Trees>;

constexpr const wchar_t* kLongText = L"a text that no small storage of a string holds";
/// So many children are indexed when they are searched.
constexpr int kManyChildren = 20;

/// Whether every child is found under its name and occurrence.
bool IsWhole(const CAttributeMap& map) {
  for (int pos = 0; pos < map.Count(); ++pos) {
    const CAttributeMap& child = map[pos];
    if (map.FindAttribute(child.Mnemonic(), map.RetrieveIndex(pos)) != pos || !IsWhole(child)) {
      return false;
    }
  }
  return true;
}

std::string DescribeTree(const CAttributeMap& map) {
  return DescribeNode(map) + (IsWhole(map) ? "" : lum::test::kBroken);
}

std::string DescribeTrees(const Trees& trees) {
  return DescribeTree(trees.tree) + "\n  " + DescribeTree(trees.other) + "\n  " +
         DescribeTree(trees.out) + "\n  " + Narrow(trees.text);
}

void Index(const CAttributeMap& map) {
  for (int search = 0; search < 20; ++search) {
    map.Has(L"Missing");
  }
}

void FillTree(CAttributeMap& map, const wchar_t* text) {
  map.SetGroup(L"Root");
  for (int i = 0; i < kManyChildren; ++i) {
    CString name;
    name.Format(L"Child%d", i);
    map.Add(name, CLumInt(i), CAttributeRec::FLAG_EDITABLE);
  }
  CAttributeMap& group = map.Add(L"Group", CLumName(text), 0x11);
  group.Add(L"Below", CLumDoubleArray(std::vector<double>{1.5, 2.5}), 0);
  group.Add(L"Below", CLumNameArray(std::vector<CString>{text, L"b"}), 0);
  group.Add(L"Free", CLumAnything(text), 0).Add(L"Deep", CLumDouble(0.5), 0);
  map.Add(L"Twice", CLumAnything(L"1"), 0);
  map.Add(L"Twice", CLumAnything(text), CAttributeRec::FLAG_KEEP_VALUE_STRICT);
  map.Add(ATTRIB_ORDERINFO, CLumAnything(text), 0);
}

void FillBoth(Trees& trees) {
  trees.text = L"text";
  FillTree(trees.tree, L"first");
  FillTree(trees.other, kLongText);
  trees.other.Remove(3);
  trees.other.Add(L"New", CLumName(kLongText), 2).Add(L"Below");
  trees.other.GetAttrMap(L"Group")->Add(L"NewBelow", CLumAnything(kLongText), 0);
  trees.other.GetAttrMap(L"Twice", 1)->SetLastSelected(true);
  trees.out.Add(L"Old", CLumName(kLongText), 0);
  Index(trees.tree);
}

void Walk(const std::vector<Operation>& operations) {
  LoadTestDefinitions();
  for (Operation operation : operations) {
    operation.prepare = FillBoth;
    WalkRefusals(operation, DescribeTrees);
  }
}

TEST(TreeMemory, EditingLeavesTheTreeAsItWas) {
  constexpr Guarantee kKept = Guarantee::Unchanged;
  Walk({
      {"Add(name)", kKept, [](Trees& t) { return t.tree.Add(L"X").Count() == 0; }},
      {"Add(node)", kKept, [](Trees& t) { return t.tree.Add(t.other).Count() != 0; }},
      {"Add(node), the first child", kKept,
       [](Trees& t) { return t.tree.GetAttrMap(L"Twice")->Add(t.other).Count() != 0; }},
      {"Add(own node)", kKept, [](Trees& t) { return t.tree.Add(t.tree).Count() != 0; }},
      {"Add(name, value, flags)", kKept,
       [](Trees& t) { return t.tree.Add(L"X", CLumName(kLongText), 3).Flags() == 3; }},
      {"Insert", kKept,
       [](Trees& t) {
         t.tree.Insert(1, L"Twice", CLumName(kLongText), 3);
         return true;
       }},
      {"AppendNew(name)", kKept, [](Trees& t) { return t.tree.AppendNew(L"DefName") != nullptr; }},
      {"AppendNew(name, value)", kKept,
       [](Trees& t) { return t.tree.AppendNew(L"X", CLumName(kLongText)) != nullptr; }},
      {"FindCreate", kKept, [](Trees& t) { return t.tree.FindCreate(L"X").Mnemonic() == L"X"; }},
      {"RemoveAll(name)", kKept,
       [](Trees& t) {
         t.tree.RemoveAll(ATTRIB_ORDERINFO);
         return true;
       }},
      {"Remove(name)", kKept, [](Trees& t) { return t.tree.Remove(L"Twice", 1); }},
      {"SetMnemonic", kKept,
       [](Trees& t) {
         t.tree.GetAttrMap(CString(L"Child7"))->SetMnemonic(ATTR_MAXDEPTH);
         return true;
       }},
      {"SetValue", kKept,
       [](Trees& t) {
         t.tree.GetAttrMap(CString(L"Child7"))->SetValue(CLumName(kLongText));
         return true;
       }},
      {"SetAttribValue(text)", kKept,
       [](Trees& t) { return t.tree.SetAttribValue(L"Group", kLongText, true, 9); }},
      {"SetAttribValue(number)", kKept,
       [](Trees& t) { return t.tree.SetAttribValue(L"Twice", 1.25, true, 9); }},
      {"GetAttribValue(text)", kKept,
       [](Trees& t) {
         unsigned int flags = 0;
         return t.other.GetAttribValue(L"Group", t.text, flags);
       }},
      {"HasEditableAttributes", kKept, [](Trees& t) { return t.tree.HasEditableAttributes(); }},
  });
}

TEST(TreeMemory, CopiesLeaveBothTreesAsTheyWere) {
  constexpr Guarantee kKept = Guarantee::Unchanged;
  Walk({
      {"copy", kKept,
       [](Trees& t) {
         const CAttributeMap copy(t.tree);
         return copy.Count() == t.tree.Count();
       }},
      {"assign", kKept,
       [](Trees& t) {
         t.tree = t.other;
         return true;
       }},
      {"assign a descendant", kKept,
       [](Trees& t) {
         t.other = *t.other.GetAttrMap(CString(L"Group"));
         return true;
       }},
      {"assign a record", kKept,
       [](Trees& t) {
         CAttributeRec& record = *t.tree.GetAttrMap(CString(L"Child2"));
         record = *t.other.GetAttrMap(CString(L"Group"));
         return true;
       }},
      {"replace", kKept,
       [](Trees& t) {
         t.tree.Overload(t.other, CAttributeMap::OVERLOAD_REPLACE);
         return true;
       }},
  });
}

TEST(TreeMemory, ChildrenThatAreMadeOneByOneMayBeFewer) {
  Walk({
      {"FindCreate(name, 3)", Guarantee::Usable,
       [](Trees& t) { return t.tree.FindCreate(L"Twice", 5).Count() == 0; }},
      {"FindCreateIndex", Guarantee::Usable,
       [](Trees& t) { return t.tree.FindCreateIndex(30).Count() == 0; }},
  });
}

TEST(TreeMemory, LookUpsGoOnWithoutAnIndex) {
  Walk({{"building the index", Guarantee::Unchanged, [](Trees& t) {
           Index(t.other);
           return t.other.FindAttribute(CString(L"Child9")) == 8;
         }}});
}

TEST(TreeMemory, MergingMayStopMidway) {
  for (unsigned int flags = 0; flags < 0x20; ++flags) {
    if (flags != CAttributeMap::OVERLOAD_REPLACE && (flags & 0x08) == 0) {
      SCOPED_TRACE(flags);
      Walk({{"Overload", Guarantee::Usable, [flags](Trees& t) {
               t.tree.Overload(t.other, flags);
               return true;
             }}});
    }
  }
  Walk({{"Overload(own group)", Guarantee::Usable, [](Trees& t) {
           t.tree.Overload(*t.tree.GetAttrMap(CString(L"Group")), true, true, true, true);
           return true;
         }}});
}

TEST(TreeMemory, ComparingLeavesTheDifferencesAsTheyWere) {
  for (unsigned int flags = 1; flags < 8; ++flags) {
    SCOPED_TRACE(flags);
    Walk({{"Compare", Guarantee::Unchanged,
           [flags](Trees& t) { return t.tree.Compare(t.other, t.out, flags); }},
          {"Compare, the other way", Guarantee::Unchanged,
           [flags](Trees& t) { return t.other.Compare(t.tree, t.out, flags); }}});
  }
}

TEST(TreeMemory, MovesNeedNone) {
  Trees trees;
  FillBoth(trees);
  LimitAllocations(0);
  CAttributeMap moved(std::move(trees.tree));
  CAttributeMap& child = *moved.GetAttrMap(moved[2].Mnemonic());
  child = std::move(trees.other);
  std::swap(moved, trees.out);
  trees.out.Remove(0);
  trees.out.RemoveAll();
  const int refused = RefusedAllocations();
  LimitAllocations(-1);
  EXPECT_EQ(refused, 0);
  EXPECT_EQ(trees.out.Count(), 0);
  EXPECT_EQ(moved.Count(), 1);
}

}  // namespace
