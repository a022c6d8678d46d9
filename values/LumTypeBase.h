// CLumType: the abstract run-time typed value, and its type codes.
//
// A concrete kind overrides what makes sense for it; everything else answers "not supported". Read
// and write a value through the accessor of the type you want and look at the status; never switch
// on the kind. LumType.h gathers the concrete kinds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Framework.h"
#include "platform/LumBase.h"
#include "values/LumAttributesExport.h"

/// The value base class. Typed accessors, GetValueStr and the formula operations return 1 (done) or
/// 0 (not supported or failed; outputs are then exactly as they were). Accessors are strict: no
/// kind converts to another scalar type, except CLumAnything.
///
/// Threads: distinct values may be used in different threads, also copies of each other; one value
/// may be read in several while none changes it. Nothing is synchronised.
class LUM_ATTRIBUTES_API CLumType {
 public:
  /// Type codes. Definition files and callers store these numbers: they never change.
  enum LUM_TYPE : int {
    TYPE_UNDEFINED = 0,
    TYPE_INT = 101,
    TYPE_UINT = 102,
    TYPE_DOUBLE = 103,
    TYPE_BOOL = 104,
    TYPE_FLOAT = 109,
    TYPE_ULONGLONG = 112,
    TYPE_DOUBLE2D = 203,
    TYPE_DOUBLE3D = 301,
    TYPE_DATAINFO = 401,
    TYPE_COMPOFFSET = 402,
    TYPE_NAME = 501,
    TYPE_INTARRAY = 603,
    TYPE_DOUBLEARRAY = 607,
    TYPE_NAMEARRAY = 613,
    TYPE_ANYTHING = 999,
  };

  // The virtual members stand in the order of their slots. The order is part of the binary
  // interface: add at the end only.

  virtual ~CLumType();

  /// Reads the value from its text form; false when the kind does not accept the text, the value is
  /// then unchanged. Only CLumIoName has the 8-bit form.
  virtual bool SetValueStr(CStringA text);
  virtual bool SetValueStr(CString text);
  /// The kind's type code.
  virtual LUM_TYPE Type() const;
  /// A new copy of the same kind, owned by the caller.
  virtual CLumType* MakeCopy() const = 0;
  /// Writes the text form, replacing what the string held. Never depends on the process locale.
  virtual int GetValueStr(CStringA& text) const;
  virtual int GetValueStr(CString& text) const;

  virtual int GetInt(int& value) const;
  virtual int SetInt(int value);
  virtual int GetUInt(unsigned int& value) const;
  virtual int SetUInt(unsigned int value);
  virtual int GetULongLong(std::uint64_t& value) const;
  virtual int SetULongLong(std::uint64_t value);
  virtual int GetBool(bool& value) const;
  virtual int SetBool(bool value);
  virtual int GetFloat(float& value) const;
  virtual int SetFloat(float value);
  virtual int GetDouble(double& value) const;
  virtual int SetDouble(double value);
  virtual int GetDouble2D(double& first, double& second) const;
  virtual int SetDouble2D(double first, double second);

  // The operations of data-decoding formulas: each writes its result into this value and returns 1,
  // or 0 for "no value". CLumDouble has them and describes each (DoubleType.h), all but ValToStr,
  // ValToMyStr, OutString and FormatGeogsDMS, which no kind has. Here they return 0 and change
  // nothing.
  virtual int ClipValue(CLumType& value, CLumType& lower, CLumType& upper);
  virtual int GateValue(CLumType& value, CLumType& lower, CLumType& upper);
  virtual int NMEAPos(CLumType& position, CLumType& hemisphere);
  virtual int Val(CLumType& textOrNumber, bool lenient);
  virtual int TimeConv(CLumType& text);
  virtual int Inverse(CLumType& value);
  virtual int ExpandTime(CLumType& timeOfDay);
  virtual int ExpandTimeEx(CLumType& timeOfDay, CLumType& reference);
  virtual int HmsToMsec(CLumType& value);
  virtual int UtcToLocal(CLumType& time);
  virtual int LocalToUtc(CLumType& time);
  virtual int YyToCcyy(CLumType& year);
  virtual int CYMDMsecToMsec(CLumType& year, CLumType& month, CLumType& day, CLumType& msecOfDay);
  virtual int Pow1D(CLumType& base, CLumType& exponent);
  virtual int Sqr1D(CLumType& value);
  virtual int Log1D(CLumType& value);
  virtual int Neg(CLumType& value);
  virtual int Int(CLumType& value);
  virtual int ValToStr(CLumType& value);
  virtual int ValToMyStr(CLumType& value, CLumType& format);
  virtual int IsNull(CLumType& value);
  virtual int IsEqual(CLumType& first, CLumType& second, CLumType& tolerance);
  virtual int IsGreater(CLumType& first, CLumType& second);
  virtual int IsLess(CLumType& first, CLumType& second);
  virtual int Sign(CLumType& value);
  virtual int BinVal(CLumType& record, CLumType& typeCode, bool lenient);
  virtual int CanVal(CLumType& frame, CLumType& typeCode, CLumType& startByte, bool lenient);
  virtual int AdamVal(CLumType& response, CLumType& channel);
  virtual int CheckInValid(CLumType& value, CLumType& invalidMarker);
  virtual int J1939Val(CLumType& message, CLumType& typeCode, CLumType& startByte, bool lenient);
  virtual int J1939BitsVal(CLumType& message, CLumType& typeCode, CLumType& startBit,
                           CLumType& bitLength, bool lenient);
  virtual int BitVal(CLumType& value, CLumType& bit);
  virtual int FromEulerRoll(CLumType& roll, CLumType& pitch);
  virtual int OutString(CLumType& value);
  virtual int FormatGeogsDMS(CLumType& first, CLumType& second, CLumType& third);
  virtual int Sin(CLumType& degrees);
  virtual int Cos(CLumType& degrees);
  virtual int Asin(CLumType& value);
  virtual int Acos(CLumType& value);
  virtual int Bearing(CLumType& first, CLumType& second);
  virtual int Modulo(CLumType& dividend, CLumType& divisor);
  virtual int ValueInRange(CLumType& value, CLumType& firstBound, CLumType& secondBound);
  virtual int SelectValue(CLumType& firstChoice, CLumType& secondChoice, CLumType& selector);

  /// Assignment and arithmetic across kinds; the base leaves the value unchanged.
  virtual CLumType& operator=(const CLumType& source);
  virtual CLumType& operator+=(const CLumType& source);
  virtual CLumType& operator-=(const CLumType& source);
  virtual CLumType& operator*=(const CLumType& source);
  virtual CLumType& operator/=(const CLumType& source);

  virtual int GetDataInfo(CDataInfo& value) const;
  virtual int SetDataInfo(const CDataInfo& value);
  virtual int GetCompOffset(CCompOffset& value) const;
  virtual int SetCompOffset(const CCompOffset& value);
  /// The 8-bit form and the wide form of a name (bytes are UTF-8).
  virtual int GetName(CStringA& name) const;
  virtual int GetName(CString& name) const;
  virtual int SetName(const CStringA& name);
  virtual int SetName(const CString& name);
  virtual int GetDouble3D(double& x, double& y, double& z) const;
  virtual int SetDouble3D(double x, double y, double z);
  virtual int GetIntArray(std::vector<int>& values) const;
  virtual int SetIntArray(const std::vector<int>& values);
  virtual int GetDoubleArray(std::vector<double>& values) const;
  virtual int SetDoubleArray(const std::vector<double>& values);
  virtual int GetNameArray(std::vector<CString>& names) const;
  virtual int SetNameArray(const std::vector<CString>& names);

  // Overloads by type: each calls one virtual accessor and returns true when it was done.

  bool Get(int& value) const { return GetInt(value) != 0; }
  bool Get(unsigned int& value) const { return GetUInt(value) != 0; }
  bool Get(std::uint64_t& value) const { return GetULongLong(value) != 0; }
  bool Get(bool& value) const { return GetBool(value) != 0; }
  bool Get(float& value) const { return GetFloat(value) != 0; }
  bool Get(double& value) const { return GetDouble(value) != 0; }
  /// Reads a name, not the text form: false for kinds that hold no name.
  bool Get(CString& value) const { return GetName(value) != 0; }
  bool Get(std::vector<int>& values) const { return GetIntArray(values) != 0; }
  bool Get(std::vector<double>& values) const { return GetDoubleArray(values) != 0; }
  bool Get(std::vector<CString>& names) const { return GetNameArray(names) != 0; }
  bool Get(CCompOffset& value) const { return GetCompOffset(value) != 0; }
  bool Get(CDataInfo& value) const { return GetDataInfo(value) != 0; }
  bool Get(Point& value) const { return GetDouble3D(value.x, value.y, value.z) != 0; }

  bool Set(int value) { return SetInt(value) != 0; }
  bool Set(unsigned int value) { return SetUInt(value) != 0; }
  bool Set(std::uint64_t value) { return SetULongLong(value) != 0; }
  bool Set(bool value) { return SetBool(value) != 0; }
  bool Set(float value) { return SetFloat(value) != 0; }
  bool Set(double value) { return SetDouble(value) != 0; }
  bool Set(const CString& name) { return SetName(name) != 0; }
  bool Set(const std::wstring& name);
  /// Bytes in the system's ANSI code page; null answers false and calls nothing.
  bool Set(const char* name);
  /// Null answers false and calls nothing.
  bool Set(const wchar_t* name);
  bool Set(const std::vector<int>& values) { return SetIntArray(values) != 0; }
  bool Set(const std::vector<double>& values) { return SetDoubleArray(values) != 0; }
  bool Set(const std::vector<CString>& names) { return SetNameArray(names) != 0; }
  bool Set(const CCompOffset& value) { return SetCompOffset(value) != 0; }
  bool Set(const CDataInfo& value) { return SetDataInfo(value) != 0; }
  bool Set(const Point& value) { return SetDouble3D(value.x, value.y, value.z) != 0; }

  /// Process-wide settings kept for the library's users; nothing in the library reads them. Set
  /// them at start-up, before values are used from several threads.
  static void SetPrintFullArray(bool full);
  static void SetUnitCnv(const CLumUnitCnv& converter);

 protected:
  CLumType() = default;
  CLumType(const CLumType&) = default;

  static bool m_bPrintFullArray;
  static CLumUnitCnv m_unitCnv;
};
