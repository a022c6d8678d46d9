// Library-internal views of strings, and hashing by their characters.
#pragma once

#include <algorithm>
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

/// Replaces a text, in the storage that it has when that is its own and takes the characters.
inline void Assign(CString& text, std::wstring_view characters) {
  const auto length = static_cast<int>(characters.size());
  std::copy(characters.begin(), characters.end(), text.GetBuffer(length));
  text.ReleaseBuffer(length);
}

/// Hashes a string for unordered containers, equal texts alike.
struct TextHash {
  std::size_t operator()(const CString& text) const {
    return std::hash<std::wstring_view>()(View(text));
  }
};

}  // namespace lum::detail
