#include "decoding/ProfileFaults.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "decoding/NearMiss.h"
#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

bool IsBlankOfValue(char ch) { return ch == ' ' || ch == '\t'; }

}  // namespace

int CharacterCount(std::string_view text) {
  return static_cast<int>(text.size()) -
         static_cast<int>(std::count_if(text.begin(), text.end(), IsContinuation));
}

std::string Nearest(std::string_view text, std::span<const std::string_view> known) {
  CNearMiss nearMiss(FromUtf8(text));
  for (const std::string_view word : known) {
    nearMiss.Offer(FromUtf8(word));
  }
  return nearMiss.Best() ? ToUtf8(*nearMiss.Best()) : std::string();
}

PlacedText PlacedText::From(std::size_t bytes) const {
  return {text.substr(bytes), line, column + CharacterCount(text.substr(0, bytes))};
}

PlacedText PlacedText::WithoutBlanks() const {
  const auto first = std::find_if_not(text.begin(), text.end(), IsBlankOfValue);
  PlacedText trimmed = From(static_cast<std::size_t>(first - text.begin()));
  while (!trimmed.text.empty() && IsBlankOfValue(trimmed.text.back())) {
    trimmed.text.remove_suffix(1);
  }
  return trimmed;
}

void CProfileFaults::Add(const PlacedText& place, std::string found, std::string expected,
                         std::string suggestion) {
  if (IsFull()) {
    CutOff();
    return;
  }
  m_faults.push_back(
      {place.line, place.column, std::move(found), std::move(expected), std::move(suggestion)});
}

void CProfileFaults::Finish() {
  std::stable_sort(m_faults.begin(), m_faults.end(),
                   [](const ProfileFault& a, const ProfileFault& b) {
                     return std::tie(a.line, a.column) < std::tie(b.line, b.column);
                   });
  if (m_isCut) {
    ProfileFault& last = m_faults.back();
    last = {last.line, last.column, "too many faults; what follows was not checked", "", ""};
  }
}

}  // namespace lum::decoding
