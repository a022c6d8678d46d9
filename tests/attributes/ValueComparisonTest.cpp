// Which values count as equal: the shortcuts for values of one kind against the plain rule, and
// values that are kept in their nodes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "attributes/AttributeMap.h"
#include "tests/attributes/TreeTesting.h"

namespace {

/// An application's own kind: equal to no other as far as its text tells.
class CDerivedInt : public CLumInt {
 public:
  using CLumInt::CLumInt;
  CDerivedInt* MakeCopy() const override { return new CDerivedInt(*this); }
  using CLumInt::GetValueStr;
  int GetValueStr(CString& text) const override {
    CLumInt::GetValueStr(text);
    text += L" units";
    return 1;
  }
};

std::vector<std::unique_ptr<CLumType>> ManyValues() {
  std::vector<std::unique_ptr<CLumType>> values;
  const auto add = [&values](auto value) {
    values.push_back(std::make_unique<decltype(value)>(value));
  };
  add(CLumUndefined());
  for (const bool value : {false, true}) {
    add(CLumBool(value));
  }
  for (const int value : {0, 1, -1, std::numeric_limits<int>::max()}) {
    add(CLumInt(value));
    add(CDerivedInt(value));
    add(CLumUInt(static_cast<unsigned int>(value)));
    add(CLumULongLong(static_cast<std::uint64_t>(value)));
  }
  const double kInfinity = std::numeric_limits<double>::infinity();
  const double kNan = std::numeric_limits<double>::quiet_NaN();
  for (const double value : {0.0, -0.0, 1.0, std::nextafter(1.0, 2.0), 1e-9, 1e300, -1e300,
                             kInfinity, -kInfinity, kNan, -kNan}) {
    add(CLumDouble(value));
    add(CLumFloat(static_cast<float>(value)));
    add(CLumDouble2D(value, 1.0));
  }
  for (const wchar_t* text : {L"", L"1", L"1.0", L"inf", L"nan", L"1e999", L"text", L"1,2", L"0"}) {
    add(CLumName(text));
    add(CLumAnything(text));
  }
  add(CLumIoName("1"));
  add(CLumIntArray(std::vector<int>{1, 2}));
  return values;
}

/// The rule as it is written down.
bool AreEqualByTheRule(const CLumType& own, const CLumType& other, bool isProtected) {
  CString ownText;
  CString otherText;
  own.GetValueStr(ownText);
  other.GetValueStr(otherText);
  double a = 0.0;
  double b = 0.0;
  if (ownText.Find(L',') < 0 && otherText.Find(L',') < 0 && own.GetDouble(a) != 0 &&
      other.GetDouble(b) != 0) {
    return std::abs(a - b) <= Epsilon(std::max(std::abs(a), std::abs(b)) * 10.0);
  }
  return isProtected || ownText == otherText;
}

TEST(ValueComparison, EveryPairOfValuesIsComparedByTheRule) {
  const auto values = ManyValues();
  for (const unsigned int flags : {0U, static_cast<unsigned int>(CAttributeRec::FLAG_KEEP_VALUE)}) {
    for (const auto& first : values) {
      for (const auto& second : values) {
        CAttributeMap own;
        CAttributeMap other;
        own.Add(L"A", *first, flags);
        other.Add(L"A", *second, 0);
        CAttributeMap difference;
        EXPECT_EQ(own.Compare(other, difference, CAttributeMap::COMPARE_VALUES),
                  !AreEqualByTheRule(*first, *second, flags != 0))
            << TextOf(*first) << " of " << first->Type() << " and " << TextOf(*second) << " of "
            << second->Type() << ", flags " << flags;
      }
    }
  }
}

TEST(ValueComparison, NodesKeepValuesOfEveryKindThroughCopiesMovesAndReplacement) {
  const auto values = ManyValues();
  CAttributeMap map;
  for (const auto& value : values) {
    map.Add(L"A", *value, 0);
  }
  const auto expectHeld = [&values](const CAttributeMap& held) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      const CLumType& value = held.Find(L"A", static_cast<int>(i)).Value();
      const CLumType& expected = *values[i];
      EXPECT_EQ(typeid(value), typeid(expected));
      EXPECT_EQ(TextOf(value), TextOf(expected));
    }
  };
  expectHeld(map);
  CAttributeMap copy(map);
  expectHeld(copy);
  const CAttributeMap moved(std::move(copy));
  expectHeld(moved);
  // Each value in the place of each other one, by copy and by move.
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < values.size(); ++j) {
      CAttributeMap target;
      CAttributeMap& node = target.Add(L"A", *values[i], 0);
      CAttributeMap source(map.Find(L"A", static_cast<int>(j)));
      if ((i + j) % 2 == 0) {
        node.SetValue(source.Value());
      } else {
        node = std::move(*map.GetAttrMap(L"A", static_cast<int>(j)));
        map.GetAttrMap(L"A", static_cast<int>(j))->SetValue(source.Value());
      }
      EXPECT_EQ(TextOf(node.Value()), TextOf(*values[j]));
    }
  }
  expectHeld(map);
}

}  // namespace
