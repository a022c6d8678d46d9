// The operations of CLumDouble that take values out of CAN frames and J1939 messages.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

#include "formulas/FrameText.h"
#include "formulas/NumberArguments.h"
#include "formulas/RecordField.h"
#include "formulas/TextArgument.h"
#include "platform/LumBase.h"
#include "values/DoubleType.h"

using lum::detail::CByteText;
using lum::detail::NumberOrZero;

namespace {

using lum::detail::CFrameText;
using lum::detail::FieldBytes;
using lum::detail::FieldCode;
using lum::detail::FieldSize;
using lum::detail::FieldType;
using lum::detail::kMostFieldBytes;
using lum::detail::ReadField;

// ---- Data bytes

// The data bytes that are wanted of a frame.
struct Part {
  std::int64_t first;
  std::size_t count;  // At most as many as a field can have.
};

// Reads `count` data bytes, all of them, and keeps those that are wanted. Nothing when the text
// runs out before.
std::optional<FieldBytes> ReadData(CFrameText text, std::int64_t count, Part wanted) {
  FieldBytes bytes;
  for (std::int64_t place = 0; place < count; ++place) {
    const int byte = text.TakeHex(2);
    if (byte == -1) {
      return std::nullopt;
    }
    if (place >= wanted.first && bytes.count < wanted.count) {
      bytes.Add(static_cast<std::uint8_t>(byte));
    }
  }
  return bytes;
}

// As ReadData of a text that is solid and holds exactly the data: the bytes stand side by side, so
// only those that are wanted are read.
FieldBytes ReadSolidData(std::string_view data, Part wanted) {
  const auto count = static_cast<std::int64_t>(data.size() / 2);
  FieldBytes bytes;
  if (wanted.first < 0 || wanted.first >= count) {
    return bytes;
  }
  data.remove_prefix(2 * static_cast<std::size_t>(wanted.first));
  const std::size_t last = std::min(data.size() / 2, wanted.count);
  while (bytes.count < last) {
    bytes.Add(lum::detail::HexByte(data[2 * bytes.count], data[2 * bytes.count + 1]));
  }
  return bytes;
}

// How many characters stand in front of the data length code of a CAN frame.
std::size_t IdentifierLength(std::string_view frame) {
  constexpr int kFirstOfExtended = 8;
  constexpr std::size_t kStandardLength = 3;
  constexpr std::size_t kExtendedLength = 8;
  const int firstDigit = lum::detail::HexDigit(frame.empty() ? '\0' : frame.front());
  return firstDigit >= kFirstOfExtended ? kExtendedLength : kStandardLength;
}

constexpr int kMostCanBytes = 8;

// As ReadCanData of a frame that is solid as far as it is used. Nothing for any other.
std::optional<FieldBytes> ReadSolidCanData(std::string_view frame, std::size_t identifierLength,
                                           Part wanted) {
  if (frame.size() <= identifierLength) {
    return std::nullopt;
  }
  const int dataLength =
      std::clamp(lum::detail::HexDigit(frame[identifierLength]), 0, kMostCanBytes);
  const std::size_t dataPlace = identifierLength + 1;
  const std::size_t end = dataPlace + 2 * static_cast<std::size_t>(dataLength);
  if (frame.size() < end || !lum::detail::IsSolid(frame.substr(0, end))) {
    return std::nullopt;
  }
  return ReadSolidData(frame.substr(dataPlace, end - dataPlace), wanted);
}

// The data of a CAN frame.
std::optional<FieldBytes> ReadCanData(std::string_view frame, Part wanted) {
  const std::size_t identifierLength = IdentifierLength(frame);
  if (const auto bytes = ReadSolidCanData(frame, identifierLength, wanted)) {
    return bytes;
  }
  CFrameText text(frame);
  text.TakeRun(identifierLength);
  const int dataLength = text.TakeHex(1);
  return ReadData(text, std::min(dataLength, kMostCanBytes), wanted);
}

// The data of a J1939 message.
std::optional<FieldBytes> ReadJ1939Data(std::string_view message, Part wanted) {
  constexpr std::size_t kHeaderLength = 11;
  constexpr std::size_t kLeastLength = kHeaderLength + 3;  // One byte and the last character.
  if (message.size() < kLeastLength) {
    return std::nullopt;
  }
  const std::size_t count = (message.size() - kHeaderLength - 1) / 2;
  const std::string_view used = message.substr(0, kHeaderLength + 2 * count);
  if (lum::detail::IsSolid(used)) {
    return ReadSolidData(used.substr(kHeaderLength), wanted);
  }
  CFrameText text(message);
  for (const std::size_t width : {1U, 2U, 2U, 5U, 1U}) {
    text.TakeRun(width);
  }
  return ReadData(text, static_cast<std::int64_t>(count), wanted);
}

// ---- Bit fields

// The `length` bits of a word, 1 to 63, with the bits above 0, or copies of the top one.
std::uint64_t CutBits(std::uint64_t word, std::int64_t length, bool isSigned) {
  const std::uint64_t mask = (std::uint64_t{1} << length) - 1;
  const std::uint64_t top = std::uint64_t{1} << (length - 1);
  const std::uint64_t field = word & mask;
  return isSigned && (field & top) != 0 ? field | ~mask : field;
}

// What the low bits of a bit field stand for. Two codes differ from those of whole bytes.
std::optional<double> BitFieldValue(double code, std::uint64_t bits) {
  const auto [type, isReversed] = lum::detail::ToFieldCode(code);
  if (isReversed || FieldSize(type) == 0 || type == FieldType::kInt64) {
    return std::nullopt;
  }
  if (type == FieldType::kInt8) {
    return lum::detail::FieldValue(FieldType::kUInt8, bits);
  }
  if (type == FieldType::kUInt32) {
    return lum::detail::FieldValue(FieldType::kInt32, bits);
  }
  return lum::detail::FieldValue(type, bits);
}

// ---- Outcomes

// The outcome of a missing byte, an unknown type and a field outside the data alike.
int Fail(double& result, bool lenient) {
  if (!lenient) {
    return 0;
  }
  result = 0.0;
  return 1;
}

// Takes the field that some data bytes begin with.
int Finish(double& result, const std::optional<FieldBytes>& bytes, FieldCode code, bool lenient) {
  return bytes && ReadField(*bytes, code, result) ? 1 : Fail(result, lenient);
}

}  // namespace

int CLumDouble::CanVal(CLumType& frame, CLumType& typeCode, CLumType& startByte, bool lenient) {
  CByteText text;
  const std::string_view line = text.ReadOrEmpty(frame);
  const FieldCode code = lum::detail::ToFieldCode(NumberOrZero(typeCode));
  const std::optional<std::int64_t> start = lum::detail::ToInteger(NumberOrZero(startByte));
  if (!start || *start < 0 || code.type == FieldType::kInt64) {
    return Fail(m_value, lenient);
  }
  return Finish(m_value, ReadCanData(line, {*start, FieldSize(code.type)}), code, lenient);
}

int CLumDouble::J1939Val(CLumType& message, CLumType& typeCode, CLumType& startByte, bool lenient) {
  CByteText text;
  const std::string_view line = text.ReadOrEmpty(message);
  const FieldCode code = lum::detail::ToFieldCode(NumberOrZero(typeCode));
  const std::optional<std::int64_t> start = lum::detail::ToInteger(NumberOrZero(startByte));
  if (!start || *start < 0) {
    return Fail(m_value, lenient);
  }
  return Finish(m_value, ReadJ1939Data(line, {*start, FieldSize(code.type)}), code, lenient);
}

int CLumDouble::J1939BitsVal(CLumType& message, CLumType& typeCode, CLumType& startBit,
                             CLumType& bitLength, bool lenient) {
  constexpr std::int64_t kLongest = 63;
  CByteText text;
  const std::string_view line = text.ReadOrEmpty(message);
  const double code = NumberOrZero(typeCode);
  const std::optional<std::int64_t> start = lum::detail::ToInteger(NumberOrZero(startBit));
  const std::optional<std::int64_t> length = lum::detail::ToInteger(NumberOrZero(bitLength));
  if (!std::isfinite(code) || !start || !length) {
    return Fail(m_value, lenient);
  }
  // The bytes that the field lies in; one at least tells whether the data reach so far.
  const std::int64_t wanted =
      std::clamp<std::int64_t>((*start % 8 + *length + 7) / 8, 1, kMostFieldBytes);
  const std::optional<FieldBytes> bytes =
      ReadJ1939Data(line, {*start / 8, static_cast<std::size_t>(wanted)});
  if (!bytes) {
    return Fail(m_value, lenient);
  }
  if (*length == 0 || *start < 0 || bytes->count == 0) {
    return 0;
  }
  if (*length < 0 || *length > kLongest) {
    return Fail(m_value, lenient);
  }
  const std::uint64_t word = bytes->word >> (*start % 8);
  const bool isSigned = code < static_cast<int>(FieldType::kFloat);
  const std::optional<double> number = BitFieldValue(code, CutBits(word, *length, isSigned));
  m_value = number.value_or(m_value);
  return number ? 1 : Fail(m_value, lenient);
}
