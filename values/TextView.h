// Library-internal views of strings, and hashing by their characters.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "platform/Framework.h"

namespace lum::detail {

/// The characters of a string, valid while it lives unchanged.
inline std::wstring_view View(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

inline std::string_view View(const CStringA& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// A string that holds the characters of a view.
inline CString ToCString(std::wstring_view text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

/// Hashes a string for unordered containers, equal texts alike.
struct TextHash {
  std::size_t operator()(const CString& text) const {
    return std::hash<std::wstring_view>()(View(text));
  }
};

}  // namespace lum::detail
