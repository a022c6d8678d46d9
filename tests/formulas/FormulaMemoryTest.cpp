// Operations on device data run at the rate of the devices: they must not allocate.
#include <gtest/gtest.h>

#include "tests/Allocations.h"
#include "values/LumType.h"

namespace {

template <typename Operations>
int CountAllocations(const Operations& operations) {
  const int before = CountedAllocations();
  operations();
  return CountedAllocations() - before;
}

TEST(FormulaMemory, TheCountSeesAnAllocation) {
  EXPECT_GE(CountAllocations([] { CLumName name(L"a name to be copied"); }), 1);
}

TEST(FormulaMemory, DecodingAllocatesNothing) {
  CLumIoName record("\x34\x12\x01\x02\x03\x04\x05\x06");
  CLumIoName hexText("1A2B3C4D");
  CLumIoName response(">0123+00.001+01.234-02.500");
  CLumIoName frame("98FEF10083412000000000000");
  CLumIoName message("?FF??18FEF?3412000000000000.");
  CLumIoName clock("123045.5");
  CLumIoName longNumber("  -1234567890.12345678901234567890e-10 m");
  CLumName latitude(L"4807.038");
  CLumName south(L"S");
  CLumDouble seven(7.0);
  CLumDouble ten(10.0);
  CLumDouble one(1.0);
  CLumInt zero(0);
  CLumDouble result;
  int codes = 0;
  const int allocations = CountAllocations([&] {
    codes += result.BinVal(record, seven, false);
    codes += result.BinVal(hexText, ten, false);
    codes += result.AdamVal(response, one);
    codes += result.CanVal(frame, seven, zero, false);
    codes += result.J1939Val(message, seven, zero, false);
    codes += result.J1939BitsVal(message, seven, zero, ten, false);
    codes += result.TimeConv(clock);
    codes += result.Val(longNumber, false);
    codes += result.NMEAPos(latitude, south);
    codes += result.CYMDMsecToMsec(seven, one, one, one) + 1;  // 7 is no year.
    codes += result.BitVal(seven, zero);
  });
  EXPECT_EQ(allocations, 0);
  EXPECT_EQ(codes, 11);
}

}  // namespace
