// CDataId, CDataInfo, CCompOffset and Point.
#include "platform/DataRecords.h"

#include <gtest/gtest.h>

#include "tests/TextPrinting.h"

namespace {

CDataId IdOf(unsigned short type, unsigned short vessel, unsigned short group,
             unsigned short device) {
  CDataId id;
  id.SetDataType(type);
  id.SetVesselId(vessel);
  id.SetGroupId(group);
  id.SetDeviceNum(device);
  return id;
}

constexpr const wchar_t* kRefused[] = {
    L"",
    L"1,2,3,4,5",
    L"1,2,3,4,5,6,7",
    L"1,2,3,4,5,",
    L",1,2,3,4,5",
    L"1,2,3,4,5,x",
    L"1,2,3,4,5,65536",
    L"-1,2,3,4,5,6",
    L"1,2,,4,5,6",
    L"1;2;3;4;5;6",
    L"1 2,3,4,5,6,7",
    L"1,2,3,4,5,6.0",
    L"0x1,2,3,4,5,6",
    L"1,2,3,4,5,6,",
    L",,,,,",
};

}  // namespace

TEST(DataRecords, IdsHoldFourNumbers) {
  const CDataId id = IdOf(1, 2, 3, 65535);
  EXPECT_EQ(id.GetDataType(), 1);
  EXPECT_EQ(id.GetVesselId(), 2);
  EXPECT_EQ(id.GetGroupId(), 3);
  EXPECT_EQ(id.GetDeviceNum(), 65535);
  EXPECT_EQ(CDataId(), IdOf(0, 0, 0, 0));
}

TEST(DataRecords, IdsDifferByEachNumber) {
  const CDataId id = IdOf(1, 2, 3, 4);
  EXPECT_EQ(id, IdOf(1, 2, 3, 4));
  EXPECT_NE(id, IdOf(9, 2, 3, 4));
  EXPECT_NE(id, IdOf(1, 9, 3, 4));
  EXPECT_NE(id, IdOf(1, 2, 9, 4));
  EXPECT_NE(id, IdOf(1, 2, 3, 9));
}

TEST(DataRecords, InfoPrintsItsSixNumbersInOrder) {
  EXPECT_EQ(CDataInfo(IdOf(1, 2, 3, 4), 5, 65535).GenerateString(), L"1,2,3,4,5,65535");
  EXPECT_EQ(CDataInfo().GenerateString(), L"0,0,0,0,0,0");
}

TEST(DataRecords, InfoReadsItsOwnText) {
  for (const CDataInfo& info : {CDataInfo(), CDataInfo(IdOf(1, 2, 3, 4), 5, 6),
                                CDataInfo(IdOf(65535, 65535, 65535, 65535), 65535, 65535)}) {
    CDataInfo back(IdOf(9, 9, 9, 9), 9, 9);
    EXPECT_TRUE(back.SetFromString(info.GenerateString()));
    EXPECT_EQ(back, info);
  }
}

TEST(DataRecords, InfoReadsBlanksAroundNumbers) {
  CDataInfo info;
  EXPECT_TRUE(info.SetFromString(L" 1 ,\t2,3 , 4,5,6 "));
  EXPECT_EQ(info, CDataInfo(IdOf(1, 2, 3, 4), 5, 6));
}

TEST(DataRecords, InfoRefusesOtherTextsAndStaysAsItWas) {
  for (const wchar_t* text : kRefused) {
    const CDataInfo before(IdOf(9, 8, 7, 6), 5, 4);
    CDataInfo info = before;
    EXPECT_FALSE(info.SetFromString(text)) << CStringA(text).GetString();
    EXPECT_EQ(info, before) << CStringA(text).GetString();
  }
}

TEST(DataRecords, InfoTakesIdAndNumbersTogether) {
  CDataInfo info;
  info.SetInfo(IdOf(1, 2, 3, 4), 5, 65535);
  EXPECT_EQ(info.GetDataId(), IdOf(1, 2, 3, 4));
  EXPECT_EQ(info.GetItem(), 5);
  EXPECT_EQ(info.GetChannel(), 65535);
  EXPECT_NE(info, CDataInfo(IdOf(1, 2, 3, 4), 6, 65535));
  EXPECT_NE(info, CDataInfo(IdOf(1, 2, 3, 4), 5, 6));
  EXPECT_NE(info, CDataInfo(IdOf(1, 2, 3, 5), 5, 65535));
}

TEST(DataRecords, OffsetHoldsWhatWasSet) {
  CCompOffset offset;
  offset.m_nOffsetId = 7;
  offset.m_nOffsetType = 8;
  offset.SetOffsetName(L"mast");
  offset.SetOffset(1.5, -2.5, 3.5);
  offset.SetOffsetDataId(IdOf(1, 2, 3, 4));
  double x = 77;
  double y = 77;
  double z = 77;
  offset.GetOffset(x, y, z);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, -2.5);
  EXPECT_EQ(z, 3.5);
  EXPECT_EQ(offset.GetOffsetName(), L"mast");
  EXPECT_EQ(offset.GetOffsetDataId(), IdOf(1, 2, 3, 4));
}

TEST(DataRecords, OffsetsDifferByEachPart) {
  using Change = void (*)(CCompOffset&);
  const Change changes[] = {
      [](CCompOffset& o) { o.m_nOffsetId = 1; },
      [](CCompOffset& o) { o.m_nOffsetType = 1; },
      [](CCompOffset& o) { o.SetOffsetName(L"x"); },
      [](CCompOffset& o) { o.SetOffset(0, 0, 1); },
      [](CCompOffset& o) { o.SetOffsetDataId(IdOf(0, 0, 0, 1)); },
  };
  EXPECT_EQ(CCompOffset(), CCompOffset());
  for (const Change change : changes) {
    CCompOffset offset;
    change(offset);
    EXPECT_NE(offset, CCompOffset());
    EXPECT_EQ(CCompOffset(offset), offset);
  }
}

TEST(DataRecords, PointsCompareByCoordinate) {
  EXPECT_EQ((Point{1, 2, 3}), (Point{1, 2, 3}));
  EXPECT_NE((Point{1, 2, 3}), (Point{1, 2, 4}));
  EXPECT_EQ(Point(), (Point{0, 0, 0}));
}
