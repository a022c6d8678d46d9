#include "tools/lumattr/ExplainField.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

#include "decoding/NumberText.h"
#include "platform/Numerics.h"

namespace lum::tool {
namespace {

using decoding::EvaluationStep;
using decoding::LogRecord;

/// The fields of whole bytes, by the size of their type code.
struct FieldKind {
  int code;
  std::size_t size;
  const char* name;
};
constexpr FieldKind kFieldKinds[] = {
    {1, 1, "a signed 8-bit integer"},     {2, 2, "a signed 16-bit integer"},
    {3, 4, "a signed 32-bit integer"},    {4, 4, "an IEEE 754 binary32"},
    {5, 8, "an IEEE 754 binary64"},       {6, 1, "an unsigned 8-bit integer"},
    {7, 2, "an unsigned 16-bit integer"}, {8, 4, "an unsigned 32-bit integer"},
    {12, 8, "a signed 64-bit integer"},
};

/// Only messages have integers of 64 bits.
constexpr int kLastFrameCode = 8;
constexpr int kLastMessageCode = 12;

/// Beyond any place of a record.
constexpr double kFarAway = 1e6;

/// An argument as the operations take it: truncated. Nothing for what is no place or code.
std::optional<int> WholeArgument(const EvaluationStep& step, std::size_t place) {
  const double number = place < step.numbers.size() ? step.numbers[place] : std::nan("");
  return std::abs(number) < kFarAway ? std::optional(static_cast<int>(number)) : std::nullopt;
}

const FieldKind* FindKind(int code) {
  const auto found =
      std::find_if(std::begin(kFieldKinds), std::end(kFieldKinds),
                   [code](const FieldKind& kind) { return kind.code == std::abs(code); });
  return found == std::end(kFieldKinds) ? nullptr : found;
}

/// The bytes that a trace writes as a text in double quotes.
std::string Unquoted(std::string_view literal) {
  std::string bytes;
  literal = literal.substr(std::min<std::size_t>(literal.size(), 1));
  while (!literal.empty() && literal.front() != '"') {
    const bool isEscaped = literal.front() == '\\' && literal.size() > 1;
    const bool isCode = isEscaped && literal[1] == 'x' && literal.size() > 3;
    if (isCode) {
      bytes += static_cast<char>(HexVal(static_cast<unsigned char>(literal[2])) * 16 +
                                 HexVal(static_cast<unsigned char>(literal[3])));
    } else {
      bytes += literal[isEscaped ? 1 : 0];
    }
    literal.remove_prefix(isCode ? 4 : isEscaped ? 2 : 1);
  }
  return bytes;
}

/// The data of a bus record; of other texts nothing, since only the operation knows how it reads
/// them.
std::optional<std::string> BusData(const EvaluationStep& step, const LogRecord& record) {
  const bool isFrame = step.operation == "CanVal";
  const std::string_view text = isFrame ? record.bus.frame : record.bus.message;
  const std::string given = Unquoted(step.arguments.front());
  if (!record.isBus || given.empty() || !text.starts_with(given)) {
    return std::nullopt;
  }
  return std::string(record.bus.data.begin(), record.bus.data.end());
}

std::string Places(const char* what, std::size_t first, std::size_t count) {
  const std::string from = std::string(what) + " " + std::to_string(first);
  return count == 1 ? from
                    : std::string(what) + "s " + std::to_string(first) + ".." +
                          std::to_string(first + count - 1);
}

std::string Beyond(std::size_t size) {
  return size == 0 ? "; there are no data" : "; the data end with byte " + std::to_string(size - 1);
}

/// Codes beyond the last are of other operations.
std::string ExplainBytes(const std::string& data, int start, int code, int lastCode) {
  const FieldKind* kind = FindKind(code);
  if (kind == nullptr || std::abs(code) > lastCode) {
    return "there is no field of type code " + std::to_string(code);
  }
  if (start < 0) {
    return "no field begins at byte " + std::to_string(start);
  }
  const auto first = static_cast<std::size_t>(start);
  const std::string places = Places("byte", first, kind->size);
  if (first + kind->size > data.size()) {
    return places + Beyond(data.size());
  }
  std::string bytes = data.substr(first, kind->size);
  std::string text = places + " = " + HexBytes(bytes);
  if (kind->size > 1) {
    text += code < 0 ? ", most significant first" : ", least significant first";
  }
  if (code > 0) {
    std::reverse(bytes.begin(), bytes.end());
  }
  std::string digits = HexBytes(bytes);
  digits.erase(std::remove(digits.begin(), digits.end(), ' '), digits.end());
  return text + ": 0x" + digits + ", " + kind->name;
}

std::string ExplainByteField(const EvaluationStep& step, const LogRecord& record) {
  const auto data = BusData(step, record);
  const auto code = WholeArgument(step, 1);
  const auto start = WholeArgument(step, 2);
  const int lastCode = step.operation == "CanVal" ? kLastFrameCode : kLastMessageCode;
  return data && code && start ? ExplainBytes(*data, *start, *code, lastCode) : std::string();
}

/// The bits from the highest to the lowest, as they are read.
std::string BitDigits(std::string_view data, std::size_t first, std::size_t count) {
  std::string digits;
  for (std::size_t left = count; left > 0; --left) {
    const std::size_t bit = first + left - 1;
    const auto byte = static_cast<unsigned char>(bit / 8 < data.size() ? data[bit / 8] : '\0');
    digits += (byte >> (bit % 8) & 1U) != 0 ? '1' : '0';
  }
  return digits;
}

std::string ExplainBitField(const EvaluationStep& step, const LogRecord& record) {
  const auto data = BusData(step, record);
  const auto code = WholeArgument(step, 1);
  const auto start = WholeArgument(step, 2);
  const auto length = WholeArgument(step, 3);
  if (!data || !start || !length || *start < 0 || *length < 1 || *length > 63) {
    return {};
  }
  const auto first = static_cast<std::size_t>(*start);
  const auto count = static_cast<std::size_t>(*length);
  const std::size_t firstByte = first / 8;
  if (firstByte >= data->size()) {
    return Places("bit", first, count) + Beyond(data->size());
  }
  const int type = code.value_or(0);
  const bool isSigned = type >= 2 && type <= 3;
  const std::size_t lastByte = std::min((first + count - 1) / 8, data->size() - 1);
  const std::size_t bytes = lastByte - firstByte + 1;
  return Places("bit", first, count) + " of " + Places("byte", firstByte, bytes) + " = " +
         HexBytes(std::string_view(*data).substr(firstByte, bytes)) +
         ", bit 0 the lowest of byte 0: " + BitDigits(*data, first, count) +
         (isSigned ? ", the highest is the sign" : "");
}

std::string ExplainRecordField(const EvaluationStep& step) {
  const auto code = WholeArgument(step, 1);
  if (!code || FindKind(*code) == nullptr || std::abs(*code) > kLastFrameCode) {
    return {};
  }
  return ExplainBytes(Unquoted(step.arguments.front()), 0, *code, kLastFrameCode);
}

std::string ExplainChannel(const EvaluationStep& step) {
  constexpr std::size_t kHeader = 5;
  constexpr std::size_t kWidth = 7;
  const auto channel = WholeArgument(step, 1);
  const std::string response = Unquoted(step.arguments.front());
  if (!channel || *channel < 0 || *channel > 7) {
    return "channels are 0 to 7";
  }
  const std::size_t first = kHeader + kWidth * static_cast<std::size_t>(*channel);
  return Places("character", first, kWidth) + " = " +
         (first < response.size() ? "'" + response.substr(first, kWidth) + "'" : "none");
}

std::string ExplainPosition(const EvaluationStep& step) {
  const std::string position = Unquoted(step.arguments.front());
  const std::size_t point = std::min(position.find('.'), position.size());
  if (point < 3 || position.find_first_not_of("0123456789.") != std::string::npos) {
    return {};
  }
  return position.substr(0, point - 2) + " degrees and " + position.substr(point - 2) +
         " minutes, hemisphere " + step.arguments.back();
}

}  // namespace

std::string HexBytes(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    text += text.empty() ? "" : " ";
    text += kDigits[code / 16U];
    text += kDigits[code % 16U];
  }
  return text;
}

std::string ExplainField(const EvaluationStep& step, const LogRecord& record) {
  if (step.arguments.empty()) {
    return {};
  }
  if (step.operation == "CanVal" || step.operation == "J1939Val") {
    return ExplainByteField(step, record);
  }
  if (step.operation == "J1939BitsVal") {
    return ExplainBitField(step, record);
  }
  if (step.operation == "BinVal") {
    return ExplainRecordField(step);
  }
  if (step.operation == "AdamVal") {
    return ExplainChannel(step);
  }
  return step.operation == "NMEAPos" ? ExplainPosition(step) : std::string();
}

}  // namespace lum::tool
