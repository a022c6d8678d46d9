// Library-internal: what values of the library's own kinds hold, read where it is.
#pragma once

#include <string_view>
#include <typeinfo>

#include "values/DoubleType.h"
#include "values/FreeFormType.h"
#include "values/NameTypes.h"
#include "values/ScalarTypes.h"
#include "values/TextView.h"

namespace lum::detail {

/// What a value of a kind holds; texts are views, valid while the value lives unchanged.
class CHeldValue {
 public:
  static double Of(const CLumDouble& value) { return value.m_value; }
  static bool Of(const CLumBool& value) { return value.m_value; }
  static int Of(const CLumInt& value) { return value.m_value; }
  static unsigned int Of(const CLumUInt& value) { return value.m_value; }
  static std::uint64_t Of(const CLumULongLong& value) { return value.m_value; }
  static std::string_view Of(const CLumIoName& value) { return View(value.m_name); }
  static std::wstring_view Of(const CLumName& value) { return View(value.m_name); }
  static std::wstring_view Of(const CLumAnything& value) { return View(value.m_text); }
};

/// Whether a value is exactly of this kind. Not so the kinds that applications derive from it,
/// whose functions may do something else, nor a value where its type has several descriptions in a
/// process.
template <typename Kind>
bool IsExactly(const CLumType& value) {
  return &typeid(value) == &typeid(Kind);
}

/// Reads what a value of exactly this kind holds: without the counted copy that a text's accessor
/// makes, and without asking a number for every type. False, with nothing read, for other values.
template <typename Kind, typename T>
bool ReadHeld(const CLumType& value, T& held) {
  if (!IsExactly<Kind>(value)) {
    return false;
  }
  held = CHeldValue::Of(static_cast<const Kind&>(value));
  return true;
}

}  // namespace lum::detail
