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

template <typename Text>
Text MakeText(const wchar_t* text) {
  Text value;
  value.SetName(CString(text));
  return value;
}

// Every decoder once, on texts of one kind.
template <typename Text>
void ExpectDecodingAllocatesNothing() {
  auto record = MakeText<Text>(L"\x34\x12");
  auto hexText = MakeText<Text>(L"1A2B3C4D");
  auto response = MakeText<Text>(L">0123+00.001+01.234-02.500+01.234-02.500+01.234-02.500+01.234");
  auto frame = MakeText<Text>(L"98FEF10083412000000000000");
  auto message = MakeText<Text>(L"?FF??18FEF?3412000000000000.");
  auto clock = MakeText<Text>(L"123045.5");
  auto number = MakeText<Text>(L"  -1234567890.12345678901234567890e-10 m");
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
    codes += result.Val(number, false);
  });
  EXPECT_EQ(allocations, 0);
  EXPECT_EQ(codes, 8);
}

TEST(FormulaMemory, DecodingEightBitTextsAllocatesNothing) {
  ExpectDecodingAllocatesNothing<CLumIoName>();
}

TEST(FormulaMemory, DecodingFreeFormTextsAllocatesNothing) {
  ExpectDecodingAllocatesNothing<CLumAnything>();
}

template <typename Text>
int CountPositionAllocations() {
  auto latitude = MakeText<Text>(L"4807.038");
  auto south = MakeText<Text>(L"S");
  CLumDouble result;
  return CountAllocations([&] { EXPECT_EQ(result.NMEAPos(latitude, south), 1); });
}

TEST(FormulaMemory, PositionsAllocateNothing) {
  EXPECT_EQ(CountPositionAllocations<CLumName>(), 0);
  EXPECT_EQ(CountPositionAllocations<CLumIoName>(), 0);
  EXPECT_EQ(CountPositionAllocations<CLumAnything>(), 0);
}

TEST(FormulaMemory, ComputingAllocatesNothing) {
  CLumDouble two(2.0);
  CLumInt three(3);
  CLumFloat half(0.5F);
  CLumDouble result;
  int codes = 0;
  const int allocations = CountAllocations([&] {
    codes += result.Pow1D(two, three);
    codes += result.IsEqual(two, three, half);
    codes += result.FromEulerRoll(two, half);
    codes += result.BitVal(three, two);
    codes += result.HmsToMsec(three);
    codes += result.ExpandTime(three);
    codes += result.UtcToLocal(three);
    codes += result.CYMDMsecToMsec(two, three, half, half) + 1;  // 2 is no year.
  });
  EXPECT_EQ(allocations, 0);
  EXPECT_EQ(codes, 8);
}

}  // namespace
