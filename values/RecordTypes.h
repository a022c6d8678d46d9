// The record kinds of value: data-stream descriptors and component offsets.
#pragma once

#include "values/LumTypeBase.h"

/// A data-stream descriptor; the text is CDataInfo's own.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumDataInfo : public CLumType {
 public:
  CLumDataInfo() = default;
  CLumDataInfo(const CDataInfo& info) : m_info(info) {}
  CLumDataInfo(const CDataId& id, unsigned short item, unsigned short channel)
      : m_info(id, item, channel) {}
  CLumDataInfo(const CLumDataInfo&) = default;
  CLumDataInfo& operator=(const CLumDataInfo&) = default;
  ~CLumDataInfo() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumDataInfo* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  CLumType& operator=(const CLumType& source) override;
  int GetDataInfo(CDataInfo& info) const override;
  int SetDataInfo(const CDataInfo& info) override;
  /// Stores a descriptor made of the four numbers of its identifier and an item; the descriptor's
  /// last number becomes 65535, which means "any". Returns 1.
  int SetDataInfo(unsigned short dataType, unsigned short vesselId, unsigned short groupId,
                  unsigned short deviceNum, unsigned short item);

 private:
  CDataInfo m_info;
};

/// A named component offset. The text has ten comma-separated items: the offset's two leading
/// numbers, its name, the four numbers of its data identifier, and x, y, z. A name that holds a
/// comma cannot be read back.
/// Threads: as CLumType says.
class LUM_ATTRIBUTES_API CLumCompOffset : public CLumType {
 public:
  CLumCompOffset() = default;
  CLumCompOffset(const CCompOffset& offset) : m_offset(offset) {}
  CLumCompOffset(const CLumCompOffset&) = default;
  CLumCompOffset& operator=(const CLumCompOffset&) = default;
  ~CLumCompOffset() override;

  using CLumType::GetValueStr;
  using CLumType::SetValueStr;
  bool SetValueStr(CString text) override;
  LUM_TYPE Type() const override;
  CLumCompOffset* MakeCopy() const override;
  int GetValueStr(CString& text) const override;
  CLumType& operator=(const CLumType& source) override;
  int GetCompOffset(CCompOffset& offset) const override;
  int SetCompOffset(const CCompOffset& offset) override;
  /// The held record, valid while this value lives.
  const CCompOffset& GetCompOffset() const noexcept { return m_offset; }

 private:
  CCompOffset m_offset;
};
