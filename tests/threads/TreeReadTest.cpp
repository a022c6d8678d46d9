// One attribute tree that several threads read while none changes it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/attributes/TreeTesting.h"
#include "tests/threads/Together.h"

namespace {

using testing::Each;
using testing::ElementsAreArray;

CString NameOf(int number) {
  CString name;
  name.Format(L"Attribute%d", number);
  return name;
}

/// So many children, each third of which has the name of the one before it.
CAttributeMap TreeOf(int children) {
  CAttributeMap tree(L"Root", CLumUndefined(), 0);
  for (int i = 0; i < children; ++i) {
    const int number = i % 3 == 2 ? i - 1 : i;
    CAttributeMap& child = tree.Add(NameOf(number), CLumInt(i), CAttributeRec::FLAG_EDITABLE);
    child.Add(L"Below", CLumName(NameOf(i)), 0);
  }
  return tree;
}

/// Every search there is, for each child from the given one on: a text of the answers.
std::string SearchAll(const CAttributeMap& tree, int first) {
  std::string answers;
  const int count = tree.Count();
  for (int i = 0; i < count; ++i) {
    const int pos = (first + i) % count;
    const CString& name = tree[pos].Mnemonic();
    const int occurrence = tree.RetrieveIndex(pos);
    int value = -1;
    tree.Find(name, occurrence).Value().GetInt(value);
    answers += tree.FindAttribute(name, occurrence) == pos ? '.' : 'x';
    answers += tree.GetAttrMap(name, occurrence) == &tree[pos] ? '.' : 'x';
    answers += &tree.FindValue(name, occurrence) == &tree[pos].Value() ? '.' : 'x';
    answers += value == pos && tree.Has(name, occurrence) ? '.' : 'x';
    answers += std::to_string(tree.Count(name));
  }
  answers += tree.Has(L"Missing") ? 'x' : '.';
  return answers;
}

struct CManyChildren : testing::TestWithParam<int> {};

TEST_P(CManyChildren, AreSearchedByThreadsThatBuildTheIndexAtOnce) {
  for (int round = 0; round < 20; ++round) {
    const CAttributeMap tree = TreeOf(GetParam());
    const auto answers = TextsOf([&](int) { return SearchAll(tree, 0); });
    ASSERT_EQ(answers.front().find('x'), std::string::npos) << answers.front();
    ASSERT_THAT(answers, Each(answers.front()));
  }
}

TEST_P(CManyChildren, AreSearchedByEachThreadInItsOwnOrder) {
  const CAttributeMap tree = TreeOf(GetParam());
  const auto search = [&](int number) { return SearchAll(tree, number * GetParam() / kThreads); };
  const auto answers = TextsOf(search);
  EXPECT_THAT(answers, ElementsAreArray(TextsOneByOne(search)));
  EXPECT_THAT(answers, Each(testing::Not(testing::HasSubstr("x"))));
}

INSTANTIATE_TEST_SUITE_P(TreeReadByThreads, CManyChildren, testing::Values(15, 16, 17, 40, 150));

std::string TypedAnswers(const CAttributeMap& tree) {
  int number = 0;
  unsigned int flags = 0;
  CString text;
  const bool isNumber = tree.GetAttribValue(NameOf(1), number, flags);
  const bool isText = tree.Find(NameOf(4)).GetAttribValue(L"Below", text, flags);
  return std::to_string(isNumber) + std::to_string(number) + std::to_string(isText) + Narrow(text) +
         std::to_string(tree.HasEditableAttributes());
}

TEST(TreeReadByThreads, GivesTypedValues) {
  const CAttributeMap tree = TreeOf(40);
  EXPECT_THAT(TextsOf([&](int) { return TypedAnswers(tree); }), Each("111Attribute41"));
}

TEST(TreeReadByThreads, IsCopiedMergedComparedAndSaved) {
  const CAttributeMap tree = TreeOf(60);
  const auto use = [&](int number) {
    CAttributeMap copy(tree);
    copy.Find(NameOf(number)).Mnemonic();
    copy.SetAttribValue(NameOf(number), number + 1000, false, 0);
    CAttributeMap difference;
    tree.Compare(copy, difference, CAttributeMap::COMPARE_VALUES);
    CAttributeMap merged;
    merged.Overload(tree, CAttributeMap::OVERLOAD_ADD_NEW);
    FileObject file;
    SaveAttributes(tree, file, L"S");
    return Describe(difference) + "|" + Describe(merged) + "|" + Items(file, L"S");
  };
  const auto texts = TextsOf(use);
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(use)));
  EXPECT_EQ(texts[4].rfind("Attribute4:101:1004:1|", 0), 0u) << texts[4];
}

}  // namespace
