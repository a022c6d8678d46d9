// The hash of a text, for look-ups by CString.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "platform/FrameworkString.h"

namespace lum::detail {

struct CTextHash {
  std::size_t operator()(const CString& text) const noexcept {
    return std::hash<std::wstring_view>()(
        std::wstring_view(text.GetString(), static_cast<std::size_t>(text.GetLength())));
  }
};

}  // namespace lum::detail
