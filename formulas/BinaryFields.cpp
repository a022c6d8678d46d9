// The operations of CLumDouble that take numbers out of binary records and module responses.
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

#include "formulas/NumberArguments.h"
#include "formulas/RecordField.h"
#include "formulas/TextArgument.h"
#include "values/DoubleType.h"
#include "values/NumberScan.h"

using lum::detail::CByteText;
using lum::detail::NumberOrZero;

namespace {

using lum::detail::FieldBytes;
using lum::detail::FieldCode;
using lum::detail::FieldSize;
using lum::detail::FieldType;
using lum::detail::ReadField;

// The binary field whose bits a hexadecimal text holds.
FieldType TypeOfHexText(FieldType type) {
  switch (type) {
    case FieldType::kHexUInt32:
      return FieldType::kUInt32;
    case FieldType::kHexUInt16:
      return FieldType::kUInt16;
    case FieldType::kHexFloat:
      return FieldType::kFloat;
    default:
      return FieldType::kNone;
  }
}

bool ReadHexText(std::string_view text, FieldCode code, double& number) {
  unsigned int bits = 0;
  return lum::detail::ScanHex(text, bits) &&
         ReadField(FieldBytes{bits, sizeof bits}, {TypeOfHexText(code.type), code.isReversed},
                   number);
}

bool ReadRecord(std::string_view record, FieldCode code, double& number) {
  if (code.type >= FieldType::kHexUInt32) {
    return ReadHexText(record, code, number);
  }
  return ReadField(lum::detail::LoadField(record, FieldSize(code.type)), code, number);
}

}  // namespace

int CLumDouble::BinVal(CLumType& record, CLumType& typeCode, bool lenient) {
  CByteText text;
  const std::string_view bytes = text.ReadOrEmpty(record);
  const FieldCode code = lum::detail::ToFieldCode(NumberOrZero(typeCode));
  return ReadRecord(bytes, code, m_value) || lenient ? 1 : 0;
}

int CLumDouble::BitVal(CLumType& value, CLumType& bit) {
  const double a = NumberOrZero(value);
  const double quotient = a / std::pow(2.0, NumberOrZero(bit));
  const std::optional<std::int32_t> whole = lum::detail::ToInt32(quotient);
  if (!whole) {
    return 0;
  }
  // The half of a number in range is in range.
  const auto half = static_cast<std::int32_t>(quotient * -0.5);
  m_value = static_cast<double>(*whole + 2 * std::int64_t{half});
  return 1;
}

int CLumDouble::AdamVal(CLumType& response, CLumType& channel) {
  constexpr int kChannels = 8;
  constexpr std::size_t kHeaderLength = 5;
  constexpr std::size_t kReadingLength = 7;
  CByteText text;
  const std::string_view characters = text.ReadOrEmpty(response);
  const std::optional<std::int64_t> number = lum::detail::ToInteger(NumberOrZero(channel));
  if (!number || *number < 0 || *number >= kChannels) {
    return 0;
  }
  const std::size_t first = kHeaderLength + kReadingLength * static_cast<std::size_t>(*number);
  m_value = 0.0;
  return first < characters.size() &&
                 lum::detail::ScanDouble(characters.substr(first, kReadingLength), m_value)
             ? 1
             : 0;
}
