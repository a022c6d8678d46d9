// The text form of a data descriptor.
#include "platform/DataRecords.h"

#include "platform/StringAppend.h"
#include "platform/Tokenizer.h"

namespace {

constexpr int kNumbersOfDataInfo = 6;

}  // namespace

CDataInfo::CDataInfo(const CDataId& id, unsigned short item, unsigned short channel)
    : m_id(id), m_item(item), m_channel(channel) {}

void CDataInfo::SetInfo(const CDataId& id, unsigned short item, unsigned short channel) {
  m_id = id;
  m_item = item;
  m_channel = channel;
}

CString CDataInfo::GenerateString() const {
  CString text;
  text << static_cast<int>(m_id.GetDataType()) << L',' << static_cast<int>(m_id.GetVesselId())
       << L',' << static_cast<int>(m_id.GetGroupId()) << L','
       << static_cast<int>(m_id.GetDeviceNum()) << L',' << static_cast<int>(m_item) << L','
       << static_cast<int>(m_channel);
  return text;
}

bool CDataInfo::SetFromString(const CString& text) {
  const CLumString items(text, L',', true, false);
  if (items.Count() != kNumbersOfDataInfo) {
    return false;
  }
  unsigned short numbers[kNumbersOfDataInfo] = {};
  for (int i = 0; i < kNumbersOfDataInfo; ++i) {
    if (!items.GetItem(i, numbers[i])) {
      return false;
    }
  }
  m_id.SetDataType(numbers[0]);
  m_id.SetVesselId(numbers[1]);
  m_id.SetGroupId(numbers[2]);
  m_id.SetDeviceNum(numbers[3]);
  m_item = numbers[4];
  m_channel = numbers[5];
  return true;
}
