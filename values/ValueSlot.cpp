// Copies into slots.
#include "values/ValueSlot.h"

#include <type_traits>

#include "values/HeldValue.h"

namespace lum::detail {
namespace {

template <typename Kind, std::size_t Size>
bool CopyIfExactly(const CLumType& value, std::byte (&place)[Size]) noexcept {
  static_assert(sizeof(Kind) <= Size && std::is_nothrow_copy_constructible_v<Kind>);
  if (!IsExactly<Kind>(value)) {
    return false;
  }
  ::new (place) Kind(static_cast<const Kind&>(value));
  return true;
}

}  // namespace

bool CValueSlot::CopyInPlace(const CLumType& value) noexcept {
  m_isInPlace =
      CopyIfExactly<CLumDouble>(value, m_place) || CopyIfExactly<CLumInt>(value, m_place) ||
      CopyIfExactly<CLumBool>(value, m_place) || CopyIfExactly<CLumUndefined>(value, m_place) ||
      CopyIfExactly<CLumUInt>(value, m_place) || CopyIfExactly<CLumFloat>(value, m_place) ||
      CopyIfExactly<CLumULongLong>(value, m_place);
  return m_isInPlace;
}

}  // namespace lum::detail
