// Library-internal: whether two values count as equal in a comparison of trees.
#pragma once

#include "attributes/AttributeMap.h"

namespace lum::detail {

/// Values that both are one number are equal within the platform's tolerance, whatever their texts.
/// Others are equal when their texts are; a protected value of `own` never differs in its text.
bool AreValuesEqual(const CAttributeMap& own, const CAttributeMap& other);

}  // namespace lum::detail
