#include "values/FreeFormType.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <utility>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::MakeInfo;
using lum::test::MakeOffset;
using lum::test::Narrow;
using lum::test::TextOf;

constexpr double kRefused = -777.0;

// What the number getters read from a text; kRefused stands for a refusal.
struct NumberCase {
  const wchar_t* text;
  double asInt;
  double asUInt;
  double asULongLong;
  double asBool;
  double asFloat;
  double asDouble;
};

template <typename T>
double Read(const CLumAnything& value, int (CLumType::*get)(T&) const, T fill) {
  T output = fill;
  if ((value.*get)(output) == 0) {
    EXPECT_EQ(output, fill) << TextOf(value);
    return kRefused;
  }
  return static_cast<double>(output);
}

constexpr double kTwo64 = 18446744073709551616.0;
constexpr double kR = kRefused;
constexpr double kInf = std::numeric_limits<double>::infinity();

constexpr NumberCase kNumberCases[] = {
    {L"3.7", 3, 3, 3, 1, 3.7F, 3.7},
    {L"12abc", 12, 12, 12, 1, kR, 12},
    {L"1,5", 1, 1, 1, 1, 1, 1},
    {L"0", 0, 0, 0, 0, 0, 0},
    {L"0.9", 0, 0, 0, 0, 0.9F, 0.9},
    {L" \n 7", 7, 7, 7, 1, kR, 7},
    {L" \t7 ", 7, 7, 7, 1, 7, 7},
    {L"-1", -1, 4294967295.0, kTwo64, 1, -1, -1},
    {L"4294967296", 0, 0, 4294967296.0, 0, 4294967296.0, 4294967296.0},
    {L"99999999999999999999", -1, 4294967295.0, kTwo64, 1, 1e20F, 1e20},
    {L"1e3", 1, 1, 1, 1, 1000, 1000},
    {L"1e400", 1, 1, 1, 1, kR, kInf},
    {L"0x10", 0, 0, 0, 0, kR, 16},
    {L"inf", kR, kR, kR, kR, kInf, kInf},
    {L"abc", kR, kR, kR, kR, kR, kR},
    {L"", kR, kR, kR, kR, kR, kR},
    {L"-", kR, kR, kR, kR, kR, kR},
    {L".5", kR, kR, kR, kR, 0.5, 0.5},
    {L",1", kR, kR, kR, kR, kR, kR},
    {L"true", kR, kR, kR, kR, kR, kR},
};

TEST(FreeFormType, NumberGettersScanTheText) {
  for (const NumberCase& row : kNumberCases) {
    SCOPED_TRACE(Narrow(row.text));
    const CLumAnything value(row.text);
    EXPECT_EQ(Read(value, &CLumType::GetInt, 77), row.asInt);
    EXPECT_EQ(Read(value, &CLumType::GetUInt, 77U), row.asUInt);
    EXPECT_EQ(Read(value, &CLumType::GetULongLong, std::uint64_t{77}), row.asULongLong);
    EXPECT_EQ(Read(value, &CLumType::GetBool, row.asBool == 0), row.asBool);
    EXPECT_EQ(Read(value, &CLumType::GetFloat, 77.0F), row.asFloat);
    EXPECT_EQ(Read(value, &CLumType::GetDouble, 77.0), row.asDouble);
    EXPECT_EQ(TextOf(value), Narrow(row.text));
  }
}

TEST(FreeFormType, VectorGettersReadAllComponentsOrNothing) {
  double x = 7.0;
  double y = 8.0;
  double z = 9.0;
  EXPECT_EQ(CLumAnything(L"1").GetDouble2D(x, y), 0);
  EXPECT_EQ(CLumAnything(L"1,b").GetDouble2D(x, y), 0);
  EXPECT_EQ(CLumAnything(L"1,2").GetDouble3D(x, y, z), 0);
  EXPECT_EQ(CLumAnything(L"").GetDouble3D(x, y, z), 0);
  EXPECT_EQ((Point{x, y, z}), (Point{7.0, 8.0, 9.0}));
  EXPECT_EQ(CLumAnything(L"1,2,c").GetDouble2D(x, y), 1);
  EXPECT_EQ((Point{x, y, z}), (Point{1.0, 2.0, 9.0}));
  EXPECT_EQ(CLumAnything(L" 4 , 5 , 6 ").GetDouble3D(x, y, z), 1);
  EXPECT_EQ((Point{x, y, z}), (Point{4.0, 5.0, 6.0}));
}

TEST(FreeFormType, RecordGettersReadTheRecordsTexts) {
  CDataInfo info = MakeInfo(1);
  EXPECT_EQ(CLumAnything(L"1,2,3").GetDataInfo(info), 0);
  EXPECT_EQ(info, MakeInfo(1));
  EXPECT_EQ(CLumAnything(L"9,2,3,4,5,65535").GetDataInfo(info), 1);
  EXPECT_EQ(info, MakeInfo(9));
  CCompOffset offset = MakeOffset(1);
  EXPECT_EQ(CLumAnything(L"1,2,n,3,4,5,6,7,8").GetCompOffset(offset), 0);
  EXPECT_TRUE(offset == MakeOffset(1));
  EXPECT_EQ(
      CLumAnything(CString(TextOf(CLumCompOffset(MakeOffset(9))).c_str())).GetCompOffset(offset),
      1);
  EXPECT_TRUE(offset == MakeOffset(9));
}

TEST(FreeFormType, ListGettersReadTheListsTexts) {
  const CLumAnything value(L"1,2.5,x");
  std::vector<int> numbers = {7};
  EXPECT_EQ(value.GetIntArray(numbers), 1);
  EXPECT_EQ(numbers, std::vector<int>{1});
  std::vector<double> doubles = {7.0};
  EXPECT_EQ(value.GetDoubleArray(doubles), 1);
  EXPECT_EQ(doubles, (std::vector<double>{1.0, 2.5}));
  std::vector<CString> names = {L"fill"};
  EXPECT_EQ(value.GetNameArray(names), 1);
  EXPECT_EQ(names, (std::vector<CString>{L"1", L"2.5", L"x"}));
  EXPECT_EQ(CLumAnything().GetIntArray(numbers), 1);
  EXPECT_TRUE(numbers.empty());
  EXPECT_EQ(CLumAnything().GetNameArray(names), 1);
  EXPECT_TRUE(names.empty());
}

TEST(FreeFormType, NameGettersGiveTheTextItself) {
  const CLumAnything value(L"H\u00F6he, 1");
  CString wide;
  CStringA bytes;
  EXPECT_EQ(value.GetName(wide), 1);
  EXPECT_TRUE(wide == L"H\u00F6he, 1");
  EXPECT_EQ(value.GetName(bytes), 1);
  EXPECT_STREQ(bytes.GetString(), "H\xC3\xB6he, 1");
  EXPECT_EQ(CLumAnything().GetName(wide), 1);
  EXPECT_TRUE(wide.IsEmpty());
}

TEST(FreeFormType, SettersStoreTheTextForm) {
  const struct {
    std::function<int(CLumAnything&)> set;
    const char* expected;
  } kCases[] = {
      {[](CLumAnything& v) { return v.SetInt(-5); }, "-5"},
      {[](CLumAnything& v) { return v.SetUInt(4000000000U); }, "4000000000"},
      {[](CLumAnything& v) { return v.SetULongLong(18446744073709551615U); },
       "18446744073709551615"},
      {[](CLumAnything& v) { return v.SetBool(true); }, "1"},
      {[](CLumAnything& v) { return v.SetBool(false); }, "0"},
      {[](CLumAnything& v) { return v.SetFloat(0.1F); }, "0.100000"},
      {[](CLumAnything& v) { return v.SetDouble(2.5); }, "2.500000"},
      {[](CLumAnything& v) { return v.SetDouble2D(1, 2); }, "1.000000,2.000000"},
      {[](CLumAnything& v) { return v.SetDouble3D(1, 2, 3); }, "1.000000,2.000000,3.000000"},
      {[](CLumAnything& v) { return v.SetDataInfo(MakeInfo(1)); }, "1,2,3,4,5,65535"},
      {[](CLumAnything& v) { return v.SetCompOffset(CCompOffset()); },
       "0,0,,0,0,0,0,0.000000,0.000000,0.000000"},
      {[](CLumAnything& v) { return v.SetName(CString(L" any, text ")); }, " any, text "},
      {[](CLumAnything& v) { return v.SetIntArray({}); }, ""},
      {[](CLumAnything& v) {
         return v.SetIntArray({1, -2});
       },
       "1,-2"},
      {[](CLumAnything& v) {
         return v.SetDoubleArray({0.1, 2.0});
       },
       "0.1,2"},
      {[](CLumAnything& v) {
         return v.SetNameArray({L"a", L"b"});
       },
       "a,b"},
      {[](CLumAnything& v) { return v.SetValueStr(CString(L"x,y")) ? 1 : 0; }, "x,y"},
  };
  for (const auto& [set, expected] : kCases) {
    CLumAnything value(L"old");
    EXPECT_EQ(set(value), 1) << expected;
    EXPECT_EQ(TextOf(value), expected);
  }
}

TEST(FreeFormType, RefusesEightBitTexts) {
  CLumAnything value(L"kept");
  CStringA bytes = "fill";
  EXPECT_EQ(value.SetName(CStringA("x")), 0);
  EXPECT_FALSE(value.SetValueStr(CStringA("x")));
  EXPECT_EQ(value.GetValueStr(bytes), 0);
  EXPECT_STREQ(bytes.GetString(), "fill");
  EXPECT_EQ(TextOf(value), "kept");
}

TEST(FreeFormType, AssignmentConvertsBothWays) {
  CLumAnything value;
  static_cast<CLumType&>(value) = CLumInt(7);
  EXPECT_EQ(TextOf(value), "7");
  CLumInt number(0);
  static_cast<CLumType&>(number) = value;
  EXPECT_EQ(TextOf(number), "7");
  static_cast<CLumType&>(value) = CLumUndefined();
  EXPECT_EQ(TextOf(value), "7");
  static_cast<CLumType&>(value) = CLumIoName("bytes");
  EXPECT_EQ(TextOf(value), "7");
}

TEST(FreeFormType, ListsWrittenFromItsOwnTextStayWhole) {
  CLumAnything value(L"a,b");
  std::vector<CString> names;
  EXPECT_EQ(value.GetNameArray(names), 1);
  EXPECT_EQ(value.SetNameArray(names), 1);
  EXPECT_EQ(TextOf(value), "a,b");
  CString own;
  EXPECT_EQ(value.GetName(own), 1);
  EXPECT_EQ(value.SetName(own), 1);
  EXPECT_EQ(value.GetName(own), 1);
  EXPECT_EQ(Narrow(own), "a,b");
}

TEST(FreeFormType, ConstructorsAndMoves) {
  EXPECT_EQ(TextOf(CLumAnything()), "");
  EXPECT_EQ(TextOf(CLumAnything(CString(L"a"))), "a");
  EXPECT_EQ(TextOf(CLumAnything(static_cast<const wchar_t*>(nullptr))), "");
  CLumAnything value(L"b");
  CLumAnything taken(std::move(value));
  EXPECT_EQ(TextOf(taken), "b");
  EXPECT_EQ(TextOf(value), "");  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(value.SetInt(4), 1);
  EXPECT_EQ(TextOf(value), "4");
}

}  // namespace
