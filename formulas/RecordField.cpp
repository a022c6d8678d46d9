#include "formulas/RecordField.h"

#include <bit>
#include <type_traits>

namespace lum::detail {
namespace {

// Calls the function with a number of the type that a binary field holds; false when it holds none.
template <typename Function>
bool WithNumberOf(FieldType type, Function function) {
  switch (type) {
    case FieldType::kInt8:
      return function(std::int8_t{});
    case FieldType::kInt16:
      return function(std::int16_t{});
    case FieldType::kInt32:
      return function(std::int32_t{});
    case FieldType::kFloat:
      return function(float{});
    case FieldType::kDouble:
      return function(double{});
    case FieldType::kUInt8:
      return function(std::uint8_t{});
    case FieldType::kUInt16:
      return function(std::uint16_t{});
    case FieldType::kUInt32:
      return function(std::uint32_t{});
    case FieldType::kInt64:
      return function(std::int64_t{});
    default:
      return false;
  }
}

// The number that the low bits of a word stand for.
template <typename T>
double NumberOfBits(std::uint64_t bits) {
  if constexpr (std::is_same_v<T, float>) {
    return static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
  } else if constexpr (std::is_same_v<T, double>) {
    return std::bit_cast<double>(bits);
  } else {
    return static_cast<double>(static_cast<T>(bits));
  }
}

// The first bytes of a text as a word. Compilers make one load of such a loop.
template <std::size_t kSize>
std::uint64_t LoadBits(const char* bytes, bool isReversed) {
  std::uint64_t forward = 0;
  std::uint64_t reversed = 0;
  for (std::size_t place = 0; place < kSize; ++place) {
    const std::uint64_t byte = static_cast<std::uint8_t>(bytes[place]);
    forward |= byte << (8 * place);
    reversed |= byte << (8 * (kSize - 1 - place));
  }
  return isReversed ? reversed : forward;
}

// A word's first bytes in the opposite order.
template <std::size_t kSize>
std::uint64_t ReverseBits(std::uint64_t bits) {
  std::uint64_t reversed = 0;
  for (std::size_t place = 0; place < kSize; ++place) {
    reversed = reversed << 8 | (bits >> (8 * place) & 0xFF);
  }
  return reversed;
}

}  // namespace

double FieldValue(FieldType type, std::uint64_t bits) {
  double number = 0.0;
  WithNumberOf(type, [&](auto zero) {
    number = NumberOfBits<decltype(zero)>(bits);
    return true;
  });
  return number;
}

bool ReadField(const FieldBytes& bytes, FieldCode code, double& number) {
  return WithNumberOf(code.type, [&](auto zero) {
    using Number = decltype(zero);
    if (bytes.count < sizeof(Number)) {
      return false;
    }
    number = NumberOfBits<Number>(code.isReversed ? ReverseBits<sizeof(Number)>(bytes.word)
                                                  : bytes.word);
    return true;
  });
}

bool ReadField(std::string_view record, FieldCode code, double& number) {
  return WithNumberOf(code.type, [&](auto zero) {
    using Number = decltype(zero);
    if (record.size() < sizeof(Number)) {
      return false;
    }
    number = NumberOfBits<Number>(LoadBits<sizeof(Number)>(record.data(), code.isReversed));
    return true;
  });
}

}  // namespace lum::detail
