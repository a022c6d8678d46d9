#include "tools/lumattr/EvalArguments.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "decoding/NearMiss.h"
#include "decoding/NumberLiteral.h"
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

std::optional<double> ReadNumber(std::string_view text) {
  const bool isNegative = TakePrefix(text, "-");
  if (!isNegative) {
    TakePrefix(text, "+");
  }
  const std::optional<double> number = decoding::ReadUnsigned(text);
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

const decoding::Operation& NamedOperation(const std::string& name) {
  if (const decoding::Operation* operation = decoding::FindOperation(name)) {
    return *operation;
  }
  const CString wanted = FromUtf8(name);
  decoding::CNearMiss nearMiss(wanted);
  for (const decoding::Operation& operation : decoding::Operations()) {
    nearMiss.Offer(FromUtf8(operation.name));
  }
  throw ToolError("unknown operation " + Quoted(wanted) +
                  (nearMiss.Best() ? nearMiss.Suggestion() : "; see lumattr eval --list"));
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
