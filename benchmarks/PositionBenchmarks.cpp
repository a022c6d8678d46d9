// The workload "NMEAPos": latitudes and longitudes in wide texts.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/Answers.h"
#include "benchmarks/DecimalText.h"
#include "benchmarks/DecoderBenchmarks.h"
#include "benchmarks/DeviceLines.h"
#include "benchmarks/Narrow.h"

namespace lum::bench {
namespace {

struct PositionLine {
  std::wstring position;
  std::wstring hemisphere;
  std::optional<double> value;
  CLumName ourPosition;
  CLumName ourHemisphere;
};

using CLines = std::vector<PositionLine>;

// Decimal degrees of a number that was read, degrees and minutes.
std::optional<double> DegreesOf(const PositionLine& line, std::optional<double> number) {
  if (!number || line.hemisphere.empty()) {
    return std::nullopt;
  }
  double degrees = 0.0;
  const double minutes = std::modf(*number / 100.0, &degrees);
  const double value = std::abs(minutes) / 0.6 + std::abs(degrees);
  const bool isNegative = line.hemisphere == L"S" || line.hemisphere == L"W";
  return isNegative ? -value : value;
}

PositionLine MakeLine(std::mt19937_64& random, bool isCut) {
  const bool isLatitude = random() % 2 == 0;
  const auto degrees = static_cast<int>(random() % (isLatitude ? 90 : 180));
  const double minutes = static_cast<double>(random() % 600000) / 10000.0;
  char text[32];
  std::snprintf(text, sizeof text, isLatitude ? "%02d%07.4f" : "%03d%07.4f", degrees, minutes);
  const std::string narrow = isCut ? "" : text;
  PositionLine line;
  line.position.assign(narrow.begin(), narrow.end());
  line.hemisphere = std::wstring(1, L"NSEW"[(isLatitude ? 0U : 2U) + random() % 2]);
  if (!isCut) {
    line.value = DegreesOf(line, std::strtod(text, nullptr));
  }
  line.ourPosition = CLumName(line.position.c_str());
  line.ourHemisphere = CLumName(line.hemisphere.c_str());
  return line;
}

CLines& Lines() {
  static CLines lines = [] {
    std::mt19937_64 random(11);
    CLines made;
    for (std::size_t place = 0; place < kLines; ++place) {
      made.push_back(MakeLine(random, IsCut(place)));
    }
    return made;
  }();
  return lines;
}

std::optional<double> NumberFromChars(const PositionLine& line) {
  const CNarrowText text(line.position);
  double value = 0.0;
  return std::from_chars(text.Begin(), text.End(), value).ec == std::errc() ? std::optional(value)
                                                                            : std::nullopt;
}

std::optional<double> NumberWithRuntime(const PositionLine& line) {
  wchar_t* end = nullptr;
  const double value = std::wcstod(line.position.c_str(), &end);
  return end != line.position.c_str() ? std::optional(value) : std::nullopt;
}

std::optional<double> NumberByScan(const PositionLine& line) {
  double value = 0.0;
  return std::swscanf(line.position.c_str(), L"%lf", &value) == 1 ? std::optional(value)
                                                                  : std::nullopt;
}

std::optional<double> NumberByHand(const PositionLine& line) {
  const wchar_t* at = line.position.data();
  return TakeDecimal(at, at + line.position.size());
}

}  // namespace

void AddNmeaPos() {
  AddReader("NMEAPos", kOurs, Lines(), [](PositionLine& line) {
    CLumDouble result;
    return OurAnswer(result.NMEAPos(line.ourPosition, line.ourHemisphere), result);
  });
  AddReader("NMEAPos", "wcstod", Lines(),
            [](auto& line) { return DegreesOf(line, NumberWithRuntime(line)); });
  AddReader("NMEAPos", "swscanf", Lines(),
            [](auto& line) { return DegreesOf(line, NumberByScan(line)); });
  AddReader("NMEAPos", "std::from_chars", Lines(),
            [](auto& line) { return DegreesOf(line, NumberFromChars(line)); });
  AddReader("NMEAPos", kLimit, Lines(),
            [](auto& line) { return DegreesOf(line, NumberByHand(line)); });
}

}  // namespace lum::bench
