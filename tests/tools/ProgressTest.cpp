// The line on a terminal that tells how far a run is.
#include "tools/lumattr/Progress.h"

#include <gtest/gtest.h>

#include <sstream>
#include <thread>

namespace lum::tool {
namespace {

constexpr std::uint64_t kMega = 1'000'000;

std::size_t CountOfBlanksBehind(const std::string& text) {
  return text.size() - 1 - text.find_last_not_of(' ');
}

TEST(Progress, SaysHowFarHowFastAndHowLong) {
  const struct {
    std::uint64_t taken;
    std::uint64_t takenInTime;
    std::optional<std::uint64_t> size;
    double seconds;
    const char* text;
  } rows[] = {
      {45 * kMega, 45 * kMega, 100 * kMega, 1.5, "45 %, 45.0 MB, 30.0 MB/s, 2 s left"},
      {99'999'999, 99'999'999, 100 * kMega, 1.0, "99 %, 100.0 MB, 100.0 MB/s, 1 s left"},
      {100 * kMega, 100 * kMega, 100 * kMega, 2.0, "100 %, 100.0 MB, 50.0 MB/s, 0 s left"},
      {45 * kMega, 45 * kMega, std::nullopt, 1.5, "45.0 MB, 30.0 MB/s"},
      // What was passed over to resume is no work of this run.
      {90 * kMega, 10 * kMega, 100 * kMega, 1.0, "90 %, 90.0 MB, 10.0 MB/s, 1 s left"},
      // The log has grown since.
      {11 * kMega, 11 * kMega, 10 * kMega, 1.0, "11.0 MB, 11.0 MB/s"},
      {0, 0, 0, 0.0, "0.0 MB, 0.0 MB/s"},
      {0, 0, 10 * kMega, 1.0, "0 %, 0.0 MB, 0.0 MB/s"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CProgress::Text(row.taken, row.takenInTime, row.size, row.seconds), row.text);
  }
}

TEST(Progress, ShowsNothingUnlessItIsTo) {
  std::ostringstream stream;
  CProgress progress(stream, false);
  progress.Show(100 * kMega, std::nullopt);
  progress.Wipe();
  EXPECT_EQ(stream.str(), "");
}

TEST(Progress, ShowsNothingOfAShortRun) {
  std::ostringstream stream;
  {
    CProgress progress(stream, true);
    progress.Begin(0);
    progress.Show(100 * kMega, std::nullopt);
  }
  EXPECT_EQ(stream.str(), "");
}

TEST(Progress, CountsEachLogFromItsBeginning) {
  constexpr std::chrono::milliseconds kBetweenLooks{550};
  std::ostringstream stream;
  CProgress progress(stream, true);
  progress.Begin(0);
  std::this_thread::sleep_for(kBetweenLooks);
  progress.Show(100 * kMega, std::nullopt);
  EXPECT_EQ(stream.str().substr(0, 9), "\r100.0 MB");
  progress.Begin(0);
  std::this_thread::sleep_for(kBetweenLooks);
  stream.str("");
  progress.Show(kMega, std::nullopt);
  const std::string shown = stream.str();
  EXPECT_EQ(shown.substr(0, 9), "\r1.0 MB, ");
  // The first line was longer: blanks stand where it was.
  const std::size_t width = shown.size() - 1;
  progress.Wipe();
  EXPECT_EQ(stream.str(),
            shown + "\r" + std::string(width - CountOfBlanksBehind(shown), ' ') + "\r");
}

}  // namespace
}  // namespace lum::tool
