#include "values/LumTypeCreator.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <set>
#include <string>
#include <typeinfo>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Narrow;
using lum::test::TextOf;

using Value = std::unique_ptr<CLumType>;

// Expects a value of exactly this kind with this text.
template <typename Kind>
void ExpectValue(CLumType* made, const char* text) {
  const Value value(made);
  ASSERT_NE(value, nullptr);
  const CLumType& held = *value;
  EXPECT_EQ(typeid(held), typeid(Kind));
  EXPECT_EQ(TextOf(held), text);
}

TEST(LumTypeCreator, MakesTheEmptyValueOfEveryCode) {
  ExpectValue<CLumUndefined>(LumTypeCreator::MakeLumType(0), "(none)");
  ExpectValue<CLumInt>(LumTypeCreator::MakeLumType(101), "0");
  ExpectValue<CLumUInt>(LumTypeCreator::MakeLumType(102), "0");
  ExpectValue<CLumDouble>(LumTypeCreator::MakeLumType(103), "0.000000");
  ExpectValue<CLumBool>(LumTypeCreator::MakeLumType(104), "0");
  ExpectValue<CLumFloat>(LumTypeCreator::MakeLumType(109), "0.000000");
  ExpectValue<CLumULongLong>(LumTypeCreator::MakeLumType(112), "0");
  ExpectValue<CLumDouble2D>(LumTypeCreator::MakeLumType(203), "0.000000,0.000000");
  ExpectValue<CLumDouble3D>(LumTypeCreator::MakeLumType(301), "0.000000,0.000000,0.000000");
  ExpectValue<CLumDataInfo>(LumTypeCreator::MakeLumType(401), "0,0,0,0,0,0");
  ExpectValue<CLumCompOffset>(LumTypeCreator::MakeLumType(402),
                              "0,0,,0,0,0,0,0.000000,0.000000,0.000000");
  ExpectValue<CLumName>(LumTypeCreator::MakeLumType(501), "");
  ExpectValue<CLumIntArray>(LumTypeCreator::MakeLumType(603), "");
  ExpectValue<CLumDoubleArray>(LumTypeCreator::MakeLumType(607), "");
  ExpectValue<CLumNameArray>(LumTypeCreator::MakeLumType(613), "");
}

TEST(LumTypeCreator, MakesNothingForEveryOtherCode) {
  const std::set<int> kCodes = {0,   101, 102, 103, 104, 109, 112, 203,
                                301, 401, 402, 501, 603, 607, 613};
  for (int code = -1100; code < 1100; ++code) {
    const Value value(LumTypeCreator::MakeLumType(code));
    EXPECT_EQ(value != nullptr, kCodes.contains(code)) << code;
  }
  for (const int code : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(LumTypeCreator::MakeLumType(code), nullptr);
    EXPECT_EQ(LumTypeCreator::MakeLumType(code, CString(L"1")), nullptr);
  }
  EXPECT_EQ(LumTypeCreator::MakeLumType(999, CString(L"1")), nullptr);
  EXPECT_EQ(LumTypeCreator::MakeLumType(105, CString(L"1")), nullptr);
}

TEST(LumTypeCreator, SetsFromATextOrLeavesEmpty) {
  ExpectValue<CLumInt>(LumTypeCreator::MakeLumType(101, CString(L"42,7")), "42");
  ExpectValue<CLumInt>(LumTypeCreator::MakeLumType(101, CString(L"abc")), "0");
  ExpectValue<CLumName>(LumTypeCreator::MakeLumType(501, CString(L"x")), "x");
  ExpectValue<CLumDouble2D>(LumTypeCreator::MakeLumType(203, CString(L"5")), "0.000000,0.000000");
  ExpectValue<CLumIntArray>(LumTypeCreator::MakeLumType(603, CString(L"1,2,x")), "1,2");
  ExpectValue<CLumUndefined>(LumTypeCreator::MakeLumType(0, CString(L"1")), "(none)");
}

TEST(LumTypeCreator, ATextIsNotChangedByReadingIt) {
  const CString text = L" 1 , 2 ";
  const Value value(LumTypeCreator::MakeLumType(603, text));
  EXPECT_EQ(Narrow(text), " 1 , 2 ");
}

TEST(LumTypeCreator, WrapsPlainValues) {
  ExpectValue<CLumBool>(LumTypeCreator::MakeValue(true), "1");
  ExpectValue<CLumInt>(LumTypeCreator::MakeValue(-3), "-3");
  ExpectValue<CLumUInt>(LumTypeCreator::MakeValue(3U), "3");
  ExpectValue<CLumULongLong>(LumTypeCreator::MakeValue(std::uint64_t{1} << 40), "1099511627776");
  ExpectValue<CLumDouble>(LumTypeCreator::MakeValue(2.5), "2.500000");
  ExpectValue<CLumName>(LumTypeCreator::MakeValue(CString(L"a")), "a");
  ExpectValue<CLumName>(LumTypeCreator::MakeValue(L"b"), "b");
  ExpectValue<CLumName>(LumTypeCreator::MakeValue("c"), "c");
  ExpectValue<CLumName>(LumTypeCreator::MakeValue(static_cast<const wchar_t*>(nullptr)), "");
  ExpectValue<CLumName>(LumTypeCreator::MakeValue(static_cast<const char*>(nullptr)), "");
  ExpectValue<CLumDataInfo>(LumTypeCreator::MakeValue(lum::test::MakeInfo(1)), "1,2,3,4,5,65535");
  ExpectValue<CLumCompOffset>(LumTypeCreator::MakeValue(CCompOffset()),
                              "0,0,,0,0,0,0,0.000000,0.000000,0.000000");
  ExpectValue<CLumDouble2D>(LumTypeCreator::MakeValue(std::pair<double, double>(1.0, 2.0)),
                            "1.000000,2.000000");
  ExpectValue<CLumDouble3D>(LumTypeCreator::MakeValue(Point{1.0, 2.0, 3.0}),
                            "1.000000,2.000000,3.000000");
}

template <typename Kind, typename T>
void ExpectWrapsList(std::vector<T> values, const char* text) {
  const std::vector<T> before = values;
  ExpectValue<Kind>(LumTypeCreator::MakeValue(values), text);
  EXPECT_EQ(values, before);
  ExpectValue<Kind>(LumTypeCreator::MakeValue(std::move(values)), text);
  EXPECT_TRUE(values.empty());  // NOLINT(bugprone-use-after-move)
}

TEST(LumTypeCreator, CopiesListsAndTakesOverRvalues) {
  ExpectWrapsList<CLumIntArray, int>({1, 2}, "1,2");
  ExpectWrapsList<CLumDoubleArray, double>({1.5, 2.0}, "1.5,2");
  ExpectWrapsList<CLumNameArray, CString>({L"a", L"b"}, "a,b");
}

TEST(LumTypeCreator, ListsAllKindsInAscendingOrder) {
  const std::pair<int, const wchar_t*> kExpected[] = {
      {0, L"undefined"},  {101, L"int"},         {102, L"uint"},       {103, L"double"},
      {104, L"bool"},     {109, L"float"},       {112, L"uint64"},     {203, L"double2d"},
      {301, L"double3d"}, {401, L"datainfo"},    {402, L"compoffset"}, {501, L"name"},
      {603, L"intarray"}, {607, L"doublearray"}, {613, L"namearray"},  {999, L"anything"},
  };
  const auto kinds = LumTypeCreator::Kinds();
  ASSERT_EQ(kinds.size(), std::size(kExpected));
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const auto& [code, name] = kExpected[i];
    EXPECT_EQ(static_cast<int>(kinds[i].type), code);
    EXPECT_STREQ(kinds[i].name, name);
    EXPECT_STREQ(LumTypeCreator::KindName(code), name);
    EXPECT_EQ(kinds[i].make == nullptr, code == 999);
  }
  EXPECT_EQ(LumTypeCreator::KindName(105), nullptr);
  EXPECT_EQ(LumTypeCreator::KindName(-1), nullptr);
  EXPECT_EQ(LumTypeCreator::KindName(1000), nullptr);
}

TEST(LumTypeCreator, MadeValuesReportTheCodeTheyWereMadeFrom) {
  for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
    if (kind.make != nullptr) {
      EXPECT_EQ(Value(kind.make())->Type(), kind.type) << Narrow(kind.name);
    }
  }
}

TEST(LumTypeCreator, AssignmentReturnsTheObjectItself) {
  LumTypeCreator first;
  LumTypeCreator second;
  EXPECT_EQ(&(first = second), &first);
  EXPECT_EQ(&(first = LumTypeCreator()), &first);
}

}  // namespace
