// LumTypeCreator: makes values from type codes, texts and plain values.
#pragma once

#include <span>
#include <utility>
#include <vector>

#include "values/LumType.h"

/// One row of the table of kinds.
struct LumTypeKind {
  CLumType::LUM_TYPE type;
  const wchar_t* name;  ///< A short lower-case name for people and tools, such as L"double".
  CLumType* (*make)();  ///< A new empty value owned by the caller; null for TYPE_ANYTHING's row.
};

/// The value factory. Every function returns a new value that the caller owns and deletes, or null
/// when the code names no kind or memory is short. Threads: any thread may call any function.
class LUM_ATTRIBUTES_API LumTypeCreator {
 public:
  LumTypeCreator& operator=(const LumTypeCreator&) = default;
  LumTypeCreator& operator=(LumTypeCreator&&) noexcept = default;

  /// An empty value (zero, empty text, empty list) of the kind; null for any code that is not in
  /// the table, and for TYPE_ANYTHING.
  static CLumType* MakeLumType(int type);
  /// The same, set from a text; a text that the kind refuses leaves the value empty.
  static CLumType* MakeLumType(int type, const CString& text);

  static CLumType* MakeValue(bool value);
  static CLumType* MakeValue(int value);
  static CLumType* MakeValue(unsigned int value);
  static CLumType* MakeValue(std::uint64_t value);
  static CLumType* MakeValue(double value);
  static CLumType* MakeValue(const CString& name);
  /// Null gives an empty name.
  static CLumType* MakeValue(const wchar_t* name);
  /// Bytes in the system's ANSI code page; always makes a wide name. Null gives an empty name.
  static CLumType* MakeValue(const char* name);
  static CLumType* MakeValue(const CDataInfo& value);
  static CLumType* MakeValue(const CCompOffset& value);
  static CLumType* MakeValue(const std::pair<double, double>& value);
  static CLumType* MakeValue(const Point& value);
  /// The forms that take an rvalue take over its storage and leave it empty.
  static CLumType* MakeValue(const std::vector<int>& values);
  static CLumType* MakeValue(std::vector<int>&& values);
  static CLumType* MakeValue(const std::vector<double>& values);
  static CLumType* MakeValue(std::vector<double>&& values);
  static CLumType* MakeValue(const std::vector<CString>& names);
  static CLumType* MakeValue(std::vector<CString>&& names);

  /// All sixteen codes in ascending order, TYPE_ANYTHING included.
  static std::span<const LumTypeKind> Kinds();
  /// The kind's short name, or null for an unknown code.
  static const wchar_t* KindName(int type);
};
