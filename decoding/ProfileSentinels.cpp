// The width of a field stands in the arguments of the operation that reads it. Formulas come here
// compiled, so their parentheses and quotes are paired.
#include "decoding/ProfileSentinels.h"

#include <cmath>
#include <cstdlib>
#include <vector>

#include "decoding/ProfileNumbers.h"

namespace lum::decoding {
namespace {

struct ReadingCall {
  std::string_view operation;
  std::vector<std::string_view> arguments;
};

/// What is known of a field: its bits, or why they are no good.
using Width = std::variant<int, std::string>;

constexpr std::size_t kMaxCallArguments = 8;

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  return first == std::string_view::npos
             ? std::string_view()
             : text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

/// The place behind a quoted text, whose quote stands at `first`.
std::size_t BehindQuote(std::string_view text, std::size_t first) {
  std::size_t place = first + 1;
  while (place < text.size() && text[place] != text[first]) {
    place += text[place] == '\\' ? 2u : 1u;
  }
  return place + 1;
}

/// The place of the next comma or closing parenthesis of the outermost level.
std::size_t ArgumentEnd(std::string_view text, std::size_t place) {
  for (int depth = 0; place < text.size();) {
    const char ch = text[place];
    if (ch == '"' || ch == '\'') {
      place = BehindQuote(text, place);
      continue;
    }
    if (depth == 0 && (ch == ',' || ch == ')')) {
      return place;
    }
    depth += ch == '(' ? 1 : ch == ')' ? -1 : 0;
    ++place;
  }
  return text.size();
}

/// A formula that is one call of an operation and nothing else.
std::optional<ReadingCall> ReadCall(std::string_view formula) {
  const std::string_view text = Trimmed(formula);
  const std::size_t open = text.find('(');
  if (open == std::string_view::npos) {
    return std::nullopt;
  }
  ReadingCall call{Trimmed(text.substr(0, open)), {}};
  for (std::size_t place = open + 1; call.arguments.size() < kMaxCallArguments;) {
    const std::size_t end = ArgumentEnd(text, place);
    if (end >= text.size()) {
      return std::nullopt;
    }
    call.arguments.push_back(Trimmed(text.substr(place, end - place)));
    if (text[end] == ')') {
      return end + 1 == text.size() ? std::optional(call) : std::nullopt;
    }
    place = end + 1;
  }
  return std::nullopt;
}

/// A whole number that stands there as such, with a sign or without.
std::optional<int> ConstantOf(const ReadingCall& call, std::size_t argument) {
  if (argument >= call.arguments.size()) {
    return std::nullopt;
  }
  const std::optional<double> number = ReadProfileNumber(call.arguments[argument]);
  const bool isSmall = number && std::fabs(*number) < 1000.0 && *number == std::trunc(*number);
  return isSmall ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::string SignedField() { return "a signed field"; }
std::string FractionField() { return "a field of floating-point numbers"; }
std::string UnknownField() { return "a field whose type is none of 6, 7 and 8"; }

bool IsFraction(int type) { return type == 4 || type == 5; }
/// docs/formulas.md has the type codes.
bool IsUnsigned(int type) { return type >= 6 && type <= 8; }

/// The bits of a type that reads unsigned integers.
int BitsOf(int type) { return type == 6 ? 8 : type == 7 ? 16 : 32; }

Width WidthOfBytes(int code) {
  const int type = std::abs(code);
  if (IsUnsigned(type)) {
    return BitsOf(type);
  }
  if (IsFraction(type)) {
    return FractionField();
  }
  return (type >= 1 && type <= 3) || type == 12 ? SignedField() : UnknownField();
}

/// J1939BitsVal reads the types 1 to 3 with their sign, and type 8 as a signed 32-bit integer: with
/// fewer bits it is never negative. A shorter type cuts the field.
Width WidthOfBits(int type, int length) {
  if (IsFraction(type)) {
    return FractionField();
  }
  if ((type >= 1 && type <= 3) || (type == 8 && length == 32)) {
    return SignedField();
  }
  if (!IsUnsigned(type)) {
    return UnknownField();
  }
  if (length < 2 || length > BitsOf(type)) {
    return "a field of " + std::to_string(length) + " bits in type " + std::to_string(type);
  }
  return length;
}

Width WidthOf(std::string_view formula) {
  const std::optional<ReadingCall> call = ReadCall(formula);
  const bool isBits = call && call->operation == "J1939BitsVal";
  if (!call || (!isBits && call->operation != "J1939Val" && call->operation != "CanVal")) {
    return "a formula that is not just one call of J1939Val, J1939BitsVal or CanVal";
  }
  const std::optional<int> type = ConstantOf(*call, 1);
  const std::optional<int> length = isBits ? ConstantOf(*call, 3) : 0;
  if (!type || !length) {
    return "a field whose width is computed";
  }
  return isBits ? WidthOfBits(*type, *length) : WidthOfBytes(*type);
}

Sentinels HighestByte(double below) {
  return {{0xFF * below, 0xFF * below + (below - 1)}, {0xFE * below, 0xFE * below + (below - 1)}};
}

}  // namespace

Sentinels J1939Sentinels(int bits) {
  if (bits % 8 == 0) {
    return HighestByte(std::exp2(bits - 8));
  }
  const double highest = std::exp2(bits) - 1;
  return {{highest, highest}, {highest - 1, highest - 1}};
}

std::variant<Sentinels, std::string> SentinelsOfFormula(std::string_view formula) {
  const Width width = WidthOf(formula);
  if (const std::string* reason = std::get_if<std::string>(&width)) {
    return *reason;
  }
  return J1939Sentinels(std::get<int>(width));
}

}  // namespace lum::decoding
