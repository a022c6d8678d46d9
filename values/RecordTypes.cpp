// A data descriptor's text is the platform's; a component offset's ten items are written and read
// here.
#include "values/RecordTypes.h"

#include "values/NumberText.h"

namespace {

using lum::detail::AppendDecimal;
using lum::detail::AppendFixed;

// The last number of a descriptor that was made without one.
constexpr unsigned short kAnyChannel = 65535;

// The places of a component offset's items.
enum OffsetItem {
  ITEM_OFFSET_ID = 0,
  ITEM_OFFSET_TYPE = 1,
  ITEM_NAME = 2,
  ITEM_DATA_TYPE = 3,
  ITEM_VESSEL_ID = 4,
  ITEM_GROUP_ID = 5,
  ITEM_DEVICE_NUM = 6,
  ITEM_X = 7,
  ITEM_Y = 8,
  ITEM_Z = 9,
};

CDataId MakeDataId(unsigned short dataType, unsigned short vesselId, unsigned short groupId,
                   unsigned short deviceNum) {
  CDataId id;
  id.SetDataType(dataType);
  id.SetVesselId(vesselId);
  id.SetGroupId(groupId);
  id.SetDeviceNum(deviceNum);
  return id;
}

bool ReadDataId(const CLumString& items, CDataId& id) {
  unsigned short dataType = 0;
  unsigned short vesselId = 0;
  unsigned short groupId = 0;
  unsigned short deviceNum = 0;
  if (!items.GetItem(ITEM_DATA_TYPE, dataType) || !items.GetItem(ITEM_VESSEL_ID, vesselId) ||
      !items.GetItem(ITEM_GROUP_ID, groupId) || !items.GetItem(ITEM_DEVICE_NUM, deviceNum)) {
    return false;
  }
  id = MakeDataId(dataType, vesselId, groupId, deviceNum);
  return true;
}

// False, with `offset` partly filled, when one of the ten items is missing or not readable.
bool ReadOffset(const CLumString& items, CCompOffset& offset) {
  CString name;
  CDataId id;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  if (!items.GetItem(ITEM_OFFSET_ID, offset.m_nOffsetId) ||
      !items.GetItem(ITEM_OFFSET_TYPE, offset.m_nOffsetType) || !items.GetItem(ITEM_NAME, name) ||
      !ReadDataId(items, id) || !items.GetItem(ITEM_X, x) || !items.GetItem(ITEM_Y, y) ||
      !items.GetItem(ITEM_Z, z)) {
    return false;
  }
  offset.SetOffsetName(name);
  offset.SetOffset(x, y, z);
  offset.SetOffsetDataId(id);
  return true;
}

void AppendDataId(CString& text, const CDataId& id) {
  for (const unsigned int number :
       {id.GetDataType(), id.GetVesselId(), id.GetGroupId(), id.GetDeviceNum()}) {
    text.AppendChar(L',');
    AppendDecimal(text, number);
  }
}

void AppendPoint(CString& text, const CCompOffset& offset) {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  offset.GetOffset(x, y, z);
  for (const double coordinate : {x, y, z}) {
    text.AppendChar(L',');
    AppendFixed(text, coordinate);
  }
}

}  // namespace

// ---- CLumDataInfo

CLumDataInfo::~CLumDataInfo() = default;

bool CLumDataInfo::SetValueStr(CString text) { return m_info.SetFromString(text); }

CLumType::LUM_TYPE CLumDataInfo::Type() const { return TYPE_DATAINFO; }

CLumDataInfo* CLumDataInfo::MakeCopy() const { return new CLumDataInfo(*this); }

int CLumDataInfo::GetValueStr(CString& text) const {
  CDataInfo copy(m_info);  // A host's GenerateString may not be const.
  text = copy.GenerateString();
  return 1;
}

CLumType& CLumDataInfo::operator=(const CLumType& source) {
  source.GetDataInfo(m_info);
  return *this;
}

int CLumDataInfo::GetDataInfo(CDataInfo& info) const {
  info = m_info;
  return 1;
}

int CLumDataInfo::SetDataInfo(const CDataInfo& info) {
  m_info = info;
  return 1;
}

int CLumDataInfo::SetDataInfo(unsigned short dataType, unsigned short vesselId,
                              unsigned short groupId, unsigned short deviceNum,
                              unsigned short item) {
  m_info.SetInfo(MakeDataId(dataType, vesselId, groupId, deviceNum), item, kAnyChannel);
  return 1;
}

// ---- CLumCompOffset

CLumCompOffset::~CLumCompOffset() = default;

bool CLumCompOffset::SetValueStr(CString text) {
  CCompOffset offset;
  return ReadOffset(CLumString(text, L',', true, false), offset) && SetCompOffset(offset) != 0;
}

CLumType::LUM_TYPE CLumCompOffset::Type() const { return TYPE_COMPOFFSET; }

CLumCompOffset* CLumCompOffset::MakeCopy() const { return new CLumCompOffset(*this); }

int CLumCompOffset::GetValueStr(CString& text) const {
  CString written;
  AppendDecimal(written, m_offset.m_nOffsetId);
  written.AppendChar(L',');
  AppendDecimal(written, m_offset.m_nOffsetType);
  written.AppendChar(L',');
  written += m_offset.GetOffsetName();
  AppendDataId(written, m_offset.GetOffsetDataId());
  AppendPoint(written, m_offset);
  text = written;
  return 1;
}

CLumType& CLumCompOffset::operator=(const CLumType& source) {
  source.GetCompOffset(m_offset);
  return *this;
}

int CLumCompOffset::GetCompOffset(CCompOffset& offset) const {
  offset = m_offset;
  return 1;
}

int CLumCompOffset::SetCompOffset(const CCompOffset& offset) {
  m_offset = offset;
  return 1;
}
