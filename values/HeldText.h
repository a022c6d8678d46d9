// Library-internal: the texts that values of the library's own kinds hold, viewed where they are.
#pragma once

#include <string_view>
#include <typeinfo>

#include "values/FreeFormType.h"
#include "values/NameTypes.h"
#include "values/TextView.h"

namespace lum::detail {

/// The text that a value of a kind holds.
class CHeldText {
 public:
  static std::string_view Of(const CLumIoName& value) { return View(value.m_name); }
  static std::wstring_view Of(const CLumName& value) { return View(value.m_name); }
  static std::wstring_view Of(const CLumAnything& value) { return View(value.m_text); }
};

/// Views the text of a value of exactly this kind, which saves the counted copy that GetName makes.
/// False, with nothing viewed, for all other kinds, also those that applications derive: their
/// GetName may give another text. False, too, where a type has several descriptions in a process.
template <typename Kind, typename View>
bool ViewHeldText(const CLumType& value, View& view) {
  if (&typeid(value) != &typeid(Kind)) {
    return false;
  }
  view = CHeldText::Of(static_cast<const Kind&>(value));
  return true;
}

}  // namespace lum::detail
