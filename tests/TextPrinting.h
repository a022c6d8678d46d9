// Lets GoogleTest print the framework's strings in failure messages.
#pragma once

#include <cstdio>
#include <ostream>
#include <type_traits>

#include "platform/Framework.h"

/// Between quotation marks, everything but printable ASCII as its code.
template <typename Text>
void PrintText(const Text& text, std::ostream* out) {
  using Ch = std::decay_t<decltype(text[0])>;
  *out << (std::is_same_v<Ch, char> ? "\"" : "L\"");
  for (int i = 0; i < text.GetLength(); ++i) {
    const auto code = static_cast<unsigned int>(static_cast<std::make_unsigned_t<Ch>>(text[i]));
    if (code >= 0x20 && code < 0x7F) {
      *out << static_cast<char>(code);
    } else {
      char escaped[16];
      std::snprintf(escaped, sizeof escaped, "\\x{%X}", code);
      *out << escaped;
    }
  }
  *out << '"';
}

inline void PrintTo(const CString& text, std::ostream* out) { PrintText(text, out); }

inline void PrintTo(const CStringA& text, std::ostream* out) { PrintText(text, out); }
