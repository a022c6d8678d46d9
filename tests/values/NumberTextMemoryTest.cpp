// Which texts of numbers cost memory.
#include <gtest/gtest.h>

#include "tests/Allocations.h"
#include "values/ArrayTypes.h"
#include "values/DoubleType.h"
#include "values/ScalarTypes.h"
#include "values/VectorTypes.h"

namespace {

template <typename Action>
int CountAllocations(const Action& action) {
  const int before = CountedAllocations();
  action();
  return CountedAllocations() - before;
}

TEST(NumberTextMemory, WritingIntoAStringAgainAllocatesNothing) {
  const CLumDouble real(-123456.75);
  const CLumDouble3D vector(1.5, 2.5, 3.5);
  const CLumULongLong number(18446744073709551615U);
  const CLumBool truth(true);
  const CLumDoubleArray list(std::vector<double>{0.5, 1.0 / 3.0});
  CString text;
  vector.GetValueStr(text);
  EXPECT_EQ(CountAllocations([&] {
              EXPECT_EQ(real.GetValueStr(text), 1);
              EXPECT_EQ(number.GetValueStr(text), 1);
              EXPECT_EQ(truth.GetValueStr(text), 1);
              EXPECT_EQ(list.GetValueStr(text), 1);
            }),
            0);
  EXPECT_EQ(text, L"0.5,0.3333333333333333");
}

TEST(NumberTextMemory, WritingIntoANewStringAllocatesOnce) {
  const CLumDouble real(-123456.75);
  const CLumDoubleArray list(std::vector<double>{0.5, 1.0 / 3.0, 2.0});
  EXPECT_EQ(CountAllocations([&] {
              CString text;
              real.GetValueStr(text);
            }),
            1);
  EXPECT_EQ(CountAllocations([&] {
              CString text;
              list.GetValueStr(text);
            }),
            1);
}

TEST(NumberTextMemory, EmptyListsAllocateNothing) {
  const CLumDoubleArray list;
  CLumIntArray numbers;
  const CString nothing;
  CString text;
  EXPECT_EQ(CountAllocations([&] {
              list.GetValueStr(text);
              numbers.SetValueStr(nothing);
            }),
            0);
}

TEST(NumberTextMemory, ReadingNumbersAllocatesNothing) {
  const CString text(L" -1234.5 ");
  const CString precise(L"0.12345678901234567");
  const CString vector(L"1.5,2e3,-3");
  CLumDouble real;
  CLumFloat single(0.0F);
  CLumDouble3D triple;
  EXPECT_EQ(CountAllocations([&] {
              EXPECT_TRUE(real.SetValueStr(text));
              EXPECT_TRUE(single.SetValueStr(text));
              EXPECT_TRUE(real.SetValueStr(precise));
              EXPECT_TRUE(triple.SetValueStr(vector));
            }),
            0);
  EXPECT_EQ(triple.Y(), 2000.0);
}

}  // namespace
