#include "values/LumTypeBase.h"

bool CLumType::m_bPrintFullArray = false;
CLumUnitCnv CLumType::m_unitCnv;

CLumType::~CLumType() = default;

bool CLumType::SetValueStr(CStringA /*text*/) { return false; }
bool CLumType::SetValueStr(CString /*text*/) { return false; }
CLumType::LUM_TYPE CLumType::Type() const { return TYPE_UNDEFINED; }
int CLumType::GetValueStr(CStringA& /*text*/) const { return 0; }
int CLumType::GetValueStr(CString& /*text*/) const { return 0; }

int CLumType::GetInt(int& /*value*/) const { return 0; }
int CLumType::SetInt(int /*value*/) { return 0; }
int CLumType::GetUInt(unsigned int& /*value*/) const { return 0; }
int CLumType::SetUInt(unsigned int /*value*/) { return 0; }
int CLumType::GetULongLong(std::uint64_t& /*value*/) const { return 0; }
int CLumType::SetULongLong(std::uint64_t /*value*/) { return 0; }
int CLumType::GetBool(bool& /*value*/) const { return 0; }
int CLumType::SetBool(bool /*value*/) { return 0; }
int CLumType::GetFloat(float& /*value*/) const { return 0; }
int CLumType::SetFloat(float /*value*/) { return 0; }
int CLumType::GetDouble(double& /*value*/) const { return 0; }
int CLumType::SetDouble(double /*value*/) { return 0; }
int CLumType::GetDouble2D(double& /*first*/, double& /*second*/) const { return 0; }
int CLumType::SetDouble2D(double /*first*/, double /*second*/) { return 0; }

int CLumType::ClipValue(CLumType& /*value*/, CLumType& /*lower*/, CLumType& /*upper*/) { return 0; }
int CLumType::GateValue(CLumType& /*value*/, CLumType& /*lower*/, CLumType& /*upper*/) { return 0; }
int CLumType::NMEAPos(CLumType& /*position*/, CLumType& /*hemisphere*/) { return 0; }
int CLumType::Val(CLumType& /*textOrNumber*/, bool /*lenient*/) { return 0; }
int CLumType::TimeConv(CLumType& /*text*/) { return 0; }
int CLumType::Inverse(CLumType& /*value*/) { return 0; }
int CLumType::ExpandTime(CLumType& /*timeOfDay*/) { return 0; }
int CLumType::ExpandTimeEx(CLumType& /*timeOfDay*/, CLumType& /*reference*/) { return 0; }
int CLumType::HmsToMsec(CLumType& /*value*/) { return 0; }
int CLumType::UtcToLocal(CLumType& /*time*/) { return 0; }
int CLumType::LocalToUtc(CLumType& /*time*/) { return 0; }
int CLumType::YyToCcyy(CLumType& /*year*/) { return 0; }
int CLumType::CYMDMsecToMsec(CLumType& /*year*/, CLumType& /*month*/, CLumType& /*day*/,
                             CLumType& /*msecOfDay*/) {
  return 0;
}
int CLumType::Pow1D(CLumType& /*base*/, CLumType& /*exponent*/) { return 0; }
int CLumType::Sqr1D(CLumType& /*value*/) { return 0; }
int CLumType::Log1D(CLumType& /*value*/) { return 0; }
int CLumType::Neg(CLumType& /*value*/) { return 0; }
int CLumType::Int(CLumType& /*value*/) { return 0; }
int CLumType::ValToStr(CLumType& /*value*/) { return 0; }
int CLumType::ValToMyStr(CLumType& /*value*/, CLumType& /*format*/) { return 0; }
int CLumType::IsNull(CLumType& /*value*/) { return 0; }
int CLumType::IsEqual(CLumType& /*first*/, CLumType& /*second*/, CLumType& /*tolerance*/) {
  return 0;
}
int CLumType::IsGreater(CLumType& /*first*/, CLumType& /*second*/) { return 0; }
int CLumType::IsLess(CLumType& /*first*/, CLumType& /*second*/) { return 0; }
int CLumType::Sign(CLumType& /*value*/) { return 0; }
int CLumType::BinVal(CLumType& /*record*/, CLumType& /*typeCode*/, bool /*lenient*/) { return 0; }
int CLumType::CanVal(CLumType& /*frame*/, CLumType& /*typeCode*/, CLumType& /*startByte*/,
                     bool /*lenient*/) {
  return 0;
}
int CLumType::AdamVal(CLumType& /*response*/, CLumType& /*channel*/) { return 0; }
int CLumType::CheckInValid(CLumType& /*value*/, CLumType& /*invalidMarker*/) { return 0; }
int CLumType::J1939Val(CLumType& /*message*/, CLumType& /*typeCode*/, CLumType& /*startByte*/,
                       bool /*lenient*/) {
  return 0;
}
int CLumType::J1939BitsVal(CLumType& /*message*/, CLumType& /*typeCode*/, CLumType& /*startBit*/,
                           CLumType& /*bitLength*/, bool /*lenient*/) {
  return 0;
}
int CLumType::BitVal(CLumType& /*value*/, CLumType& /*bit*/) { return 0; }
int CLumType::FromEulerRoll(CLumType& /*roll*/, CLumType& /*pitch*/) { return 0; }
int CLumType::OutString(CLumType& /*value*/) { return 0; }
int CLumType::FormatGeogsDMS(CLumType& /*first*/, CLumType& /*second*/, CLumType& /*third*/) {
  return 0;
}
int CLumType::Sin(CLumType& /*degrees*/) { return 0; }
int CLumType::Cos(CLumType& /*degrees*/) { return 0; }
int CLumType::Asin(CLumType& /*value*/) { return 0; }
int CLumType::Acos(CLumType& /*value*/) { return 0; }
int CLumType::Bearing(CLumType& /*first*/, CLumType& /*second*/) { return 0; }
int CLumType::Modulo(CLumType& /*dividend*/, CLumType& /*divisor*/) { return 0; }
int CLumType::ValueInRange(CLumType& /*value*/, CLumType& /*firstBound*/,
                           CLumType& /*secondBound*/) {
  return 0;
}
int CLumType::SelectValue(CLumType& /*firstChoice*/, CLumType& /*secondChoice*/,
                          CLumType& /*selector*/) {
  return 0;
}

CLumType& CLumType::operator=(const CLumType&) = default;
CLumType& CLumType::operator+=(const CLumType& /*source*/) { return *this; }
CLumType& CLumType::operator-=(const CLumType& /*source*/) { return *this; }
CLumType& CLumType::operator*=(const CLumType& /*source*/) { return *this; }
CLumType& CLumType::operator/=(const CLumType& /*source*/) { return *this; }

int CLumType::GetDataInfo(CDataInfo& /*value*/) const { return 0; }
int CLumType::SetDataInfo(const CDataInfo& /*value*/) { return 0; }
int CLumType::GetCompOffset(CCompOffset& /*value*/) const { return 0; }
int CLumType::SetCompOffset(const CCompOffset& /*value*/) { return 0; }
int CLumType::GetName(CStringA& /*name*/) const { return 0; }
int CLumType::GetName(CString& /*name*/) const { return 0; }
int CLumType::SetName(const CStringA& /*name*/) { return 0; }
int CLumType::SetName(const CString& /*name*/) { return 0; }
int CLumType::GetDouble3D(double& /*x*/, double& /*y*/, double& /*z*/) const { return 0; }
int CLumType::SetDouble3D(double /*x*/, double /*y*/, double /*z*/) { return 0; }
int CLumType::GetIntArray(std::vector<int>& /*values*/) const { return 0; }
int CLumType::SetIntArray(const std::vector<int>& /*values*/) { return 0; }
int CLumType::GetDoubleArray(std::vector<double>& /*values*/) const { return 0; }
int CLumType::SetDoubleArray(const std::vector<double>& /*values*/) { return 0; }
int CLumType::GetNameArray(std::vector<CString>& /*names*/) const { return 0; }
int CLumType::SetNameArray(const std::vector<CString>& /*names*/) { return 0; }

bool CLumType::Set(const std::wstring& name) {
  return SetName(CString(name.data(), static_cast<int>(name.size()))) != 0;
}

bool CLumType::Set(const char* name) { return name != nullptr && SetName(CString(name)) != 0; }

bool CLumType::Set(const wchar_t* name) { return name != nullptr && SetName(CString(name)) != 0; }

void CLumType::SetPrintFullArray(bool full) { m_bPrintFullArray = full; }

void CLumType::SetUnitCnv(const CLumUnitCnv& converter) { m_unitCnv = converter; }
