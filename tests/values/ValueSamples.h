// What the value tests share: the seventeen kinds with two different sample values each, and a text
// that tells values apart whatever their kind.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/TextEncoding.h"
#include "values/LumType.h"

namespace lum::test {

inline std::string Narrow(const CString& text) { return WideToUtf8(text).GetString(); }

/// The value's text form, wide or 8-bit, or "(none)".
inline std::string TextOf(const CLumType& value) {
  CString wide;
  if (value.GetValueStr(wide) != 0) {
    return Narrow(wide);
  }
  CStringA bytes;
  return value.GetValueStr(bytes) != 0 ? bytes.GetString() : "(none)";
}

inline CCompOffset MakeOffset(unsigned int number) {
  CDataId id;
  id.SetDataType(static_cast<unsigned short>(number));
  id.SetVesselId(65535);
  id.SetGroupId(4);
  id.SetDeviceNum(5);
  CCompOffset offset;
  offset.m_nOffsetId = number;
  offset.m_nOffsetType = 4294967295U;
  offset.SetOffsetName(L"Bow");
  offset.SetOffsetDataId(id);
  offset.SetOffset(1.5, -2.25, 1000000.0);
  return offset;
}

inline CDataInfo MakeInfo(unsigned short number) {
  CDataId id;
  id.SetDataType(number);
  id.SetVesselId(2);
  id.SetGroupId(3);
  id.SetDeviceNum(4);
  return {id, 5, 65535};
}

inline unsigned int Count(int sample) { return static_cast<unsigned int>(sample); }

struct Kind {
  const char* name;
  CLumType::LUM_TYPE type;
  std::unique_ptr<CLumType> (*make)(int sample);  ///< Sample 0 or 1.
};

/// Every concrete kind, both name kinds included. Sample 1 of CLumAnything is readable as every
/// kind but a data descriptor, whose text has exactly six numbers.
inline const std::vector<Kind>& Kinds() {
  using Value = std::unique_ptr<CLumType>;
  static const std::vector<Kind> kKinds = {
      {"undefined", CLumType::TYPE_UNDEFINED,
       [](int) -> Value { return std::make_unique<CLumUndefined>(); }},
      {"bool", CLumType::TYPE_BOOL,
       [](int sample) -> Value { return std::make_unique<CLumBool>(sample == 1); }},
      {"int", CLumType::TYPE_INT,
       [](int sample) -> Value { return std::make_unique<CLumInt>(-10 - sample); }},
      {"uint", CLumType::TYPE_UINT,
       [](int sample) -> Value { return std::make_unique<CLumUInt>(20U + Count(sample)); }},
      {"uint64", CLumType::TYPE_ULONGLONG,
       [](int sample) -> Value { return std::make_unique<CLumULongLong>(30U + Count(sample)); }},
      {"float", CLumType::TYPE_FLOAT,
       [](int sample) -> Value {
         return std::make_unique<CLumFloat>(static_cast<float>(sample) + 4.5F);
       }},
      {"double", CLumType::TYPE_DOUBLE,
       [](int sample) -> Value { return std::make_unique<CLumDouble>(sample * 2 + 2.0); }},
      {"double2d", CLumType::TYPE_DOUBLE2D,
       [](int sample) -> Value { return std::make_unique<CLumDouble2D>(sample * 2 + 2.0, 8.0); }},
      {"double3d", CLumType::TYPE_DOUBLE3D,
       [](int sample) -> Value {
         return std::make_unique<CLumDouble3D>(sample * 2 + 2.0, 8.0, 1.0);
       }},
      {"datainfo", CLumType::TYPE_DATAINFO,
       [](int sample) -> Value {
         return std::make_unique<CLumDataInfo>(MakeInfo(static_cast<unsigned short>(sample + 1)));
       }},
      {"compoffset", CLumType::TYPE_COMPOFFSET,
       [](int sample) -> Value {
         return std::make_unique<CLumCompOffset>(MakeOffset(1U + Count(sample)));
       }},
      {"name", CLumType::TYPE_NAME,
       [](int sample) -> Value { return std::make_unique<CLumName>(sample == 1 ? L"w1" : L"w0"); }},
      {"ioname", CLumType::TYPE_NAME,
       [](int sample) -> Value { return std::make_unique<CLumIoName>(sample == 1 ? "b1" : "b0"); }},
      {"intarray", CLumType::TYPE_INTARRAY,
       [](int sample) -> Value {
         return std::make_unique<CLumIntArray>(std::vector<int>{sample, 7});
       }},
      {"doublearray", CLumType::TYPE_DOUBLEARRAY,
       [](int sample) -> Value {
         return std::make_unique<CLumDoubleArray>(std::vector<double>{sample + 0.5, 7.0});
       }},
      {"namearray", CLumType::TYPE_NAMEARRAY,
       [](int sample) -> Value {
         return std::make_unique<CLumNameArray>(
             std::vector<CString>{sample == 1 ? L"p1" : L"p0", L"q"});
       }},
      {"anything", CLumType::TYPE_ANYTHING,
       [](int sample) -> Value {
         return std::make_unique<CLumAnything>(sample == 1 ? L"1,2,3,4,5,6,7,8,9,10" : L"free");
       }},
  };
  return kKinds;
}

}  // namespace lum::test
