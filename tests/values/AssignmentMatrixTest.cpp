// Assignment and compound arithmetic between every two kinds. The tables name the pairs that take
// effect, target and source, with the text form of the result; every other pair changes nothing.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

#include "tests/values/ValueSamples.h"

namespace {

using lum::test::Kind;
using lum::test::Kinds;
using lum::test::TextOf;

using Effects = std::map<std::pair<std::string, std::string>, std::string>;
using Operation = CLumType& (CLumType::*)(const CLumType&);

const char* const kOffsetText = "2,4294967295,Bow,2,65535,4,5,1.500000,-2.250000,1000000.000000";

// Applies the operation to sample 0 of every target with sample 1 of every source.
void ExpectEffects(Operation operation, const Effects& effects) {
  for (const Kind& target : Kinds()) {
    for (const Kind& source : Kinds()) {
      SCOPED_TRACE(std::string(target.name) + " from " + source.name);
      const auto value = target.make(0);
      const auto other = source.make(1);
      const std::string before = TextOf(*value);
      const std::string otherBefore = TextOf(*other);
      EXPECT_EQ(&((*value).*operation)(*other), value.get());
      const auto effect = effects.find({target.name, source.name});
      EXPECT_EQ(TextOf(*value), effect != effects.end() ? effect->second : before);
      EXPECT_EQ(TextOf(*other), otherBefore);
    }
  }
}

// The results of a number kind whose sources of other kinds count as zero.
void AddZeroEffects(Effects& effects, const std::string& target, const std::string& result) {
  for (const Kind& source : Kinds()) {
    effects.insert({{target, source.name}, result});
  }
}

TEST(AssignmentMatrix, AssignsWhatTheTargetsOwnGetterReads) {
  const Effects kEffects = {
      // From the same kind.
      {{"bool", "bool"}, "1"},
      {{"int", "int"}, "-11"},
      {{"uint", "uint"}, "21"},
      {{"uint64", "uint64"}, "31"},
      {{"float", "float"}, "5.500000"},
      {{"double", "double"}, "4.000000"},
      {{"double2d", "double2d"}, "4.000000,8.000000"},
      {{"double3d", "double3d"}, "4.000000,8.000000,1.000000"},
      {{"datainfo", "datainfo"}, "2,2,3,4,5,65535"},
      {{"compoffset", "compoffset"}, kOffsetText},
      {{"name", "name"}, "w1"},
      {{"ioname", "ioname"}, "b1"},
      {{"intarray", "intarray"}, "1,7"},
      {{"doublearray", "doublearray"}, "1.5,7"},
      {{"namearray", "namearray"}, "p1,q"},
      // Bytes turn into wide text, not the other way.
      {{"name", "ioname"}, "b1"},
      // A free-form source converts; its ten numbers are no data descriptor.
      {{"bool", "anything"}, "1"},
      {{"int", "anything"}, "1"},
      {{"uint", "anything"}, "1"},
      {{"uint64", "anything"}, "1"},
      {{"float", "anything"}, "1.000000"},
      {{"double", "anything"}, "1.000000"},
      {{"double2d", "anything"}, "1.000000,2.000000"},
      {{"double3d", "anything"}, "1.000000,2.000000,3.000000"},
      {{"compoffset", "anything"}, "1,2,3,4,5,6,7,8.000000,9.000000,10.000000"},
      {{"name", "anything"}, "1,2,3,4,5,6,7,8,9,10"},
      {{"ioname", "anything"}, "1,2,3,4,5,6,7,8,9,10"},
      {{"intarray", "anything"}, "1,2,3,4,5,6,7,8,9,10"},
      {{"doublearray", "anything"}, "1,2,3,4,5,6,7,8,9,10"},
      {{"namearray", "anything"}, "1,2,3,4,5,6,7,8,9,10"},
      {{"anything", "anything"}, "1,2,3,4,5,6,7,8,9,10"},
      // A free-form target takes every wide text form.
      {{"anything", "bool"}, "1"},
      {{"anything", "int"}, "-11"},
      {{"anything", "uint"}, "21"},
      {{"anything", "uint64"}, "31"},
      {{"anything", "float"}, "5.500000"},
      {{"anything", "double"}, "4.000000"},
      {{"anything", "double2d"}, "4.000000,8.000000"},
      {{"anything", "double3d"}, "4.000000,8.000000,1.000000"},
      {{"anything", "datainfo"}, "2,2,3,4,5,65535"},
      {{"anything", "compoffset"}, kOffsetText},
      {{"anything", "name"}, "w1"},
      {{"anything", "intarray"}, "1,7"},
      {{"anything", "doublearray"}, "1.5,7"},
      {{"anything", "namearray"}, "p1,q"},
  };
  ExpectEffects(&CLumType::operator=, kEffects);
}

TEST(AssignmentMatrix, AddsComponentsAndAppendsNames) {
  const Effects kEffects = {
      {{"double", "double"}, "6.000000"},
      {{"double", "anything"}, "3.000000"},
      {{"double2d", "double2d"}, "6.000000,16.000000"},
      {{"double2d", "anything"}, "3.000000,10.000000"},
      {{"double3d", "double3d"}, "6.000000,16.000000,2.000000"},
      {{"double3d", "anything"}, "3.000000,10.000000,4.000000"},
      {{"name", "name"}, "w0w1"},
      {{"name", "ioname"}, "w0b1"},
      {{"name", "anything"}, "w01,2,3,4,5,6,7,8,9,10"},
      {{"ioname", "ioname"}, "b0b1"},
      {{"ioname", "anything"}, "b01,2,3,4,5,6,7,8,9,10"},
  };
  ExpectEffects(&CLumType::operator+=, kEffects);
}

TEST(AssignmentMatrix, SubtractsComponents) {
  const Effects kEffects = {
      {{"double", "double"}, "-2.000000"},
      {{"double", "anything"}, "1.000000"},
      {{"double2d", "double2d"}, "-2.000000,0.000000"},
      {{"double2d", "anything"}, "1.000000,6.000000"},
      {{"double3d", "double3d"}, "-2.000000,0.000000,0.000000"},
      {{"double3d", "anything"}, "1.000000,6.000000,-2.000000"},
  };
  ExpectEffects(&CLumType::operator-=, kEffects);
}

TEST(AssignmentMatrix, MultipliesComponentsAndOtherKindsCountAsZero) {
  Effects effects = {
      {{"double", "double"}, "8.000000"},
      {{"double", "anything"}, "2.000000"},
      {{"double2d", "double2d"}, "8.000000,64.000000"},
      {{"double2d", "anything"}, "2.000000,16.000000"},
      {{"double3d", "double3d"}, "8.000000,64.000000,1.000000"},
      {{"double3d", "anything"}, "2.000000,16.000000,3.000000"},
  };
  AddZeroEffects(effects, "double", "0.000000");
  AddZeroEffects(effects, "double2d", "0.000000,0.000000");
  AddZeroEffects(effects, "double3d", "0.000000,0.000000,0.000000");
  ExpectEffects(&CLumType::operator*=, effects);
}

TEST(AssignmentMatrix, DividesComponentsAndOtherKindsCountAsZero) {
  Effects effects = {
      {{"double", "double"}, "0.500000"},
      {{"double", "anything"}, "2.000000"},
      {{"double2d", "double2d"}, "0.500000,1.000000"},
      {{"double2d", "anything"}, "2.000000,4.000000"},
      {{"double3d", "double3d"}, "0.500000,1.000000,1.000000"},
      {{"double3d", "anything"}, "2.000000,4.000000,0.333333"},
  };
  AddZeroEffects(effects, "double", "inf");
  AddZeroEffects(effects, "double2d", "inf,inf");
  AddZeroEffects(effects, "double3d", "inf,inf,inf");
  ExpectEffects(&CLumType::operator/=, effects);
}

TEST(AssignmentMatrix, SelfAssignmentKeepsEveryKind) {
  for (const Kind& kind : Kinds()) {
    for (const int sample : {0, 1}) {
      const auto value = kind.make(sample);
      const std::string before = TextOf(*value);
      CLumType& target = *value;
      const CLumType& source = *value;
      target = source;
      EXPECT_EQ(TextOf(*value), before) << kind.name;
    }
  }
}

TEST(AssignmentMatrix, CompoundArithmeticWithItselfReadsTheOldValue) {
  const std::map<std::string, std::string> kSums = {
      {"double", "8.000000"},
      {"double2d", "8.000000,16.000000"},
      {"double3d", "8.000000,16.000000,2.000000"},
      {"name", "w1w1"},
      {"ioname", "b1b1"},
  };
  for (const Kind& kind : Kinds()) {
    const auto value = kind.make(1);
    const auto sum = kSums.find(kind.name);
    const std::string expected = sum != kSums.end() ? sum->second : TextOf(*value);
    CLumType& target = *value;
    const CLumType& source = *value;
    target += source;
    EXPECT_EQ(TextOf(*value), expected) << kind.name;
  }
}

}  // namespace
