// The text form of a data descriptor.
#include "platform/LumBase.h"

CString CDataInfo::GenerateString() {
  CString text;
  for (const unsigned short number :
       {m_id.GetDataType(), m_id.GetVesselId(), m_id.GetGroupId(), m_id.GetDeviceNum(), m_item}) {
    text << static_cast<int>(number) << L',';
  }
  return text << static_cast<int>(m_channel);
}

bool CDataInfo::SetFromString(const CString& text) {
  const CLumString items(text, L',', true, false);
  unsigned short numbers[6] = {};
  for (int i = 0; i < 6; ++i) {
    if (!items.GetItem(i, numbers[i])) {
      return false;
    }
  }
  if (items.Count() != 6) {
    return false;
  }
  m_id.SetDataType(numbers[0]);
  m_id.SetVesselId(numbers[1]);
  m_id.SetGroupId(numbers[2]);
  m_id.SetDeviceNum(numbers[3]);
  m_item = numbers[4];
  m_channel = numbers[5];
  return true;
}
