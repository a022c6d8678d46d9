#include "benchmarks/SurveyNumbers.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace lum::bench {
namespace {

constexpr std::size_t kNumbers = 1000;

using CRandom = std::mt19937_64;

std::string Print(const char* format, int precision, double value) {
  char text[400];
  std::snprintf(text, sizeof text, format, precision, value);
  return text;
}

// A number between the bounds with all its digits.
double Between(CRandom& random, double low, double high) {
  constexpr double kUnit = 1.0 / 9007199254740992.0;  // 2^-53
  return low + (high - low) * static_cast<double>(random() >> 11) * kUnit;
}

double MakeNumber(CRandom& random, std::size_t place) {
  switch (place % 5) {
    case 0:
      return Between(random, 400000.0, 700000.0);  // Easting.
    case 1:
      return Between(random, 5000000.0, 6000000.0);  // Northing.
    case 2:
      return Between(random, 0.0, 60.0);  // Depth.
    case 3:
      return Between(random, -180.0, 360.0);  // Angle.
    default:
      return Between(random, -1.0, 1.0);  // Scale, offset.
  }
}

std::vector<double> MakeNumbers() {
  constexpr double kUnusual[] = {0.0, 1e-9, -1e-7, 1e15, -1.25e18, 1e20, 0.5, 6378137.0};
  CRandom random(1);
  std::vector<double> numbers;
  for (std::size_t place = 0; place < kNumbers; ++place) {
    numbers.push_back(place % 50 == 49 ? kUnusual[place / 50 % std::size(kUnusual)]
                                       : MakeNumber(random, place));
  }
  return numbers;
}

std::vector<NumberText> MakeTexts() {
  std::vector<NumberText> texts;
  for (const double number : SurveyNumbers()) {
    const std::size_t place = texts.size();
    const char* const format = place % 100 == 7 ? "%.*e" : "%.*f";
    const std::string text = Print(format, place % 10 == 3 ? 2 : 6, number);
    texts.push_back({text, std::strtod(text.c_str(), nullptr)});
  }
  return texts;
}

// Digits from one place after the point on, and no zero at the end.
NumberText MakeTyped(CRandom& random) {
  const std::size_t places = 1 + random() % 4;
  std::string text = std::to_string(10000 + random() % 100000000);
  if (text.back() == '0') {
    text.back() = '5';
  }
  text.insert(text.size() - places, ".");
  return {text, std::strtod(text.c_str(), nullptr)};
}

NumberText MakeComputed(CRandom& random, std::size_t place) {
  const double number = 2.0 + MakeNumber(random, place % 3);
  std::string text;
  for (int precision = 15; precision <= 17; ++precision) {
    text = Print("%.*g", precision, number);
    if (std::strtod(text.c_str(), nullptr) == number) {
      break;
    }
  }
  return {text, number};
}

std::vector<NumberText> MakeList() {
  CRandom random(2);
  std::vector<NumberText> list;
  for (std::size_t place = 0; place < kNumbers; ++place) {
    list.push_back(place % 4 == 0 ? MakeComputed(random, place) : MakeTyped(random));
  }
  return list;
}

}  // namespace

const std::vector<double>& SurveyNumbers() {
  static const std::vector<double> numbers = MakeNumbers();
  return numbers;
}

const std::vector<NumberText>& SurveyTexts() {
  static const std::vector<NumberText> texts = MakeTexts();
  return texts;
}

const std::vector<NumberText>& ListNumbers() {
  static const std::vector<NumberText> list = MakeList();
  return list;
}

}  // namespace lum::bench
