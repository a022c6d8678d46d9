// Every kind against every typed accessor: the table says which pairs are answered; all others
// return 0, leave the outputs as they were and the value unchanged.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Kind;
using lum::test::Kinds;
using lum::test::TextOf;

struct GetOutcome {
  int status;
  bool isUntouched;
};

// Pre-fills the output with `fill`, calls the getter and compares.
template <typename T>
GetOutcome TryGet(const CLumType& value, int (CLumType::*get)(T&) const, const T& fill) {
  T output = fill;
  const int status = (value.*get)(output);
  return {status, output == fill};
}

struct Accessor {
  const char* name;
  GetOutcome (*get)(const CLumType& value);
  int (*set)(CLumType& value);
};

// The values that are set differ from every sample; the fills of the outputs from both.
const Accessor kAccessors[] = {
    {"int", [](const CLumType& v) { return TryGet(v, &CLumType::GetInt, -777); },
     [](CLumType& v) { return v.SetInt(99); }},
    {"uint", [](const CLumType& v) { return TryGet(v, &CLumType::GetUInt, 777U); },
     [](CLumType& v) { return v.SetUInt(99U); }},
    {"uint64",
     [](const CLumType& v) { return TryGet(v, &CLumType::GetULongLong, std::uint64_t{777}); },
     [](CLumType& v) { return v.SetULongLong(99U); }},
    {"bool",
     [](const CLumType& v) {
       // One fill of the two is not what a bool getter answers.
       const GetOutcome outcome = TryGet(v, &CLumType::GetBool, true);
       return outcome.isUntouched ? TryGet(v, &CLumType::GetBool, false) : outcome;
     },
     [](CLumType& v) { return v.SetBool(false); }},
    {"float", [](const CLumType& v) { return TryGet(v, &CLumType::GetFloat, 777.0F); },
     [](CLumType& v) { return v.SetFloat(99.0F); }},
    {"double", [](const CLumType& v) { return TryGet(v, &CLumType::GetDouble, 777.0); },
     [](CLumType& v) { return v.SetDouble(99.0); }},
    {"double2d",
     [](const CLumType& v) {
       double first = 777.0;
       double second = 778.0;
       const int status = v.GetDouble2D(first, second);
       return GetOutcome{status, first == 777.0 && second == 778.0};
     },
     [](CLumType& v) { return v.SetDouble2D(99.0, 98.0); }},
    {"double3d",
     [](const CLumType& v) {
       double x = 777.0;
       double y = 778.0;
       double z = 779.0;
       const int status = v.GetDouble3D(x, y, z);
       return GetOutcome{status, x == 777.0 && y == 778.0 && z == 779.0};
     },
     [](CLumType& v) { return v.SetDouble3D(99.0, 98.0, 97.0); }},
    {"datainfo",
     [](const CLumType& v) { return TryGet(v, &CLumType::GetDataInfo, lum::test::MakeInfo(777)); },
     [](CLumType& v) { return v.SetDataInfo(lum::test::MakeInfo(99)); }},
    {"compoffset",
     [](const CLumType& v) {
       return TryGet(v, &CLumType::GetCompOffset, lum::test::MakeOffset(777));
     },
     [](CLumType& v) { return v.SetCompOffset(lum::test::MakeOffset(99)); }},
    {"name", [](const CLumType& v) { return TryGet<CString>(v, &CLumType::GetName, L"fill"); },
     [](CLumType& v) { return v.SetName(CString(L"set")); }},
    {"name8", [](const CLumType& v) { return TryGet<CStringA>(v, &CLumType::GetName, "fill"); },
     [](CLumType& v) { return v.SetName(CStringA("set")); }},
    {"intarray",
     [](const CLumType& v) { return TryGet<std::vector<int>>(v, &CLumType::GetIntArray, {777}); },
     [](CLumType& v) {
       return v.SetIntArray({9, 8});
     }},
    {"doublearray",
     [](const CLumType& v) {
       return TryGet<std::vector<double>>(v, &CLumType::GetDoubleArray, {777.0});
     },
     [](CLumType& v) {
       return v.SetDoubleArray({9.0, 8.0});
     }},
    {"namearray",
     [](const CLumType& v) {
       return TryGet<std::vector<CString>>(v, &CLumType::GetNameArray, {L"fill"});
     },
     [](CLumType& v) {
       return v.SetNameArray({L"set", L"too"});
     }},
    {"text", [](const CLumType& v) { return TryGet<CString>(v, &CLumType::GetValueStr, L"fill"); },
     nullptr},
    {"text8", [](const CLumType& v) { return TryGet<CStringA>(v, &CLumType::GetValueStr, "fill"); },
     nullptr},
};

using Names = std::set<std::string>;

// Which getters answer. CLumAnything's sample is no data descriptor's text.
const std::map<std::string, Names> kGetters = {
    {"undefined", {}},
    {"bool", {"bool", "text"}},
    {"int", {"int", "text"}},
    {"uint", {"uint", "text"}},
    {"uint64", {"uint64", "text"}},
    {"float", {"float", "text"}},
    {"double", {"double", "text"}},
    {"double2d", {"double2d", "text"}},
    {"double3d", {"double3d", "text"}},
    {"datainfo", {"datainfo", "text"}},
    {"compoffset", {"compoffset", "text"}},
    {"name", {"name", "text"}},
    {"ioname", {"name", "name8", "text8"}},
    {"intarray", {"intarray", "text"}},
    {"doublearray", {"doublearray", "text"}},
    {"namearray", {"namearray", "text"}},
    {"anything",
     {"int", "uint", "uint64", "bool", "float", "double", "double2d", "double3d", "compoffset",
      "name", "name8", "intarray", "doublearray", "namearray", "text"}},
};

// Which setters answer, and the text form that the value has then.
const std::map<std::string, std::map<std::string, std::string>> kSetters = {
    {"undefined", {}},
    {"bool", {{"bool", "0"}}},
    {"int", {{"int", "99"}}},
    {"uint", {{"uint", "99"}}},
    {"uint64", {{"uint64", "99"}}},
    {"float", {{"float", "99.000000"}}},
    {"double", {{"double", "99.000000"}}},
    {"double2d", {{"double2d", "99.000000,98.000000"}}},
    {"double3d", {{"double3d", "99.000000,98.000000,97.000000"}}},
    {"datainfo", {{"datainfo", "99,2,3,4,5,65535"}}},
    {"compoffset",
     {{"compoffset", "99,4294967295,Bow,99,65535,4,5,1.500000,-2.250000,1000000.000000"}}},
    {"name", {{"name", "set"}}},
    {"ioname", {{"name", "set"}, {"name8", "set"}}},
    {"intarray", {{"intarray", "9,8"}}},
    {"doublearray", {{"doublearray", "9,8"}}},
    {"namearray", {{"namearray", "set,too"}}},
    {"anything",
     {{"int", "99"},
      {"uint", "99"},
      {"uint64", "99"},
      {"bool", "0"},
      {"float", "99.000000"},
      {"double", "99.000000"},
      {"double2d", "99.000000,98.000000"},
      {"double3d", "99.000000,98.000000,97.000000"},
      {"datainfo", "99,2,3,4,5,65535"},
      {"compoffset", "99,4294967295,Bow,99,65535,4,5,1.500000,-2.250000,1000000.000000"},
      {"name", "set"},
      {"intarray", "9,8"},
      {"doublearray", "9,8"},
      {"namearray", "set,too"}}},
};

TEST(AccessorMatrix, CoversEveryKindOnce) {
  EXPECT_EQ(Kinds().size(), 17U);
  EXPECT_EQ(kGetters.size(), Kinds().size());
  EXPECT_EQ(kSetters.size(), Kinds().size());
}

TEST(AccessorMatrix, OnlyTheKindsOwnGettersAnswer) {
  for (const Kind& kind : Kinds()) {
    const auto value = kind.make(1);
    const std::string before = TextOf(*value);
    for (const Accessor& accessor : kAccessors) {
      SCOPED_TRACE(std::string(kind.name) + " read as " + accessor.name);
      const bool isAnswered = kGetters.at(kind.name).contains(accessor.name);
      const GetOutcome outcome = accessor.get(*value);
      EXPECT_EQ(outcome.status, isAnswered ? 1 : 0);
      EXPECT_EQ(outcome.isUntouched, !isAnswered);
      EXPECT_EQ(TextOf(*value), before);
    }
  }
}

TEST(AccessorMatrix, OnlyTheKindsOwnSettersAnswer) {
  for (const Kind& kind : Kinds()) {
    for (const Accessor& accessor : kAccessors) {
      if (accessor.set == nullptr) {
        continue;
      }
      SCOPED_TRACE(std::string(kind.name) + " set as " + accessor.name);
      const auto value = kind.make(1);
      const std::string before = TextOf(*value);
      const auto& setters = kSetters.at(kind.name);
      const auto expected = setters.find(accessor.name);
      EXPECT_EQ(accessor.set(*value), expected != setters.end() ? 1 : 0);
      EXPECT_EQ(TextOf(*value), expected != setters.end() ? expected->second : before);
    }
  }
}

TEST(AccessorMatrix, OnlyTheKindsOwnTextFormIsAccepted) {
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const std::string name = kind.name;
    const std::string text = TextOf(*kind.make(1));
    const auto value = kind.make(0);
    EXPECT_EQ(value->SetValueStr(CString(text.c_str())), name != "undefined" && name != "ioname");
    EXPECT_EQ(TextOf(*value), name == "ioname" ? "b0" : text);
    EXPECT_EQ(value->SetValueStr(CStringA(text.c_str())), name == "ioname");
    EXPECT_EQ(TextOf(*value), text);
  }
}

TEST(AccessorMatrix, KindsKeepTheirTypeCodes) {
  const std::map<std::string, int> kCodes = {
      {"undefined", 0},  {"int", 101},      {"uint", 102},        {"double", 103},
      {"bool", 104},     {"float", 109},    {"uint64", 112},      {"double2d", 203},
      {"double3d", 301}, {"datainfo", 401}, {"compoffset", 402},  {"name", 501},
      {"ioname", 501},   {"intarray", 603}, {"doublearray", 607}, {"namearray", 613},
      {"anything", 999},
  };
  static_assert(sizeof(CLumType::LUM_TYPE) == sizeof(int));
  for (const Kind& kind : Kinds()) {
    EXPECT_EQ(static_cast<int>(kind.make(0)->Type()), kCodes.at(kind.name)) << kind.name;
    EXPECT_EQ(static_cast<int>(kind.type), kCodes.at(kind.name)) << kind.name;
  }
}

TEST(AccessorMatrix, CopiesAreEqualAndIndependent) {
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const auto value = kind.make(1);
    const std::unique_ptr<CLumType> copy(value->MakeCopy());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), value.get());
    const CLumType& made = *copy;
    const CLumType& original = *value;
    EXPECT_EQ(typeid(made), typeid(original));
    const std::string before = TextOf(*value);
    EXPECT_EQ(TextOf(*copy), before);
    for (const Accessor& accessor : kAccessors) {
      if (accessor.set != nullptr) {
        accessor.set(*copy);
      }
    }
    EXPECT_EQ(TextOf(*value), before);
    EXPECT_EQ(TextOf(*copy) == before, std::string(kind.name) == "undefined");
  }
}

}  // namespace
