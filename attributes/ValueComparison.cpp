// Most values that are compared are equal and of one kind, which is seen without making texts.
#include "attributes/ValueComparison.h"

#include <algorithm>
#include <cmath>

#include "values/ExactKind.h"

namespace lum::detail {
namespace {

/// Whether both values are exactly of a kind and what `get` reads of them is the same.
template <typename Kind, typename T>
bool HoldSame(const CLumType& first, const CLumType& second, int (Kind::*get)(T&) const) {
  const Kind* a = Exactly<Kind>(first);
  const Kind* b = Exactly<Kind>(second);
  T valueOfA{};
  T valueOfB{};
  return a != nullptr && b != nullptr && (a->*get)(valueOfA) != 0 && (b->*get)(valueOfB) != 0 &&
         valueOfA == valueOfB;
}

/// Two values that are exactly of one of these kinds and hold the same have the same text, and no
/// double, or the same. Not-a-number never counts as equal and infinities do not either, so doubles
/// and free-form texts that hold one are left to the plain comparison.
bool AreAlike(const CLumType& first, const CLumType& second) {
  switch (first.Type()) {
    case CLumType::TYPE_UNDEFINED:
      return Exactly<CLumUndefined>(first) != nullptr && Exactly<CLumUndefined>(second) != nullptr;
    case CLumType::TYPE_BOOL:
      return HoldSame<CLumBool>(first, second, &CLumBool::GetBool);
    case CLumType::TYPE_INT:
      return HoldSame<CLumInt>(first, second, &CLumInt::GetInt);
    case CLumType::TYPE_UINT:
      return HoldSame<CLumUInt>(first, second, &CLumUInt::GetUInt);
    case CLumType::TYPE_ULONGLONG:
      return HoldSame<CLumULongLong>(first, second, &CLumULongLong::GetULongLong);
    case CLumType::TYPE_DOUBLE: {
      double value = 0.0;
      return HoldSame<CLumDouble>(first, second, &CLumDouble::GetDouble) &&
             first.GetDouble(value) != 0 && std::isfinite(value);
    }
    default:
      return false;
  }
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
