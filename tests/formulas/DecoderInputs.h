// Random arguments for the decoding operations: what devices send, the same with some of it broken,
// and texts and numbers that are nonsense. Equal seeds give equal inputs.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace lum::test {

/// The arguments of one call. Each operation uses those it has.
struct DecoderInput {
  std::string text;
  std::string hemisphere;
  std::array<double, 3> numbers{};  ///< In the order of the arguments.
  bool isLenient = false;
  double previous = 0.0;  ///< The result before the call.
};

/// All of an input, with numbers to their last bit and unprintable bytes escaped.
std::string ToText(const DecoderInput& input);

/// The bytes as wide text; those above 127 become letters whose low bytes are ASCII characters.
std::wstring Widen(std::string_view bytes);

class CDecoderInputs {
 public:
  explicit CDecoderInputs(std::uint64_t seed) : m_random(seed) {}

  // Each fills in what the operation of its name takes.
  void BinVal(DecoderInput& input);
  void BitVal(DecoderInput& input);
  void AdamVal(DecoderInput& input);
  void CanVal(DecoderInput& input);
  void J1939Val(DecoderInput& input);
  void J1939BitsVal(DecoderInput& input);
  void TimeConv(DecoderInput& input);
  void HmsToMsec(DecoderInput& input);
  void Val(DecoderInput& input);
  void NMEAPos(DecoderInput& input);

  /// Well-formed lines with random data, for tests that choose the rest themselves.
  void CanFrame(std::string& text, std::size_t dataLength);
  void J1939Message(std::string& text, std::size_t dataBytes);

  /// Some double, of any kind and size.
  double AnyDouble();

 private:
  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(m_random() % count); }
  int Between(int first, int last) {
    return first + static_cast<int>(Below(static_cast<std::size_t>(last - first + 1)));
  }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  template <typename T>
  T OneOf(std::initializer_list<T> choices) {
    return choices.begin()[Below(choices.size())];
  }

  // An argument that is mostly an integer from `first` to `last`, sometimes with a fraction,
  // sometimes far off.
  double Number(int first, int last);
  // A type code: mostly one that is known.
  double TypeCode();

  void AddBytes(std::string& text, std::size_t count);
  void AddDigits(std::string& text, std::size_t count) { AddCharacters(text, "0123456789", count); }
  void AddHexDigits(std::string& text, std::size_t count);
  void AddCharacters(std::string& text, std::string_view alphabet, std::size_t count);
  // A number text of any notation.
  void AddNumber(std::string& text);
  // A number as devices write it, with `digits` digits before the point.
  void AddReading(std::string& text, std::size_t digits);
  void AddHalfway(std::string& text);
  // Damages a text in some places.
  void Break(std::string& text, std::string_view alphabet);
  // Damages a part of the lines, each in its way.
  void SpoilSomeFrames(std::string& text);

  // Random bits for the arguments that every operation has.
  void FillOutcome(DecoderInput& input) {
    input.isLenient = OneIn(2);
    input.previous = std::bit_cast<double>(m_random());
  }

  std::mt19937_64 m_random;
};

}  // namespace lum::test
