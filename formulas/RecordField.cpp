#include "formulas/RecordField.h"

#include <bit>
#include <cstddef>

namespace lum::detail {
namespace {

// The first `size` bytes of a word, the first of them in the high bits.
std::uint64_t ReverseBytes(std::uint64_t word, std::size_t size) {
  std::uint64_t reversed = 0;
  for (std::size_t place = 0; place < kMostFieldBytes; ++place) {
    reversed = reversed << 8 | (word >> (8 * place) & 0xFF);
  }
  return reversed >> (8 * (kMostFieldBytes - size));
}

}  // namespace

double FieldValue(FieldType type, std::uint64_t bits) {
  switch (type) {
    case FieldType::kInt8:
      return static_cast<std::int8_t>(bits);
    case FieldType::kInt16:
      return static_cast<std::int16_t>(bits);
    case FieldType::kInt32:
      return static_cast<std::int32_t>(bits);
    case FieldType::kFloat:
      return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    case FieldType::kDouble:
      return std::bit_cast<double>(bits);
    case FieldType::kUInt8:
      return static_cast<std::uint8_t>(bits);
    case FieldType::kUInt16:
      return static_cast<std::uint16_t>(bits);
    case FieldType::kUInt32:
      return static_cast<std::uint32_t>(bits);
    case FieldType::kInt64:
      return static_cast<double>(static_cast<std::int64_t>(bits));
    default:
      return 0.0;
  }
}

bool ReadField(const FieldBytes& bytes, FieldCode code, double& number) {
  const std::size_t size = FieldSize(code.type);
  if (size == 0 || bytes.count < size) {
    return false;
  }
  number = FieldValue(code.type, code.isReversed ? ReverseBytes(bytes.word, size) : bytes.word);
  return true;
}

}  // namespace lum::detail
