// Copies into slots.
#include "values/ValueSlot.h"

#include <type_traits>

#include "values/ExactKind.h"
#include "values/LumType.h"

namespace lum::detail {
namespace {

template <typename Kind, std::size_t Size>
bool CopyIfExactly(const CLumType& value, std::byte (&place)[Size]) noexcept {
  static_assert(sizeof(Kind) <= Size && std::is_nothrow_copy_constructible_v<Kind>);
  const Kind* exact = Exactly<Kind>(value);
  if (exact != nullptr) {
    ::new (place) Kind(*exact);
  }
  return exact != nullptr;
}

}  // namespace

bool CValueSlot::CopyInPlace(const CLumType& value) noexcept {
  switch (value.Type()) {
    case CLumType::TYPE_UNDEFINED:
      m_isInPlace = CopyIfExactly<CLumUndefined>(value, m_place);
      break;
    case CLumType::TYPE_BOOL:
      m_isInPlace = CopyIfExactly<CLumBool>(value, m_place);
      break;
    case CLumType::TYPE_INT:
      m_isInPlace = CopyIfExactly<CLumInt>(value, m_place);
      break;
    case CLumType::TYPE_UINT:
      m_isInPlace = CopyIfExactly<CLumUInt>(value, m_place);
      break;
    case CLumType::TYPE_ULONGLONG:
      m_isInPlace = CopyIfExactly<CLumULongLong>(value, m_place);
      break;
    case CLumType::TYPE_FLOAT:
      m_isInPlace = CopyIfExactly<CLumFloat>(value, m_place);
      break;
    case CLumType::TYPE_DOUBLE:
      m_isInPlace = CopyIfExactly<CLumDouble>(value, m_place);
      break;
    default:
      break;
  }
  return m_isInPlace;
}

}  // namespace lum::detail
