// The records that attributes hold by value: CDataId, CDataInfo, CCompOffset and Point.
#pragma once

#include "platform/FrameworkString.h"

/// A place or direction in space; units are the caller's. Threads: plain data, as all records of
/// this header: one may be read in several threads while none changes it.
struct Point {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  friend bool operator==(const Point&, const Point&) = default;
};

/// Identifies a data stream by four numbers. Threads: as Point.
class CDataId {
 public:
  CDataId() = default;

  unsigned short GetDataType() const noexcept { return m_dataType; }
  unsigned short GetVesselId() const noexcept { return m_vesselId; }
  unsigned short GetGroupId() const noexcept { return m_groupId; }
  unsigned short GetDeviceNum() const noexcept { return m_deviceNum; }
  void SetDataType(unsigned short value) noexcept { m_dataType = value; }
  void SetVesselId(unsigned short value) noexcept { m_vesselId = value; }
  void SetGroupId(unsigned short value) noexcept { m_groupId = value; }
  void SetDeviceNum(unsigned short value) noexcept { m_deviceNum = value; }

  friend bool operator==(const CDataId&, const CDataId&) = default;

 private:
  unsigned short m_dataType = 0;
  unsigned short m_vesselId = 0;
  unsigned short m_groupId = 0;
  unsigned short m_deviceNum = 0;
};

/// Describes one item of a data stream: the stream's identifier and two numbers of the host family.
/// Threads: as Point.
class LUM_PLATFORM_API CDataInfo {
 public:
  CDataInfo() = default;
  CDataInfo(const CDataId& id, unsigned short item, unsigned short channel);

  const CDataId& GetDataId() const noexcept { return m_id; }
  unsigned short GetItem() const noexcept { return m_item; }
  unsigned short GetChannel() const noexcept { return m_channel; }
  void SetInfo(const CDataId& id, unsigned short item, unsigned short channel);

  /// The six numbers, comma separated: data type, vessel, group, device, item, channel.
  CString GenerateString() const;
  /// Reads what GenerateString writes, blanks around the numbers allowed. False, with nothing
  /// changed, unless the text is exactly six numbers of 0 to 65535.
  bool SetFromString(const CString& text);

  friend bool operator==(const CDataInfo&, const CDataInfo&) = default;

 private:
  CDataId m_id;
  unsigned short m_item = 0;
  unsigned short m_channel = 0;
};

/// A named offset in space that belongs to a data stream. Threads: as Point.
class CCompOffset {
 public:
  CCompOffset() = default;

  const CString& GetOffsetName() const noexcept { return m_name; }
  void SetOffsetName(const CString& name) { m_name = name; }
  void GetOffset(double& x, double& y, double& z) const noexcept {
    x = m_offset.x;
    y = m_offset.y;
    z = m_offset.z;
  }
  void SetOffset(double x, double y, double z) noexcept { m_offset = {x, y, z}; }
  const CDataId& GetOffsetDataId() const noexcept { return m_dataId; }
  void SetOffsetDataId(const CDataId& id) noexcept { m_dataId = id; }

  friend bool operator==(const CCompOffset&, const CCompOffset&) = default;

  /// Two numbers of the host family: which offset this is, and what kind of offset.
  unsigned int m_nOffsetId = 0;
  unsigned int m_nOffsetType = 0;

 private:
  CString m_name;
  Point m_offset;
  CDataId m_dataId;
};
