// Library-internal: the fields of device records and frames, by the type codes that stand in
// values/DoubleType.h.
#pragma once

#include <cstdint>
#include <optional>
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
FieldCode ToFieldCode(double code);

/// How many bytes a binary field takes; 0 for the hexadecimal texts and for kNone.
int FieldSize(FieldType type);

/// The bits of a field of up to 8 bytes.
std::uint64_t AssembleBits(std::string_view bytes, bool isReversed);

/// The number that a binary field's low bits stand for. Precondition: FieldSize(type) is not 0.
double FieldValue(FieldType type, std::uint64_t bits);

/// The binary field that the bytes begin with. Nothing when the code names none, or the bytes do
/// not hold all of it.
std::optional<double> ReadField(std::string_view bytes, FieldCode code);

}  // namespace lum::detail
