#include "values/VectorTypes.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Narrow;
using lum::test::TextOf;

TEST(VectorTypes, PrintTheirComponents) {
  EXPECT_EQ(TextOf(CLumDouble2D()), "0.000000,0.000000");
  EXPECT_EQ(TextOf(CLumDouble2D(1, 2)), "1.000000,2.000000");
  EXPECT_EQ(TextOf(CLumDouble3D()), "0.000000,0.000000,0.000000");
  EXPECT_EQ(TextOf(CLumDouble3D(1, -2, 1e20)), "1.000000,-2.000000,100000000000000000000.000000");
  EXPECT_EQ(TextOf(CLumDouble3D(Point{1, 2, 3})), "1.000000,2.000000,3.000000");
}

TEST(VectorTypes, PairReadsTwoItems) {
  const struct {
    const wchar_t* text;
    const char* expected;  // Null when refused.
  } kCases[] = {
      {L"3,4", "3.000000,4.000000"},
      {L" 3 , 4e1 ", "3.000000,40.000000"},
      {L"3,4,x", "3.000000,4.000000"},
      {L"-inf,nan", "-inf,nan"},
      {L"5", nullptr},
      {L"5,", nullptr},
      {L",5", nullptr},
      {L"5,x", nullptr},
      {L"x,5", nullptr},
      {L"", nullptr},
  };
  for (const auto& [text, expected] : kCases) {
    CLumDouble2D value(1, 2);
    EXPECT_EQ(value.SetValueStr(CString(text)), expected != nullptr) << Narrow(text);
    EXPECT_EQ(TextOf(value), expected != nullptr ? expected : "1.000000,2.000000") << Narrow(text);
  }
}

TEST(VectorTypes, TripleReadsThreeItems) {
  const struct {
    const wchar_t* text;
    const char* expected;
  } kCases[] = {
      {L"4,5,6", "4.000000,5.000000,6.000000"},
      {L"4,5,6,7", "4.000000,5.000000,6.000000"},
      {L"4,5", nullptr},
      {L"4,5,x", nullptr},
      {L"4,x,6", nullptr},
      {L"", nullptr},
  };
  for (const auto& [text, expected] : kCases) {
    CLumDouble3D value(1, 2, 3);
    EXPECT_EQ(value.SetValueStr(CString(text)), expected != nullptr) << Narrow(text);
    EXPECT_EQ(TextOf(value), expected != nullptr ? expected : "1.000000,2.000000,3.000000")
        << Narrow(text);
  }
}

TEST(VectorTypes, ReadBackWhatTheyPrint) {
  CLumDouble2D pair;
  EXPECT_TRUE(pair.SetValueStr(CString(L"-0.000000,1234.500000")));
  EXPECT_EQ(TextOf(pair), "-0.000000,1234.500000");
  CLumDouble3D triple;
  EXPECT_TRUE(triple.SetValueStr(CString(L"inf,-inf,nan")));
  EXPECT_EQ(TextOf(triple), "inf,-inf,nan");
}

// Refuses whatever it is set to.
class CFixedPair : public CLumDouble2D {
 public:
  int SetDouble2D(double, double) override { return 0; }
};
class CFixedTriple : public CLumDouble3D {
 public:
  int SetDouble3D(double, double, double) override { return 0; }
};

TEST(VectorTypes, ReadingGoesThroughTheVirtualSetter) {
  EXPECT_FALSE(CFixedPair().SetValueStr(CString(L"1,2")));
  EXPECT_FALSE(CFixedTriple().SetValueStr(CString(L"1,2,3")));
}

TEST(VectorTypes, CompoundArithmeticTakesOtherKindsForZero) {
  CLumDouble3D p(1, 2, 3);
  p += CLumDouble(2);
  EXPECT_EQ(TextOf(p), "1.000000,2.000000,3.000000");
  p *= CLumDouble(2);
  EXPECT_EQ(TextOf(p), "0.000000,0.000000,0.000000");
  CLumDouble2D q(1, -2);
  q /= CLumDouble3D(1, 1, 1);
  EXPECT_EQ(TextOf(q), "inf,-inf");
}

TEST(VectorTypes, NegStoresTheNegatedSource) {
  CLumDouble2D pair(1, 2);
  CLumDouble2D source(5, -6);
  EXPECT_EQ(pair.Neg(source), 1);
  EXPECT_EQ(TextOf(pair), "-5.000000,6.000000");
  EXPECT_EQ(pair.Neg(pair), 1);
  EXPECT_EQ(TextOf(pair), "5.000000,-6.000000");
  CLumDouble3D triple(1, 2, 3);
  CLumAnything text(L"7,8,-9");
  EXPECT_EQ(triple.Neg(text), 1);
  EXPECT_EQ(TextOf(triple), "-7.000000,-8.000000,9.000000");
  EXPECT_EQ(pair.Neg(text), 1);
  EXPECT_EQ(TextOf(pair), "-7.000000,-8.000000");
}

TEST(VectorTypes, NegOfAnotherKindChangesNothing) {
  CLumDouble number(4);
  CLumDouble2D pair(1, 2);
  CLumDouble3D triple(1, 2, 3);
  EXPECT_EQ(pair.Neg(number), 0);
  EXPECT_EQ(pair.Neg(triple), 0);
  EXPECT_EQ(triple.Neg(pair), 0);
  EXPECT_EQ(TextOf(pair), "1.000000,2.000000");
  EXPECT_EQ(TextOf(triple), "1.000000,2.000000,3.000000");
}

TEST(VectorTypes, BinaryArithmeticWorksByComponent) {
  const CLumDouble2D a(1, 8);
  const CLumDouble2D b(2, 4);
  EXPECT_EQ(TextOf(a + b), "3.000000,12.000000");
  EXPECT_EQ(TextOf(a - b), "-1.000000,4.000000");
  EXPECT_EQ(TextOf(a * b), "2.000000,32.000000");
  EXPECT_EQ(TextOf(a / b), "0.500000,2.000000");
  CLumDouble3D p(1, 2, 3);
  const CLumDouble3D q(4, 4, 4);
  EXPECT_EQ(TextOf(p + q), "5.000000,6.000000,7.000000");
  EXPECT_EQ(TextOf(p - q), "-3.000000,-2.000000,-1.000000");
  p += q;
  EXPECT_EQ(TextOf(p), "5.000000,6.000000,7.000000");
  p -= q;
  p -= q;
  EXPECT_EQ(TextOf(p), "-3.000000,-2.000000,-1.000000");
  p += p;
  EXPECT_EQ(TextOf(p), "-6.000000,-4.000000,-2.000000");
}

TEST(VectorTypes, TripleIsAPoint) {
  CLumDouble3D p(1, 2, 3);
  EXPECT_EQ(p.X(), 1.0);
  EXPECT_EQ(p.Y(), 2.0);
  EXPECT_EQ(p.Z(), 3.0);
  p.X(4);
  p.Y(5);
  p.Z(6);
  EXPECT_EQ(p.GetAsPoint(), (Point{4, 5, 6}));
  Point point{7, 8, 9};
  p.Set(point);
  EXPECT_EQ(TextOf(p), "7.000000,8.000000,9.000000");
}

TEST(VectorTypes, MovedFromValuesStayUsable) {
  CLumDouble2D pair(1, 2);
  CLumDouble2D taken(std::move(pair));
  EXPECT_EQ(TextOf(taken), "1.000000,2.000000");
  EXPECT_EQ(pair.SetDouble2D(3, 4), 1);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(TextOf(pair), "3.000000,4.000000");
}

}  // namespace
