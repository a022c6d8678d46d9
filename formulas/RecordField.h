// Library-internal: the fields of device records and frames, by the type codes that stand in
// values/DoubleType.h.
#pragma once

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

/// The number that a binary field's low bits stand for. Precondition: FieldSize(type) is not 0.
double FieldValue(FieldType type, std::uint64_t bits);

/// Some bytes, as many as a field can have.
struct FieldBytes {
  std::uint64_t word = 0;  ///< Byte 0 in the lowest bits; the bits beyond the bytes are 0.
  std::size_t count = 0;

  void Add(std::uint8_t byte) { word |= std::uint64_t{byte} << (8 * count++); }
};

/// Reads the binary field that the bytes, or those of a record, begin with. False, with `number`
/// untouched, when the code names none, or the bytes do not hold all of it.
bool ReadField(const FieldBytes& bytes, FieldCode code, double& number);
bool ReadField(std::string_view record, FieldCode code, double& number);

}  // namespace lum::detail
