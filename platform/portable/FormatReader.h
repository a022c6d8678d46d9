// Reads the conversions of a printf format: flags, width, precision, size and type letter. Widths
// and precisions given as "*" come from the argument list.
#pragma once

#include <algorithm>
#include <cstdarg>
#include <string_view>

#include "platform/FrameworkString.h"
#include "platform/portable/FormatConversion.h"

namespace lum::detail {

// An argument list that functions can hand on and read in turn.
class CArguments {
 public:
  explicit CArguments(va_list arguments) { va_copy(m_list, arguments); }
  ~CArguments() { va_end(m_list); }
  CArguments(const CArguments&) = delete;
  CArguments& operator=(const CArguments&) = delete;

  template <typename T>
  T Take() {
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the constructor's va_copy did it.
    return va_arg(m_list, T);
  }

 private:
  va_list m_list;
};

// Reads the format behind a "%".
template <typename Ch>
class CFormatReader {
 public:
  CFormatReader(std::basic_string_view<Ch> rest, CArguments& arguments)
      : m_rest(rest), m_arguments(arguments) {}

  Conversion Read() {
    ReadFlags();
    ReadWidth();
    ReadPrecision();
    ReadSize();
    ReadType();
    return m_conversion;
  }

  std::basic_string_view<Ch> Rest() const { return m_rest; }

 private:
  bool Take(char expected) {
    if (m_rest.empty() || m_rest.front() != static_cast<Ch>(expected)) {
      return false;
    }
    m_rest.remove_prefix(1);
    return true;
  }

  bool TakeBoth(char first, char second) {
    if (m_rest.size() < 2 || m_rest[1] != static_cast<Ch>(second)) {
      return false;
    }
    return Take(first) && Take(second);
  }

  void ReadFlags() {
    for (;;) {
      if (Take('-')) {
        m_conversion.leftAligned = true;
      } else if (Take('+')) {
        m_conversion.plusSign = true;
      } else if (Take(' ')) {
        m_conversion.blankSign = true;
      } else if (Take('#')) {
        m_conversion.alternative = true;
      } else if (Take('0')) {
        m_conversion.zeroPadded = true;
      } else {
        return;
      }
    }
  }

  // A number in the format or, for "*", an argument, which may be negative.
  int ReadField() {
    if (Take('*')) {
      return std::clamp(m_arguments.Take<int>(), -kMaxFormatField, kMaxFormatField);
    }
    int number = 0;
    for (; !m_rest.empty() && m_rest.front() >= '0' && m_rest.front() <= '9';
         m_rest.remove_prefix(1)) {
      number = std::min(number * 10 + static_cast<int>(m_rest.front() - '0'), kMaxFormatField);
    }
    return number;
  }

  void ReadWidth() {
    const int width = ReadField();
    m_conversion.leftAligned = m_conversion.leftAligned || width < 0;
    m_conversion.width = width < 0 ? -width : width;
  }

  void ReadPrecision() {
    if (Take('.')) {
      const int precision = ReadField();
      m_conversion.precision = precision < 0 ? -1 : precision;
    }
  }

  ArgumentSize TakeSize() {
    static constexpr struct {
      char first;
      char second;
      ArgumentSize size;
    } kDoubles[] = {{'h', 'h', ArgumentSize::Char}, {'l', 'l', ArgumentSize::LongLong}};
    static constexpr struct {
      char letter;
      ArgumentSize size;
    } kSingles[] = {{'h', ArgumentSize::Short},     {'l', ArgumentSize::Long},
                    {'w', ArgumentSize::Long},      {'z', ArgumentSize::Size},
                    {'t', ArgumentSize::PtrDiff},   {'j', ArgumentSize::IntMax},
                    {'L', ArgumentSize::LongDouble}};
    for (const auto& entry : kDoubles) {
      if (TakeBoth(entry.first, entry.second)) {
        return entry.size;
      }
    }
    for (const auto& entry : kSingles) {
      if (Take(entry.letter)) {
        return entry.size;
      }
    }
    return ArgumentSize::Default;
  }

  // "I64", "I32" and a lone "I" (the size of a pointer) are the framework's own.
  void ReadSize() {
    if (!Take('I')) {
      m_conversion.size = TakeSize();
    } else if (TakeBoth('6', '4')) {
      m_conversion.size = ArgumentSize::LongLong;
    } else if (!TakeBoth('3', '2')) {
      m_conversion.size = ArgumentSize::Size;
    }
  }

  void ReadType() {
    constexpr std::string_view kTypes = "diuxXocCsSpfFeEgGaAn%";
    for (const char type : kTypes) {
      if (Take(type)) {
        m_conversion.type = type;
        return;
      }
    }
  }

  std::basic_string_view<Ch> m_rest;
  CArguments& m_arguments;
  Conversion m_conversion;
};

}  // namespace lum::detail
