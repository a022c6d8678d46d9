// The workloads "CanVal", "J1939Val" and "J1939BitsVal": one field out of each line of hexadecimal
// text.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <vector>

#include "benchmarks/Answers.h"
#include "benchmarks/DecoderBenchmarks.h"
#include "benchmarks/DeviceLines.h"

namespace lum::bench {
namespace {

constexpr std::size_t kMostBytes = 8;
constexpr std::size_t kJ1939Header = 11;

using CLines = std::vector<DeviceLine>;

// ---- The lines

std::string AnyBytes(std::mt19937_64& random) {
  return MakeField(5, static_cast<double>(random() >> 11)).bytes;
}

// Eight bytes with a field in them.
std::string DataWith(const Field& field, std::size_t start, std::mt19937_64& random) {
  std::string data = AnyBytes(random);
  return data.replace(start, field.bytes.size(), field.bytes);
}

CLines& CanLines() {
  static CLines lines = [] {
    std::mt19937_64 random(3);
    CLines made;
    for (std::size_t place = 0; place < kLines; ++place) {
      const Field field = AnyField(random);
      const std::size_t start = random() % (kMostBytes + 1 - field.bytes.size());
      std::string text = random() % 2 == 0 ? "1818" : "98FEEE008";
      text += HexOf(DataWith(field, start, random));
      text.resize(text.size() - (IsCut(place) ? 3 : 0));
      made.emplace_back(text, field.typeCode, start, 0,
                        IsCut(place) ? std::nullopt : std::optional(field.value));
    }
    return made;
  }();
  return lines;
}

std::string J1939Message(std::string_view data, bool isCut) {
  return ">00FF0F0043" + (isCut ? std::string() : HexOf(data)) + ";";
}

CLines& J1939Lines() {
  static CLines lines = [] {
    std::mt19937_64 random(4);
    CLines made;
    for (std::size_t place = 0; place < kLines; ++place) {
      const Field field = AnyField(random);
      const std::size_t start = random() % (kMostBytes + 1 - field.bytes.size());
      made.emplace_back(J1939Message(DataWith(field, start, random), IsCut(place)), field.typeCode,
                        start, 0, IsCut(place) ? std::nullopt : std::optional(field.value));
    }
    return made;
  }();
  return lines;
}

bool IsSigned(int typeCode) { return typeCode == 2 || typeCode == 3; }

double SignedOf(std::uint64_t bits, std::size_t length) {
  const std::uint64_t top = std::uint64_t{1} << (length - 1);
  return static_cast<double>(static_cast<std::int64_t>((bits ^ top) - top));
}

DeviceLine MakeBitsLine(std::mt19937_64& random, bool isCut) {
  constexpr int kTypeCodes[] = {6, 7, 2, 3};
  constexpr std::size_t kWidths[] = {8, 16, 16, 32};
  const std::size_t kind = random() % 4;
  const std::size_t length = 1 + random() % kWidths[kind];
  const std::size_t start = random() % (64 - length);
  const std::uint64_t word = random();
  const std::uint64_t bits = word >> start & ((std::uint64_t{1} << length) - 1);
  const double value =
      IsSigned(kTypeCodes[kind]) ? SignedOf(bits, length) : static_cast<double>(bits);
  std::string data(sizeof word, '\0');
  std::memcpy(data.data(), &word, sizeof word);
  return {J1939Message(data, isCut), static_cast<double>(kTypeCodes[kind]),
          static_cast<double>(start), static_cast<double>(length),
          isCut ? std::nullopt : std::optional(value)};
}

CLines& BitsLines() {
  static CLines lines = [] {
    std::mt19937_64 random(5);
    CLines made;
    for (std::size_t place = 0; place < kLines; ++place) {
      made.push_back(MakeBitsLine(random, IsCut(place)));
    }
    return made;
  }();
  return lines;
}

// ---- What contenders make of the data bytes they have read

struct Data {
  std::array<char, kMostBytes> bytes{};
  std::size_t count = 0;
};

std::optional<double> FieldOf(const DeviceLine& line, const Data& data) {
  return line.start < data.count
             ? LoadField(data.bytes.data() + line.start, data.count - line.start, line.typeCode)
             : std::nullopt;
}

std::optional<double> BitsOf(const DeviceLine& line, const Data& data) {
  if (line.start + line.length > data.count * 8) {
    return std::nullopt;
  }
  std::uint64_t word = 0;
  std::memcpy(&word, data.bytes.data(), sizeof word);
  const std::uint64_t bits = word >> line.start & ((std::uint64_t{1} << line.length) - 1);
  return IsSigned(line.typeCode) ? SignedOf(bits, line.length) : static_cast<double>(bits);
}

bool IsExtended(std::string_view frame) { return !frame.empty() && kHexDigits[frame[0]] >= 8; }

// ---- sscanf

Data ToData(const unsigned int (&numbers)[kMostBytes], int count) {
  Data data;
  for (int i = 0; i < count; ++i) {
    data.bytes[data.count++] = static_cast<char>(numbers[i]);
  }
  return data;
}

std::optional<Data> ScanCan(const std::string& text) {
  unsigned int length = 0;
  unsigned int n[kMostBytes] = {};
  const char* const format =
      IsExtended(text) ? "%*8x%1x%2x%2x%2x%2x%2x%2x%2x%2x" : "%*3x%1x%2x%2x%2x%2x%2x%2x%2x%2x";
  const int count = std::sscanf(text.c_str(), format, &length, &n[0], &n[1], &n[2], &n[3], &n[4],
                                &n[5], &n[6], &n[7]);
  // The line ends in the middle of a byte at times.
  const std::size_t expected = (IsExtended(text) ? 9 : 4) + 2 * std::size_t{length};
  return count == 1 + static_cast<int>(length) && text.size() == expected
             ? std::optional(ToData(n, count - 1))
             : std::nullopt;
}

Data ScanJ1939(const std::string& text) {
  unsigned int n[kMostBytes] = {};
  const int count = std::sscanf(text.c_str(), "%*c%*2x%*2x%*5x%*1x%2x%2x%2x%2x%2x%2x%2x%2x", &n[0],
                                &n[1], &n[2], &n[3], &n[4], &n[5], &n[6], &n[7]);
  return ToData(n, std::max(count, 0));
}

// ---- std::istringstream

bool TakeHex(std::istringstream& stream, int width, unsigned long& number) {
  std::string digits;
  stream >> std::setw(width) >> digits;
  char* end = nullptr;
  number = std::strtoul(digits.c_str(), &end, 16);
  return end != digits.c_str();
}

std::optional<Data> StreamCan(const std::string& text) {
  std::istringstream stream(text);
  unsigned long number = 0;
  unsigned long length = 0;
  if (!TakeHex(stream, IsExtended(text) ? 8 : 3, number) || !TakeHex(stream, 1, length)) {
    return std::nullopt;
  }
  Data data;
  while (data.count < std::min<std::size_t>(length, kMostBytes)) {
    if (!TakeHex(stream, 2, number)) {
      return std::nullopt;
    }
    data.bytes[data.count++] = static_cast<char>(number);
  }
  return data;
}

Data StreamJ1939(const std::string& text) {
  std::istringstream stream(text);
  std::string header;
  stream >> std::setw(kJ1939Header) >> header;
  Data data;
  unsigned long number = 0;
  while (data.count < kMostBytes && TakeHex(stream, 2, number)) {
    data.bytes[data.count++] = static_cast<char>(number);
  }
  return data;
}

// ---- By hand: only the bytes of the field are converted.

std::optional<Data> ReadBytes(std::string_view hex, std::size_t first, std::size_t count) {
  if (hex.size() < 2 * (first + count) || count > kMostBytes) {
    return std::nullopt;
  }
  Data data;
  for (std::size_t i = first; i < first + count; ++i) {
    const std::uint8_t high = kHexDigits[hex[2 * i]];
    const std::uint8_t low = kHexDigits[hex[2 * i + 1]];
    if (high > 15 || low > 15) {
      return std::nullopt;
    }
    data.bytes[data.count++] = static_cast<char>(high << 4 | low);
  }
  return data;
}

std::size_t SizeOf(int typeCode) {
  constexpr std::uint8_t kSizes[] = {0, 1, 2, 4, 4, 8, 1, 2, 4};
  return kSizes[std::abs(typeCode)];
}

std::optional<double> ReadFieldBytes(const DeviceLine& line, std::string_view hex) {
  const std::optional<Data> data = ReadBytes(hex, line.start, SizeOf(line.typeCode));
  return data ? LoadField(data->bytes.data(), data->count, line.typeCode) : std::nullopt;
}

std::optional<double> ReadCanByHand(const DeviceLine& line) {
  const std::string_view text = line.text;
  const std::size_t header = IsExtended(text) ? 9 : 4;
  if (text.size() < header) {
    return std::nullopt;
  }
  const std::uint8_t length = kHexDigits[text[header - 1]];
  return length <= kMostBytes && text.size() >= header + 2 * std::size_t{length}
             ? ReadFieldBytes(line, text.substr(header, 2 * std::size_t{length}))
             : std::nullopt;
}

// The hexadecimal text of the data.
std::string_view DataOf(std::string_view message) {
  return message.size() > kJ1939Header
             ? message.substr(kJ1939Header, message.size() - kJ1939Header - 1)
             : std::string_view();
}

std::optional<double> ReadBitsByHand(const DeviceLine& line) {
  const std::size_t first = line.start / 8;
  const std::size_t count = (line.start + line.length + 7) / 8 - first;
  const std::optional<Data> data = ReadBytes(DataOf(line.text), first, count);
  if (!data) {
    return std::nullopt;
  }
  std::uint64_t word = 0;
  std::memcpy(&word, data->bytes.data(), sizeof word);
  const std::uint64_t bits = word >> line.start % 8 & ((std::uint64_t{1} << line.length) - 1);
  return IsSigned(line.typeCode) ? SignedOf(bits, line.length) : static_cast<double>(bits);
}

}  // namespace

void AddCanVal() {
  AddReader("CanVal", kOurs, CanLines(), [](DeviceLine& line) {
    CLumDouble result;
    return OurAnswer(result.CanVal(line.ourText, line.ourTypeCode, line.ourStart, false), result);
  });
  AddReader("CanVal", "sscanf", CanLines(), [](const DeviceLine& line) {
    const std::optional<Data> data = ScanCan(line.text);
    return data ? FieldOf(line, *data) : std::nullopt;
  });
  AddReader("CanVal", "std::istringstream", CanLines(), [](const DeviceLine& line) {
    const std::optional<Data> data = StreamCan(line.text);
    return data ? FieldOf(line, *data) : std::nullopt;
  });
  AddReader("CanVal", kLimit, CanLines(),
            [](const DeviceLine& line) { return ReadCanByHand(line); });
}

void AddJ1939Val() {
  AddReader("J1939Val", kOurs, J1939Lines(), [](DeviceLine& line) {
    CLumDouble result;
    return OurAnswer(result.J1939Val(line.ourText, line.ourTypeCode, line.ourStart, false), result);
  });
  AddReader("J1939Val", "sscanf", J1939Lines(),
            [](const DeviceLine& line) { return FieldOf(line, ScanJ1939(line.text)); });
  AddReader("J1939Val", "std::istringstream", J1939Lines(),
            [](const DeviceLine& line) { return FieldOf(line, StreamJ1939(line.text)); });
  AddReader("J1939Val", kLimit, J1939Lines(),
            [](const DeviceLine& line) { return ReadFieldBytes(line, DataOf(line.text)); });
}

void AddJ1939BitsVal() {
  AddReader("J1939BitsVal", kOurs, BitsLines(), [](DeviceLine& line) {
    CLumDouble result;
    const int code =
        result.J1939BitsVal(line.ourText, line.ourTypeCode, line.ourStart, line.ourLength, false);
    return OurAnswer(code, result);
  });
  AddReader("J1939BitsVal", "sscanf", BitsLines(),
            [](const DeviceLine& line) { return BitsOf(line, ScanJ1939(line.text)); });
  AddReader("J1939BitsVal", "std::istringstream", BitsLines(),
            [](const DeviceLine& line) { return BitsOf(line, StreamJ1939(line.text)); });
  AddReader("J1939BitsVal", kLimit, BitsLines(),
            [](const DeviceLine& line) { return ReadBitsByHand(line); });
}

}  // namespace lum::bench
