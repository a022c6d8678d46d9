// A CAN frame's identifier and data, taken from hexadecimal digits, and the texts by which formulas
// read them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "decoding/LogRecord.h"

namespace lum::decoding::detail {

inline constexpr std::size_t kMaxCanBytes = 8;
inline constexpr std::size_t kMaxFdBytes = 64;
inline constexpr std::uint32_t kMaxStandardId = 0x7FF;
inline constexpr std::uint32_t kMaxExtendedId = 0x1FFF'FFFF;
/// Set in the identifier of an error frame, as the bus interface writes it.
inline constexpr std::uint32_t kErrorFlag = 0x2000'0000;

/// How long a message's text is: eleven characters, two for each byte, a last one.
inline constexpr std::size_t kMessageHeader = 11;
constexpr std::size_t MessageLength(std::size_t bytes) { return kMessageHeader + 2 * bytes + 1; }

/// Writes the header of a message: ">", source, destination, parameter group, priority.
void WriteMessageHeader(const BusParts& bus, char* to);

/// Keeps what the views of a record's BusParts lead to.
class CCanFrame {
 public:
  /// Takes the identifier of 3 or 8 digits. False when one is none; whether it is too large is the
  /// caller's matter.
  bool TakeId(std::string_view digits);
  /// Takes an even number of digits, 16 at most. False when one is none.
  bool TakeData(std::string_view digits);

  std::uint32_t Id() const { return m_id; }
  bool IsExtended() const { return m_isExtended; }
  std::span<const std::uint8_t> Data() const { return {m_data.data(), m_size}; }

  /// Sets identifier, data, texts, and the parts of an extended identifier (SAE J1939-21). Views
  /// lead into this object. Precondition: both were taken, and the identifier has no flags.
  void Describe(BusParts& bus);

 private:
  static constexpr std::size_t kDigits = 2 * kMaxCanBytes;
  using Digits = std::array<char, kDigits>;

  void DescribeExtended(BusParts& bus);

  std::uint32_t m_id = 0;
  bool m_isExtended = false;
  std::size_t m_size = 0;
  std::array<char, 8> m_idDigits{};
  Digits m_dataDigits{};
  std::array<std::uint8_t, kMaxCanBytes> m_data{};
  std::array<char, 8 + 1 + kDigits> m_frame{};
  std::array<char, MessageLength(kMaxCanBytes)> m_message{};
};

}  // namespace lum::decoding::detail
