// Patterns with * and ?.
#pragma once

#include <string_view>

#include "platform/Framework.h"

namespace lum::decoding {

/// Whether the whole text, UTF-8, is what the pattern says: "*" stands for any number of
/// characters,
/// "?" for one, everything else for itself; case counts. Takes time in proportion to the product of
/// the lengths at most, and no memory.
bool MatchesGlob(std::string_view pattern, std::string_view text);

/// Matches whole texts, case apart.
class CGlob {
 public:
  explicit CGlob(const CString& pattern);

  bool Matches(const CString& text) const;

 private:
  CString m_pattern;
};

}  // namespace lum::decoding
