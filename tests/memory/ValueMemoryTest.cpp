// Values of every kind when memory runs out: assigning, reading, writing, copying, making.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/memory/RefusalWalk.h"
#include "tests/values/ValueSamples.h"
#include "values/LumTypeCreator.h"

namespace {

using lum::test::Guarantee;
using lum::test::Kind;
using lum::test::Kinds;
using lum::test::WalkRefusals;

struct Values {
  std::unique_ptr<CLumType> target;
  std::unique_ptr<CLumType> source;
  CString text;
  CString sharedText;
  CStringA bytes;
  std::vector<int> ints;
  std::vector<double> doubles;
  std::vector<CString> names;
};

using Operation = lum::test::Operation<Values>;

std::string Join(const Values& values) {
  std::string text;
  for (const int number : values.ints) {
    text += std::to_string(number) + ",";
  }
  for (const double number : values.doubles) {
    text += lum::test::TextOf(CLumDouble(number)) + ",";
  }
  for (const CString& name : values.names) {
    text += lum::test::Narrow(name) + ",";
  }
  return text;
}

std::string DescribeValue(const std::unique_ptr<CLumType>& value) {
  return value == nullptr ? "null" : lum::test::TextOf(*value);
}

std::string DescribeValues(const Values& values) {
  return DescribeValue(values.target) + "|" + DescribeValue(values.source) + "|" +
         lum::test::Narrow(values.text) + "|" + values.bytes.GetString() + "|" + Join(values);
}

const std::vector<int>& ManyInts() {
  static const std::vector<int> ints(500, -123456789);
  return ints;
}

/// Texts of several lengths and kinds, each of which some kind reads.
const std::vector<CString>& Texts() {
  static const std::vector<CString> texts = [] {
    std::vector<CString> made = {L"-12.5", L"a name that no small storage of a string holds",
                                 L"1,2,3,4,5,6", L"1,2,a name that is longer,3,4,5,6,7,8,9"};
    CString list;
    CLumIntArray(ManyInts()).GetValueStr(list);
    made.push_back(list);
    return made;
  }();
  return texts;
}

/// Outputs hold something, in storage that is too short or is shared or is not worth keeping.
void FillOutputs(Values& values, int length) {
  values.text = CString(L'x', length);
  values.sharedText = values.text;
  values.bytes = CStringA('x', length);
  values.ints = {1};
  values.doubles = {2.5};
  values.names = {L"name"};
}

void WalkEachKind(const char* name, const std::function<bool(Values&)>& run,
                  const std::function<void(Values&)>& prepare) {
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const auto make = [&](Values& values) {
      values.target = kind.make(1);
      prepare(values);
    };
    WalkRefusals(Operation{name, Guarantee::Unchanged, run, make, false}, DescribeValues);
  }
}

TEST(ValueMemory, AssigningAValueThatDoesNotFitInLeavesTheOldOne) {
  for (const CString& text : Texts()) {
    for (const Kind& source : Kinds()) {
      SCOPED_TRACE(source.name);
      const auto prepare = [&](Values& values) {
        values.source = source.make(0);
        values.source->SetValueStr(text);
      };
      WalkEachKind(
          "=",
          [](Values& values) {
            *values.target = *values.source;
            return true;
          },
          prepare);
      if (source.type == CLumType::TYPE_NAME) {
        WalkEachKind(
            "+=",
            [](Values& values) {
              *values.target += *values.source;
              return true;
            },
            prepare);
      }
    }
  }
}

TEST(ValueMemory, ReadingATextLeavesTheOldValue) {
  for (const CString& text : Texts()) {
    WalkEachKind(
        "SetValueStr",
        [&](Values& values) {
          values.target->SetValueStr(text);
          return true;
        },
        [](Values&) {});
  }
}

TEST(ValueMemory, SettingLeavesTheOldValue) {
  const auto nothing = [](Values&) {};
  const std::vector<std::pair<const char*, void (*)(CLumType&)>> setters = {
      {"SetInt", [](CLumType& v) { v.SetInt(-1234567); }},
      {"SetUInt", [](CLumType& v) { v.SetUInt(1234567); }},
      {"SetULongLong", [](CLumType& v) { v.SetULongLong(12345678901234567890U); }},
      {"SetBool", [](CLumType& v) { v.SetBool(false); }},
      {"SetFloat", [](CLumType& v) { v.SetFloat(0.25F); }},
      {"SetDouble", [](CLumType& v) { v.SetDouble(1e300); }},
      {"SetDouble2D", [](CLumType& v) { v.SetDouble2D(1e300, 2); }},
      {"SetDouble3D", [](CLumType& v) { v.SetDouble3D(1e300, 2, 3); }},
      {"SetName", [](CLumType& v) { v.SetName(Texts()[1]); }},
      {"SetName(constant)", [](CLumType& v) { v.Set(L"a name that is a literal"); }},
      {"SetName(bytes)", [](CLumType& v) { v.SetName(CStringA("a name as bytes")); }},
      {"Set(bytes)", [](CLumType& v) { v.Set("a name as bytes"); }},
      {"SetDataInfo", [](CLumType& v) { v.SetDataInfo(lum::test::MakeInfo(9)); }},
      {"SetCompOffset", [](CLumType& v) { v.SetCompOffset(lum::test::MakeOffset(9)); }},
      {"SetIntArray", [](CLumType& v) { v.SetIntArray(ManyInts()); }},
      {"SetDoubleArray", [](CLumType& v) { v.SetDoubleArray(std::vector<double>(200, 1e-300)); }},
      {"SetNameArray", [](CLumType& v) { v.SetNameArray(Texts()); }},
  };
  for (const auto& [name, set] : setters) {
    WalkEachKind(
        name,
        [set = set](Values& values) {
          set(*values.target);
          return true;
        },
        nothing);
    // The old text is long: its storage is not kept.
    WalkRefusals(Operation{name, Guarantee::Unchanged,
                           [set = set](Values& values) {
                             set(*values.target);
                             return true;
                           },
                           [](Values& values) {
                             values.target = std::make_unique<CLumAnything>(CString(L'x', 100));
                           },
                           false},
                 DescribeValues);
  }
}

TEST(ValueMemory, GettingLeavesTheOutputs) {
  for (const int length : {1, 40, 100}) {
    for (const CString& text : Texts()) {
      const auto prepare = [&](Values& values) {
        values.target->SetValueStr(text);
        FillOutputs(values, length);
      };
      const std::vector<std::pair<const char*, void (*)(Values&)>> getters = {
          {"GetValueStr", [](Values& v) { v.target->GetValueStr(v.text); }},
          {"GetValueStr(bytes)", [](Values& v) { v.target->GetValueStr(v.bytes); }},
          {"GetName", [](Values& v) { v.target->GetName(v.text); }},
          {"GetName(bytes)", [](Values& v) { v.target->GetName(v.bytes); }},
          {"GetIntArray", [](Values& v) { v.target->GetIntArray(v.ints); }},
          {"GetDoubleArray", [](Values& v) { v.target->GetDoubleArray(v.doubles); }},
          {"GetNameArray", [](Values& v) { v.target->GetNameArray(v.names); }},
          {"MakeCopy", [](Values& v) { v.source.reset(v.target->MakeCopy()); }},
      };
      for (const auto& [name, get] : getters) {
        WalkEachKind(
            name,
            [get = get](Values& values) {
              get(values);
              return true;
            },
            prepare);
      }
    }
  }
}

TEST(ValueMemory, TheFactoryGivesNull) {
  const std::vector<std::pair<const char*, CLumType* (*)()>> makers = {
      {"bool", [] { return LumTypeCreator::MakeValue(true); }},
      {"int", [] { return LumTypeCreator::MakeValue(1); }},
      {"unsigned", [] { return LumTypeCreator::MakeValue(1U); }},
      {"uint64", [] { return LumTypeCreator::MakeValue(std::uint64_t{1}); }},
      {"double", [] { return LumTypeCreator::MakeValue(1.5); }},
      {"datainfo", [] { return LumTypeCreator::MakeValue(lum::test::MakeInfo(1)); }},
      {"compoffset", [] { return LumTypeCreator::MakeValue(CCompOffset()); }},
      {"double2d", [] { return LumTypeCreator::MakeValue(std::pair(1.0, 2.0)); }},
      {"double3d",
       [] {
         return LumTypeCreator::MakeValue(Point{1, 2, 3});
       }},
      {"int list", [] { return LumTypeCreator::MakeValue(ManyInts()); }},
      {"name list", [] { return LumTypeCreator::MakeValue(Texts()); }},
      {"wide name", [] { return LumTypeCreator::MakeValue(L"a name"); }},
      {"name of bytes", [] { return LumTypeCreator::MakeValue("a name"); }},
  };
  for (const auto& [name, make] : makers) {
    WalkRefusals(Operation{name, Guarantee::Unchanged,
                           [make = make](Values& values) {
                             std::unique_ptr<CLumType> made(make());
                             if (made != nullptr) {
                               values.target = std::move(made);
                             }
                             return values.target != nullptr;
                           }},
                 DescribeValues);
  }
  for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
    if (kind.make != nullptr) {
      WalkRefusals(
          Operation{"MakeLumType", Guarantee::Unchanged,
                    [&](Values& values) {
                      values.target.reset(LumTypeCreator::MakeLumType(kind.type, Texts()[3]));
                      return values.target != nullptr;
                    }},
          DescribeValues);
    }
  }
}

}  // namespace
