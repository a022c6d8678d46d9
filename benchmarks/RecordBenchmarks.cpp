// The workloads "BinVal of binary records" and "BinVal of hexadecimal text".
#include <bit>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "benchmarks/Answers.h"
#include "benchmarks/DecoderBenchmarks.h"
#include "benchmarks/DeviceLines.h"

#if defined(HAS_QT)
#include <QtEndian>
#endif

namespace lum::bench {
namespace {

constexpr const char* kRecords = "BinVal of binary records";
constexpr const char* kHexText = "BinVal of hexadecimal text";

using CLines = std::vector<DeviceLine>;

CLines& RecordLines() {
  static CLines lines = [] {
    std::mt19937_64 random(6);
    CLines made;
    for (std::size_t place = 0; place < kLines; ++place) {
      const Field field = AnyField(random);
      const std::string record =
          IsCut(place) ? field.bytes.substr(1) : field.bytes + AnyField(random).bytes;
      made.emplace_back(record, field.typeCode, 0, 0,
                        IsCut(place) ? std::nullopt : std::optional(field.value));
    }
    return made;
  }();
  return lines;
}

// Most significant digit first.
template <typename T>
std::string HexTextOf(T number) {
  return HexOf(MakeField(-1, number).bytes);
}

DeviceLine MakeHexLine(std::mt19937_64& random, bool isCut) {
  constexpr const char* kCut = "--";
  const auto bits = static_cast<std::uint32_t>(random());
  const auto cut = [isCut](double value) { return isCut ? std::nullopt : std::optional(value); };
  switch (random() % 3) {
    case 0:
      return {isCut ? kCut : HexTextOf(bits), 9, 0, 0, cut(bits)};
    case 1: {
      const auto number = static_cast<std::uint16_t>(bits);
      return {isCut ? kCut : HexTextOf(number), 10, 0, 0, cut(number)};
    }
    default: {
      const float number = static_cast<float>(bits % 100000) / 100.0F;
      return {isCut ? kCut : HexTextOf(std::bit_cast<std::uint32_t>(number)), 11, 0, 0,
              cut(static_cast<double>(number))};
    }
  }
}

CLines& HexLines() {
  static CLines lines = [] {
    std::mt19937_64 random(7);
    CLines made;
    for (std::size_t place = 0; place < kLines; ++place) {
      made.push_back(MakeHexLine(random, IsCut(place)));
    }
    return made;
  }();
  return lines;
}

std::optional<double> ReadOurs(DeviceLine& line) {
  CLumDouble result;
  return OurAnswer(result.BinVal(line.ourText, line.ourTypeCode, false), result);
}

#if defined(HAS_QT)
template <typename T>
std::optional<double> TakeWithQt(std::string_view record, bool isReversed) {
  if (record.size() < sizeof(T)) {
    return std::nullopt;
  }
  const T number =
      isReversed ? qFromBigEndian<T>(record.data()) : qFromLittleEndian<T>(record.data());
  return static_cast<double>(number);
}

std::optional<double> ReadWithQt(const DeviceLine& line) {
  const bool isReversed = line.typeCode < 0;
  switch (std::abs(line.typeCode)) {
    case 2:
      return TakeWithQt<qint16>(line.text, isReversed);
    case 3:
      return TakeWithQt<qint32>(line.text, isReversed);
    case 4:
      return TakeWithQt<float>(line.text, isReversed);
    case 5:
      return TakeWithQt<double>(line.text, isReversed);
    case 6:
      return TakeWithQt<quint8>(line.text, isReversed);
    case 7:
      return TakeWithQt<quint16>(line.text, isReversed);
    case 8:
      return TakeWithQt<quint32>(line.text, isReversed);
    default:
      return std::nullopt;
  }
}
#endif

// What the number of a hexadecimal text stands for.
double ValueOf(std::uint32_t number, int typeCode) {
  if (typeCode == 11) {
    return static_cast<double>(std::bit_cast<float>(number));
  }
  return typeCode == 10 ? static_cast<std::uint16_t>(number) : number;
}

std::optional<double> ReadHexWithStrtoul(const DeviceLine& line) {
  char* end = nullptr;
  const unsigned long number = std::strtoul(line.text.c_str(), &end, 16);
  return end != line.text.c_str()
             ? std::optional(ValueOf(static_cast<std::uint32_t>(number), line.typeCode))
             : std::nullopt;
}

std::optional<double> ReadHexByScan(const DeviceLine& line) {
  unsigned int number = 0;
  return std::sscanf(line.text.c_str(), "%x", &number) == 1
             ? std::optional(ValueOf(number, line.typeCode))
             : std::nullopt;
}

std::optional<double> ReadHexFromChars(const DeviceLine& line) {
  std::uint32_t number = 0;
  const char* const first = line.text.data();
  const auto [end, error] = std::from_chars(first, first + line.text.size(), number, 16);
  return error == std::errc() ? std::optional(ValueOf(number, line.typeCode)) : std::nullopt;
}

std::optional<double> ReadHexByHand(const DeviceLine& line) {
  std::uint32_t number = 0;
  std::size_t digits = 0;
  for (; digits < line.text.size(); ++digits) {
    const std::uint8_t digit = kHexDigits[line.text[digits]];
    if (digit > 15) {
      break;
    }
    number = number << 4 | digit;
  }
  return digits != 0 ? std::optional(ValueOf(number, line.typeCode)) : std::nullopt;
}

}  // namespace

void AddBinValOfRecords() {
  AddReader(kRecords, kOurs, RecordLines(), [](DeviceLine& line) { return ReadOurs(line); });
#if defined(HAS_QT)
  AddReader(kRecords, "Qt qFromLittleEndian", RecordLines(),
            [](const DeviceLine& line) { return ReadWithQt(line); });
#endif
  AddReader(kRecords, kLimit, RecordLines(), [](const DeviceLine& line) {
    return LoadField(line.text.data(), line.text.size(), line.typeCode);
  });
}

void AddBinValOfHexText() {
  AddReader(kHexText, kOurs, HexLines(), [](DeviceLine& line) { return ReadOurs(line); });
  AddReader(kHexText, "strtoul", HexLines(), [](auto& line) { return ReadHexWithStrtoul(line); });
  AddReader(kHexText, "sscanf", HexLines(), [](auto& line) { return ReadHexByScan(line); });
  AddReader(kHexText, "std::from_chars", HexLines(),
            [](auto& line) { return ReadHexFromChars(line); });
  AddReader(kHexText, kLimit, HexLines(), [](auto& line) { return ReadHexByHand(line); });
}

}  // namespace lum::bench
