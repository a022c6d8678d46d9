// The virtual tables of the public classes. Programs built earlier call by the number of the slot
// and have tables of their own classes after the released ones: a function that moves makes them
// call another one, without a message.
#include <gtest/gtest.h>

#include "attributes/AttributeMap.h"
#include "definitions/AttribDefMap.h"
#include "platform/Error.h"
#include "platform/ExtensionModule.h"
#include "platform/FileObject.h"
#include "tests/interface/LayoutTesting.h"
#include "values/LumType.h"

namespace {

using lum::test::CountSlots;
using lum::test::ExpectReleasedSlots;
using lum::test::SlotOf;
using lum::test::VirtualSlot;

// Slots 0 and 1 are those of the destructor.
TEST(VirtualSlots, FunctionsOfValuesKeepTheirSlots) {
  const VirtualSlot kSlots[] = {
      LUM_OVERLOAD_SLOT(CLumType, SetValueStr, 2, bool(CStringA)),
      LUM_OVERLOAD_SLOT(CLumType, SetValueStr, 3, bool(CString)),
      LUM_SLOT(CLumType, Type, 4),
      LUM_SLOT(CLumType, MakeCopy, 5),
      LUM_OVERLOAD_SLOT(CLumType, GetValueStr, 6, int(CStringA&) const),
      LUM_OVERLOAD_SLOT(CLumType, GetValueStr, 7, int(CString&) const),
      LUM_SLOT(CLumType, GetInt, 8),
      LUM_SLOT(CLumType, SetInt, 9),
      LUM_SLOT(CLumType, GetUInt, 10),
      LUM_SLOT(CLumType, SetUInt, 11),
      LUM_SLOT(CLumType, GetULongLong, 12),
      LUM_SLOT(CLumType, SetULongLong, 13),
      LUM_SLOT(CLumType, GetBool, 14),
      LUM_SLOT(CLumType, SetBool, 15),
      LUM_SLOT(CLumType, GetFloat, 16),
      LUM_SLOT(CLumType, SetFloat, 17),
      LUM_SLOT(CLumType, GetDouble, 18),
      LUM_SLOT(CLumType, SetDouble, 19),
      LUM_SLOT(CLumType, GetDouble2D, 20),
      LUM_SLOT(CLumType, SetDouble2D, 21),
      LUM_SLOT(CLumType, ClipValue, 22),
      LUM_SLOT(CLumType, GateValue, 23),
      LUM_SLOT(CLumType, NMEAPos, 24),
      LUM_SLOT(CLumType, Val, 25),
      LUM_SLOT(CLumType, TimeConv, 26),
      LUM_SLOT(CLumType, Inverse, 27),
      LUM_SLOT(CLumType, ExpandTime, 28),
      LUM_SLOT(CLumType, ExpandTimeEx, 29),
      LUM_SLOT(CLumType, HmsToMsec, 30),
      LUM_SLOT(CLumType, UtcToLocal, 31),
      LUM_SLOT(CLumType, LocalToUtc, 32),
      LUM_SLOT(CLumType, YyToCcyy, 33),
      LUM_SLOT(CLumType, CYMDMsecToMsec, 34),
      LUM_SLOT(CLumType, Pow1D, 35),
      LUM_SLOT(CLumType, Sqr1D, 36),
      LUM_SLOT(CLumType, Log1D, 37),
      LUM_SLOT(CLumType, Neg, 38),
      LUM_SLOT(CLumType, Int, 39),
      LUM_SLOT(CLumType, ValToStr, 40),
      LUM_SLOT(CLumType, ValToMyStr, 41),
      LUM_SLOT(CLumType, IsNull, 42),
      LUM_SLOT(CLumType, IsEqual, 43),
      LUM_SLOT(CLumType, IsGreater, 44),
      LUM_SLOT(CLumType, IsLess, 45),
      LUM_SLOT(CLumType, Sign, 46),
      LUM_SLOT(CLumType, BinVal, 47),
      LUM_SLOT(CLumType, CanVal, 48),
      LUM_SLOT(CLumType, AdamVal, 49),
      LUM_SLOT(CLumType, CheckInValid, 50),
      LUM_SLOT(CLumType, J1939Val, 51),
      LUM_SLOT(CLumType, J1939BitsVal, 52),
      LUM_SLOT(CLumType, BitVal, 53),
      LUM_SLOT(CLumType, FromEulerRoll, 54),
      LUM_SLOT(CLumType, OutString, 55),
      LUM_SLOT(CLumType, FormatGeogsDMS, 56),
      LUM_SLOT(CLumType, Sin, 57),
      LUM_SLOT(CLumType, Cos, 58),
      LUM_SLOT(CLumType, Asin, 59),
      LUM_SLOT(CLumType, Acos, 60),
      LUM_SLOT(CLumType, Bearing, 61),
      LUM_SLOT(CLumType, Modulo, 62),
      LUM_SLOT(CLumType, ValueInRange, 63),
      LUM_SLOT(CLumType, SelectValue, 64),
      LUM_SLOT(CLumType, operator=, 65),
      LUM_SLOT(CLumType, operator+=, 66),
      LUM_SLOT(CLumType, operator-=, 67),
      LUM_SLOT(CLumType, operator*=, 68),
      LUM_SLOT(CLumType, operator/=, 69),
      LUM_SLOT(CLumType, GetDataInfo, 70),
      LUM_SLOT(CLumType, SetDataInfo, 71),
      LUM_SLOT(CLumType, GetCompOffset, 72),
      LUM_SLOT(CLumType, SetCompOffset, 73),
      LUM_OVERLOAD_SLOT(CLumType, GetName, 74, int(CStringA&) const),
      LUM_OVERLOAD_SLOT(CLumType, GetName, 75, int(CString&) const),
      LUM_OVERLOAD_SLOT(CLumType, SetName, 76, int(const CStringA&)),
      LUM_OVERLOAD_SLOT(CLumType, SetName, 77, int(const CString&)),
      LUM_SLOT(CLumType, GetDouble3D, 78),
      LUM_SLOT(CLumType, SetDouble3D, 79),
      LUM_SLOT(CLumType, GetIntArray, 80),
      LUM_SLOT(CLumType, SetIntArray, 81),
      LUM_SLOT(CLumType, GetDoubleArray, 82),
      LUM_SLOT(CLumType, SetDoubleArray, 83),
      LUM_SLOT(CLumType, GetNameArray, 84),
      LUM_SLOT(CLumType, SetNameArray, 85),
  };
  ExpectReleasedSlots(kSlots);
}

TEST(VirtualSlots, FunctionsOfOtherClassesKeepTheirSlots) {
  const VirtualSlot kSlots[] = {
      LUM_SLOT(CAttribDefRec, MakeCopy, 2),
      LUM_SLOT(FileObject, SetItem, 2),
      LUM_SLOT(FileObject, GetItem, 3),
  };
  ExpectReleasedSlots(kSlots);
}

#define LUM_END_OF_TABLE(type, slots) \
  { "The end of " #type, slots, CountSlots<type>() }

// A class that a program derives has its own functions after these.
TEST(VirtualSlots, TablesKeepTheirLength) {
  const VirtualSlot kLengths[] = {
      LUM_END_OF_TABLE(CLumType, 86),       LUM_END_OF_TABLE(CLumUndefined, 86),
      LUM_END_OF_TABLE(CLumBool, 86),       LUM_END_OF_TABLE(CLumInt, 86),
      LUM_END_OF_TABLE(CLumUInt, 86),       LUM_END_OF_TABLE(CLumULongLong, 86),
      LUM_END_OF_TABLE(CLumFloat, 86),      LUM_END_OF_TABLE(CLumDouble, 86),
      LUM_END_OF_TABLE(CLumDouble2D, 86),   LUM_END_OF_TABLE(CLumDouble3D, 86),
      LUM_END_OF_TABLE(CLumDataInfo, 86),   LUM_END_OF_TABLE(CLumCompOffset, 86),
      LUM_END_OF_TABLE(CLumName, 86),       LUM_END_OF_TABLE(CLumIoName, 86),
      LUM_END_OF_TABLE(CLumIntArray, 86),   LUM_END_OF_TABLE(CLumDoubleArray, 86),
      LUM_END_OF_TABLE(CLumNameArray, 86),  LUM_END_OF_TABLE(CLumAnything, 86),
      LUM_END_OF_TABLE(CAttributeRec, 2),   LUM_END_OF_TABLE(CAttributeMap, 2),
      LUM_END_OF_TABLE(CAttribDefRec, 3),   LUM_END_OF_TABLE(CAttribDefMap, 2),
      LUM_END_OF_TABLE(Error, 2),           LUM_END_OF_TABLE(FileError, 2),
      LUM_END_OF_TABLE(CDynLinkLibrary, 2), LUM_END_OF_TABLE(FileObject, 4),
  };
  ExpectReleasedSlots(kLengths);
}

}  // namespace
