// Every function goes through its operation step by step and takes no short cut. The string streams
// are used again from call to call, since making one costs more than all the rest.
#include "tests/formulas/LiteralDecoders.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iomanip>
#include <sstream>
#include <vector>

namespace lum::test {
namespace {

static_assert(std::endian::native == std::endian::little, "Bytes are copied into numbers.");

// The fields of a line of hexadecimal text, one after another.
class CLineFields {
 public:
  void Start(const std::string& line) {
    m_line.clear();
    m_line.str(line);
  }

  // The next field; empty when the line has run out.
  const std::string& Next(int width) {
    m_field.clear();
    m_line >> std::setw(width) >> m_field;
    return m_field;
  }

  // The next field as a hexadecimal number; `preset` when the line has run out.
  int NextNumber(int width, int preset) {
    m_number.clear();
    m_number.str(Next(width));
    int number = preset;
    m_number >> std::hex >> number;
    return number;
  }

  // Reads as many data bytes. False when one is missing.
  bool NextBytes(int count, std::vector<unsigned char>& bytes) {
    bytes.clear();
    for (int i = 0; i < count; ++i) {
      const int number = NextNumber(2, -1);
      if (number == -1) {
        return false;
      }
      bytes.push_back(static_cast<unsigned char>(number & 0xFF));
    }
    return true;
  }

 private:
  std::istringstream m_line;
  std::istringstream m_number;
  std::string m_field;
};

CLineFields g_fields;
std::vector<unsigned char> g_bytes;

LiteralOutcome Keep(double previous) { return {0, previous, false}; }
LiteralOutcome Decoded(double result) { return {1, result, true}; }

// How a frame decoder fails.
LiteralOutcome Fail(bool lenient, double previous) {
  return lenient ? LiteralOutcome{1, 0.0, false} : Keep(previous);
}

template <typename T>
double NumberAt(const unsigned char* bytes) {
  T number;
  std::memcpy(&number, bytes, sizeof number);
  return static_cast<double>(number);
}

// The sizes of the fields by their type codes, 0 for codes without bytes.
constexpr int kSizes[] = {0, 1, 2, 4, 4, 8, 1, 2, 4, 0, 0, 0, 8};

// The number of a type, without the code's sign and fraction; 0 for what is no type.
int TypeOf(double typeCode) {
  const double type = std::trunc(std::fabs(typeCode));
  return type <= 12.0 ? static_cast<int>(type) : 0;
}

double FieldAt(int type, const unsigned char* bytes) {
  switch (type) {
    case 1:
      return NumberAt<std::int8_t>(bytes);
    case 2:
      return NumberAt<std::int16_t>(bytes);
    case 3:
      return NumberAt<std::int32_t>(bytes);
    case 4:
      return NumberAt<float>(bytes);
    case 5:
      return NumberAt<double>(bytes);
    case 6:
      return NumberAt<std::uint8_t>(bytes);
    case 7:
      return NumberAt<std::uint16_t>(bytes);
    case 8:
      return NumberAt<std::uint32_t>(bytes);
    case 12:
      return NumberAt<std::int64_t>(bytes);
    default:
      std::abort();  // No caller lets such a code through.
  }
}

// As FieldAt, the field's bytes turned round for a negative code.
double FieldInOrder(double typeCode, const unsigned char* bytes) {
  const int type = TypeOf(typeCode);
  unsigned char field[8] = {};
  std::memcpy(field, bytes, static_cast<std::size_t>(kSizes[type]));
  if (typeCode < 0.0) {
    std::reverse(field, field + kSizes[type]);
  }
  return FieldAt(type, field);
}

// A field that begins at `start` must end within the bytes that were read.
LiteralOutcome FieldOfBytes(const std::vector<unsigned char>& bytes, double typeCode,
                            double startByte, bool lenient, double previous) {
  const double start = std::trunc(startByte);
  const double end = start + kSizes[TypeOf(typeCode)];
  if (start < 0.0 || end > static_cast<double>(bytes.size())) {
    return Fail(lenient, previous);
  }
  return Decoded(FieldInOrder(typeCode, bytes.data() + static_cast<std::size_t>(start)));
}

bool ReadJ1939Bytes(const std::string& message, std::vector<unsigned char>& bytes) {
  g_fields.Start(message);
  g_fields.Next(1);
  g_fields.NextNumber(2, 0);
  g_fields.Next(2);
  g_fields.Next(5);
  g_fields.Next(1);
  const int count = (static_cast<int>(message.size()) - 12) / 2;
  return count >= 1 && g_fields.NextBytes(count, bytes);
}

// Reads a number as the runtime's "%lf" does. Some versions of glibc lose a bit when they round a
// hexadecimal text to a subnormal double: "0x0.8000000000000cp-1022" gives 0x0.8p-1022. Such a
// number is read again as a long double, in which it is not subnormal, and rounded from there.
template <typename Ch, typename Scan>
bool ScanDouble(const std::basic_string<Ch>& text, const Ch* format, const Ch* longFormat,
                Scan* scan, double& number) {
  if (scan(text.c_str(), format, &number) != 1) {
    return false;
  }
  const bool isHexadecimal = text.find_first_of(std::basic_string<Ch>{'x', 'X'}) != text.npos;
  long double exact = 0.0L;
  if (isHexadecimal && std::fabs(number) <= 0x1p-1022 &&
      scan(text.c_str(), longFormat, &exact) == 1) {
    number = static_cast<double>(exact);
  }
  return true;
}

bool ScanDouble(const std::string& text, double& number) {
  return ScanDouble(text, "%lf", "%Lf", std::sscanf, number);
}

bool ScanDouble(const std::wstring& text, double& number) {
  return ScanDouble(text, L"%lf", L"%Lf", std::swscanf, number);
}

// What the low bits of a bit field stand for.
double BitFieldValue(int type, std::uint64_t bits) {
  unsigned char bytes[8];
  std::memcpy(bytes, &bits, sizeof bytes);
  if (type == 1) {
    return static_cast<double>(bits & 0xFF);
  }
  return FieldAt(type == 8 ? 3 : type, bytes);
}

}  // namespace

// ---- Records

LiteralOutcome LiteralBinVal(const std::string& record, double typeCode, bool lenient,
                             double previous) {
  const LiteralOutcome failed = {lenient ? 1 : 0, previous, false};
  const int type = TypeOf(typeCode);
  if (!std::isfinite(typeCode) || type < 1 || type > 11) {
    return failed;
  }
  if (type < 9) {
    const bool isShort = record.size() < static_cast<std::size_t>(kSizes[type]);
    const auto* bytes = reinterpret_cast<const unsigned char*>(record.data());
    return isShort ? failed : Decoded(FieldInOrder(typeCode, bytes));
  }
  unsigned char bytes[4] = {};
  if (type == 10) {
    unsigned short number = 0;
    if (std::sscanf(record.c_str(), "%hx", &number) != 1) {
      return failed;
    }
    std::memcpy(bytes, &number, sizeof number);
  } else {
    unsigned int number = 0;
    if (std::sscanf(record.c_str(), "%x", &number) != 1) {
      return failed;
    }
    std::memcpy(bytes, &number, sizeof number);
  }
  const int binaryType = type == 9 ? 8 : type == 10 ? 7 : 4;
  return Decoded(FieldInOrder(typeCode < 0.0 ? -binaryType : binaryType, bytes));
}

LiteralOutcome LiteralBitVal(double value, double bit, double previous) {
  const double quotient = value / std::pow(2.0, bit);
  const double whole = std::trunc(quotient);
  // Not-a-number fails the comparison, too.
  const bool isInt32 = whole >= -2147483648.0 && whole <= 2147483647.0;
  if (!isInt32) {
    return Keep(previous);
  }
  const auto half = static_cast<long long>(std::trunc(quotient * -0.5));
  return Decoded(static_cast<double>(static_cast<long long>(whole) + 2 * half));
}

LiteralOutcome LiteralAdamVal(const std::string& response, double channel, double previous) {
  const double number = std::trunc(channel);
  const bool isChannel = number >= 0.0 && number < 8.0;
  if (!isChannel) {
    return Keep(previous);
  }
  const auto first = static_cast<std::size_t>(5.0 + 7.0 * number);
  const std::string reading = first < response.size() ? response.substr(first, 7) : "";
  double result = 0.0;
  return ScanDouble(reading, result) ? Decoded(result) : Keep(0.0);
}

// ---- Frames

LiteralOutcome LiteralCanVal(const std::string& frame, double typeCode, double startByte,
                             bool lenient, double previous) {
  const std::string first = frame.substr(0, 1);
  const bool isExtended =
      !first.empty() && std::string("89abcdefABCDEF").find(first) != std::string::npos;
  g_fields.Start(frame);
  g_fields.NextNumber(isExtended ? 8 : 3, 0);
  const int dataLength = g_fields.NextNumber(1, 0);
  const int type = TypeOf(typeCode);
  if (!g_fields.NextBytes(std::min(dataLength, 8), g_bytes)) {
    return Fail(lenient, previous);
  }
  if (!std::isfinite(typeCode) || !std::isfinite(startByte) || type < 1 || type > 8) {
    return Fail(lenient, previous);
  }
  return FieldOfBytes(g_bytes, typeCode, startByte, lenient, previous);
}

LiteralOutcome LiteralJ1939Val(const std::string& message, double typeCode, double startByte,
                               bool lenient, double previous) {
  if (!ReadJ1939Bytes(message, g_bytes)) {
    return Fail(lenient, previous);
  }
  const bool isFinite = std::isfinite(typeCode) && std::isfinite(startByte);
  if (!isFinite || kSizes[TypeOf(typeCode)] == 0) {
    return Fail(lenient, previous);
  }
  return FieldOfBytes(g_bytes, typeCode, startByte, lenient, previous);
}

LiteralOutcome LiteralJ1939BitsVal(const std::string& message, double typeCode, double startBit,
                                   double bitLength, bool lenient, double previous) {
  if (!std::isfinite(typeCode) || !std::isfinite(startBit) || !std::isfinite(bitLength)) {
    return Fail(lenient, previous);
  }
  const double code = std::trunc(typeCode);
  const double start = std::trunc(startBit);
  const double length = std::trunc(bitLength);
  if (!ReadJ1939Bytes(message, g_bytes)) {
    return Fail(lenient, previous);
  }
  const double firstByte = std::floor(start / 8.0);
  if (length == 0.0 || start < 0.0 || firstByte >= static_cast<double>(g_bytes.size())) {
    return Keep(previous);
  }
  if (length < 0.0 || length > 63.0) {
    return Fail(lenient, previous);
  }
  const auto first = static_cast<std::size_t>(firstByte);
  std::uint64_t word = 0;
  std::memcpy(&word, g_bytes.data() + first, std::min<std::size_t>(8, g_bytes.size() - first));
  const auto mask = static_cast<std::uint64_t>(std::pow(2.0, length)) - 1;
  const auto half = static_cast<std::uint64_t>(std::pow(2.0, length - 1.0));
  std::uint64_t field = (word >> static_cast<unsigned int>(start - 8.0 * firstByte)) & mask;
  if (code < 4.0 && field / half != 0) {
    field |= ~mask;
  }
  if (code < 1.0 || code > 8.0) {
    return Fail(lenient, previous);
  }
  return Decoded(BitFieldValue(static_cast<int>(code), field));
}

// ---- Times

LiteralOutcome LiteralTimeConv(const std::string& text) {
  int hours = 0;
  int minutes = 0;
  double seconds = 0.0;
  if (std::sscanf(text.c_str(), "%2d%2d%5lf", &hours, &minutes, &seconds) != 3) {
    return Keep(0.0);
  }
  return Decoded(hours * 3600 + minutes * 60 + seconds);
}

LiteralOutcome LiteralHmsToMsec(double value, double previous) {
  const bool isInt32 = value > -2147483649.0 && value < 2147483648.0;
  if (!isInt32) {
    return Keep(previous);
  }
  const int whole = static_cast<int>(value);
  const int hours = whole / 10000;
  const int minutes = (whole / 100) % 100;
  const double seconds = std::fmod(value, 100.0);
  return Decoded((seconds + (minutes + hours * 60) * 60) * 1000);
}

// ---- Texts

LiteralOutcome LiteralVal(const std::string& text, bool lenient) {
  double result = 0.0;
  if (ScanDouble(text, result)) {
    return Decoded(result);
  }
  return {lenient ? 1 : 0, 0.0, false};
}

LiteralOutcome LiteralNMEAPos(const std::wstring& position, const std::wstring& hemisphere,
                              double previous) {
  if (position.empty() || hemisphere.empty()) {
    return Keep(previous);
  }
  LiteralOutcome outcome = {1, 0.0, false};
  double number = 0.0;
  if (ScanDouble(position, number)) {
    double degrees = 0.0;
    const double fraction = std::modf(number / 100, &degrees);
    outcome.result = std::fabs(fraction) / 0.6 + std::fabs(degrees);
    outcome.isDecoded = true;
  }
  if (hemisphere.size() == 1 && (hemisphere[0] == L'S' || hemisphere[0] == L'W')) {
    outcome.result = -outcome.result;
  }
  return outcome;
}

}  // namespace lum::test
