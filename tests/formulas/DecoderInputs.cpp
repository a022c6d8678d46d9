// The shares of sound, broken and senseless inputs are chosen so that a good part of the calls
// reaches a value; the comparison checks that it stays so.
#include "tests/formulas/DecoderInputs.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <limits>

#include "platform/Framework.h"
#include "tests/TextPrinting.h"

namespace lum::test {
namespace {

using namespace std::string_view_literals;

// What breaks a line of hexadecimal text: blanks, signs, prefixes, NULs and bytes above 127.
constexpr auto kFrameCharacters =
    "0123456789abcdefABCDEF  \t\n\v\f\r+--xXgGZz.\0\x7F\x80\xA0\xFF"sv;

// What number texts are made of, and what breaks them.
constexpr auto kNumberCharacters =
    "00112233445566778899..  \t+-eExXpPinfatyINFATYabcdef(),_\0\x80\xA0\xFF"sv;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

void AddPrinted(std::string& text, const char* format, double number) {
  char printed[400];
  const int length = std::snprintf(printed, sizeof printed, format, number);
  text.append(printed, static_cast<std::size_t>(length));
}

std::string Quoted(const std::string& text) {
  return ::testing::PrintToString(CStringA(text.data(), static_cast<int>(text.size())));
}

}  // namespace

std::string ToText(const DecoderInput& input) {
  std::string text = "text " + Quoted(input.text) + " hemisphere " + Quoted(input.hemisphere);
  text += " numbers";
  for (const double number : input.numbers) {
    AddPrinted(text, " %.17g", number);
  }
  text += input.isLenient ? " lenient" : " strict";
  AddPrinted(text, " previous result %a", input.previous);
  return text;
}

std::wstring Widen(std::string_view bytes) {
  std::wstring text;
  for (const char ch : bytes) {
    const auto code = static_cast<unsigned char>(ch);
    text += static_cast<wchar_t>(code < 0x80 ? code : 0x80 + code);
  }
  return text;
}

// ---- Numbers

double CDecoderInputs::AnyDouble() {
  switch (Below(4)) {
    case 0:
      return std::bit_cast<double>(m_random());
    case 1:
      return OneOf({kNotANumber, -kNotANumber, kInfinity, -kInfinity, 0.0, -0.0, 0.5, -0.5});
    case 2: {
      // Around the bounds of the integers.
      const double power = std::bit_cast<double>((1023 + Below(70)) << 52);
      return OneOf({power, power - 1.0, power + 1.0, -power, -power - 1.0, 1.0 - power});
    }
    default:
      return static_cast<double>(static_cast<std::int64_t>(m_random())) / 65536.0;
  }
}

double CDecoderInputs::Number(int first, int last) {
  const auto integer = static_cast<double>(Between(first, last));
  const std::size_t choice = Below(32);
  if (choice == 0) {
    return AnyDouble();
  }
  if (choice < 4) {
    return integer + static_cast<double>(Between(-999, 999)) / 1000.0;
  }
  return choice < 6 ? static_cast<double>(Between(-3, 70)) : integer;
}

double CDecoderInputs::TypeCode() {
  const double code = Number(1, 8);
  if (OneIn(5)) {
    return Number(-13, 13);
  }
  return OneIn(3) ? -code : code;
}

// ---- Characters

void CDecoderInputs::AddBytes(std::string& text, std::size_t count) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < count; ++i) {
    bits = i % 8 == 0 ? m_random() : bits >> 8;
    text += static_cast<char>(bits & 0xFF);
  }
}

void CDecoderInputs::AddCharacters(std::string& text, std::string_view alphabet,
                                   std::size_t count) {
  for (; count > 0; --count) {
    text += alphabet[Below(alphabet.size())];
  }
}

void CDecoderInputs::AddHexDigits(std::string& text, std::size_t count) {
  const char* const digits = OneIn(2) ? "0123456789abcdef" : "0123456789ABCDEF";
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < count; ++i) {
    bits = i % 16 == 0 ? m_random() : bits >> 4;
    text += digits[bits & 0xF];
  }
}

void CDecoderInputs::Break(std::string& text, std::string_view alphabet) {
  for (std::size_t count = 1 + Below(3); count > 0; --count) {
    const std::size_t place = Below(text.size() + 1);
    const char ch = alphabet[Below(alphabet.size())];
    switch (Below(6)) {
      case 0:
        text.resize(place);
        break;
      case 1:
        text.erase(place, 1);
        break;
      case 2:
        text += ch;
        break;
      case 3:
        text.insert(place, 1, ch);
        break;
      default:
        if (place < text.size()) {
          text[place] = ch;
        }
    }
  }
}

// ---- Number texts

void CDecoderInputs::AddReading(std::string& text, std::size_t digits) {
  text += OneOf({"", "", "", "+", "-", " ", " -"});
  AddDigits(text, digits);
  if (!OneIn(4)) {
    text += '.';
    AddDigits(text, Below(5));
  }
}

// Halfway between two doubles that hold integers only, and just beside.
void CDecoderInputs::AddHalfway(std::string& text) {
  constexpr std::uint64_t kLastExact = std::uint64_t{1} << 53;
  const std::size_t shift = Below(4);
  const std::uint64_t number = (kLastExact + Below(64)) << shift;
  std::string digits = std::to_string(number + (shift > 0 ? std::uint64_t{1} << (shift - 1) : 1));
  if (OneIn(3)) {
    digits.insert(Below(digits.size() + 1), 1, '.');
  }
  text += digits;
  text += OneOf({"", ".", ".0", ".5", ".00000000000000001", "e0", "e-3", "e20"});
}

void CDecoderInputs::AddNumber(std::string& text) {
  switch (Below(12)) {
    case 0: {
      const double number = AnyDouble();
      AddPrinted(text, OneOf({"%.17g", "%a", "%.3e", "%.25g", "%A", "%.4a"}), number);
      break;
    }
    case 1:
      text +=
          OneOf({"inf", "-INFINITY", "infinit", "nan", "-nan(12ab)", "nan(", "NAN()", "+nan(x_1)"});
      break;
    case 2:
      AddReading(text, 1 + Below(30));
      break;
    case 3:
      AddReading(text, Below(4));
      text += OneOf({"e", "E", "e+", "E-", "e0", "e-0"});
      AddDigits(text, Below(4));
      break;
    case 4:
      text += OneOf({"0x", "0X", "-0x", "0x.", "+0X1."});
      AddHexDigits(text, Below(12));
      text += OneOf({"", "p", "P+", "p-"});
      AddDigits(text, Below(4));
      break;
    case 5:
      AddHalfway(text);
      break;
    case 6:
      AddCharacters(text, kNumberCharacters, Below(12));
      break;
    default:
      AddReading(text, Below(7));
  }
  if (OneIn(8)) {
    Break(text, kNumberCharacters);
  }
}

// ---- Frames

void CDecoderInputs::CanFrame(std::string& text, std::size_t dataLength) {
  text.clear();
  if (OneIn(2)) {
    text += OneOf({'8', '9', 'a', 'B', 'c', 'D', 'e', 'F'});
    AddHexDigits(text, 7);
  } else {
    text += static_cast<char>('0' + Below(8));
    AddHexDigits(text, 2);
  }
  text += "0123456789ABCDEF"[dataLength];
  AddHexDigits(text, 2 * dataLength);
}

void CDecoderInputs::J1939Message(std::string& text, std::size_t dataBytes) {
  text.clear();
  AddHexDigits(text, 11 + 2 * dataBytes);
  text += OneOf({'\r', ' ', 'F', '*'});
}

void CDecoderInputs::SpoilSomeFrames(std::string& text) {
  if (OneIn(32)) {
    text.clear();
    AddCharacters(text, kFrameCharacters, Below(40));
  } else if (OneIn(10)) {
    for (std::size_t blanks = 1 + Below(8); blanks > 0; --blanks) {
      text.insert(Below(text.size() + 1), 1, ' ');
    }
  } else if (OneIn(3)) {
    Break(text, kFrameCharacters);
  }
}

void CDecoderInputs::CanVal(DecoderInput& input) {
  FillOutcome(input);
  const bool isFull = !OneIn(3);
  CanFrame(input.text, isFull ? 8 : Below(16));
  SpoilSomeFrames(input.text);
  input.numbers = {TypeCode(), Number(0, OneIn(3) ? 9 : 4), 0.0};
}

void CDecoderInputs::J1939Val(DecoderInput& input) {
  FillOutcome(input);
  J1939Message(input.text, OneIn(3) ? Below(20) : 8);
  SpoilSomeFrames(input.text);
  const double typeCode = OneIn(10) ? OneOf({12.0, -12.0, 12.9}) : TypeCode();
  input.numbers = {typeCode, Number(0, OneIn(3) ? 12 : 4), 0.0};
}

void CDecoderInputs::J1939BitsVal(DecoderInput& input) {
  J1939Val(input);
  const double typeCode = OneIn(4) ? TypeCode() : Number(1, 8);
  const double startBit = Number(0, OneIn(3) ? 160 : 40);
  const double bitLength = OneIn(4) ? static_cast<double>(Between(-3, 70)) : Number(1, 32);
  input.numbers = {typeCode, startBit, bitLength};
}

// ---- Records

void CDecoderInputs::BinVal(DecoderInput& input) {
  FillOutcome(input);
  input.text.clear();
  const std::size_t choice = Below(8);
  if (choice < 5) {
    AddBytes(input.text, OneIn(2) ? 8 + Below(4) : Below(10));
    input.numbers[0] = TypeCode();
    return;
  }
  input.numbers[0] = OneOf({9.0, 10.0, 11.0, -9.0, -10.0, -11.0});
  if (choice == 5) {
    AddCharacters(input.text, kFrameCharacters, Below(12));
    return;
  }
  input.text += OneOf({"", "", "", " ", "\t\n", "+", "-", "0x", "0X", " -0x", "+0X"});
  AddHexDigits(input.text, OneIn(8) ? Below(24) : 1 + Below(8));
  if (OneIn(4)) {
    Break(input.text, kFrameCharacters);
  }
}

void CDecoderInputs::BitVal(DecoderInput& input) {
  FillOutcome(input);
  const auto any64Bits = static_cast<double>(static_cast<std::int64_t>(m_random()));
  const auto power = static_cast<double>(std::uint64_t{1} << (16 + Below(46)));
  const double value = OneIn(8) ? AnyDouble() : any64Bits / power;
  const double bit = OneIn(4) ? Number(-3, 70) : Number(0, 33);
  input.numbers = {value, bit, 0.0};
}

void CDecoderInputs::AdamVal(DecoderInput& input) {
  FillOutcome(input);
  input.text.clear();
  AddCharacters(input.text, ">0123", 5);
  for (std::size_t readings = OneIn(3) ? Below(10) : 8; readings > 0; --readings) {
    if (OneIn(4)) {
      AddNumber(input.text);
      continue;
    }
    // Seven characters, as the modules write them.
    const std::size_t decimals = 1 + Below(4);
    input.text += OneOf({'+', '-'});
    AddDigits(input.text, 5 - decimals);
    input.text += '.';
    AddDigits(input.text, decimals);
  }
  if (OneIn(3)) {
    Break(input.text, kNumberCharacters);
  }
  input.numbers[0] = Number(0, OneIn(4) ? 9 : 7);
}

// ---- Times and texts

void CDecoderInputs::TimeConv(DecoderInput& input) {
  FillOutcome(input);
  input.text.clear();
  const std::size_t choice = Below(8);
  if (choice == 0) {
    AddCharacters(input.text, kNumberCharacters, Below(14));
    return;
  }
  if (choice == 1) {
    for (std::size_t field = 0; field < 3; ++field) {
      input.text += OneOf({"", " ", "\t ", "+", "-", " -"});
      AddDigits(input.text, Below(4));
    }
    AddNumber(input.text);
    return;
  }
  AddDigits(input.text, 6);
  if (!OneIn(4)) {
    input.text += '.';
    AddDigits(input.text, Below(5));
  }
  if (OneIn(3)) {
    Break(input.text, kNumberCharacters);
  }
}

void CDecoderInputs::HmsToMsec(DecoderInput& input) {
  FillOutcome(input);
  const int hours = Between(0, 23);
  const int minutes = Between(0, 59);
  const double seconds = Between(0, 59999) / 1000.0;
  const double time = hours * 10000 + minutes * 100 + seconds;
  const std::size_t choice = Below(4);
  const auto any32Bits = static_cast<double>(static_cast<std::int32_t>(m_random()));
  input.numbers[0] = choice == 0   ? AnyDouble()
                     : choice == 1 ? any32Bits + static_cast<double>(Between(-9, 9)) / 8.0
                     : OneIn(8)    ? -time
                                   : time;
}

void CDecoderInputs::Val(DecoderInput& input) {
  FillOutcome(input);
  input.text.clear();
  AddCharacters(input.text, " \t\n\r", OneIn(6) ? Below(4) : 0);
  AddNumber(input.text);
}

void CDecoderInputs::NMEAPos(DecoderInput& input) {
  FillOutcome(input);
  input.text.clear();
  if (OneIn(3)) {
    AddNumber(input.text);
  } else {
    AddDigits(input.text, OneOf<std::size_t>({4, 5}));
    input.text += '.';
    AddDigits(input.text, Below(6));
  }
  if (OneIn(5)) {
    Break(input.text, kNumberCharacters);
  }
  if (OneIn(16)) {
    input.text.clear();
  }
  const std::string_view unusual = OneOf({""sv, "s"sv, "w"sv, "South"sv, "SS"sv, " S"sv, "S "sv,
                                          "S\0"sv, "\0S"sv, "\0"sv, "\xD3"sv, "7"sv});
  const std::string_view usual = OneOf({"N"sv, "S"sv, "E"sv, "W"sv});
  input.hemisphere = OneIn(4) ? unusual : usual;
}

}  // namespace lum::test
