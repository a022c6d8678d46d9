// The numbers of the text benchmarks: what the settings of a survey system hold.
#pragma once

#include <string>
#include <vector>

namespace lum::bench {

/// Doubles with all their digits: positions, depths, angles, a few very large and very small ones.
const std::vector<double>& SurveyNumbers();

/// A number as a file or a user has it, and what it is.
struct NumberText {
  std::string text;
  double value = 0.0;
};

/// Most as "%f" writes them, some shorter, a few with an exponent.
const std::vector<NumberText>& SurveyTexts();

/// The numbers of a list with their shortest texts: three quarters typed in, with up to four digits
/// after the point, the others computed.
const std::vector<NumberText>& ListNumbers();

}  // namespace lum::bench
