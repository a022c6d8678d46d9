// Sixteen digits are converted at a time, in loops of fixed length without branches: compilers turn
// them into a few instructions, which a table for each digit is not.
#include "decoding/CanFrame.h"

#include <algorithm>
#include <cstring>

#include "decoding/J1939.h"
#include "decoding/LogText.h"

namespace lum::decoding::detail {

namespace {

/// Converts exactly so many digits. False when one is none.
template <std::size_t kCount>
bool ConvertDigits(const char* digits, char* upper, std::uint8_t* bytes) {
  std::array<std::uint8_t, kCount> values;
  std::uint8_t right = 1;
  for (std::size_t i = 0; i < kCount; ++i) {
    const auto c = static_cast<std::uint8_t>(digits[i]);
    const auto decimal = static_cast<std::uint8_t>(c - '0');
    const auto letter = static_cast<std::uint8_t>((c | 0x20) - 'a');
    const std::uint8_t isDecimal = decimal < 10 ? 1 : 0;
    const std::uint8_t isLetter = letter < 6 ? 1 : 0;
    right = static_cast<std::uint8_t>(right & (isDecimal | isLetter));
    upper[i] = static_cast<char>(c & ~(isLetter << 5));
    values[i] = isLetter != 0 ? static_cast<std::uint8_t>(letter + 10) : decimal;
  }
  for (std::size_t i = 0; i < kCount / 2; ++i) {
    bytes[i] = static_cast<std::uint8_t>(values[2 * i] << 4 | values[2 * i + 1]);
  }
  return right != 0;
}

}  // namespace

bool CCanFrame::TakeId(std::string_view digits) {
  m_isExtended = digits.size() == 8;
  if (m_isExtended) {
    std::array<std::uint8_t, 4> bytes;
    const bool isNumber = ConvertDigits<8>(digits.data(), m_idDigits.data(), bytes.data());
    m_id = std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
    return isNumber;
  }
  std::uint8_t all = 0;
  m_id = 0;
  for (const char digit : digits) {
    const std::uint8_t value = DigitValue(digit);
    all |= value;
    m_id = (m_id & 0xFFF) << 4 | (value & 0xFU);
  }
  return all != kNoDigit;
}

bool CCanFrame::TakeData(std::string_view digits) {
  m_size = digits.size() / 2;
  if (digits.size() == kDigits) {
    return ConvertDigits<kDigits>(digits.data(), m_dataDigits.data(), m_data.data());
  }
  Digits filled;
  filled.fill('0');
  std::copy(digits.begin(), digits.end(), filled.begin());
  return ConvertDigits<kDigits>(filled.data(), m_dataDigits.data(), m_data.data());
}

void CCanFrame::Describe(BusParts& bus) {
  bus.id = m_id;
  bus.isExtended = m_isExtended;
  bus.data = Data();
  const std::size_t idLength = m_isExtended ? 8 : 3;
  if (m_isExtended) {
    DescribeExtended(bus);
    std::memcpy(m_frame.data(), m_idDigits.data(), 8);
    // Bit 31 tells an extended identifier: '0' becomes '8', '1' becomes '9'.
    m_frame[0] = static_cast<char>(m_frame[0] + 8);
  } else {
    WriteHex(m_id, idLength, m_frame.data());
  }
  m_frame[idLength] = static_cast<char>('0' + m_size);
  // All digits, whether they count or not: a copy of fixed length is one move.
  std::memcpy(m_frame.data() + idLength + 1, m_dataDigits.data(), kDigits);
  bus.frame = {m_frame.data(), idLength + 1 + 2 * m_size};
}

void CCanFrame::DescribeExtended(BusParts& bus) {
  const J1939Id parts = SplitJ1939Id(m_id);
  bus.pgn = parts.pgn;
  bus.source = parts.source;
  bus.destination = parts.destination;
  bus.priority = parts.priority;
  WriteMessageHeader(bus, m_message.data());
  std::memcpy(m_message.data() + kMessageHeader, m_dataDigits.data(), kDigits);
  m_message[kMessageHeader + 2 * m_size] = ';';
  bus.message = {m_message.data(), MessageLength(m_size)};
}

void WriteMessageHeader(const BusParts& bus, char* to) {
  to[0] = '>';
  WriteHex(bus.source, 2, to + 1);
  WriteHex(bus.destination, 2, to + 3);
  WriteHex(bus.pgn, 5, to + 5);
  WriteHex(bus.priority, 1, to + 10);
}

}  // namespace lum::decoding::detail
