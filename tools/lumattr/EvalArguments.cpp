#include "tools/lumattr/EvalArguments.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

#include "platform/Numerics.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

constexpr std::size_t kMostComponents = 3;

int HexValue(char digit) { return HexVal(static_cast<unsigned char>(digit)); }
bool IsHexDigit(char ch) { return HexValue(ch) >= 0; }
bool IsLetter(char ch) { return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z'); }

bool IsOption(std::string_view word) {
  return word == "-h" || (word.size() > 2 && word.starts_with("--") && IsLetter(word[2]));
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  const bool hasPrefix = text.starts_with(prefix);
  text.remove_prefix(hasPrefix ? prefix.size() : 0);
  return hasPrefix;
}

std::optional<double> ReadDigits(std::string_view text, std::chars_format format) {
  double number = 0.0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, format);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

// Digits are asked for first, because std::from_chars reads signs and words as well.
std::optional<double> ReadUnsigned(std::string_view text) {
  if (text == "inf") {
    return std::numeric_limits<double>::infinity();
  }
  if (text == "nan") {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (TakePrefix(text, "0x") || TakePrefix(text, "0X")) {
    return std::all_of(text.begin(), text.end(), IsHexDigit)
               ? ReadDigits(text, std::chars_format::hex)
               : std::nullopt;
  }
  const bool isDecimal = text.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
  return isDecimal && !text.starts_with('-') ? ReadDigits(text, std::chars_format::general)
                                             : std::nullopt;
}

std::optional<double> ReadNumber(std::string_view text) {
  const bool isNegative = TakePrefix(text, "-");
  if (!isNegative) {
    TakePrefix(text, "+");
  }
  const std::optional<double> number = ReadUnsigned(text);
  return number && isNegative ? -*number : number;
}

[[noreturn]] void Refuse(const std::string& argument, const std::string& what,
                         const std::string& problem) {
  throw ToolError(what + " " + Quoted(FromUtf8(argument)) + " " + problem);
}

// Nothing when a byte is not two digits side by side.
std::optional<CStringA> DecodeHex(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    if (TakePrefix(text, " ")) {
      continue;
    }
    if (text.size() < 2 || !IsHexDigit(text[0]) || !IsHexDigit(text[1])) {
      return std::nullopt;
    }
    bytes += static_cast<char>(HexValue(text[0]) * 16 + HexValue(text[1]));
    text.remove_prefix(2);
  }
  return CStringA(bytes.data(), static_cast<int>(bytes.size()));
}

}  // namespace

EvalLine SplitEvalLine(int argc, char** argv) {
  if (argc < 2 || std::string_view(argv[1]) != "eval") {
    return {{argv, argv + argc}, {}};
  }
  EvalLine line{{argv, argv + 2}, {}};
  for (int i = 2; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (word == "--") {
      line.words.insert(line.words.end(), argv + i + 1, argv + argc);
      break;
    }
    if (!IsOption(word)) {
      line.words.emplace_back(word);
      continue;
    }
    line.rest.push_back(argv[i]);
    if (word == "--previous" && i + 1 < argc) {
      line.rest.push_back(argv[++i]);
    }
  }
  return line;
}

double NumberArgument(const std::string& argument, const std::string& what) {
  const std::optional<double> number = ReadNumber(argument);
  if (!number) {
    Refuse(argument, what,
           "is no number; expected a decimal or 0x number that a double can hold, inf or nan");
  }
  return *number;
}

std::vector<double> VectorArgument(const std::string& argument, const std::string& what) {
  std::vector<double> numbers;
  std::string_view text = argument;
  while (true) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::optional<double> number = ReadNumber(text.substr(0, end));
    if (!number || numbers.size() == kMostComponents) {
      Refuse(argument, what, "is no vector; expected one to three numbers joined by commas");
    }
    numbers.push_back(*number);
    if (end == text.size()) {
      return numbers;
    }
    text.remove_prefix(end + 1);
  }
}

CStringA BytesArgument(const std::string& argument, const std::string& what) {
  std::string_view text = argument;
  if (TakePrefix(text, "hex:")) {
    const std::optional<CStringA> bytes = DecodeHex(text);
    if (!bytes) {
      Refuse(
          argument, what,
          "is no list of bytes; expected pairs of hexadecimal digits, blanks between them, after "
          "hex:");
    }
    return *bytes;
  }
  TakePrefix(text, "text:");
  return {text.data(), static_cast<int>(text.size())};
}

}  // namespace lum::tool
