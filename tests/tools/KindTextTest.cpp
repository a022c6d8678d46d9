// Which texts a kind reads wholly.
#include "tools/lumattr/KindText.h"

#include <gtest/gtest.h>

#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

struct KindRow {
  int kind;
  const wchar_t* text;
};

TEST(KindText, AcceptsWhatTheKindReadsWholly) {
  const KindRow rows[] = {
      {CLumType::TYPE_BOOL, L"1"},
      {CLumType::TYPE_BOOL, L"TRUE"},
      {CLumType::TYPE_INT, L"-2147483648"},
      {CLumType::TYPE_INT, L"7 "},
      {CLumType::TYPE_UINT, L"4294967295"},
      {CLumType::TYPE_ULONGLONG, L"18446744073709551615"},
      {CLumType::TYPE_FLOAT, L"1.5"},
      {CLumType::TYPE_DOUBLE, L"1e300"},
      {CLumType::TYPE_DOUBLE, L"-inf"},
      {CLumType::TYPE_DOUBLE2D, L"1,2"},
      {CLumType::TYPE_DOUBLE3D, L"1, 2, 3"},
      {CLumType::TYPE_DATAINFO, L"1,2,3,4,5,6"},
      {CLumType::TYPE_NAME, L""},
      {CLumType::TYPE_NAME, L"a, b"},
      {CLumType::TYPE_INTARRAY, L""},
      {CLumType::TYPE_INTARRAY, L"1,2,3"},
      {CLumType::TYPE_DOUBLEARRAY, L"1.5,2"},
      {CLumType::TYPE_NAMEARRAY, L"a,,b"},
      {CLumType::TYPE_ANYTHING, L""},
      {CLumType::TYPE_ANYTHING, L"whatever, it is"},
  };
  for (const KindRow& row : rows) {
    EXPECT_EQ(WhyKindRefuses(row.kind, row.text), std::nullopt)
        << KindName(row.kind) << " " << ToUtf8(row.text);
  }
}

TEST(KindText, RefusesWhatTheKindWouldReadInPartOrNotAtAll) {
  const KindRow rows[] = {
      {CLumType::TYPE_BOOL, L"on"},
      {CLumType::TYPE_BOOL, L"1,0"},
      {CLumType::TYPE_INT, L""},
      {CLumType::TYPE_INT, L"1.5"},
      {CLumType::TYPE_INT, L"12abc"},
      {CLumType::TYPE_INT, L"2147483648"},
      {CLumType::TYPE_UINT, L"-1"},
      {CLumType::TYPE_ULONGLONG, L"18446744073709551616"},
      {CLumType::TYPE_FLOAT, L"1e39"},
      {CLumType::TYPE_DOUBLE, L"deep"},
      {CLumType::TYPE_DOUBLE, L"1,5"},
      {CLumType::TYPE_DOUBLE2D, L"1"},
      {CLumType::TYPE_DOUBLE2D, L"1,2,3"},
      {CLumType::TYPE_DOUBLE3D, L"1,2,x"},
      {CLumType::TYPE_DATAINFO, L"1,2,3,4,5"},
      {CLumType::TYPE_DATAINFO, L"1,2,3,4,5,70000"},
      {CLumType::TYPE_COMPOFFSET, L"1"},
      {CLumType::TYPE_INTARRAY, L"1,b,3"},
      {CLumType::TYPE_INTARRAY, L"1,,3"},
      {CLumType::TYPE_DOUBLEARRAY, L"1.5,"},
      {CLumType::TYPE_UNDEFINED, L"1"},
      {12345, L"1"},
  };
  for (const KindRow& row : rows) {
    EXPECT_NE(WhyKindRefuses(row.kind, row.text), std::nullopt)
        << KindName(row.kind) << " " << ToUtf8(row.text);
  }
}

TEST(KindText, SaysWhatIsWrong) {
  EXPECT_EQ(WhyKindRefuses(CLumType::TYPE_DOUBLE2D, L"1"), "it takes 2 items, not 1");
  EXPECT_EQ(WhyKindRefuses(CLumType::TYPE_INT, L"1,2"), "it takes 1 item, not 2");
  EXPECT_EQ(WhyKindRefuses(CLumType::TYPE_INTARRAY, L"1,b"), "item 2, 'b', is no int");
  EXPECT_EQ(WhyKindRefuses(CLumType::TYPE_INT, L"b"), "it cannot be read as one");
}

TEST(KindText, KnowsTheKindThatANameBrings) {
  EXPECT_EQ(KindOfName(L"@Title"), CLumType::TYPE_NAME);
  EXPECT_EQ(KindOfName(L"NoDefinitionHasThisName"), CLumType::TYPE_ANYTHING);
  EXPECT_EQ(KindOfName(L""), CLumType::TYPE_ANYTHING);
}

TEST(KindText, RefusesWhatAFileDoesNotGiveBack) {
  for (const CString& text :
       {CString(L" a"), CString(L"\ta"), CString(L"a\nb"), CString(L"a\r"), CString(L"a\0b", 3)}) {
    EXPECT_NE(WhyFileRefuses(text), std::nullopt) << Printable(text);
  }
  for (const wchar_t* text : {L"", L"a b", L"a ", L"a\tb", L"http://x"}) {
    EXPECT_EQ(WhyFileRefuses(text), std::nullopt) << ToUtf8(text);
  }
}

}  // namespace
}  // namespace lum::tool
