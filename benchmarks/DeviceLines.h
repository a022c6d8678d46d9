// What the decoder benchmarks have in common: lines of devices, made with the value they hold, and
// the fields of bytes in them.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "values/DoubleType.h"
#include "values/NameTypes.h"

namespace lum::bench {

inline constexpr std::size_t kLines = 1000;

/// One line in fifty is cut short and holds no value.
inline bool IsCut(std::size_t place) { return place % 50 == 49; }

/// A field of bytes in the order of its type code (docs/formulas.md).
struct Field {
  int typeCode = 0;
  std::string bytes;
  double value = 0.0;
};

template <typename T>
Field MakeField(int typeCode, T number) {
  std::string bytes(sizeof number, '\0');
  std::memcpy(bytes.data(), &number, sizeof number);
  if (typeCode < 0) {
    std::reverse(bytes.begin(), bytes.end());
  }
  return {typeCode, bytes, static_cast<double>(number)};
}

/// Some field that devices send, little-endian for the most part.
inline Field AnyField(std::mt19937_64& random) {
  const std::uint64_t bits = random();
  switch (random() % 7) {
    case 0:
      return MakeField(6, static_cast<std::uint8_t>(bits));
    case 1:
      return MakeField(2, static_cast<std::int16_t>(bits));
    case 2:
      return MakeField(7, static_cast<std::uint16_t>(bits));
    case 3:
      return MakeField(-3, static_cast<std::int32_t>(bits));
    case 4:
      return MakeField(8, static_cast<std::uint32_t>(bits));
    case 5:
      return MakeField(4, static_cast<float>(bits % 100000) / 100.0F);
    default:
      return MakeField(5, static_cast<double>(bits % 100000000) / 1000.0);
  }
}

/// The number with its bytes in the opposite order.
template <typename T>
T Reversed(T number) {
  if constexpr (sizeof(T) == 2) {
    return std::bit_cast<T>(__builtin_bswap16(std::bit_cast<std::uint16_t>(number)));
  } else if constexpr (sizeof(T) == 4) {
    return std::bit_cast<T>(__builtin_bswap32(std::bit_cast<std::uint32_t>(number)));
  } else if constexpr (sizeof(T) == 8) {
    return std::bit_cast<T>(__builtin_bswap64(std::bit_cast<std::uint64_t>(number)));
  } else {
    return number;
  }
}

template <typename T>
std::optional<double> LoadAs(const char* bytes, std::size_t count, bool isReversed) {
  if (count < sizeof(T)) {
    return std::nullopt;
  }
  T number;
  std::memcpy(&number, bytes, sizeof number);
  if (isReversed) {
    number = Reversed(number);
  }
  return static_cast<double>(number);
}

/// The number that the bytes begin with. Nothing when they are too few.
[[gnu::always_inline]] inline std::optional<double> LoadField(const char* bytes, std::size_t count,
                                                              int typeCode) {
  const bool isReversed = typeCode < 0;
  switch (std::abs(typeCode)) {
    case 2:
      return LoadAs<std::int16_t>(bytes, count, isReversed);
    case 3:
      return LoadAs<std::int32_t>(bytes, count, isReversed);
    case 4:
      return LoadAs<float>(bytes, count, isReversed);
    case 5:
      return LoadAs<double>(bytes, count, isReversed);
    case 6:
      return LoadAs<std::uint8_t>(bytes, count, isReversed);
    case 7:
      return LoadAs<std::uint16_t>(bytes, count, isReversed);
    case 8:
      return LoadAs<std::uint32_t>(bytes, count, isReversed);
    default:
      return std::nullopt;
  }
}

/// A line with what says where its value is, each as the standard library's types and as ours.
struct DeviceLine {
  DeviceLine(const std::string& lineText, double codeNumber, double startNumber,
             double lengthNumber, std::optional<double> lineValue)
      : text(lineText),
        typeCode(static_cast<int>(codeNumber)),
        start(static_cast<std::size_t>(startNumber)),
        length(static_cast<std::size_t>(lengthNumber)),
        value(lineValue),
        ourText(CStringA(lineText.data(), static_cast<int>(lineText.size()))),
        ourTypeCode(codeNumber),
        ourStart(startNumber),
        ourLength(lengthNumber) {}

  std::string text;
  int typeCode;
  std::size_t start;
  std::size_t length;
  std::optional<double> value;
  CLumIoName ourText;
  CLumDouble ourTypeCode;
  CLumDouble ourStart;
  CLumDouble ourLength;
};

/// What an operation of ours made: its result code and its value.
inline std::optional<double> OurAnswer(int code, const CLumDouble& result) {
  double value = 0.0;
  return code != 0 && result.GetDouble(value) != 0 ? std::optional(value) : std::nullopt;
}

/// What each 8-bit character is as a hexadecimal digit; 0xFF: none.
class CHexDigits {
 public:
  constexpr CHexDigits() {
    std::fill(std::begin(m_digits), std::end(m_digits), std::uint8_t{0xFF});
    for (std::uint8_t digit = 0; digit < 16; ++digit) {
      m_digits[static_cast<std::uint8_t>("0123456789ABCDEF"[digit])] = digit;
      m_digits[static_cast<std::uint8_t>("0123456789abcdef"[digit])] = digit;
    }
  }
  constexpr std::uint8_t operator[](char ch) const {
    return m_digits[static_cast<std::uint8_t>(ch)];
  }

 private:
  std::uint8_t m_digits[256] = {};
};

inline constexpr CHexDigits kHexDigits;

inline std::string HexOf(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    text += "0123456789ABCDEF"[static_cast<std::uint8_t>(byte) >> 4];
    text += "0123456789ABCDEF"[static_cast<std::uint8_t>(byte) & 15];
  }
  return text;
}

}  // namespace lum::bench
