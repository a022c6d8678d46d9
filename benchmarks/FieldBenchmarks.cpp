// The workloads "AdamVal", "TimeConv" and "Val": decimal numbers in texts of devices.
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iterator>
#include <sstream>
#include <vector>

#include "benchmarks/Answers.h"
#include "benchmarks/DecimalText.h"
#include "benchmarks/DecoderBenchmarks.h"
#include "benchmarks/DeviceLines.h"

namespace lum::bench {
namespace {

using CLines = std::vector<DeviceLine>;

constexpr std::size_t kAdamHeader = 5;
constexpr std::size_t kAdamReading = 7;

// ---- The lines

std::string Print(const char* format, double number) {
  char text[64];
  std::snprintf(text, sizeof text, format, number);
  return text;
}

DeviceLine MakeAdamLine(std::mt19937_64& random, bool isCut) {
  const std::size_t channel = random() % 8;
  std::string text = ">AI01";
  std::optional<double> value;
  for (std::size_t place = 0; place < 8 && !isCut; ++place) {
    const double reading = (static_cast<double>(random() % 20000) - 10000.0) / 1000.0;
    text += Print("%+07.3f", reading);
    value = place == channel ? reading : value;
  }
  return {text, 0.0, static_cast<double>(channel), 0.0, value};
}

DeviceLine MakeTimeLine(std::mt19937_64& random, bool isCut) {
  const auto hours = static_cast<int>(random() % 24);
  const auto minutes = static_cast<int>(random() % 60);
  const double seconds = static_cast<double>(random() % 6000) / 100.0;
  char text[16];
  std::snprintf(text, sizeof text, isCut ? "%02d%02d" : "%02d%02d%05.2f", hours, minutes, seconds);
  const double value = hours * 3600 + minutes * 60 + seconds;
  return {text, 0.0, 0.0, 0.0, isCut ? std::nullopt : std::optional(value)};
}

DeviceLine MakeValLine(std::mt19937_64& random, bool isCut) {
  constexpr const char* kFormats[] = {"%.2f", " %.2f m", "%.3f,M", "  %.1f"};
  constexpr double kSteps[] = {100.0, 100.0, 1000.0, 10.0};
  const std::size_t kind = random() % 4;
  const double value = (static_cast<double>(random() % 200000) - 50000.0) / kSteps[kind];
  return {isCut ? "--" : Print(kFormats[kind], value), 0.0, 0.0, 0.0,
          isCut ? std::nullopt : std::optional(value)};
}

CLines MakeLines(std::uint64_t seed, DeviceLine (*make)(std::mt19937_64&, bool)) {
  std::mt19937_64 random(seed);
  CLines lines;
  for (std::size_t place = 0; place < kLines; ++place) {
    lines.push_back(make(random, IsCut(place)));
  }
  return lines;
}

// ---- Numbers at the beginning of a text, as the contenders read them

const char* EndOf(const std::string& text) { return text.data() + text.size(); }

std::optional<double> StartFromChars(const char* at, const char* end) {
  while (at != end && *at == ' ') {
    ++at;
  }
  if (at != end && *at == '+') {
    ++at;
  }
  double value = 0.0;
  return std::from_chars(at, end, value).ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<double> StartWithStrtod(const char* text) {
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  return end != text ? std::optional(value) : std::nullopt;
}

std::optional<double> StartByHand(const char* at, const char* end) {
  while (at != end && *at == ' ') {
    ++at;
  }
  return TakeDecimal(at, end);
}

// ---- AdamVal

// The characters of the channel's reading; none when the text ends before.
std::string_view ReadingOf(const DeviceLine& line) {
  const std::size_t first = kAdamHeader + kAdamReading * line.start;
  return line.start < 8 && first < line.text.size()
             ? std::string_view(line.text).substr(first, kAdamReading)
             : std::string_view();
}

std::optional<double> AdamWithStrtod(const DeviceLine& line) {
  const std::string_view reading = ReadingOf(line);
  char text[kAdamReading + 1] = {};
  reading.copy(text, kAdamReading);
  return StartWithStrtod(text);
}

std::optional<double> AdamByScan(const DeviceLine& line) {
  const std::string_view reading = ReadingOf(line);
  double value = 0.0;
  return !reading.empty() && std::sscanf(reading.data(), "%7lf", &value) == 1 ? std::optional(value)
                                                                              : std::nullopt;
}

// ---- TimeConv

double SecondsOf(int hours, int minutes, double seconds) {
  return hours * 3600 + minutes * 60 + seconds;
}

std::optional<double> TimeByScan(const DeviceLine& line) {
  int hours = 0;
  int minutes = 0;
  double seconds = 0.0;
  return std::sscanf(line.text.c_str(), "%2d%2d%5lf", &hours, &minutes, &seconds) == 3
             ? std::optional(SecondsOf(hours, minutes, seconds))
             : std::nullopt;
}

std::optional<double> TimeWithStrptime(const DeviceLine& line) {
  std::tm time{};
  const char* const rest = strptime(line.text.c_str(), "%H%M", &time);
  const std::optional<double> seconds = rest != nullptr ? StartWithStrtod(rest) : std::nullopt;
  return seconds ? std::optional(SecondsOf(time.tm_hour, time.tm_min, *seconds)) : std::nullopt;
}

std::optional<double> TimeFromChars(const DeviceLine& line) {
  constexpr std::size_t kSeconds = 4;
  if (line.text.size() <= kSeconds) {
    return std::nullopt;
  }
  int hours = 0;
  int minutes = 0;
  const char* const text = line.text.data();
  const bool isTime = std::from_chars(text, text + 2, hours).ec == std::errc() &&
                      std::from_chars(text + 2, text + kSeconds, minutes).ec == std::errc();
  const std::optional<double> seconds = StartFromChars(text + kSeconds, EndOf(line.text));
  return isTime && seconds ? std::optional(SecondsOf(hours, minutes, *seconds)) : std::nullopt;
}

std::optional<double> TimeByHand(const DeviceLine& line) {
  constexpr std::size_t kSeconds = 4;
  if (line.text.size() <= kSeconds) {
    return std::nullopt;
  }
  const char* at = line.text.data();
  std::uint64_t hours = 0;
  std::uint64_t minutes = 0;
  const bool isTime = TakeDigits(at, at + 2, hours) == 2 && TakeDigits(at, at + 2, minutes) == 2;
  const std::optional<double> seconds = TakeDecimal(at, EndOf(line.text));
  return isTime && seconds ? std::optional(SecondsOf(static_cast<int>(hours),
                                                     static_cast<int>(minutes), *seconds))
                           : std::nullopt;
}

// ---- Val

std::optional<double> ValByScan(const DeviceLine& line) {
  double value = 0.0;
  return std::sscanf(line.text.c_str(), "%lf", &value) == 1 ? std::optional(value) : std::nullopt;
}

std::optional<double> ValWithStream(const DeviceLine& line) {
  std::istringstream stream(line.text);
  double value = 0.0;
  return stream >> value ? std::optional(value) : std::nullopt;
}

}  // namespace

void AddAdamVal() {
  static CLines lines = MakeLines(8, MakeAdamLine);
  AddReader("AdamVal", kOurs, lines, [](DeviceLine& line) {
    CLumDouble result;
    return OurAnswer(result.AdamVal(line.ourText, line.ourStart), result);
  });
  AddReader("AdamVal", "strtod", lines, [](auto& line) { return AdamWithStrtod(line); });
  AddReader("AdamVal", "sscanf", lines, [](auto& line) { return AdamByScan(line); });
  AddReader("AdamVal", "std::from_chars", lines, [](auto& line) {
    const std::string_view reading = ReadingOf(line);
    return StartFromChars(reading.data(), reading.data() + reading.size());
  });
  AddReader("AdamVal", kLimit, lines, [](auto& line) {
    const std::string_view reading = ReadingOf(line);
    return StartByHand(reading.data(), reading.data() + reading.size());
  });
}

void AddTimeConv() {
  static CLines lines = MakeLines(9, MakeTimeLine);
  AddReader("TimeConv", kOurs, lines, [](DeviceLine& line) {
    CLumDouble result;
    return OurAnswer(result.TimeConv(line.ourText), result);
  });
  AddReader("TimeConv", "sscanf", lines, [](auto& line) { return TimeByScan(line); });
  AddReader("TimeConv", "strptime", lines, [](auto& line) { return TimeWithStrptime(line); });
  AddReader("TimeConv", "std::from_chars", lines, [](auto& line) { return TimeFromChars(line); });
  AddReader("TimeConv", kLimit, lines, [](auto& line) { return TimeByHand(line); });
}

void AddVal() {
  static CLines lines = MakeLines(10, MakeValLine);
  AddReader("Val", kOurs, lines, [](DeviceLine& line) {
    CLumDouble result;
    return OurAnswer(result.Val(line.ourText, false), result);
  });
  AddReader("Val", "strtod", lines, [](auto& line) { return StartWithStrtod(line.text.c_str()); });
  AddReader("Val", "sscanf", lines, [](auto& line) { return ValByScan(line); });
  AddReader("Val", "std::istringstream", lines, [](auto& line) { return ValWithStream(line); });
  AddReader("Val", "std::from_chars", lines,
            [](auto& line) { return StartFromChars(line.text.data(), EndOf(line.text)); });
  AddReader("Val", kLimit, lines,
            [](auto& line) { return StartByHand(line.text.data(), EndOf(line.text)); });
}

}  // namespace lum::bench
