// The workload "text to double": wide texts as settings hold them.
#include <charconv>
#include <cwchar>
#include <iterator>

#include "benchmarks/Answers.h"
#include "benchmarks/DecimalText.h"
#include "benchmarks/Narrow.h"
#include "benchmarks/SurveyNumbers.h"
#include "benchmarks/TextBenchmarks.h"
#include "values/DoubleType.h"

#if defined(HAS_DOUBLE_CONVERSION)
#include <double-conversion/double-conversion.h>
#endif
#if defined(HAS_QT)
#include <QString>
#endif

namespace lum::bench {
namespace {

constexpr const char* kWorkload = "text to double";

template <typename Text>
struct Line {
  Text text;
  double value = 0.0;
};

// The texts in a contender's own kind of string.
template <typename Text, typename Convert>
std::vector<Line<Text>>& LinesOf(Convert convert) {
  static std::vector<Line<Text>> lines = [convert] {
    std::vector<Line<Text>> made;
    for (const NumberText& number : SurveyTexts()) {
      made.push_back({convert(number.text), number.value});
    }
    return made;
  }();
  return lines;
}

std::vector<Line<std::wstring>>& WideLines() {
  return LinesOf<std::wstring>(
      [](const std::string& text) { return std::wstring(text.begin(), text.end()); });
}

using CWideLine = Line<std::wstring>;

std::optional<double> ReadWithRuntime(const CWideLine& line) {
  wchar_t* end = nullptr;
  const double value = std::wcstod(line.text.c_str(), &end);
  return *end == L'\0' ? std::optional(value) : std::nullopt;
}

std::optional<double> ReadByScan(const CWideLine& line) {
  double value = 0.0;
  return std::swscanf(line.text.c_str(), L"%lf", &value) == 1 ? std::optional(value) : std::nullopt;
}

std::optional<double> ReadFromChars(const CWideLine& line) {
  const CNarrowText text(line.text);
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.Begin(), text.End(), value);
  return error == std::errc() && end == text.End() ? std::optional(value) : std::nullopt;
}

std::optional<double> ReadByHand(const CWideLine& line) {
  const wchar_t* at = line.text.data();
  const wchar_t* const end = at + line.text.size();
  const std::optional<double> value = TakeDecimal(at, end);
  return value && at == end ? value : ReadFromChars(line);
}

void AddOurs() {
  auto& lines =
      LinesOf<CString>([](const std::string& text) { return CString(CStringA(text.c_str())); });
  AddReader(kWorkload, kOurs, lines, [](const Line<CString>& line) -> std::optional<double> {
    CLumDouble number;
    double value = 0.0;
    return number.SetValueStr(line.text) && number.GetDouble(value) != 0 ? std::optional(value)
                                                                         : std::nullopt;
  });
}

void AddLibraries() {
#if defined(HAS_DOUBLE_CONVERSION)
  AddReader(kWorkload, "double-conversion", WideLines(),
            [](const CWideLine& line) -> std::optional<double> {
              static const double_conversion::StringToDoubleConverter converter(0, 0.0, 0.0,
                                                                                nullptr, nullptr);
              const CNarrowText text(line.text);
              int used = 0;
              const int length = static_cast<int>(text.End() - text.Begin());
              const double value = converter.StringToDouble(text.Begin(), length, &used);
              return used == length ? std::optional(value) : std::nullopt;
            });
#endif
#if defined(HAS_QT)
  auto& lines = LinesOf<QString>([](const std::string& text) { return QString(text.c_str()); });
  AddReader(kWorkload, "Qt QString", lines, [](const Line<QString>& line) -> std::optional<double> {
    bool isNumber = false;
    const double value = line.text.toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
  });
#endif
}

}  // namespace

void AddTextToDouble() {
  AddOurs();
  AddReader(kWorkload, "wcstod", WideLines(), [](auto& line) { return ReadWithRuntime(line); });
  AddReader(kWorkload, "swscanf", WideLines(), [](auto& line) { return ReadByScan(line); });
  AddReader(kWorkload, "std::from_chars", WideLines(),
            [](auto& line) { return ReadFromChars(line); });
  AddLibraries();
  AddReader(kWorkload, kLimit, WideLines(), [](auto& line) { return ReadByHand(line); });
}

}  // namespace lum::bench
