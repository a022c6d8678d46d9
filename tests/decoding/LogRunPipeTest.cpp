// Runs over a pipe: an interruption while they wait for its bytes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include "decoding/LogRun.h"
#include "tests/decoding/ProfileTesting.h"

namespace lum::decoding {
namespace {

/// A named pipe with a log that says nothing more until it is interrupted and closed.
class CSilentLog {
 public:
  explicit CSilentLog(std::string_view bytes) {
    if (::mkfifo(Path().c_str(), 0600) != 0) {
      throw std::runtime_error("no named pipe");
    }
    m_writer = std::thread([this, bytes = std::string(bytes)] { Run(bytes); });
  }
  ~CSilentLog() {
    InterruptSoon();
    m_writer.join();
  }
  CSilentLog(const CSilentLog&) = delete;
  CSilentLog& operator=(const CSilentLog&) = delete;

  std::string Path() const { return m_folder.File("log").string(); }
  /// After a time in which the reader has begun to wait; all is the same when it has not.
  void InterruptSoon() {
    m_mayInterrupt = true;
    m_mayInterrupt.notify_all();
  }
  const std::atomic<bool>* Flag() const { return &m_isInterrupted; }

 private:
  void Run(const std::string& bytes) {
    const int pipe = ::open(Path().c_str(), O_WRONLY);
    EXPECT_EQ(::write(pipe, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    m_mayInterrupt.wait(false);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    m_isInterrupted = true;
    ::close(pipe);
  }

  CTemporaryFolder m_folder;
  std::atomic<bool> m_mayInterrupt = false;
  std::atomic<bool> m_isInterrupted = false;
  std::thread m_writer;
};

constexpr const char* kFirstField = "[Message M]\nMatch.FieldCount=1\nA.Formula=field(0)\n";

TEST(LogRunPipe, ALineThatIsNotWholeWhenTheInterruptionComesIsNotTaken) {
  const Profile profile = GoodProfile(kFirstField);
  CSilentLog log("10\n20");
  CLogInput input(log.Path());
  CLogRun run(input, profile, {LogFormat::Plain, 0, log.Flag()});
  ASSERT_TRUE(run.Next());
  log.InterruptSoon();
  EXPECT_FALSE(run.Next());
  EXPECT_EQ(run.Offset(), 3U);
  EXPECT_EQ(run.Counts().lines, 1U);
}

TEST(LogRunPipe, AnInterruptionBeforeThePlaceToResumeFromIsNoEndOfTheLog) {
  const Profile profile = GoodProfile(kFirstField);
  for (const std::uint64_t from : {std::uint64_t{9}, CLogRun::kWarmUpBytes + 9}) {
    CSilentLog log("10\n20\n");
    log.InterruptSoon();
    CLogInput input(log.Path());
    CLogRun run(input, profile, {LogFormat::Plain, from, log.Flag()});
    EXPECT_FALSE(run.Next());
    EXPECT_EQ(run.Offset(), from);
  }
}

}  // namespace
}  // namespace lum::decoding
