// The workloads "list of doubles to text" and "text to list of doubles": one list of a thousand,
// joined by commas, each number in its shortest exact form.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <string>
#include <type_traits>
#include <vector>

#include "benchmarks/Answers.h"
#include "benchmarks/DecimalText.h"
#include "benchmarks/SurveyNumbers.h"
#include "benchmarks/TextBenchmarks.h"
#include "values/ArrayTypes.h"

#if defined(HAS_FMT)
#include <fmt/compile.h>
#endif
#if defined(HAS_QT)
#include <QString>
#include <QStringList>
#include <QVector>
#endif

namespace lum::bench {
namespace {

constexpr const char* kToText = "list of doubles to text";
constexpr const char* kToList = "text to list of doubles";

// The longest text of a double and a comma.
constexpr std::size_t kMostCharacters = 32;

std::vector<double> Values() {
  std::vector<double> values;
  for (const NumberText& number : ListNumbers()) {
    values.push_back(number.value);
  }
  return values;
}

std::string JoinedText() {
  std::string text;
  for (const NumberText& number : ListNumbers()) {
    text += (text.empty() ? "" : ",") + number.text;
  }
  return text;
}

template <typename Text>
Checksum ChecksumOf(const Text* text, std::size_t length) {
  Checksum sum;
  sum.Add(text, length);
  return sum;
}

template <typename Run>
void AddToText(const char* contender, Run run) {
  const std::string expected = JoinedText();
  AddBenchmark(kToText, contender, static_cast<std::int64_t>(ListNumbers().size()),
               ChecksumOf(expected.data(), expected.size()), run);
}

// A contender whose `write` writes one number and gives the end of its text.
template <typename Write>
void AddLoopToText(const char* contender, Write write) {
  AddToText(contender, [values = Values(), write] {
    std::string text;
    for (const double value : values) {
      char digits[kMostCharacters];
      char* const end = write(digits, value);
      *end = ',';
      text.append(digits, end + 1);
    }
    return ChecksumOf(text.data(), text.size() - 1);
  });
}

char* WriteShortest(char* at, double value) {
  return std::to_chars(at, at + kMostCharacters, value).ptr;
}

// What has four digits after the point at most and fifteen in all is exact in these.
char* WriteByHand(char* at, double value) {
  constexpr double kScale = 1e4;
  constexpr double kLargest = 1e11;
  const double size = std::abs(value);
  const auto scaled = static_cast<std::uint64_t>(std::min(size, kLargest) * kScale + 0.5);
  if (static_cast<double>(scaled) / kScale != size || scaled % 10000 == 0) {
    return WriteShortest(at, value);
  }
  if (value < 0.0) {
    *at++ = '-';
  }
  at = WriteDigits(at, scaled / 10000, 1);
  *at++ = '.';
  at = WriteDigits(at, scaled % 10000, 4);
  while (at[-1] == '0') {
    --at;
  }
  return at;
}

template <typename Run>
void AddToList(const char* contender, Run run) {
  CountAndSum expected;
  for (const NumberText& number : ListNumbers()) {
    expected.Add(number.value);
  }
  AddBenchmark(kToList, contender, static_cast<std::int64_t>(ListNumbers().size()), expected, run);
}

template <typename List>
CountAndSum SumOf(const List& list) {
  CountAndSum answer;
  for (const double value : list) {
    answer.Add(value);
  }
  return answer;
}

// The text for a contender that reads characters of this width, narrowed if need be.
template <typename Ch>
decltype(auto) TextFor(const std::wstring& text) {
  if constexpr (std::is_same_v<Ch, wchar_t>) {
    return (text);
  } else {
    return std::string(text.begin(), text.end());
  }
}

// A contender whose `take` takes one number and moves behind it, or gives nothing.
template <typename Ch, typename Take>
void AddLoopToList(const char* contender, Take take) {
  const std::string narrow = JoinedText();
  AddToList(contender, [wide = std::wstring(narrow.begin(), narrow.end()), take] {
    const std::basic_string<Ch>& text = TextFor<Ch>(wide);
    std::vector<double> list;
    const Ch* at = text.data();
    const Ch* const end = at + text.size();
    while (const std::optional<double> value = take(at, end)) {
      list.push_back(*value);
      if (at == end || *at++ != ',') {
        break;
      }
    }
    return SumOf(list);
  });
}

std::optional<double> TakeFromChars(const char*& at, const char* end) {
  double value = 0.0;
  const auto [rest, error] = std::from_chars(at, end, value);
  at = rest;
  return error == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<double> TakeWithRuntime(const wchar_t*& at, const wchar_t*) {
  wchar_t* rest = nullptr;
  const double value = std::wcstod(at, &rest);
  const bool isNumber = rest != at;
  at = rest;
  return isNumber ? std::optional(value) : std::nullopt;
}

void AddOursToText() {
  AddToText(kOurs, [list = CLumDoubleArray(static_cast<const std::vector<double>&>(Values()))] {
    CString text;
    list.GetValueStr(text);
    return ChecksumOf(text.GetString(), static_cast<std::size_t>(text.GetLength()));
  });
}

void AddOursToList() {
  AddToList(kOurs, [text = CString(CStringA(JoinedText().c_str()))] {
    CLumDoubleArray list;
    std::vector<double> values;
    list.SetValueStr(text);
    list.GetDoubleArray(values);
    return SumOf(values);
  });
}

// No reader is known that is faster than std::from_chars for numbers with all their digits; what
// can be spared is the growth of the list.
void AddLimitToList() {
  const std::string narrow = JoinedText();
  AddToList(kLimit, [wide = std::wstring(narrow.begin(), narrow.end())] {
    const std::string text(wide.begin(), wide.end());
    std::vector<double> list;
    list.reserve(text.size() / 8);
    const char* at = text.data();
    const char* const end = at + text.size();
    for (; const std::optional<double> value = TakeFromChars(at, end); ++at) {
      list.push_back(*value);
      if (at == end || *at != ',') {
        break;
      }
    }
    return SumOf(list);
  });
}

#if defined(HAS_QT)
void AddQtToList() {
  AddToList("Qt QString", [text = QString(JoinedText().c_str())] {
    QVector<double> list;
    for (const QStringRef& item : text.splitRef(',')) {
      list.append(item.toDouble());
    }
    return SumOf(list);
  });
}
#endif

}  // namespace

void AddListToText() {
  AddOursToText();
  AddLoopToText("std::to_chars", [](char* at, double value) { return WriteShortest(at, value); });
#if defined(HAS_FMT)
  AddLoopToText(
      "fmt", [](char* at, double value) { return fmt::format_to(at, FMT_COMPILE("{}"), value); });
#endif
  AddLoopToText(kLimit, [](char* at, double value) { return WriteByHand(at, value); });
}

void AddTextToList() {
  AddOursToList();
  AddLoopToList<char>("std::from_chars",
                      [](const char*& at, const char* end) { return TakeFromChars(at, end); });
  AddLoopToList<wchar_t>(
      "wcstod", [](const wchar_t*& at, const wchar_t* end) { return TakeWithRuntime(at, end); });
#if defined(HAS_QT)
  AddQtToList();
#endif
  AddLimitToList();
}

}  // namespace lum::bench
