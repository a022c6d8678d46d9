#include "values/NameTypes.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Narrow;
using lum::test::TextOf;

constexpr const wchar_t* kWide = L"H\u00F6he \u4E2D";
constexpr const char* kUtf8 = "H\xC3\xB6he \xE4\xB8\xAD";

TEST(NameTypes, BothReportTheNameCode) {
  EXPECT_EQ(static_cast<int>(CLumName().Type()), 501);
  EXPECT_EQ(static_cast<int>(CLumIoName().Type()), 501);
}

TEST(NameTypes, StartEmpty) {
  EXPECT_EQ(TextOf(CLumName()), "");
  EXPECT_EQ(TextOf(CLumIoName()), "");
}

TEST(NameTypes, WideNameHasTheWideFormsOnly) {
  CLumName name(L"ab");
  CStringA bytes = "fill";
  EXPECT_EQ(name.GetValueStr(bytes), 0);
  EXPECT_EQ(name.GetName(bytes), 0);
  EXPECT_STREQ(bytes.GetString(), "fill");
  EXPECT_FALSE(name.SetValueStr(CStringA("x")));
  EXPECT_EQ(name.SetName(CStringA("x")), 0);
  EXPECT_EQ(TextOf(name), "ab");
  EXPECT_TRUE(name.SetValueStr(CString(L" a,b\n")));
  CString text;
  EXPECT_EQ(name.GetName(text), 1);
  EXPECT_EQ(Narrow(text), " a,b\n");
  EXPECT_EQ(name.SetName(CString()), 1);
  EXPECT_EQ(TextOf(name), "");
}

TEST(NameTypes, ByteNameHasNoWideTextForm) {
  CLumIoName name("ab");
  CString text = L"fill";
  EXPECT_EQ(name.GetValueStr(text), 0);
  EXPECT_EQ(Narrow(text), "fill");
  EXPECT_FALSE(name.SetValueStr(CString(L"x")));
  EXPECT_EQ(TextOf(name), "ab");
  EXPECT_EQ(name.GetName(text), 1);
  EXPECT_EQ(Narrow(text), "ab");
  EXPECT_TRUE(name.SetValueStr(CStringA("cd")));
  CStringA bytes;
  EXPECT_EQ(name.GetValueStr(bytes), 1);
  EXPECT_STREQ(bytes.GetString(), "cd");
}

TEST(NameTypes, ByteNameConvertsWideNamesAsUtf8) {
  CLumIoName name;
  EXPECT_EQ(name.SetName(CString(kWide)), 1);
  CStringA bytes;
  EXPECT_EQ(name.GetName(bytes), 1);
  EXPECT_STREQ(bytes.GetString(), kUtf8);
  CString text;
  EXPECT_EQ(name.GetName(text), 1);
  EXPECT_TRUE(text == kWide);
  EXPECT_EQ(name.SetName(CStringA("\xE9t\xE9")), 1);  // No UTF-8: taken as Latin-1.
  EXPECT_EQ(name.GetName(text), 1);
  EXPECT_TRUE(text == L"\u00E9t\u00E9");
}

TEST(NameTypes, BothKeepCharactersBeyondTheBasicPlane) {
  const CString ship = L"x\U0001F6A2y";  // A surrogate pair where characters have 16 bits.
  CString text;
  CLumName wide;
  EXPECT_EQ(wide.SetName(ship), 1);
  EXPECT_EQ(wide.GetName(text), 1);
  EXPECT_EQ(text, ship);
  EXPECT_EQ(TextOf(wide), "x\xF0\x9F\x9A\xA2y");

  CLumIoName bytes;
  EXPECT_EQ(bytes.SetName(ship), 1);
  EXPECT_EQ(TextOf(bytes), "x\xF0\x9F\x9A\xA2y");
  text.Empty();
  EXPECT_EQ(bytes.GetName(text), 1);
  EXPECT_EQ(text, ship);
}

TEST(NameTypes, ByteNameHasNoPlaceForHalfACharacter) {
  CLumIoName bytes;
  EXPECT_EQ(bytes.SetName(CString(L"x\xD83D")), 1);
  CString text;
  EXPECT_EQ(bytes.GetName(text), 1);
  EXPECT_EQ(text, L"x\uFFFD");
}

TEST(NameTypes, WrappersWorkOnBoth) {
  CLumName wide;
  CLumIoName bytes;
  for (CLumType* name : {static_cast<CLumType*>(&wide), static_cast<CLumType*>(&bytes)}) {
    CString text;
    EXPECT_TRUE(name->Set(CString(L"a")));
    EXPECT_TRUE(name->Get(text));
    EXPECT_EQ(Narrow(text), "a");
    EXPECT_TRUE(name->Set("b"));
    EXPECT_EQ(TextOf(*name), "b");
    EXPECT_TRUE(name->Set(L"c"));
    EXPECT_EQ(TextOf(*name), "c");
  }
}

TEST(NameTypes, AppendOnlyNames) {
  CLumName name(L"ab");
  name += CLumName(L"cd");
  EXPECT_EQ(TextOf(name), "abcd");
  name += CLumInt(5);
  EXPECT_EQ(TextOf(name), "abcd");
  name += CLumIoName(kUtf8);
  EXPECT_EQ(TextOf(name), std::string("abcd") + kUtf8);
  CLumIoName bytes("x");
  bytes += CLumName(L"y");
  EXPECT_EQ(TextOf(bytes), "x");
  bytes += CLumIoName("z");
  EXPECT_EQ(TextOf(bytes), "xz");
}

TEST(NameTypes, AssignBytesToWideNotWideToBytes) {
  CLumIoName bytes("kept");
  static_cast<CLumType&>(bytes) = CLumName(L"x");
  EXPECT_EQ(TextOf(bytes), "kept");
  CLumName name(L"old");
  static_cast<CLumType&>(name) = CLumIoName(kUtf8);
  EXPECT_EQ(TextOf(name), kUtf8);
  static_cast<CLumType&>(bytes) = CLumAnything(kWide);
  EXPECT_EQ(TextOf(bytes), kUtf8);
}

TEST(NameTypes, ConcatenateTheirOwnKind) {
  const CLumName a(L"a");
  const CLumName b(L"b");
  EXPECT_EQ(TextOf(a + b), "ab");
  EXPECT_EQ(TextOf(a), "a");
  EXPECT_EQ(TextOf(CLumIoName("c") + CLumIoName("d")), "cd");
}

TEST(NameTypes, KeepZerosInsideBytes) {
  const CStringA kRecord("a\0b", 3);
  CLumIoName name(kRecord);
  name += CLumIoName(kRecord);
  CStringA bytes;
  EXPECT_EQ(name.GetName(bytes), 1);
  EXPECT_EQ(std::string(bytes.GetString(), static_cast<std::size_t>(bytes.GetLength())),
            std::string("a\0ba\0b", 6));
  CString wide;
  EXPECT_EQ(name.GetName(wide), 1);
  EXPECT_EQ(wide.GetLength(), 6);
  CLumIoName other;
  EXPECT_EQ(other.SetName(wide), 1);
  EXPECT_EQ(other.GetName(bytes), 1);
  EXPECT_EQ(bytes.GetLength(), 6);
}

TEST(NameTypes, MovedFromNamesAreEmptyAndUsable) {
  CLumName name(L"a");
  CLumName taken(std::move(name));
  EXPECT_EQ(TextOf(taken), "a");
  EXPECT_EQ(TextOf(name), "");  // NOLINT(bugprone-use-after-move)
  name = std::move(taken);
  EXPECT_EQ(TextOf(name), "a");
  EXPECT_EQ(taken.SetName(CString(L"b")), 1);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(TextOf(taken), "b");
  CLumIoName bytes("c");
  const CLumIoName other(std::move(bytes));
  EXPECT_EQ(TextOf(other), "c");
  EXPECT_EQ(TextOf(bytes), "");  // NOLINT(bugprone-use-after-move)
}

}  // namespace
