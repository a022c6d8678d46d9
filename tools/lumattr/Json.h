// The JSON that commands print, put together value by value. The library that escapes and prints it
// stands behind this header in one source: its own takes seconds to compile, wherever it is
// included.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FrameworkString.h"

namespace lum::tool {

/// A value of JSON. Texts are UTF-8; printing others throws. What is printed may be shown on a
/// terminal: it has no control characters in its texts.
class CJson {
 public:
  /// Null, until something is set in it or added to it.
  CJson();
  CJson(bool value);
  CJson(const void* value) = delete;  ///< Would count as true or false.
  CJson(int number);
  CJson(unsigned int number);
  CJson(std::uint64_t number);
  /// Prints in as few digits as read back the same; what is not finite prints as null.
  CJson(double number);
  CJson(const char* text);
  CJson(std::string_view text);
  CJson(std::string text);
  CJson(const std::vector<std::string>& texts);
  CJson(CJson&& other) noexcept;
  CJson& operator=(CJson&& other) noexcept;
  ~CJson();

  static CJson Object();
  static CJson Array();

  /// The member of an object, in place of another of that name; members keep their order.
  void Set(std::string_view name, CJson value);
  /// One more element of an array.
  void Add(CJson value);

  /// On one line, without blanks.
  std::string Text() const;
  /// A line for each member and each element, indented by two blanks a level.
  std::string IndentedText() const;

 private:
  /// The library's own value.
  struct Node;

  std::unique_ptr<Node> m_node;
};

/// The text, or null where there is none.
CJson JsonOrNull(const std::optional<CString>& text);

}  // namespace lum::tool
