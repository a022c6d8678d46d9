// The operations of CLumDouble that take values out of CAN frames and J1939 messages.
#include <algorithm>
#include <array>
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
using lum::detail::FieldCode;
using lum::detail::FieldType;
using lum::detail::ReadField;

constexpr std::int64_t kMostFieldBytes = 8;

// The data bytes from one place on, as many as a field can have.
struct DataWindow {
  std::array<char, kMostFieldBytes> bytes{};
  std::size_t count = 0;  // How many of them are data.

  std::string_view View() const { return {bytes.data(), count}; }
};

// Reads `count` data bytes, all of them, and keeps those from the place `first` on. Nothing when
// the text runs out before.
std::optional<DataWindow> ReadData(CFrameText& text, std::int64_t count, std::int64_t first) {
  DataWindow window;
  for (std::int64_t place = 0; place < count; ++place) {
    const int byte = text.TakeHex(2);
    if (byte == -1) {
      return std::nullopt;
    }
    if (place >= first && place - first < kMostFieldBytes) {
      window.bytes[window.count++] = static_cast<char>(byte);
    }
  }
  return window;
}

// The data of a CAN frame from the place `first` on.
std::optional<DataWindow> ReadCanData(std::string_view frame, std::int64_t first) {
  constexpr int kFirstOfExtended = 8;
  constexpr std::size_t kStandardLength = 3;
  constexpr std::size_t kExtendedLength = 8;
  const auto firstDigit = static_cast<unsigned char>(frame.empty() ? '\0' : frame.front());
  const bool isExtended = HexVal(firstDigit) >= kFirstOfExtended;
  CFrameText text(frame);
  text.TakeRun(isExtended ? kExtendedLength : kStandardLength);
  const int dataLength = text.TakeHex(1);
  return ReadData(text, std::min<std::int64_t>(dataLength, kMostFieldBytes), first);
}

// How many data bytes a J1939 message of a length has. Below 1: none.
std::int64_t CountJ1939Data(std::string_view message) {
  constexpr std::int64_t kFrameLength = 12;  // The header and the last character.
  return (static_cast<std::int64_t>(message.size()) - kFrameLength) / 2;
}

// The data of a J1939 message from the place `first` on.
std::optional<DataWindow> ReadJ1939Data(std::string_view message, std::int64_t first) {
  const std::int64_t count = CountJ1939Data(message);
  if (count < 1) {
    return std::nullopt;
  }
  CFrameText text(message);
  for (const std::size_t width : {1U, 2U, 2U, 5U, 1U}) {
    text.TakeRun(width);
  }
  return ReadData(text, count, first);
}

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
  if (isReversed || lum::detail::FieldSize(type) == 0 || type == FieldType::kInt64) {
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

// The outcome of a missing byte, an unknown type and a field outside the data alike.
int Fail(double& result, bool lenient) {
  if (!lenient) {
    return 0;
  }
  result = 0.0;
  return 1;
}

int Finish(double& result, std::optional<double> number, bool lenient) {
  if (!number) {
    return Fail(result, lenient);
  }
  result = *number;
  return 1;
}

}  // namespace

int CLumDouble::CanVal(CLumType& frame, CLumType& typeCode, CLumType& startByte, bool lenient) {
  const CByteText text(frame);
  const FieldCode code = lum::detail::ToFieldCode(NumberOrZero(typeCode));
  const std::optional<std::int64_t> start = lum::detail::ToInteger(NumberOrZero(startByte));
  if (!start || *start < 0 || code.type == FieldType::kInt64) {
    return Fail(m_value, lenient);
  }
  const std::optional<DataWindow> window = ReadCanData(text.View(), *start);
  return Finish(m_value, window ? ReadField(window->View(), code) : std::nullopt, lenient);
}

int CLumDouble::J1939Val(CLumType& message, CLumType& typeCode, CLumType& startByte, bool lenient) {
  const CByteText text(message);
  const FieldCode code = lum::detail::ToFieldCode(NumberOrZero(typeCode));
  const std::optional<std::int64_t> start = lum::detail::ToInteger(NumberOrZero(startByte));
  if (!start || *start < 0) {
    return Fail(m_value, lenient);
  }
  const std::optional<DataWindow> window = ReadJ1939Data(text.View(), *start);
  return Finish(m_value, window ? ReadField(window->View(), code) : std::nullopt, lenient);
}

int CLumDouble::J1939BitsVal(CLumType& message, CLumType& typeCode, CLumType& startBit,
                             CLumType& bitLength, bool lenient) {
  constexpr std::int64_t kLongest = 63;
  const CByteText text(message);
  const double code = NumberOrZero(typeCode);
  const std::optional<std::int64_t> start = lum::detail::ToInteger(NumberOrZero(startBit));
  const std::optional<std::int64_t> length = lum::detail::ToInteger(NumberOrZero(bitLength));
  if (!std::isfinite(code) || !start || !length) {
    return Fail(m_value, lenient);
  }
  const std::int64_t firstByte = *start / 8;
  const std::optional<DataWindow> window = ReadJ1939Data(text.View(), firstByte);
  if (!window) {
    return Fail(m_value, lenient);
  }
  if (*length == 0 || *start < 0 || window->count == 0) {
    return 0;
  }
  if (*length < 0 || *length > kLongest) {
    return Fail(m_value, lenient);
  }
  const std::uint64_t word = lum::detail::AssembleBits(window->View(), false) >> (*start % 8);
  const bool isSigned = code < static_cast<int>(FieldType::kFloat);
  return Finish(m_value, BitFieldValue(code, CutBits(word, *length, isSigned)), lenient);
}
