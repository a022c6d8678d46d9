// The workload "double to text": each number in the form of "%f".
#include <charconv>
#include <cmath>
#include <cwchar>
#include <iterator>

#include "benchmarks/Answers.h"
#include "benchmarks/DecimalText.h"
#include "benchmarks/SurveyNumbers.h"
#include "benchmarks/TextBenchmarks.h"
#include "values/DoubleType.h"

#if defined(HAS_FMT)
#include <fmt/compile.h>
#endif
#if defined(HAS_DOUBLE_CONVERSION)
#include <double-conversion/double-conversion.h>
#endif
#if defined(HAS_QT)
#include <QString>
#endif

namespace lum::bench {
namespace {

// Longer than any of the texts.
constexpr std::size_t kMostCharacters = 64;

Checksum ExpectedTexts() {
  Checksum expected;
  for (const double number : SurveyNumbers()) {
    char text[kMostCharacters];
    const int length = std::snprintf(text, sizeof text, "%f", number);
    expected.Add(text, static_cast<std::size_t>(length));
  }
  return expected;
}

// Adds a contender: `write` puts a number's text into a checksum.
template <typename Write>
void AddWriter(const char* contender, Write write) {
  const std::vector<double>& numbers = SurveyNumbers();
  AddBenchmark("double to text", contender, static_cast<std::int64_t>(numbers.size()),
               ExpectedTexts(), [&numbers, write] {
                 Checksum answer;
                 for (const double number : numbers) {
                   write(number, answer);
                 }
                 return answer;
               });
}

void AddOurs() {
  const std::vector<CLumDouble> values(SurveyNumbers().begin(), SurveyNumbers().end());
  AddBenchmark("double to text", kOurs, static_cast<std::int64_t>(values.size()), ExpectedTexts(),
               [values] {
                 Checksum answer;
                 CString text;
                 for (const CLumDouble& value : values) {
                   value.GetValueStr(text);
                   answer.Add(text.GetString(), static_cast<std::size_t>(text.GetLength()));
                 }
                 return answer;
               });
}

// The end of the text, or null for a number that is too large for it. Half a millionth is rounded
// up, which "%f" does not always do.
char* WriteMillionths(char* at, double number) {
  constexpr double kLimit = 1e9;
  constexpr std::uint64_t kMillion = 1'000'000;
  if (!(std::abs(number) < kLimit)) {
    return nullptr;
  }
  if (std::signbit(number)) {
    *at++ = '-';
  }
  const double size = std::abs(number);
  auto whole = static_cast<std::uint64_t>(size);
  auto part = static_cast<std::uint64_t>((size - static_cast<double>(whole)) * 1e6 + 0.5);
  if (part == kMillion) {
    ++whole;
    part = 0;
  }
  at = WriteDigits(at, whole, 1);
  *at++ = '.';
  return WriteDigits(at, part, 6);
}

char* WriteFixed(char* first, char* last, double number) {
  return std::to_chars(first, last, number, std::chars_format::fixed, 6).ptr;
}

void AddLimit() {
  AddWriter(kLimit, [](double number, Checksum& answer) {
    char text[kMostCharacters];
    char* end = WriteMillionths(text, number);
    if (end == nullptr) {
      end = WriteFixed(std::begin(text), std::end(text), number);
    }
    answer.Add(text, static_cast<std::size_t>(end - text));
  });
}

void AddRuntime() {
  AddWriter("swprintf", [](double number, Checksum& answer) {
    wchar_t text[kMostCharacters];
    const int length = std::swprintf(text, kMostCharacters, L"%f", number);
    answer.Add(text, static_cast<std::size_t>(length));
  });
  AddWriter("std::to_chars", [](double number, Checksum& answer) {
    char text[kMostCharacters];
    const char* const end = WriteFixed(std::begin(text), std::end(text), number);
    answer.Add(text, static_cast<std::size_t>(end - text));
  });
}

void AddLibraries() {
#if defined(HAS_FMT)
  AddWriter("fmt", [](double number, Checksum& answer) {
    char text[kMostCharacters];
    const char* const end = fmt::format_to(text, FMT_COMPILE("{:f}"), number);
    answer.Add(text, static_cast<std::size_t>(end - text));
  });
#endif
#if defined(HAS_DOUBLE_CONVERSION)
  AddWriter("double-conversion", [](double number, Checksum& answer) {
    using double_conversion::DoubleToStringConverter;
    char text[kMostCharacters];
    double_conversion::StringBuilder builder(text, kMostCharacters);
    DoubleToStringConverter::EcmaScriptConverter().ToFixed(number, 6, &builder);
    const int length = builder.position();
    answer.Add(builder.Finalize(), static_cast<std::size_t>(length));
  });
#endif
#if defined(HAS_QT)
  AddWriter("Qt QString", [](double number, Checksum& answer) {
    const QString text = QString::number(number, 'f', 6);
    answer.Add(text.utf16(), static_cast<std::size_t>(text.size()));
  });
#endif
}

}  // namespace

void AddDoubleToText() {
  AddOurs();
  AddRuntime();
  AddLibraries();
  AddLimit();
}

}  // namespace lum::bench
