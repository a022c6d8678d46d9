// Typed access: every accessor on every kind does what the value's own accessor does.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"
#include "values/LumTypeCreator.h"

namespace {

constexpr unsigned int kUntouched = 0xDEADu;

/// One value of each kind that is no kind's default.
std::vector<std::unique_ptr<CLumType>> OneOfEachKind() {
  std::vector<std::unique_ptr<CLumType>> values;
  for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
    if (CLumType* value = LumTypeCreator::MakeLumType(kind.type)) {
      values.emplace_back(value);
    }
  }
  values.push_back(std::make_unique<CLumAnything>(L"12"));
  values.push_back(std::make_unique<CLumAnything>(L"1,2,3,4,5,6"));
  values.push_back(std::make_unique<CLumAnything>(L"no number"));
  values.push_back(std::make_unique<CLumInt>(-5));
  values.push_back(std::make_unique<CLumDouble>(2.5));
  values.push_back(std::make_unique<CLumName>(L"name"));
  values.push_back(std::make_unique<CLumIoName>("bytes"));
  return values;
}

/// Outputs of all readings, pre-filled.
struct CReadings {
  int i = -77;
  bool b = true;
  double d = -77.5;
  double x = -1.5, y = -2.5, z = -3.5;
  CDataInfo info{CDataId(), 9, 9};
  CCompOffset offset;
  CString name = L"untouched";
  std::vector<int> done;

  friend bool operator==(const CReadings&, const CReadings&) = default;
};

CReadings ReadDirectly(const CLumType& value) {
  CReadings r;
  const auto note = [&r](int status) { r.done.push_back(status != 0 ? 1 : 0); };
  note(value.GetInt(r.i));
  note(value.GetBool(r.b));
  note(value.GetDouble(r.d));
  note(value.GetDouble2D(r.x, r.y));
  note(value.GetDouble3D(r.x, r.y, r.z));
  note(value.GetDataInfo(r.info));
  note(value.GetCompOffset(r.offset));
  note(value.GetName(r.name));
  return r;
}

CReadings ReadThroughMap(const CAttributeMap& map) {
  CReadings r;
  const auto note = [&r, &map](bool done, unsigned int& flags) {
    EXPECT_EQ(flags, done ? map[1].Flags() : kUntouched);
    r.done.push_back(done ? 1 : 0);
    flags = kUntouched;
  };
  unsigned int flags = kUntouched;
  note(map.GetAttribValue(L"V", r.i, flags), flags);
  note(map.GetAttribValue(L"V", r.b, flags), flags);
  note(map.GetAttribValue(L"V", r.d, flags), flags);
  note(map.GetAttribValue(L"V", r.x, r.y, flags), flags);
  note(map.GetAttribValue(L"V", r.x, r.y, r.z, flags), flags);
  note(map.GetAttribValue(L"V", r.info, flags), flags);
  note(map.GetAttribValue(L"V", r.offset, flags), flags);
  note(map.GetAttribValue(L"V", r.name, flags), flags);
  return r;
}

/// Another child, the child in question and a second one of its name.
CAttributeMap MapWith(const CLumType& value) {
  CAttributeMap map;
  map.Add(L"Other", CLumInt(1), 1);
  map.Add(L"V", value, 0x41);
  map.Add(L"V", CLumName(L"second"), 2);
  return map;
}

TEST(TypedAccess, ReadsWhatTheValuesOwnAccessorReads) {
  for (const auto& value : OneOfEachKind()) {
    SCOPED_TRACE(std::to_string(value->Type()) + " " + TextOf(*value));
    const CAttributeMap map = MapWith(*value);
    const CReadings expected = ReadDirectly(*value);
    const CReadings actual = ReadThroughMap(map);
    EXPECT_EQ(actual.done, expected.done);
    EXPECT_TRUE(actual == expected);
  }
}

/// A row of the writing matrix: through the map, and directly.
struct CWriting {
  const char* name;
  bool (*throughMap)(CAttributeMap&, bool, unsigned int);
  int (*directly)(CLumType&);
};

CDataInfo SomeInfo() {
  CDataInfo info;
  info.SetFromString(L"1,2,3,4,5,6");
  return info;
}

CCompOffset SomeOffset() {
  CCompOffset offset;
  offset.SetOffset(1.0, 2.0, 3.0);
  offset.SetOffsetName(L"antenna");
  return offset;
}

const CWriting kWritings[] = {
    {"int",
     [](CAttributeMap& m, bool s, unsigned int f) { return m.SetAttribValue(L"V", 3, s, f); },
     [](CLumType& v) { return v.SetInt(3); }},
    {"bool",
     [](CAttributeMap& m, bool s, unsigned int f) { return m.SetAttribValue(L"V", true, s, f); },
     [](CLumType& v) { return v.SetBool(true); }},
    {"double",
     [](CAttributeMap& m, bool s, unsigned int f) { return m.SetAttribValue(L"V", 1.25, s, f); },
     [](CLumType& v) { return v.SetDouble(1.25); }},
    {"double2D",
     [](CAttributeMap& m, bool s, unsigned int f) {
       return m.SetAttribValue(L"V", 1.25, 2.5, s, f);
     },
     [](CLumType& v) { return v.SetDouble2D(1.25, 2.5); }},
    {"double3D",
     [](CAttributeMap& m, bool s, unsigned int f) {
       return m.SetAttribValue(L"V", 1.25, 2.5, 3.5, s, f);
     },
     [](CLumType& v) { return v.SetDouble3D(1.25, 2.5, 3.5); }},
    {"data info",
     [](CAttributeMap& m, bool s, unsigned int f) {
       return m.SetAttribValue(L"V", SomeInfo(), s, f);
     },
     [](CLumType& v) { return v.SetDataInfo(SomeInfo()); }},
    {"offset",
     [](CAttributeMap& m, bool s, unsigned int f) {
       return m.SetAttribValue(L"V", SomeOffset(), s, f);
     },
     [](CLumType& v) { return v.SetCompOffset(SomeOffset()); }},
    {"name",
     [](CAttributeMap& m, bool s, unsigned int f) {
       return m.SetAttribValue(L"V", CString(L"new"), s, f);
     },
     [](CLumType& v) { return v.SetName(CString(L"new")); }},
    {"literal",
     [](CAttributeMap& m, bool s, unsigned int f) {
       return m.SetAttribValue(L"V", L"literal", s, f);
     },
     [](CLumType& v) { return v.SetName(CString(L"literal")); }},
};

TEST(TypedAccess, WritesWhatTheValuesOwnAccessorWrites) {
  for (const auto& value : OneOfEachKind()) {
    for (const CWriting& writing : kWritings) {
      for (const bool setFlags : {false, true}) {
        SCOPED_TRACE(std::to_string(value->Type()) + " " + writing.name);
        CAttributeMap map = MapWith(*value);
        const std::unique_ptr<CLumType> expected(value->MakeCopy());
        const bool done = writing.directly(*expected) != 0;
        EXPECT_EQ(writing.throughMap(map, setFlags, 0x8002), done);
        CAttributeMap expectedMap = MapWith(*expected);
        expectedMap.GetAttrMap(L"V")->SetFlags(done && setFlags ? 0x8002 : 0x41);
        EXPECT_EQ(Describe(map), Describe(expectedMap));
      }
    }
  }
}

TEST(TypedAccess, MissingAttributeIsRefusedAndNotCreated) {
  CAttributeMap map;
  map.Add(L"Other", CLumInt(1), 1);
  for (const CWriting& writing : kWritings) {
    EXPECT_FALSE(writing.throughMap(map, true, 5)) << writing.name;
  }
  EXPECT_EQ(Describe(map), "Other:101:1:1");
  const CReadings untouched = ReadDirectly(CLumUndefined());
  CReadings read;
  unsigned int flags = kUntouched;
  EXPECT_FALSE(map.GetAttribValue(L"V", read.i, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.b, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.d, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.x, read.y, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.x, read.y, read.z, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.info, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.offset, flags));
  EXPECT_FALSE(map.GetAttribValue(L"V", read.name, flags));
  read.done = untouched.done;
  EXPECT_TRUE(read == untouched);
  EXPECT_EQ(flags, kUntouched);
}

TEST(TypedAccess, StrictKindsRefuseOtherTypes) {
  CAttributeMap map;
  map.Add(L"D", CLumDouble(2.5), 0x40);
  EXPECT_FALSE(map.SetAttribValue(L"D", 3, true, 0));
  EXPECT_EQ(Describe(map), "D:103:2.500000:64");
  EXPECT_TRUE(map.SetAttribValue(L"D", 1.5, true, 0));
  EXPECT_EQ(Describe(map), "D:103:1.500000:0");
  int read = -7;
  unsigned int flags = kUntouched;
  EXPECT_FALSE(map.GetAttribValue(L"D", read, flags));
  EXPECT_EQ(read, -7);
  EXPECT_EQ(flags, kUntouched);
}

TEST(TypedAccess, ActsOnTheFirstOfAName) {
  CAttributeMap map;
  map.Add(L"N", CLumInt(1), 1);
  map.Add(L"N", CLumInt(2), 2);
  EXPECT_TRUE(map.SetAttribValue(L"N", 9, true, 8));
  EXPECT_EQ(Describe(map), "N:101:9:8 N:101:2:2");
  int read = 0;
  unsigned int flags = 0;
  EXPECT_TRUE(map.GetAttribValue(L"N", read, flags));
  EXPECT_EQ(read, 9);
  EXPECT_EQ(flags, 8u);
}

TEST(TypedAccess, LiteralIsANameAndNoBool) {
  CAttributeMap map;
  map.Add(L"B", CLumBool(false), 0);
  map.Add(L"N", CLumName(L"old"), 0);
  EXPECT_FALSE(map.SetAttribValue(L"B", L"x", false, 0));
  EXPECT_TRUE(map.SetAttribValue(L"N", L"new", false, 0));
  EXPECT_EQ(Describe(map), "B:104:0:0 N:501:new:0");
}

}  // namespace
