// Library-internal: tells the library's own kinds from those that applications derive from them.
#pragma once

#include <typeinfo>

#include "values/LumTypeBase.h"

namespace lum::detail {

/// The value as a `Kind` when it is exactly of that kind, else null. What a derived kind overrides
/// is up to the application, so shortcuts past the virtual functions are for exact kinds alone.
/// Cheapest after the value's Type() was found to be that of `Kind`.
template <typename Kind>
const Kind* Exactly(const CLumType& value) noexcept {
  return typeid(value) == typeid(Kind) ? static_cast<const Kind*>(&value) : nullptr;
}

}  // namespace lum::detail
