// The wrappers Get and Set of the base class, its statics and the value without content.
#include "values/LumTypeBase.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Kind;
using lum::test::Kinds;
using lum::test::Narrow;
using lum::test::TextOf;

// Shows the protected settings.
class CSettingsReader : public CLumUndefined {
 public:
  static bool PrintsFullArray() { return m_bPrintFullArray; }
  static const CLumUnitCnv& UnitConverter() { return m_unitCnv; }
};

// Counts what the wrappers pass on.
class CNameCounter : public CLumName {
 public:
  int SetName(const CString& name) override {
    ++m_calls;
    return CLumName::SetName(name);
  }

  int m_calls = 0;
};

// Answers a status other than 1.
class COddStatus : public CLumUndefined {
 public:
  int GetInt(int& value) const override {
    value = 5;
    return -3;
  }
  int SetInt(int) override { return 2; }
};

// Sets a value through the wrapper and reads it back through the other.
template <typename T>
void ExpectRoundTrip(CLumType&& holder, const T& value) {
  T output = T();
  EXPECT_TRUE(holder.Set(value));
  EXPECT_TRUE(holder.Get(output));
  EXPECT_TRUE(output == value) << TextOf(holder);
}

TEST(LumTypeBase, WrappersReachTheAccessorOfTheirType) {
  ExpectRoundTrip(CLumInt(0), -7);
  ExpectRoundTrip(CLumUInt(0), 7U);
  ExpectRoundTrip(CLumULongLong(0), std::uint64_t{1} << 60);
  ExpectRoundTrip(CLumBool(false), true);
  ExpectRoundTrip(CLumFloat(0.0F), 1.25F);
  ExpectRoundTrip(CLumDouble(0.0), 1.25);
  ExpectRoundTrip(CLumName(), CString(L"x"));
  ExpectRoundTrip(CLumIoName(), CString(L"x"));
  ExpectRoundTrip(CLumIntArray(), std::vector<int>{1, 2});
  ExpectRoundTrip(CLumDoubleArray(), std::vector<double>{1.0, 2.0});
  ExpectRoundTrip(CLumNameArray(), std::vector<CString>{L"a", L"b"});
  ExpectRoundTrip(CLumCompOffset(), lum::test::MakeOffset(3));
  ExpectRoundTrip(CLumDataInfo(), lum::test::MakeInfo(3));
  CLumDouble3D triple;
  CLumType& holder = triple;
  ExpectRoundTrip<Point>(static_cast<CLumType&&>(holder), Point{1.0, 2.0, 3.0});
  EXPECT_EQ(TextOf(triple), "1.000000,2.000000,3.000000");
}

TEST(LumTypeBase, WrappersOfOtherTypesAreRefusedAndTouchNothing) {
  CLumInt value(5);
  double number = 7.0;
  unsigned int unsignedNumber = 7;
  std::vector<int> list = {7};
  EXPECT_FALSE(value.Get(number));
  EXPECT_FALSE(value.Get(unsignedNumber));
  EXPECT_FALSE(value.Get(list));
  EXPECT_EQ(number, 7.0);
  EXPECT_EQ(unsignedNumber, 7U);
  EXPECT_EQ(list, std::vector<int>{7});
  EXPECT_FALSE(value.Set(9.0));
  EXPECT_FALSE(value.Set(true));
  EXPECT_FALSE(value.Set(L"9"));
  EXPECT_FALSE(value.Set("9"));
  EXPECT_EQ(TextOf(value), "5");
}

TEST(LumTypeBase, GetTextReadsANameAndNotTheTextForm) {
  CLumInt value(5);
  CString text = L"fill";
  EXPECT_FALSE(value.Get(text));
  EXPECT_EQ(Narrow(text), "fill");
  EXPECT_EQ(value.GetValueStr(text), 1);
  EXPECT_EQ(Narrow(text), "5");
}

TEST(LumTypeBase, GetPointNeedsThreeComponents) {
  Point point{7.0, 8.0, 9.0};
  EXPECT_FALSE(CLumDouble2D(1.0, 2.0).Get(point));
  EXPECT_EQ(point, (Point{7.0, 8.0, 9.0}));
  EXPECT_TRUE(CLumDouble3D(1.0, 2.0, 3.0).Get(point));
  EXPECT_EQ(point, (Point{1.0, 2.0, 3.0}));
}

TEST(LumTypeBase, SetTakesTextOfEveryForm) {
  CLumName name;
  EXPECT_TRUE(name.Set("bytes"));
  EXPECT_EQ(TextOf(name), "bytes");
  EXPECT_TRUE(name.Set(L"wide"));
  EXPECT_EQ(TextOf(name), "wide");
  EXPECT_TRUE(name.Set(std::wstring(L"standard")));
  EXPECT_EQ(TextOf(name), "standard");
  EXPECT_TRUE(name.Set(CString(L"framework")));
  EXPECT_EQ(TextOf(name), "framework");
  EXPECT_TRUE(name.Set(std::wstring()));
  EXPECT_EQ(TextOf(name), "");
}

TEST(LumTypeBase, SetKeepsTheWholeOfAStandardText) {
  CLumName name;
  const std::wstring text(L"a\0b", 3);
  EXPECT_TRUE(name.Set(text));
  CString stored;
  EXPECT_TRUE(name.Get(stored));
  EXPECT_EQ(std::wstring(stored.GetString(), static_cast<std::size_t>(stored.GetLength())), text);
}

TEST(LumTypeBase, SetNullAnswersFalseAndCallsNothing) {
  CNameCounter name;
  EXPECT_TRUE(name.Set(L"kept"));
  EXPECT_EQ(name.m_calls, 1);
  EXPECT_FALSE(name.Set(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(name.Set(static_cast<const wchar_t*>(nullptr)));
  EXPECT_EQ(name.m_calls, 1);
  EXPECT_EQ(TextOf(name), "kept");
}

TEST(LumTypeBase, WrappersTakeEveryStatusButZeroForDone) {
  COddStatus value;
  int number = 0;
  EXPECT_TRUE(value.Get(number));
  EXPECT_EQ(number, 5);
  EXPECT_TRUE(value.Set(1));
}

TEST(LumTypeBase, UndefinedRefusesEverything) {
  CLumUndefined value;
  CString text = L"fill";
  CStringA bytes = "fill";
  EXPECT_FALSE(value.SetValueStr(CString(L"1")));
  EXPECT_FALSE(value.SetValueStr(CStringA("1")));
  EXPECT_EQ(value.GetValueStr(text), 0);
  EXPECT_EQ(value.GetValueStr(bytes), 0);
  EXPECT_EQ(Narrow(text), "fill");
  EXPECT_STREQ(bytes.GetString(), "fill");
  EXPECT_EQ(value.Type(), CLumType::TYPE_UNDEFINED);
}

// A kind that overrides nothing that it need not.
class CBareKind : public CLumType {
 public:
  CBareKind* MakeCopy() const override { return new CBareKind(*this); }
};

TEST(LumTypeBase, AKindOfAHostIsUndefinedUntilItSaysOtherwise) {
  EXPECT_EQ(CBareKind().Type(), CLumType::TYPE_UNDEFINED);
}

TEST(LumTypeBase, FullArraySettingIsStoredAndShortensNothing) {
  EXPECT_FALSE(CSettingsReader::PrintsFullArray());
  const CLumIntArray list(std::vector<int>(1000, 1));
  const std::string before = TextOf(list);
  EXPECT_EQ(before.size(), 1999U);
  CLumType::SetPrintFullArray(true);
  EXPECT_TRUE(CSettingsReader::PrintsFullArray());
  EXPECT_EQ(TextOf(list), before);
  CLumType::SetPrintFullArray(false);
  EXPECT_FALSE(CSettingsReader::PrintsFullArray());
  EXPECT_EQ(TextOf(list), before);
}

TEST(LumTypeBase, UnitConverterIsStored) {
  EXPECT_EQ(CSettingsReader::UnitConverter(), CLumUnitCnv());
  CLumType::SetUnitCnv(CLumUnitCnv(0.3048, 1.0));
  EXPECT_EQ(CSettingsReader::UnitConverter(), CLumUnitCnv(0.3048, 1.0));
  CLumType::SetUnitCnv(CLumUnitCnv());
}

}  // namespace
