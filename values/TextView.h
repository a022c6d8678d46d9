// Library-internal views of strings, and what is done with their characters.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

/// A hash of the characters, mixed in eight bytes at a time.
inline std::uint32_t HashText(std::wstring_view text) noexcept {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
  constexpr std::size_t kStep = sizeof(std::uint64_t) / sizeof(wchar_t);
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  std::uint64_t hash = text.size();
  const auto mixIn = [&hash](std::uint64_t bits) {
    hash = (hash ^ bits) * kSpread;
    hash ^= hash >> 32;
  };
  for (; end - at >= static_cast<std::ptrdiff_t>(kStep); at += kStep) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, at, sizeof bits);
    mixIn(bits);
  }
  for (; at != end; ++at) {
    mixIn(static_cast<std::uint64_t>(*at));
  }
  // The upper half of a product depends on all bits: numbered names do not crowd.
  return static_cast<std::uint32_t>(hash * kSpread >> 32);
}

/// False for the visible characters of ASCII, which no trimming takes away. What it does take away
/// of all others is up to the platform's strings.
inline bool MayBeTrimmed(wchar_t ch) { return ch <= L' ' || ch >= 0x7F; }

}  // namespace lum::detail
