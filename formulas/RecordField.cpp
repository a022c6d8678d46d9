#include "formulas/RecordField.h"

#include <bit>
#include <cmath>

#include "formulas/NumberArguments.h"

namespace lum::detail {

FieldCode ToFieldCode(double code) {
  const std::optional<std::int64_t> type = ToInteger(std::abs(code));
  if (!type || *type > static_cast<int>(FieldType::kInt64)) {
    return {};
  }
  return {static_cast<FieldType>(*type), code < 0.0};
}

int FieldSize(FieldType type) {
  switch (type) {
    case FieldType::kInt8:
    case FieldType::kUInt8:
      return 1;
    case FieldType::kInt16:
    case FieldType::kUInt16:
      return 2;
    case FieldType::kInt32:
    case FieldType::kUInt32:
    case FieldType::kFloat:
      return 4;
    case FieldType::kDouble:
    case FieldType::kInt64:
      return 8;
    default:
      return 0;
  }
}

std::uint64_t AssembleBits(std::string_view bytes, bool isReversed) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    // From the most significant byte down.
    const std::size_t place = isReversed ? i : bytes.size() - 1 - i;
    bits = bits << 8 | static_cast<unsigned char>(bytes[place]);
  }
  return bits;
}

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

std::optional<double> ReadField(std::string_view bytes, FieldCode code) {
  const auto size = static_cast<std::size_t>(FieldSize(code.type));
  if (size == 0 || bytes.size() < size) {
    return std::nullopt;
  }
  return FieldValue(code.type, AssembleBits(bytes.substr(0, size), code.isReversed));
}

}  // namespace lum::detail
