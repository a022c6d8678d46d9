// Format: a printf of our own, because the C runtime's obeys the process locale and differs between
// systems in what "%s" and "%S" take.
#include <algorithm>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "platform/FrameworkString.h"
#include "platform/portable/FormatConversion.h"
#include "platform/portable/FormatReader.h"

namespace {

using lum::detail::ArgumentSize;
using lum::detail::CArguments;
using lum::detail::CFormatReader;
using lum::detail::Conversion;
using lum::detail::NumberParts;

// Takes an integer argument of the conversion's size, as its two's complement in 64 bits.
std::uint64_t TakeUnsigned(CArguments& arguments, ArgumentSize size) {
  switch (size) {
    case ArgumentSize::IntMax:
      return arguments.Take<std::uintmax_t>();
    case ArgumentSize::Char:
      return static_cast<unsigned char>(arguments.Take<int>());
    case ArgumentSize::Short:
      return static_cast<unsigned short>(arguments.Take<int>());
    case ArgumentSize::Long:
      return arguments.Take<unsigned long>();
    case ArgumentSize::LongLong:
      return arguments.Take<unsigned long long>();
    case ArgumentSize::Size:
      return arguments.Take<std::size_t>();
    case ArgumentSize::PtrDiff:
      return static_cast<std::uint64_t>(arguments.Take<std::ptrdiff_t>());
    default:
      return arguments.Take<unsigned int>();
  }
}

std::int64_t TakeSigned(CArguments& arguments, ArgumentSize size) {
  switch (size) {
    case ArgumentSize::IntMax:
      return arguments.Take<std::intmax_t>();
    case ArgumentSize::Char:
      return static_cast<signed char>(arguments.Take<int>());
    case ArgumentSize::Short:
      return static_cast<short>(arguments.Take<int>());
    case ArgumentSize::Long:
      return arguments.Take<long>();
    case ArgumentSize::LongLong:
      return arguments.Take<long long>();
    case ArgumentSize::Size:
    case ArgumentSize::PtrDiff:
      return arguments.Take<std::ptrdiff_t>();
    default:
      return arguments.Take<int>();
  }
}

NumberParts TakeInteger(CArguments& arguments, const Conversion& conversion) {
  if (conversion.type != 'd' && conversion.type != 'i') {
    return WriteInteger(conversion, false, TakeUnsigned(arguments, conversion.size));
  }
  const std::int64_t value = TakeSigned(arguments, conversion.size);
  const auto bits = static_cast<std::uint64_t>(value);
  return WriteInteger(conversion, value < 0, value < 0 ? 0 - bits : bits);
}

NumberParts TakeFloating(CArguments& arguments, const Conversion& conversion) {
  const double value = conversion.size == ArgumentSize::LongDouble
                           ? static_cast<double>(arguments.Take<long double>())
                           : arguments.Take<double>();
  return WriteFloating(conversion, value);
}

// All digits of the address, as the framework prints it.
NumberParts TakePointer(CArguments& arguments) {
  Conversion conversion;
  conversion.type = 'X';
  conversion.precision = 2 * static_cast<int>(sizeof(void*));
  const auto address = reinterpret_cast<std::uintptr_t>(arguments.Take<const void*>());
  return WriteInteger(conversion, false, address);
}

// Writes texts, padded as a conversion says, to the end of a string.
template <typename Ch>
class CFormatWriter {
 public:
  using String = LumFrameworkString<Ch>;
  using Other = LumFrameworkString<typename String::OtherChar>;

  void Literal(std::basic_string_view<Ch> text) {
    m_text.Append(text.data(), static_cast<int>(text.size()));
  }

  void Number(const Conversion& conversion, const NumberParts& parts) {
    const int length = static_cast<int>(parts.prefix.size() + parts.digits.size());
    const int padding = std::max(conversion.width - length, 0);
    const bool hasZeros = conversion.zeroPadded && parts.takesZeros && !conversion.leftAligned;
    Repeat(' ', hasZeros || conversion.leftAligned ? 0 : padding);
    Ascii(parts.prefix);
    Repeat('0', hasZeros ? padding : 0);
    Ascii(parts.digits);
    Repeat(' ', conversion.leftAligned ? padding : 0);
  }

  void Text(const Conversion& conversion, const Ch* text, int length) {
    const int padding = std::max(conversion.width - length, 0);
    Repeat(' ', conversion.leftAligned ? 0 : padding);
    m_text.Append(text, length);
    Repeat(' ', conversion.leftAligned ? padding : 0);
  }

  // Of a text that need not end with a NUL as long as the precision ends it first.
  void OwnText(const Conversion& conversion, const Ch* text) {
    if (text == nullptr) {
      OwnText(conversion, kNullText);
      return;
    }
    int length = 0;
    while (length != conversion.precision && text[length] != Ch()) {
      ++length;
    }
    Text(conversion, text, length);
  }

  // The precision counts the characters that are written.
  void OtherText(const Conversion& conversion, const typename String::OtherChar* text) {
    if (text == nullptr) {
      OwnText(conversion, kNullText);
      return;
    }
    OwnText(conversion, String(text).GetString());
  }

  void OwnCharacter(const Conversion& conversion, Ch ch) { Text(conversion, &ch, 1); }

  void OtherCharacter(const Conversion& conversion, typename String::OtherChar ch) {
    const String converted{Other(ch)};
    Text(conversion, converted.GetString(), converted.GetLength());
  }

  String& Result() { return m_text; }

 private:
  static constexpr Ch kNullText[] = {'(', 'n', 'u', 'l', 'l', ')', 0};

  void Repeat(char ch, int count) {
    for (; count > 0; --count) {
      m_text.AppendChar(static_cast<Ch>(ch));
    }
  }

  void Ascii(std::string_view text) {
    for (const char ch : text) {
      m_text.AppendChar(static_cast<Ch>(ch));
    }
  }

  String m_text;
};

// Whether a text or character argument has the string's own width: "%s" has, "%S" has not, and a
// size letter says the width itself.
template <typename Ch>
bool IsOwnWidth(const Conversion& conversion) {
  constexpr bool isWide = std::is_same_v<Ch, wchar_t>;
  switch (conversion.size) {
    case ArgumentSize::Char:
    case ArgumentSize::Short:
      return !isWide;
    case ArgumentSize::Long:
    case ArgumentSize::LongLong:
      return isWide;
    default:
      return conversion.type == 's' || conversion.type == 'c';
  }
}

template <typename Ch>
void WriteText(CFormatWriter<Ch>& writer, const Conversion& conversion, CArguments& arguments) {
  if (IsOwnWidth<Ch>(conversion)) {
    writer.OwnText(conversion, arguments.Take<const Ch*>());
  } else {
    using Other = typename LumFrameworkString<Ch>::OtherChar;
    writer.OtherText(conversion, arguments.Take<const Other*>());
  }
}

template <typename Ch>
void WriteCharacter(CFormatWriter<Ch>& writer, const Conversion& conversion,
                    CArguments& arguments) {
  const int code = arguments.Take<int>();
  if (IsOwnWidth<Ch>(conversion)) {
    writer.OwnCharacter(conversion, static_cast<Ch>(code));
  } else {
    using Other = typename LumFrameworkString<Ch>::OtherChar;
    writer.OtherCharacter(conversion, static_cast<Other>(code));
  }
}

// Writes one conversion. False when its type is not known.
template <typename Ch>
bool WriteConversion(CFormatWriter<Ch>& writer, const Conversion& conversion,
                     CArguments& arguments) {
  switch (conversion.type) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
      writer.Number(conversion, TakeInteger(arguments, conversion));
      return true;
    case 'p':
      writer.Number(conversion, TakePointer(arguments));
      return true;
    case 's':
    case 'S':
      WriteText(writer, conversion, arguments);
      return true;
    case 'c':
    case 'C':
      WriteCharacter(writer, conversion, arguments);
      return true;
    case '%':
      writer.OwnCharacter(Conversion(), static_cast<Ch>('%'));
      return true;
    case 'n':
      // A format that writes to memory is refused; its argument is passed over.
      arguments.Take<void*>();
      return true;
    case 0:
      return false;
    default:
      writer.Number(conversion, TakeFloating(arguments, conversion));
      return true;
  }
}

// A conversion that is not known is copied as it stands.
template <typename Ch>
LumFrameworkString<Ch> Formatted(std::basic_string_view<Ch> format, CArguments& arguments) {
  CFormatWriter<Ch> writer;
  while (!format.empty()) {
    const std::size_t percent = std::min(format.find(static_cast<Ch>('%')), format.size());
    writer.Literal(format.substr(0, percent));
    format.remove_prefix(percent);
    if (format.empty()) {
      break;
    }
    CFormatReader<Ch> reader(format.substr(1), arguments);
    const Conversion conversion = reader.Read();
    if (!WriteConversion(writer, conversion, arguments)) {
      writer.Literal(format.substr(0, format.size() - reader.Rest().size()));
    }
    format = reader.Rest();
  }
  return writer.Result();
}

}  // namespace

template <typename Ch>
void LumFrameworkString<Ch>::FormatV(const Ch* format, va_list arguments) {
  CArguments list(arguments);
  // Built aside: the format and its arguments may be this very text.
  *this = format == nullptr ? LumFrameworkString()
                            : Formatted(std::basic_string_view<Ch>(format), list);
}

template <typename Ch>
// NOLINTNEXTLINE(cert-dcl50-cpp): takes its arguments as printf does.
void LumFrameworkString<Ch>::Format(const Ch* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  FormatV(format, arguments);
  va_end(arguments);
}

template <typename Ch>
// NOLINTNEXTLINE(cert-dcl50-cpp): takes its arguments as printf does.
void LumFrameworkString<Ch>::AppendFormat(const Ch* format, ...) {
  LumFrameworkString text;
  va_list arguments;
  va_start(arguments, format);
  text.FormatV(format, arguments);
  va_end(arguments);
  Append(text);
}

template void LumFrameworkString<wchar_t>::Format(const wchar_t*, ...);
template void LumFrameworkString<wchar_t>::FormatV(const wchar_t*, va_list);
template void LumFrameworkString<wchar_t>::AppendFormat(const wchar_t*, ...);
template void LumFrameworkString<char>::Format(const char*, ...);
template void LumFrameworkString<char>::FormatV(const char*, va_list);
template void LumFrameworkString<char>::AppendFormat(const char*, ...);
