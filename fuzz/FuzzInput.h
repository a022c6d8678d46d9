// CFuzzInput: takes the fuzzer's bytes apart from the front, as small choices, numbers and texts.
// An input that has run out goes on with zeros, so every input means something.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <string_view>

#include "platform/Framework.h"
#include "platform/TextEncoding.h"

/// The entry point that the fuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace lum::fuzz {

class CFuzzInput {
 public:
  CFuzzInput(const std::uint8_t* data, std::size_t size)
      : m_rest(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return m_rest.empty(); }

  unsigned int Byte() {
    const std::string_view byte = Take(1);
    return byte.empty() ? 0 : static_cast<unsigned char>(byte.front());
  }
  /// 0 to count - 1, of one byte. Precondition: 0 < count <= 256.
  std::size_t Below(std::size_t count) { return Byte() % count; }
  bool Bool() { return Byte() % 2 != 0; }

  /// Mostly a small integer, else eighths of one or any eight bytes.
  double Number() {
    const unsigned int choice = Byte();
    if (choice < 240) {
      return static_cast<double>(choice) - 100.0;
    }
    std::uint64_t bits = 0;
    for (int i = 0; i < (choice < 248 ? 2 : 8); ++i) {
      bits = bits << 8 | Byte();
    }
    return choice < 248 ? static_cast<double>(bits) / 8.0 : std::bit_cast<double>(bits);
  }

  /// Up to so many bytes.
  std::string_view Take(std::size_t count) {
    const std::string_view taken = m_rest.substr(0, count);
    m_rest.remove_prefix(taken.size());
    return taken;
  }
  /// The bytes up to the next line feed, which is dropped.
  std::string_view Line() {
    const std::string_view line = Take(std::min(m_rest.find('\n'), m_rest.size()));
    Take(1);
    return line;
  }
  std::string_view Rest() { return Take(m_rest.size()); }

 private:
  std::string_view m_rest;
};

/// Choices for what makes many of them: the bytes of the input, then random numbers that depend on
/// all of it, so that a short input goes a long way and is still the same each time.
class CChoices {
 public:
  CChoices(const std::uint8_t* data, std::size_t size)
      : m_in(data, size),
        m_random(std::accumulate(data, data + size, 17u, [](unsigned int sum, unsigned int byte) {
          return sum * 31 + byte;
        })) {}

  std::uint_fast32_t operator()() { return m_in.IsEmpty() ? m_random() : m_in.Byte(); }

 private:
  CFuzzInput m_in;
  std::mt19937 m_random;
};

inline CStringA ToBytes(std::string_view bytes) {
  return CStringA(bytes.data(), static_cast<int>(bytes.size()));
}
/// The bytes read as UTF-8.
inline CString ToWide(std::string_view bytes) { return Utf8ToWide(ToBytes(bytes)); }

}  // namespace lum::fuzz
