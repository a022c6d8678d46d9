// The item format: occurrences in names, flags fields, value texts.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

struct StripRow {
  const wchar_t* name;
  int occurrence;
  const wchar_t* left;
};

TEST(ItemCodec, StripsTheOccurrence) {
  const StripRow rows[] = {
      {L"Name(3)", 3, L"Name"},
      {L"Name", 0, L"Name"},
      {L"A(1)B", 0, L"A(1)B"},
      {L"", 0, L""},
      {L"(7)", 7, L""},
      {L"X(0)", 0, L"X"},
      {L"X(007)", 7, L"X"},
      {L"X(-1)", -1, L"X"},
      {L"X(+2)", 2, L"X"},
      {L"X( 2)", 2, L"X"},
      {L"X(2 )", 2, L"X"},
      {L"X(2a)", 2, L"X"},
      {L"X(1)(2)", 1, L"X"},  // From the first "(": what follows the number does not count.
      {L"X(", 0, L"X("},
      {L"X)", 0, L"X)"},
      {L")", 0, L")"},
      {L"X)(", 0, L"X)("},
      {L"X()", 0, L"X"},  // No number is occurrence 0.
      {L"X(abc)", 0, L"X"},
      {L"X(()", 0, L"X"},
      {L"X(2147483647)", 2147483647, L"X"},
      {L"X(99999999999)", 1215752191, L"X"},  // Cut to 32 bits, as the runtime's scan does.
      {L"X(4294967296)", 0, L"X"},
      {L"X(99999999999999999999)", -1, L"X"},
      {L"A b.c(12)", 12, L"A b.c"},
  };
  for (const StripRow& row : rows) {
    CString name(row.name);
    EXPECT_EQ(StripAttributeIndex(name), row.occurrence) << Narrow(row.name);
    EXPECT_EQ(name, row.left) << Narrow(row.name);
  }
}

TEST(ItemCodec, AppendsTheOccurrenceUnlessItIsZero) {
  for (const auto& [occurrence, text] :
       {std::pair<int, const wchar_t*>{0, L"N"}, {2, L"N(2)"}, {10, L"N(10)"}, {-1, L"N(-1)"}}) {
    CString name(L"N");
    AppendAttributeIndex(name, occurrence);
    EXPECT_EQ(name, text);
  }
}

TEST(ItemCodec, AppendedOccurrencesAreStrippedAgain) {
  for (const int occurrence : {1, 2, 9, 10, 123456, 2147483647}) {
    CString name(L"Name");
    AppendAttributeIndex(name, occurrence);
    EXPECT_EQ(StripAttributeIndex(name), occurrence);
    EXPECT_EQ(name, L"Name");
  }
}

struct ItemRow {
  const char* value;
  const char* node;  ///< What the item makes of the node, or "" when it is rejected.
};

TEST(ItemCodec, ReadsFlagsAndText) {
  const ItemRow rows[] = {
      {"1,m", "K:999:m:1"},
      {"0x10,m", "K:999:m:16"},
      {"0X10,m", "K:999:m:16"},
      {"16,m", "K:999:m:16"},
      {"0xff,m", "K:999:m:255"},
      {"0xFFFFFFFF,m", "K:999:m:4294967295"},
      {"4294967295,m", "K:999:m:4294967295"},
      {"010,m", "K:999:m:10"},
      {"12abc,m", "K:999:m:12"},
      {"-1,m", "K:999:m:4294967295"},
      {"0,", "K:999::0"},
      {"0,   m n ", "K:999:m n :0"},
      {"0,,a,b", "K:999:,a,b:0"},
      {"0,a,b", "K:999:a,b:0"},
      {",m", ""},
      {"x,m", ""},
      {"0x,m", ""},
      {"0xg,m", ""},
      {"0x 10,m", "K:999:m:16"},
      {"m", ""},
      {"1", ""},
      {"", ""},
  };
  for (const ItemRow& row : rows) {
    const FileObject file = FileWithItems(std::string("AttrVersion=0,2|K=") + row.value);
    CAttributeMap map;
    ASSERT_TRUE(LoadAttributes(map, file, L"S", false));
    ASSERT_EQ(TextOf(map.Find(L"AttrVersion").Value()), "2");
    map.RemoveAll(L"AttrVersion");
    EXPECT_EQ(Describe(map), row.node) << row.value;
  }
}

TEST(ItemCodec, KeyThatEndsWithOrderInfoHasTheWholeValueAsText) {
  const FileObject file =
      FileWithItems("AttrVersion=0,2|G.OrderInfo=a,b|MyOrderInfo=5,x|OrderInfo(1)=5,x");
  CAttributeMap map;
  ASSERT_TRUE(LoadAttributes(map, file, L"S", false));
  EXPECT_EQ(Describe(map),
            "AttrVersion:999:2:0 G:0:-:0{OrderInfo:999:a,b:0} MyOrderInfo:999:5,x:0 "
            "OrderInfo:0:-:0 OrderInfo:999:x:5");
}

TEST(ItemCodec, WritesFlagsCommaAndText) {
  CAttributeMap map;
  map.Add(L"Plain", CLumName(L"a,b"), 4294967295u);
  map.GetAttrMap(L"Plain")->SetFlag(CAttributeRec::FLAG_TRANSIENT, false);
  map.Add(L"Line", CLumName(L"a\nb"), 5);
  map.Add(L"Return", CLumName(L"a\rb"), 6);
  map.Add(L"OrderInfo", CLumName(L"a,b"), 7);
  map.Add(L"Empty");
  map.Add(L"NoText", CLumIoName("x"), 0);
  map.Add(L"Kept", CLumName(L" x "), 0);
  FileObject file;
  ASSERT_TRUE(SaveAttributesWithKey(map, file, L"S", L""));
  EXPECT_EQ(Items(file, L"S"),
            "Plain=4294934527,a,b|Line=5,|Return=6,|OrderInfo=a,b|Empty=0,|NoText=0,|Kept=0, x ");
}

TEST(ItemCodec, OrderInfoWithALineBreakIsAnEmptyItem) {
  CAttributeMap map;
  map.Add(L"OrderInfo", CLumName(L"a\r\nb"), 7);
  FileObject file;
  ASSERT_TRUE(SaveAttributesWithKey(map, file, L"S", L"p"));
  EXPECT_EQ(Items(file, L"S"), "pOrderInfo=");
}

}  // namespace
