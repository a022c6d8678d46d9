// "Did you mean": finds the known word that is nearest to a mistyped one.
#pragma once

#include <optional>
#include <string>

#include "platform/Framework.h"

namespace lum::decoding {

/// Takes candidates one by one and keeps the nearest. Distance counts inserted, removed, replaced
/// and swapped characters; letters that differ in case only count as less than one. A candidate is
/// near when the distance is at most a third of the word's length and at most 3. Words of more than
/// 128 characters have no near misses, so an offer takes bounded time.
class CNearMiss {
 public:
  static constexpr int kMaxLength = 128;
  static constexpr int kMaxDistance = 3;

  explicit CNearMiss(const CString& wanted);

  void Offer(const CString& candidate);
  /// The nearest candidate, the first of several; none when nothing was near.
  const std::optional<CString>& Best() const { return m_best; }
  /// "; did you mean 'Word'?" or the empty text: to be appended to a message.
  std::string Suggestion() const;

 private:
  CString m_wanted;
  CString m_folded;
  int m_bestCost;  ///< Candidates must stay below.
  std::optional<CString> m_best;
};

/// The suggestion for a word among the texts of a range.
template <typename Range>
std::string DidYouMean(const CString& wanted, const Range& candidates) {
  CNearMiss nearMiss(wanted);
  for (const auto& candidate : candidates) {
    nearMiss.Offer(candidate);
  }
  return nearMiss.Suggestion();
}

}  // namespace lum::decoding
