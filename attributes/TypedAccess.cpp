// Typed access to the value of a named child. Whether a kind accepts an access, and what it
// converts, is decided by the value's own accessors.
#include "attributes/AttributeMap.h"

namespace {

template <typename Read>
bool ReadAttribute(const CAttributeMap& map, const CString& name, unsigned int& flags, Read read) {
  const CAttributeMap& child = map.Find(name);
  if (read(child.Value()) == 0) {
    return false;
  }
  flags = child.Flags();
  return true;
}

template <typename Write>
bool WriteAttribute(CAttributeMap& map, const CString& name, bool setFlags, unsigned int flags,
                    Write write) {
  CAttributeMap* child = map.GetAttrMap(name);
  if (child == nullptr || write(child->Value()) == 0) {
    return false;
  }
  if (setFlags) {
    child->SetFlags(flags);
  }
  return true;
}

}  // namespace

bool CAttributeMap::GetAttribValue(const CString& name, int& v, unsigned int& flags) const {
  return ReadAttribute(*this, name, flags, [&](const CLumType& value) { return value.GetInt(v); });
}

bool CAttributeMap::GetAttribValue(const CString& name, bool& v, unsigned int& flags) const {
  return ReadAttribute(*this, name, flags, [&](const CLumType& value) { return value.GetBool(v); });
}

bool CAttributeMap::GetAttribValue(const CString& name, double& v, unsigned int& flags) const {
  return ReadAttribute(*this, name, flags,
                       [&](const CLumType& value) { return value.GetDouble(v); });
}

bool CAttributeMap::GetAttribValue(const CString& name, double& x, double& y,
                                   unsigned int& flags) const {
  return ReadAttribute(*this, name, flags,
                       [&](const CLumType& value) { return value.GetDouble2D(x, y); });
}

bool CAttributeMap::GetAttribValue(const CString& name, double& x, double& y, double& z,
                                   unsigned int& flags) const {
  return ReadAttribute(*this, name, flags,
                       [&](const CLumType& value) { return value.GetDouble3D(x, y, z); });
}

bool CAttributeMap::GetAttribValue(const CString& name, CDataInfo& v, unsigned int& flags) const {
  return ReadAttribute(*this, name, flags,
                       [&](const CLumType& value) { return value.GetDataInfo(v); });
}

bool CAttributeMap::GetAttribValue(const CString& name, CCompOffset& v, unsigned int& flags) const {
  return ReadAttribute(*this, name, flags,
                       [&](const CLumType& value) { return value.GetCompOffset(v); });
}

bool CAttributeMap::GetAttribValue(const CString& name, CString& v, unsigned int& flags) const {
  return ReadAttribute(*this, name, flags, [&](const CLumType& value) { return value.GetName(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, int v, bool setFlags, unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetInt(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, bool v, bool setFlags, unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetBool(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, double v, bool setFlags,
                                   unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetDouble(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, double x, double y, bool setFlags,
                                   unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetDouble2D(x, y); });
}

bool CAttributeMap::SetAttribValue(const CString& name, double x, double y, double z, bool setFlags,
                                   unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetDouble3D(x, y, z); });
}

bool CAttributeMap::SetAttribValue(const CString& name, const CDataInfo& v, bool setFlags,
                                   unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetDataInfo(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, const CCompOffset& v, bool setFlags,
                                   unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetCompOffset(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, const CString& v, bool setFlags,
                                   unsigned int flags) {
  return WriteAttribute(*this, name, setFlags, flags,
                        [&](CLumType& value) { return value.SetName(v); });
}

bool CAttributeMap::SetAttribValue(const CString& name, const wchar_t* v, bool setFlags,
                                   unsigned int flags) {
  return SetAttribValue(name, CString(v), setFlags, flags);
}
