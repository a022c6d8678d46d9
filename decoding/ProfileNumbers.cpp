#include "decoding/ProfileNumbers.h"

#include <charconv>
#include <cmath>

#include "decoding/NumberLiteral.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

constexpr std::string_view kTo = "..";

std::string_view AfterHexMark(std::string_view text) {
  const bool isHex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  return isHex ? text.substr(2) : std::string_view();
}

template <typename Number>
std::optional<Number> ReadAll(std::string_view text, int base) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// A range's points stand between digits: "1...5" is none.
std::optional<double> ReadMagnitude(std::string_view text) {
  if (text.starts_with('.') || text.ends_with('.')) {
    return std::nullopt;
  }
  const std::optional<double> number = ReadUnsigned(text);
  return number && std::isnan(*number) ? std::nullopt : number;
}

std::optional<double> NumberAt(const PlacedText& text, CProfileFaults& faults) {
  const std::optional<double> number = ReadProfileNumber(text.text);
  if (!number) {
    faults.Add(text, QuotedPart(text.text), "a number");
  }
  return number;
}

// Also tells of both ends what is wrong with them.
std::optional<NumberRange> ReadEnds(const PlacedText& text, std::size_t to,
                                    CProfileFaults& faults) {
  const std::optional<double> first = NumberAt(text.First(to).WithoutBlanks(), faults);
  const std::optional<double> last = NumberAt(text.From(to + kTo.size()).WithoutBlanks(), faults);
  if (!first || !last) {
    return std::nullopt;
  }
  if (*last < *first) {
    faults.Add(text, "the range " + QuotedPart(text.text) + " ends before it begins",
               "the smaller number first");
    return std::nullopt;
  }
  return NumberRange{*first, *last};
}

std::optional<NumberRange> ReadRangeOrNumber(const PlacedText& text, CProfileFaults& faults) {
  const std::size_t to = text.text.find(kTo);
  if (to != std::string_view::npos) {
    return ReadEnds(text, to, faults);
  }
  const std::optional<double> number = NumberAt(text, faults);
  return number ? std::optional(NumberRange{*number, *number}) : std::nullopt;
}

}  // namespace

std::optional<std::uint64_t> ReadWholeNumber(std::string_view text) {
  const std::string_view digits = AfterHexMark(text);
  return digits.empty() ? ReadAll<std::uint64_t>(text, 10) : ReadAll<std::uint64_t>(digits, 16);
}

std::optional<std::uint32_t> ReadHexDigits(std::string_view text) {
  return text.size() <= 8 ? ReadAll<std::uint32_t>(text, 16) : std::nullopt;
}

std::optional<double> ReadProfileNumber(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::optional<double> magnitude = ReadMagnitude(text.substr(isNegative ? 1 : 0));
  return magnitude && isNegative ? std::optional(-*magnitude) : magnitude;
}

std::optional<NumberRange> ReadRange(const PlacedText& text, CProfileFaults& faults) {
  const std::size_t to = text.text.find(kTo);
  if (to == std::string_view::npos) {
    faults.Add(text, QuotedPart(text.text), "a range such as 0..250");
    return std::nullopt;
  }
  return ReadEnds(text, to, faults);
}

std::vector<NumberRange> ReadRangeList(const PlacedText& text, CProfileFaults& faults) {
  std::vector<NumberRange> ranges;
  PlacedText rest = text;
  for (;;) {
    const std::size_t comma = rest.text.find(',');
    if (const auto range = ReadRangeOrNumber(rest.First(comma).WithoutBlanks(), faults)) {
      ranges.push_back(*range);
    }
    if (comma == std::string_view::npos) {
      return ranges;
    }
    rest = rest.From(comma + 1);
  }
}

}  // namespace lum::decoding
