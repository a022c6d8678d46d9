// The line on a terminal that tells how far a long run is.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

namespace lum::tool {

/// Shows rate, part done and time left, twice a second, in one line that is wiped out before
/// anything else is written.
class CProgress {
 public:
  /// Shows nothing unless `isShown`.
  CProgress(std::ostream& stream, bool isShown);
  CProgress(const CProgress&) = delete;
  CProgress& operator=(const CProgress&) = delete;
  /// Wipes, whatever the run was ended by.
  ~CProgress() { Wipe(); }

  /// From now on the bytes of another log are taken, of which so many have been already.
  void Begin(std::uint64_t taken);
  /// How many bytes of how many have been taken. Cheap: call it as often as you like.
  void Show(std::uint64_t taken, std::optional<std::uint64_t> size);
  void Wipe();

  /// The line, with so many of the bytes taken in so many seconds:
  /// "45 %, 120.5 MB, 80.3 MB/s, 2 s left".
  static std::string Text(std::uint64_t taken, std::uint64_t takenInTime,
                          std::optional<std::uint64_t> size, double seconds);

 private:
  using Clock = std::chrono::steady_clock;

  std::ostream& m_stream;
  bool m_isShown;
  std::size_t m_width = 0;  ///< Of what is on the screen.
  std::uint64_t m_first = 0;
  std::uint64_t m_nextLook = 0;
  Clock::time_point m_start = Clock::now();
  Clock::time_point m_last = m_start;
};

}  // namespace lum::tool
