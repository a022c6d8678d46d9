// Objects of the whole process that are made when they are first asked for: several threads ask at
// once. CTest runs each test in a process of its own, so nothing was made before.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/AttributeNames.h"
#include "catalogue/LumAttributes.h"
#include "definitions/AttribDefMap.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/threads/Together.h"
#include "values/LumTypeCreator.h"
#include "values/SharedObject.h"

namespace {

using testing::Each;
using testing::ElementsAreArray;

TEST(FirstUseByThreads, MakesOneTableOfDefinitions) {
  const auto tables = ResultsOf<const CAttribDefMap*>([](int) {
    const CAttribDefMap& table = CAttribDefMap::GetAttribDefMap();
    unsigned short id = 0;
    return table.GetAttribID(L"no such mnemonic", id) ? nullptr : &table;
  });
  EXPECT_NE(tables.front(), nullptr);
  EXPECT_THAT(tables, Each(tables.front()));
}

TEST(FirstUseByThreads, MakesOneEmptyNode) {
  const CAttributeMap tree;
  const auto nodes =
      ResultsOf<const CAttributeMap*>([&](int) { return &tree.Find(L"A").Find(L"B"); });
  EXPECT_THAT(nodes, Each(nodes.front()));
  EXPECT_EQ(DescribeNode(*nodes.front()), DescribeNode(CAttributeMap()));
}

TEST(FirstUseByThreads, MakesOneMissingValue) {
  const CAttributeMap tree;
  const auto values = ResultsOf<const CLumType*>([&](int) { return &tree.FindValue(L"A"); });
  EXPECT_THAT(values, Each(values.front()));
  EXPECT_EQ(values.front()->Type(), CLumType::TYPE_UNDEFINED);
}

TEST(FirstUseByThreads, CopiesARecordThatWasMovedFrom) {
  CAttributeRec moved(L"A", CLumInt(1), 0);
  const CAttributeRec taken(std::move(moved));
  const auto kinds = ResultsOf<int>([&](int) { return CAttributeRec(moved).Value().Type(); });
  EXPECT_THAT(kinds, Each(CLumType::TYPE_UNDEFINED));
}

TEST(FirstUseByThreads, ListsOneCatalogue) {
  const auto texts = TextsOf([](int) {
    std::string all;
    for (const AttributeName& name : AttributeNames()) {
      all += Narrow(name.constant) + "=" + Narrow(name.mnemonic) + ";";
    }
    return all + Narrow(ATTR_ABOVECOLOR) + LumAttributesVersion();
  });
  const auto lists = ResultsOf<const AttributeName*>([](int) { return AttributeNames().data(); });
  EXPECT_THAT(lists, Each(lists.front()));
  EXPECT_GT(texts.front().size(), AttributeNames().size());
  EXPECT_THAT(texts, Each(texts.front()));
}

TEST(FirstUseByThreads, MakesValuesOfEveryKind) {
  const auto makeAll = [](int number) {
    std::string all;
    for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
      const std::unique_ptr<CLumType> value(
          LumTypeCreator::MakeLumType(kind.type, CString(L'1', number + 1)));
      all += Narrow(LumTypeCreator::KindName(kind.type)) + (value ? TextOf(*value) : "-") + ";";
    }
    return all;
  };
  const auto texts = TextsOf(makeAll);
  EXPECT_THAT(texts, ElementsAreArray(TextsOneByOne(makeAll)));
  EXPECT_NE(texts.front().find("double1.000000;"), std::string::npos);
}

TEST(FirstUseByThreads, FindsOneTranslator) {
  const auto translators = ResultsOf<Translator*>([](int) {
    Translator& translator = Translator::Instance();
    return translator.IsLanguageForeign() ? nullptr : &translator;
  });
  EXPECT_NE(translators.front(), nullptr);
  EXPECT_THAT(translators, Each(translators.front()));
}

TEST(FirstUseByThreads, MeetsALibraryThatIsAttached) {
  EXPECT_THAT(ResultsOf<int>([](int) { return LumAttributesAttached() ? 1 : 0; }), Each(1));
}

std::atomic<int> g_living = 0;

struct Counted {
  Counted() { ++g_living; }
  ~Counted() { --g_living; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  int content = 7;
};

TEST(FirstUseByThreads, MakesASharedObjectOnce) {
  for (int round = 0; round < 50; ++round) {
    lum::detail::CSharedObject<Counted> shared;
    const auto objects = ResultsOf<const Counted*>(
        [&](int) { return shared.Get().content == 7 ? &shared.Get() : nullptr; });
    ASSERT_NE(objects.front(), nullptr);
    ASSERT_THAT(objects, Each(objects.front()));
    ASSERT_EQ(g_living, 1);
  }
  EXPECT_EQ(g_living, 0);
}

}  // namespace
