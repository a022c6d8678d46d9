// Library-internal: the fields of device records and frames, by the type codes that stand in
// values/DoubleType.h.
#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lum::detail {

/// What a field holds. Formulas store these numbers: they never change.
enum class FieldType : int {
  kNone = 0,
  kInt8 = 1,
  kInt16 = 2,
  kInt32 = 3,
  kFloat = 4,
  kDouble = 5,
  kUInt8 = 6,
  kUInt16 = 7,
  kUInt32 = 8,
  kHexUInt32 = 9,
  kHexUInt16 = 10,
  kHexFloat = 11,
  kInt64 = 12,
};

struct FieldCode {
  FieldType type = FieldType::kNone;
  bool isReversed = false;  ///< Most significant byte first.
};

/// Takes a type code apart. A code that names no type gives kNone.
inline FieldCode ToFieldCode(double code) {
  constexpr double kEnd = static_cast<int>(FieldType::kInt64) + 1;
  const double type = std::abs(code);
  // Not-a-number fails the comparison, too.
  return type < kEnd ? FieldCode{static_cast<FieldType>(static_cast<int>(type)), code < 0.0}
                     : FieldCode{};
}

inline constexpr std::size_t kMostFieldBytes = 8;

/// How many bytes a binary field takes; 0 for the hexadecimal texts and for kNone.
inline std::size_t FieldSize(FieldType type) {
  static constexpr std::uint8_t kSizes[] = {0, 1, 2, 4, 4, 8, 1, 2, 4, 0, 0, 0, 8};
  return kSizes[static_cast<std::size_t>(type)];
}

/// Some bytes, as many as a field can have.
struct FieldBytes {
  std::uint64_t word = 0;  ///< Byte 0 in the lowest bits.
  std::size_t count = 0;

  void Add(std::uint8_t byte) { word |= std::uint64_t{byte} << (8 * count++); }
};

/// The bytes of a record's first field, which has `size` of them; none when there are not so many.
inline FieldBytes LoadField(std::string_view record, std::size_t size) {
  if (size == 0 || record.size() < size) {
    return {};
  }
  // The size is a power of two. Taking the bytes again and again up to the end of the word is
  // faster than jumping to a load of each size, and what is beyond the field does not count.
  FieldBytes bytes;
  while (bytes.count < kMostFieldBytes) {
    bytes.Add(static_cast<std::uint8_t>(record[bytes.count & (size - 1)]));
  }
  return bytes;
}

/// A word's bytes in the opposite order.
inline std::uint64_t ReverseBytes(std::uint64_t word) {
  std::uint64_t reversed = 0;
  for (std::size_t place = 0; place < kMostFieldBytes; ++place) {
    reversed = reversed << 8 | (word >> (8 * place) & 0xFF);
  }
  return reversed;
}

/// The number that a binary field's low bits stand for. Precondition: FieldSize(type) is not 0.
inline double FieldValue(FieldType type, std::uint64_t bits) {
  if (type == FieldType::kDouble) {
    return std::bit_cast<double>(bits);
  }
  if (type == FieldType::kFloat) {
    return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
  }
  // An integer's top bit is brought to that of the word, and down again, copied if it is a sign.
  const std::size_t shift = 8 * (kMostFieldBytes - FieldSize(type));
  const std::uint64_t raised = bits << shift;
  const bool isSigned = type <= FieldType::kInt32 || type == FieldType::kInt64;
  return static_cast<double>(isSigned ? static_cast<std::int64_t>(raised) >> shift
                                      : static_cast<std::int64_t>(raised >> shift));
}

/// Reads the binary field that the bytes begin with. False, with `number` untouched, when the code
/// names none, or the bytes do not hold all of it.
inline bool ReadField(const FieldBytes& bytes, FieldCode code, double& number) {
  const std::size_t size = FieldSize(code.type);
  if (size == 0 || bytes.count < size) {
    return false;
  }
  const std::uint64_t reversed = ReverseBytes(bytes.word) >> (8 * (kMostFieldBytes - size));
  number = FieldValue(code.type, code.isReversed ? reversed : bytes.word);
  return true;
}

}  // namespace lum::detail
