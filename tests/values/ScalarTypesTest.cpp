#include "values/DoubleType.h"
#include "values/ScalarTypes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Narrow;
using lum::test::TextOf;

struct TextCase {
  const wchar_t* text;
  const char* expected;  // The value's text form afterwards, or null when the text is refused.
};

template <typename Kind, std::size_t N>
void ExpectReads(const Kind& start, const TextCase (&cases)[N]) {
  for (const auto& [text, expected] : cases) {
    Kind value = start;
    EXPECT_EQ(value.SetValueStr(CString(text)), expected != nullptr) << Narrow(text);
    EXPECT_EQ(TextOf(value), expected != nullptr ? expected : TextOf(start)) << Narrow(text);
  }
}

TEST(ScalarTypes, PrintTheirTextForms) {
  EXPECT_EQ(TextOf(CLumBool(true)), "1");
  EXPECT_EQ(TextOf(CLumBool(false)), "0");
  EXPECT_EQ(TextOf(CLumInt(-5)), "-5");
  EXPECT_EQ(TextOf(CLumInt(std::numeric_limits<int>::min())), "-2147483648");
  EXPECT_EQ(TextOf(CLumUInt(4000000000U)), "4000000000");
  EXPECT_EQ(TextOf(CLumULongLong(std::numeric_limits<std::uint64_t>::max())),
            "18446744073709551615");
  EXPECT_EQ(TextOf(CLumFloat(0.1F)), "0.100000");
  EXPECT_EQ(TextOf(CLumFloat(16777216.0F)), "16777216.000000");
  EXPECT_EQ(TextOf(CLumDouble(2.5)), "2.500000");
  EXPECT_EQ(TextOf(CLumDouble(0.1234567)), "0.123457");
  EXPECT_EQ(TextOf(CLumDouble(-0.0000001)), "-0.000000");
  EXPECT_EQ(TextOf(CLumDouble(1e20)), "100000000000000000000.000000");
  EXPECT_EQ(TextOf(CLumDouble()), "0.000000");
}

TEST(ScalarTypes, WritingReplacesWhatTheTextHeld) {
  CString text = L"old";
  for (const auto& kind : lum::test::Kinds()) {
    const auto value = kind.make(1);
    text = L"old";
    if (value->GetValueStr(text) != 0) {
      EXPECT_EQ(Narrow(text), TextOf(*value)) << kind.name;
    } else {
      EXPECT_EQ(Narrow(text), "old") << kind.name;
    }
  }
}

TEST(ScalarTypes, BoolReadsItsFirstItem) {
  constexpr TextCase kCases[] = {
      {L"1", "1"},       {L"0", "0"},      {L" 0 ", "0"},    {L"TRUE", "1"},
      {L"false", "0"},   {L"0,1", "0"},    {L"", nullptr},   {L"2", nullptr},
      {L"yes", nullptr}, {L",0", nullptr}, {L"-1", nullptr},
  };
  ExpectReads(CLumBool(true), kCases);
}

TEST(ScalarTypes, IntReadsItsFirstItemStrictly) {
  constexpr TextCase kCases[] = {
      {L"42", "42"},
      {L" -42\t", "-42"},
      {L"+5", "5"},
      {L"7,8", "7"},
      {L"7,x", "7"},
      {L"2147483647", "2147483647"},
      {L"-2147483648", "-2147483648"},
      {L"", nullptr},
      {L" ", nullptr},
      {L"abc", nullptr},
      {L"12abc", nullptr},
      {L"3.7", nullptr},
      {L"2147483648", nullptr},
      {L",7", nullptr},
  };
  ExpectReads(CLumInt(-5), kCases);
}

TEST(ScalarTypes, UIntReadsItsFirstItemStrictly) {
  constexpr TextCase kCases[] = {
      {L"4294967295", "4294967295"}, {L"7,8", "7"},    {L"", nullptr},
      {L"4294967296", nullptr},      {L"-1", nullptr}, {L"1.0", nullptr},
  };
  ExpectReads(CLumUInt(9), kCases);
}

TEST(ScalarTypes, ULongLongScansTheWholeText) {
  constexpr TextCase kCases[] = {
      {L"18446744073709551615", "18446744073709551615"},
      {L"99999999999999999999", "18446744073709551615"},
      {L"12,13", "12"},
      {L"12abc", "12"},
      {L"\n 12", "12"},
      {L"-1", "18446744073709551615"},
      {L"3.9", "3"},
      {L"", nullptr},
      {L"abc", nullptr},
      {L",12", nullptr},
      {L"-", nullptr},
  };
  ExpectReads(CLumULongLong(77), kCases);
}

TEST(ScalarTypes, FloatReadsItsFirstItemStrictly) {
  constexpr TextCase kCases[] = {
      {L"0.1", "0.100000"}, {L"-1.5e3", "-1500.000000"}, {L"2,3", "2.000000"},
      {L"inf", "inf"},      {L"-inf", "-inf"},           {L"nan", "nan"},
      {L"", nullptr},       {L"1e39", nullptr},          {L"1.5x", nullptr},
      {L"0x1p3", nullptr},
  };
  ExpectReads(CLumFloat(9.0F), kCases);
}

TEST(ScalarTypes, DoubleReadsItsFirstItemStrictly) {
  constexpr TextCase kCases[] = {
      {L"2.5", "2.500000"}, {L" 1e3 ", "1000.000000"}, {L"1,5", "1.000000"}, {L"-inf", "-inf"},
      {L"-nan", "-nan"},    {L"1e-400", "0.000000"},   {L"", nullptr},       {L"abc", nullptr},
      {L"1e400", nullptr},  {L"1e", nullptr},          {L"2.5 m", nullptr},
  };
  ExpectReads(CLumDouble(9.0), kCases);
}

TEST(ScalarTypes, ReadBackWhatTheyPrint) {
  for (const int number : {std::numeric_limits<int>::min(), -1, 0, 1, 1000000007}) {
    CLumInt value(5);
    EXPECT_TRUE(value.SetValueStr(CString(TextOf(CLumInt(number)).c_str())));
    int output = 77;
    EXPECT_EQ(value.GetInt(output), 1);
    EXPECT_EQ(output, number);
  }
  constexpr double kLargest = std::numeric_limits<double>::max();
  for (const double number : {0.0, -0.0, 0.5, -1234.015625, 1e20, kLargest, -kLargest,
                              std::numeric_limits<double>::infinity()}) {
    CLumDouble value(5.0);
    EXPECT_TRUE(value.SetValueStr(CString(TextOf(CLumDouble(number)).c_str())));
    double output = 77.0;
    EXPECT_EQ(value.GetDouble(output), 1);
    EXPECT_EQ(output, number);
    EXPECT_EQ(std::signbit(output), std::signbit(number));
  }
  CLumBool truth(true);
  EXPECT_TRUE(truth.SetValueStr(L"0"));
  EXPECT_EQ(TextOf(truth), "0");
}

// A kind of its own that refuses what it is set to.
class CEvenInt : public CLumInt {
 public:
  CEvenInt() : CLumInt(0) {}
  int SetInt(int value) override { return value % 2 == 0 ? CLumInt::SetInt(value) : 0; }
};

// Kinds that refuse whatever they are set to.
class CFixedBool : public CLumBool {
 public:
  CFixedBool() : CLumBool(false) {}
  int SetBool(bool) override { return 0; }
};
class CFixedUInt : public CLumUInt {
 public:
  CFixedUInt() : CLumUInt(0) {}
  int SetUInt(unsigned int) override { return 0; }
};
class CFixedFloat : public CLumFloat {
 public:
  CFixedFloat() : CLumFloat(0.0F) {}
  int SetFloat(float) override { return 0; }
};
class CFixedDouble : public CLumDouble {
 public:
  CFixedDouble() : CLumDouble(0.0) {}
  int SetDouble(double) override { return 0; }
};

TEST(ScalarTypes, ReadingIsRefusedWhenTheVirtualSetterRefuses) {
  EXPECT_FALSE(CFixedBool().SetValueStr(CString(L"1")));
  EXPECT_FALSE(CFixedUInt().SetValueStr(CString(L"1")));
  EXPECT_FALSE(CFixedFloat().SetValueStr(CString(L"1")));
  EXPECT_FALSE(CFixedDouble().SetValueStr(CString(L"1")));
}

TEST(ScalarTypes, ReadingGoesThroughTheVirtualSetter) {
  CEvenInt value;
  EXPECT_TRUE(value.SetValueStr(CString(L"4")));
  EXPECT_FALSE(value.SetValueStr(CString(L"5")));
  EXPECT_EQ(TextOf(value), "4");
}

TEST(ScalarTypes, OtherKindsDoNotConvert) {
  CLumInt number(1);
  static_cast<CLumType&>(number) = CLumDouble(2.0);
  EXPECT_EQ(TextOf(number), "1");
  static_cast<CLumType&>(number) = CLumInt(9);
  EXPECT_EQ(TextOf(number), "9");
  double output = 7.0;
  EXPECT_EQ(CLumFloat(2.0F).GetDouble(output), 0);
  EXPECT_EQ(output, 7.0);
}

TEST(ScalarTypes, SameKindAssignmentCopies) {
  CLumInt target(1);
  const CLumInt source(9);
  target = source;
  EXPECT_EQ(TextOf(target), "9");
  CLumUndefined empty;
  empty = CLumUndefined();
  static_cast<CLumType&>(empty) = source;
  EXPECT_EQ(TextOf(empty), "(none)");
}

TEST(ScalarTypes, WritingATextLeavesItsCopiesAlone) {
  for (const CString& before : {CString(), CString(L"1"), CString(L'x', 10), CString(L'x', 1000)}) {
    CString text = before;
    const CString copy = text;
    EXPECT_EQ(CLumDouble(-2.5).GetValueStr(text), 1);
    EXPECT_EQ(text, L"-2.500000");
    EXPECT_EQ(CLumUInt(7).GetValueStr(text), 1);
    EXPECT_EQ(text, L"7");
    EXPECT_EQ(CLumBool(true).GetValueStr(text), 1);
    EXPECT_EQ(text, L"1");
    EXPECT_EQ(text.GetLength(), 1);
    EXPECT_EQ(copy, before);
  }
}

TEST(ScalarTypes, CompoundArithmeticTakesOtherKindsForZero) {
  CLumDouble d(3.0);
  d += CLumInt(4);
  EXPECT_EQ(TextOf(d), "3.000000");
  d -= CLumInt(4);
  EXPECT_EQ(TextOf(d), "3.000000");
  d *= CLumInt(4);
  EXPECT_EQ(TextOf(d), "0.000000");
  d = CLumDouble(-3.0);
  d /= CLumInt(4);
  EXPECT_EQ(TextOf(d), "-inf");
  CLumDouble zero;
  zero /= CLumUndefined();
  double output = 7.0;
  EXPECT_EQ(zero.GetDouble(output), 1);
  EXPECT_TRUE(std::isnan(output));
}

TEST(ScalarTypes, BinaryArithmeticOfDoubles) {
  const CLumDouble a(3.0);
  const CLumDouble b(4.0);
  EXPECT_EQ(TextOf(a + b), "7.000000");
  EXPECT_EQ(TextOf(a - b), "-1.000000");
  EXPECT_EQ(TextOf(a * b), "12.000000");
  EXPECT_EQ(TextOf(a / b), "0.750000");
  EXPECT_EQ(TextOf(a / CLumDouble()), "inf");
}

}  // namespace
