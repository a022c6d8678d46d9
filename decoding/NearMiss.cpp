#include "decoding/NearMiss.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

using DistanceRow = std::array<int, CNearMiss::kMaxLength + 1>;

bool IsSwap(const CString& a, const CString& b, int i, int j) {
  return i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
}

/// Computes one row of the table of distances between the beginnings of `a` and `b`, as far as they
/// can be within the limit: further from the diagonal more characters are missing than that.
/// Returns the row's least number, which no later row falls below by more than a swap.
int NextRow(const CString& a, const CString& b, int i, int limit, const DistanceRow& above2,
            const DistanceRow& above, DistanceRow& row) {
  const auto at = [](int place) { return static_cast<std::size_t>(place); };
  const int first = std::max(i - limit, 1);
  const int last = std::min(i + limit, b.GetLength());
  int least = row[at(first - 1)] = first == 1 ? i : limit + 1;
  for (int j = first; j <= last; ++j) {
    const int replaced = above[at(j - 1)] + (a[i - 1] == b[j - 1] ? 0 : 1);
    int best = std::min({replaced, above[at(j)] + 1, row[at(j - 1)] + 1});
    if (IsSwap(a, b, i, j)) {
      best = std::min(best, above2[at(j - 2)] + 1);
    }
    row[at(j)] = best;
    least = std::min(least, best);
  }
  if (last < b.GetLength()) {
    row[at(last + 1)] = limit + 1;
  }
  return least;
}

/// The edit distance, or any number above `limit` as soon as it is known to be. The lengths may not
/// differ by more than the limit.
int Distance(const CString& a, const CString& b, int limit) {
  std::array<DistanceRow, 3> rows;
  for (int j = 0; j <= std::min(b.GetLength(), limit + 1); ++j) {
    rows[0][static_cast<std::size_t>(j)] = j;
  }
  rows[2] = rows[0];
  int leastAbove = 0;
  for (int i = 1; i <= a.GetLength(); ++i) {
    const auto at = [i](int back) { return static_cast<std::size_t>((i - back + 3) % 3); };
    const int least = NextRow(a, b, i, limit, rows[at(2)], rows[at(1)], rows[at(0)]);
    if (std::min(least, leastAbove) > limit) {
      return limit + 1;
    }
    leastAbove = least;
  }
  return rows[static_cast<std::size_t>(a.GetLength() % 3)][static_cast<std::size_t>(b.GetLength())];
}

}  // namespace

// Costs are twice the distance, plus one where only folding made it equal: "unit" is nearer to
// "Unit" than to "unix", and "unit" itself is nearer still.
CNearMiss::CNearMiss(const CString& wanted)
    : m_wanted(wanted),
      m_folded(Folded(wanted)),
      m_bestCost(2 * std::min(kMaxDistance, wanted.GetLength() / 3) + 2) {}

void CNearMiss::Offer(const CString& candidate) {
  const int limit = (m_bestCost - 1) / 2;
  if (candidate.IsEmpty() || candidate.GetLength() > kMaxLength ||
      m_wanted.GetLength() > kMaxLength ||
      std::abs(candidate.GetLength() - m_wanted.GetLength()) > limit) {
    return;
  }
  const int folded = Distance(m_folded, Folded(candidate), limit);
  if (folded > limit) {
    return;
  }
  const bool sameCase = Distance(m_wanted, candidate, limit) == folded;
  const int cost = 2 * folded + (sameCase ? 0 : 1);
  if (cost < m_bestCost) {
    m_bestCost = cost;
    m_best = candidate;
  }
}

std::string CNearMiss::Suggestion() const {
  return m_best ? "; did you mean " + Quoted(*m_best) + "?" : std::string();
}

}  // namespace lum::decoding
