// Loops over ASCII texts, eight characters at a time: keys and values are short, so a loop that is
// fast only for long texts would be slow here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace lum::detail {

/// Calls `action(place)` so that the eights of elements that begin at these places cover the whole
/// text. The last one may overlap others and comes first: what is written by eights and read by
/// eights is read as it was written then, as far as it goes, which processors do without a wait.
/// Precondition: count >= 8.
template <typename Action>
void ForEachEight(std::size_t count, Action action) {
  action(count - 8);
  for (std::size_t place = 0; place + 8 < count; place += 8) {
    action(place);
  }
}

using WideCode = std::make_unsigned_t<wchar_t>;

/// Takes characters to their last bytes; gives the bits of all.
template <std::size_t kCount>
WideCode Narrow(const wchar_t* text, char* output) {
  WideCode bits = 0;
  for (std::size_t i = 0; i < kCount; ++i) {
    bits = static_cast<WideCode>(bits | static_cast<WideCode>(text[i]));
    output[i] = static_cast<char>(text[i]);
  }
  return bits;
}

/// Takes each character to its last byte. True when the text was ASCII.
inline bool NarrowAscii(const wchar_t* text, std::size_t length, char* output) {
  WideCode bits = 0;
  const auto add = [&](WideCode more) { bits = static_cast<WideCode>(bits | more); };
  if (length < 8) {
    for (std::size_t i = 0; i < length; ++i) {
      add(Narrow<1>(text + i, output + i));
    }
  } else {
    ForEachEight(length, [&](std::size_t place) { add(Narrow<8>(text + place, output + place)); });
  }
  return bits < 0x80;
}

template <std::size_t kCount>
void Widen(const char* text, wchar_t* output) {
  for (std::size_t i = 0; i < kCount; ++i) {
    output[i] = static_cast<unsigned char>(text[i]);
  }
}

/// Precondition: the text is ASCII.
inline void WidenAscii(std::string_view text, wchar_t* output) {
  const char* bytes = text.data();
  if (text.size() < 8) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      Widen<1>(bytes + i, output + i);
    }
  } else {
    ForEachEight(text.size(), [&](std::size_t place) { Widen<8>(bytes + place, output + place); });
  }
}

/// Up to eight bytes as a number that holds them all, some perhaps twice, and nothing else but
/// zeros. Of texts of one length, different ones give different numbers.
inline std::uint64_t ReadWord(const char* bytes, std::size_t size) {
  std::uint64_t word = 0;
  if (size >= 8) {
    std::memcpy(&word, bytes, 8);
  } else if (size >= 4) {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    std::memcpy(&low, bytes, 4);
    std::memcpy(&high, bytes + size - 4, 4);
    word = (std::uint64_t{high} << 32) | low;
  } else {
    for (std::size_t i = 0; i < size; ++i) {
      word = (word << 8) | static_cast<unsigned char>(bytes[i]);
    }
  }
  return word;
}

/// Not 0 when a byte of the word is the character, which is not NUL.
constexpr std::uint64_t FindInWord(std::uint64_t word, char ch) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  const std::uint64_t zero = word ^ (kOnes * static_cast<unsigned char>(ch));
  return (zero - kOnes) & ~zero & (kOnes << 7);
}

/// True when one of these characters, of which none is NUL, stands in the text.
template <typename... Chars>
bool HasOneOf(std::string_view text, Chars... chars) {
  std::uint64_t found = 0;
  const auto look = [&](std::uint64_t word) { found |= (FindInWord(word, chars) | ...); };
  if (text.size() < 8) {
    look(ReadWord(text.data(), text.size()));
  } else {
    ForEachEight(text.size(), [&](std::size_t place) { look(ReadWord(text.data() + place, 8)); });
  }
  return found != 0;
}

}  // namespace lum::detail
