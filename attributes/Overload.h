// Library-internal form of Overload, for sources that are known to be apart from the target.
#pragma once

#include "attributes/AttributeMap.h"

namespace lum::detail {

/// What CAttributeMap::Overload takes one by one.
struct COverlaySwitches {
  bool addNew = false;
  bool copyFlags = false;
  bool orderInfo = false;
  bool strict = false;
};

/// Lays the children of `source` over those of `target` as Overload does, without a copy of the
/// source. Precondition: neither node is part of the other's tree.
void Overlay(CAttributeMap& target, const CAttributeMap& source, COverlaySwitches switches);

}  // namespace lum::detail
