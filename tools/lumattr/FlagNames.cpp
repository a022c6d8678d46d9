#include "tools/lumattr/FlagNames.h"

#include <array>
#include <charconv>
#include <optional>
#include <string_view>

#include "attributes/AttributeRec.h"
#include "decoding/NearMiss.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

struct FlagName {
  unsigned int bit;
  const char* name;
};

constexpr std::array<FlagName, 7> kFlagNames = {{
    {CAttributeRec::FLAG_EDITABLE, "editable"},
    {CAttributeRec::FLAG_GROUP, "group"},
    {CAttributeRec::FLAG_DISABLED, "disabled"},
    {CAttributeRec::FLAG_SKIP_ON_LOAD, "skip-on-load"},
    {CAttributeRec::FLAG_KEEP_VALUE, "keep-value"},
    {CAttributeRec::FLAG_KEEP_VALUE_STRICT, "keep-value-strict"},
    {CAttributeRec::FLAG_TRANSIENT, "transient"},
}};

std::string Hexadecimal(unsigned int number) {
  CString text;
  text.Format(L"0x%x", number);
  return ToUtf8(text);
}

std::optional<unsigned int> ReadNumber(std::string_view text) {
  const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  if (hexadecimal) {
    text.remove_prefix(2);
  }
  unsigned int number = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number, hexadecimal ? 16 : 10);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

[[noreturn]] void RefuseFlag(std::string_view word) {
  decoding::CNearMiss nearMiss(FromUtf8(word));
  for (const FlagName& flag : kFlagNames) {
    nearMiss.Offer(FromUtf8(flag.name));
  }
  throw ToolError("unknown flag " + Quoted(FromUtf8(word)) + nearMiss.Suggestion());
}

unsigned int BitsOf(std::string_view word) {
  if (word == "none") {
    return 0;
  }
  for (const FlagName& flag : kFlagNames) {
    if (word == flag.name) {
      return flag.bit;
    }
  }
  const std::optional<unsigned int> number = ReadNumber(word);
  if (!number) {
    RefuseFlag(word);
  }
  return *number;
}

bool IsChange(std::string_view word) { return !word.empty() && (word[0] == '+' || word[0] == '-'); }

unsigned int Apply(std::string_view word, unsigned int flags) {
  if (!IsChange(word)) {
    return flags | BitsOf(word);
  }
  const unsigned int bits = BitsOf(word.substr(1));
  return word[0] == '+' ? flags | bits : flags & ~bits;
}

std::vector<std::string_view> SplitWords(std::string_view text) {
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t end = text.find_first_of(",|");
    words.push_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      return words;
    }
    text.remove_prefix(end + 1);
  }
}

}  // namespace

std::vector<std::string> FlagNames(unsigned int flags) {
  std::vector<std::string> names;
  for (const FlagName& flag : kFlagNames) {
    if ((flags & flag.bit) != 0) {
      names.emplace_back(flag.name);
      flags &= ~flag.bit;
    }
  }
  if (flags != 0) {
    names.push_back(Hexadecimal(flags));
  }
  return names;
}

std::string FlagNamesText(unsigned int flags) {
  if (flags == 0) {
    return "-";
  }
  std::string text;
  for (const std::string& name : FlagNames(flags)) {
    text += (text.empty() ? "" : "|") + name;
  }
  return text;
}

unsigned int ParseFlagsArgument(const std::string& argument, unsigned int current) {
  const std::vector<std::string_view> words = SplitWords(argument);
  const bool changes = IsChange(words.front());
  unsigned int flags = changes ? current : 0;
  for (std::string_view word : words) {
    if (IsChange(word) != changes) {
      throw ToolError("flags are either named (editable,group) or changed (+editable,-group): " +
                      Quoted(FromUtf8(argument)));
    }
    flags = Apply(word, flags);
  }
  return flags;
}

CString FormatFlagsLike(unsigned int flags, const CString& like) {
  CString text;
  const CString prefix = like.Left(2);
  if (prefix != L"0x" && prefix != L"0X") {
    text.Format(L"%u", flags);
    return text;
  }
  const bool upperCase = like.Mid(2).FindOneOf(L"ABCDEF") >= 0;
  text.Format(upperCase ? L"%X" : L"%x", flags);
  while (text.GetLength() < like.GetLength() - 2) {
    text.Insert(0, L"0");
  }
  return prefix + text;
}

}  // namespace lum::tool
