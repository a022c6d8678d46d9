// Patterns with * and ?.
#pragma once

#include "platform/Framework.h"

namespace lum::tool {

/// Matches whole texts, case apart: "*" stands for any number of characters, "?" for one.
class CGlob {
 public:
  explicit CGlob(const CString& pattern);

  /// Takes time in proportion to the product of the lengths at most.
  bool Matches(const CString& text) const;

 private:
  CString m_pattern;
};

}  // namespace lum::tool
