// Most values that are compared are equal and of one kind, which is seen without making texts.
#include "attributes/ValueComparison.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

#include "values/HeldValue.h"

namespace lum::detail {
namespace {

template <typename Kind>
bool HoldSame(const CLumType& first, const CLumType& second) {
  return CHeldValue::Of(static_cast<const Kind&>(first)) ==
         CHeldValue::Of(static_cast<const Kind&>(second));
}

/// Two values that are exactly of one of these kinds and hold the same have the same text, and are
/// the same finite double or none. Free-form texts may be read as infinite: they are left to the
/// plain comparison.
bool AreAlike(const CLumType& first, const CLumType& second) {
  if (&typeid(first) != &typeid(second)) {
    return false;
  }
  double number = 0.0;
  if (ReadHeld<CLumDouble>(first, number)) {
    return HoldSame<CLumDouble>(first, second) && std::isfinite(number);
  }
  return (IsExactly<CLumInt>(first) && HoldSame<CLumInt>(first, second)) ||
         (IsExactly<CLumBool>(first) && HoldSame<CLumBool>(first, second)) ||
         (IsExactly<CLumName>(first) && HoldSame<CLumName>(first, second)) ||
         IsExactly<CLumUndefined>(first) ||
         (IsExactly<CLumUInt>(first) && HoldSame<CLumUInt>(first, second)) ||
         (IsExactly<CLumULongLong>(first) && HoldSame<CLumULongLong>(first, second));
}

bool AreTextsEqual(const CAttributeMap& own, const CAttributeMap& other) {
  CString otherText;
  CString ownText;
  other.Value().GetValueStr(otherText);
  own.Value().GetValueStr(ownText);
  double a = 0.0;
  double b = 0.0;
  if (otherText.Find(L',') < 0 && ownText.Find(L',') < 0 && other.Value().GetDouble(a) != 0 &&
      own.Value().GetDouble(b) != 0) {
    return std::abs(a - b) <= Epsilon(std::max(std::abs(a), std::abs(b)) * 10.0);
  }
  return own.IsFlagSet(CAttributeRec::FLAG_KEEP_VALUE) || otherText == ownText;
}

}  // namespace

bool AreValuesEqual(const CAttributeMap& own, const CAttributeMap& other) {
  return AreAlike(own.Value(), other.Value()) || AreTextsEqual(own, other);
}

}  // namespace lum::detail
