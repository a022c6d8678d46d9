#include "values/RecordTypes.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::MakeInfo;
using lum::test::MakeOffset;
using lum::test::Narrow;
using lum::test::TextOf;

TEST(RecordTypes, DataInfoPrintsAndReadsThePlatformsText) {
  CLumDataInfo value(MakeInfo(1));
  EXPECT_EQ(TextOf(value), "1,2,3,4,5,65535");
  EXPECT_TRUE(value.SetValueStr(CString(L"6, 5,4,3,2,1")));
  EXPECT_EQ(TextOf(value), "6,5,4,3,2,1");
  for (const wchar_t* text :
       {L"", L"1,2,3,4,5", L"1,2,3,4,5,6,7", L"1,2,3,4,5,65536", L"a,2,3,4,5,6"}) {
    EXPECT_FALSE(value.SetValueStr(CString(text))) << Narrow(text);
    EXPECT_EQ(TextOf(value), "6,5,4,3,2,1") << Narrow(text);
  }
}

TEST(RecordTypes, DataInfoIsBuiltFromItsParts) {
  EXPECT_EQ(TextOf(CLumDataInfo()), "0,0,0,0,0,0");
  EXPECT_EQ(TextOf(CLumDataInfo(MakeInfo(9).GetDataId(), 7, 8)), "9,2,3,4,7,8");
}

TEST(RecordTypes, DataInfoOfFiveNumbersMarksTheLastAsAny) {
  CLumDataInfo value;
  EXPECT_EQ(value.SetDataInfo(1, 2, 3, 4, 5), 1);
  CDataInfo info;
  EXPECT_EQ(value.GetDataInfo(info), 1);
  EXPECT_EQ(info.GetDataId().GetDataType(), 1);
  EXPECT_EQ(info.GetDataId().GetVesselId(), 2);
  EXPECT_EQ(info.GetDataId().GetGroupId(), 3);
  EXPECT_EQ(info.GetDataId().GetDeviceNum(), 4);
  EXPECT_EQ(info.GetItem(), 5);
  EXPECT_EQ(info.GetChannel(), 65535);
}

TEST(RecordTypes, CompOffsetPrintsTenItems) {
  EXPECT_EQ(TextOf(CLumCompOffset()), "0,0,,0,0,0,0,0.000000,0.000000,0.000000");
  EXPECT_EQ(TextOf(CLumCompOffset(MakeOffset(3))),
            "3,4294967295,Bow,3,65535,4,5,1.500000,-2.250000,1000000.000000");
}

TEST(RecordTypes, CompOffsetReadsBackAnEqualRecord) {
  for (const CCompOffset& offset : {CCompOffset(), MakeOffset(0), MakeOffset(65535)}) {
    CLumCompOffset value(MakeOffset(7));
    EXPECT_TRUE(value.SetValueStr(CString(TextOf(CLumCompOffset(offset)).c_str())));
    EXPECT_TRUE(value.GetCompOffset() == offset) << TextOf(value);
  }
}

TEST(RecordTypes, CompOffsetTakesBlanksAndFurtherItems) {
  CLumCompOffset value;
  EXPECT_TRUE(value.SetValueStr(CString(L" 1 , 2 , Main Mast ,3,4,5,6,7,-8.5,9e1,more")));
  EXPECT_EQ(TextOf(value), "1,2,Main Mast,3,4,5,6,7.000000,-8.500000,90.000000");
}

TEST(RecordTypes, CompOffsetRefusesEveryUnreadableItem) {
  const std::string before = TextOf(CLumCompOffset(MakeOffset(7)));
  for (const wchar_t* text : {
           L"",
           L"1",
           L"1,2",
           L"1,2,n,3,4,5,6,7,8",
           L"x,2,n,3,4,5,6,7,8,9",
           L"-1,2,n,3,4,5,6,7,8,9",
           L"4294967296,2,n,3,4,5,6,7,8,9",
           L"1,x,n,3,4,5,6,7,8,9",
           L"1,2,n,65536,4,5,6,7,8,9",
           L"1,2,n,3,x,5,6,7,8,9",
           L"1,2,n,3,4,x,6,7,8,9",
           L"1,2,n,3,4,5,x,7,8,9",
           L"1,2,n,3,4,5,6,x,8,9",
           L"1,2,n,3,4,5,6,7,x,9",
           L"1,2,n,3,4,5,6,7,8,x",
           L"1,2,a,b,3,4,5,6,7,8,9",
       }) {
    CLumCompOffset value(MakeOffset(7));
    EXPECT_FALSE(value.SetValueStr(CString(text))) << Narrow(text);
    EXPECT_EQ(TextOf(value), before) << Narrow(text);
  }
}

TEST(RecordTypes, CompOffsetPrintsNumbersThatAreNone) {
  CCompOffset offset;
  offset.SetOffset(std::numeric_limits<double>::infinity(), -0.0,
                   -std::numeric_limits<double>::infinity());
  CLumCompOffset value(offset);
  EXPECT_EQ(TextOf(value), "0,0,,0,0,0,0,inf,-0.000000,-inf");
  CLumCompOffset copy;
  EXPECT_TRUE(copy.SetValueStr(CString(TextOf(value).c_str())));
  EXPECT_EQ(TextOf(copy), TextOf(value));
}

// Refuses whatever it is set to.
class CFixedOffset : public CLumCompOffset {
 public:
  using CLumCompOffset::GetCompOffset;
  int SetCompOffset(const CCompOffset&) override { return 0; }
};

TEST(RecordTypes, ReadingGoesThroughTheVirtualSetter) {
  EXPECT_FALSE(CFixedOffset().SetValueStr(CString(L"1,2,n,3,4,5,6,7,8,9")));
}

TEST(RecordTypes, RecordsAreCopiedInAndOut) {
  CCompOffset offset = MakeOffset(1);
  CLumCompOffset value(offset);
  offset.SetOffsetName(L"Stern");
  EXPECT_EQ(Narrow(value.GetCompOffset().GetOffsetName()), "Bow");
  EXPECT_EQ(value.SetCompOffset(offset), 1);
  CCompOffset output;
  EXPECT_EQ(value.GetCompOffset(output), 1);
  EXPECT_TRUE(output == offset);
  CLumCompOffset target;
  target = value;
  EXPECT_TRUE(target.GetCompOffset() == offset);
}

}  // namespace
