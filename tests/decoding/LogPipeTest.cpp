// Logs from standard input, a pipe that is written meanwhile: lines come at once, and memory stays
// what it was however long a line or a log is.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <random>
#include <string>
#include <thread>

#include "decoding/DecodingError.h"
#include "decoding/LineReader.h"
#include "decoding/LogReader.h"
#include "tests/Allocations.h"
#include "tests/TemporaryFolder.h"
#include "tests/decoding/LogFiles.h"

using lum::decoding::CLineReader;
using lum::decoding::CLogInput;
using lum::decoding::kMaxLogLine;
using lum::decoding::LineProblem;
using lum::decoding::LogFormat;
using lum::decoding::LogLine;
using lum::decoding::LogRecord;
using lum::test::Gzip;

namespace {

/// A pipe in place of standard input for the time of a test.
class CStandardInputPipe {
 public:
  CStandardInputPipe() : m_saved(::dup(STDIN_FILENO)) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) {
      throw std::runtime_error("no pipe");
    }
    ::dup2(ends[0], STDIN_FILENO);
    ::close(ends[0]);
    m_writing = ends[1];
  }
  ~CStandardInputPipe() {
    Close();
    ::dup2(m_saved, STDIN_FILENO);
    ::close(m_saved);
  }
  CStandardInputPipe(const CStandardInputPipe&) = delete;
  CStandardInputPipe& operator=(const CStandardInputPipe&) = delete;

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = ::write(m_writing, bytes.data(), bytes.size());
      ASSERT_GT(count, 0);
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  void Close() {
    if (m_writing != -1) {
      ::close(m_writing);
    }
    m_writing = -1;
  }

 private:
  int m_saved;
  int m_writing = -1;
};

constexpr int kInterruptions = 10'000;

// A signal's handler can reach nothing else.
std::atomic<bool> g_flag = false;
std::atomic<int> g_signals = 0;
std::atomic<long> g_moment = 0;

long Nanoseconds() {
  std::timespec now = {};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1'000'000'000 + now.tv_nsec;
}

/// For its lifetime SIGUSR1 sets a flag, and ends waits.
class CFlagBySignal {
 public:
  CFlagBySignal() {
    Reset();
    struct sigaction action = {};
    action.sa_handler = [](int) {
      g_flag.store(true);
      g_moment.store(Nanoseconds());
      ++g_signals;
    };
    ::sigaction(SIGUSR1, &action, &m_before);
  }
  ~CFlagBySignal() { ::sigaction(SIGUSR1, &m_before, nullptr); }
  CFlagBySignal(const CFlagBySignal&) = delete;
  CFlagBySignal& operator=(const CFlagBySignal&) = delete;

  static const std::atomic<bool>& Get() { return g_flag; }
  static int Count() { return g_signals; }
  /// When the last signal came.
  static long Moment() { return g_moment; }
  static void Reset() {
    g_flag.store(false);
    g_signals.store(0);
  }

 private:
  struct sigaction m_before = {};
};

/// Sends the signal to this thread after some time, and again when that was missed.
class CInterrupter {
 public:
  CInterrupter() {
    sigevent event = {};
    event.sigev_notify = SIGEV_THREAD_ID;  // Whatever other threads there are.
    event._sigev_un._tid = ::gettid();
    event.sigev_signo = SIGUSR1;
    if (::timer_create(CLOCK_MONOTONIC, &event, &m_timer) != 0) {
      throw std::runtime_error("no timer");
    }
  }
  ~CInterrupter() { ::timer_delete(m_timer); }
  CInterrupter(const CInterrupter&) = delete;
  CInterrupter& operator=(const CInterrupter&) = delete;

  void Begin(long nanoseconds) {
    itimerspec times = {};
    times.it_value.tv_nsec = nanoseconds;
    times.it_interval.tv_sec = kSecondsToNextSignal;
    ::timer_settime(m_timer, 0, &times, nullptr);
  }

 private:
  static constexpr long kSecondsToNextSignal = 5;

  timer_t m_timer = {};
};

}  // namespace

TEST(LogPipe, LinesComeAsSoonAsTheyAreWhole) {
  CStandardInputPipe pipe;
  CLogInput input("-");
  CLineReader reader(input);
  LogLine line;
  pipe.Write("first\nsec");
  ASSERT_TRUE(reader.Next(line));
  EXPECT_EQ(line.text, "first");
  EXPECT_FALSE(reader.HasBuffered());
  pipe.Write("ond\nthird\n");
  ASSERT_TRUE(reader.Next(line));
  EXPECT_EQ(line.text, "second");
  EXPECT_TRUE(reader.HasBuffered());
  ASSERT_TRUE(reader.Next(line));
  EXPECT_EQ(line.text, "third");
  pipe.Close();
  EXPECT_FALSE(reader.Next(line));
  EXPECT_EQ(input.Size(), std::nullopt);
}

TEST(LogPipe, AFirstByteAloneIsDelivered) {
  CStandardInputPipe pipe;
  CLogInput input("-");
  char byte = 0;
  pipe.Write("a");
  EXPECT_EQ(input.Read(&byte, 1), 1U);
  EXPECT_EQ(byte, 'a');
}

TEST(LogPipe, CompressedBytesAreRecognisedOneByOne) {
  CStandardInputPipe pipe;
  const std::string whole = Gzip("one\ntwo\n");
  std::thread writer([&] {
    for (const char byte : whole) {
      pipe.Write({&byte, 1});
    }
    pipe.Close();
  });
  CLogInput input("-");
  std::string all;
  lum::test::ReadAll(input, all);
  writer.join();
  EXPECT_EQ(all, "one\ntwo\n");
  EXPECT_TRUE(input.IsCompressed());
}

TEST(LogPipe, AnInterruptionAtAnyMomentEndsAWait) {
  CStandardInputPipe pipe;
  const CFlagBySignal flag;
  CLogInput input("-");
  input.EndWhen(flag.Get());
  // The first two bytes tell whether the log is compressed.
  std::string bytes(2, '\0');
  pipe.Write("ab");
  ASSERT_EQ(input.Read(bytes.data(), 2), 2U);
  // The delay follows the moments at which signals came, so that most of them come near the
  // beginning of the wait.
  long delay = 1000;
  std::mt19937 random(31);
  CInterrupter interrupter;
  for (int round = 0; round < kInterruptions; ++round) {
    flag.Reset();
    interrupter.Begin(delay);
    const long begin = Nanoseconds();
    const std::size_t count = input.Read(bytes.data(), 1);
    ASSERT_EQ(count, 0U);
    ASSERT_EQ(flag.Count(), 1) << "the wait of round " << round << " missed a signal";
    const long wanted = begin + static_cast<long>(random() % 1000);
    delay = std::clamp(delay + (wanted - flag.Moment()) / 8, 1L, 100'000L);
  }
}

TEST(LogPipe, ANamedPipeWithoutAWriterCanBeInterrupted) {
  const CTemporaryFolder folder;
  const std::string path = folder.File("fifo").string();
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const CFlagBySignal flag;
  CLogInput input(path);
  input.EndWhen(flag.Get());
  ::raise(SIGUSR1);
  char byte = 0;
  EXPECT_EQ(input.Read(&byte, 1), 0U);
}

TEST(LogPipe, ANamedPipeWaitsForItsWriter) {
  const CTemporaryFolder folder;
  const std::string path = folder.File("fifo").string();
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  CLogInput input(path);
  std::thread writer([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    WriteBytes(path, "one\ntwo\n");
  });
  std::string all;
  lum::test::ReadAll(input, all);
  writer.join();
  EXPECT_EQ(all, "one\ntwo\n");
}

TEST(LogPipe, BytesOfAPipeThatDoesNotWaitAreWaitedFor) {
  CStandardInputPipe pipe;
  ::fcntl(STDIN_FILENO, F_SETFL, ::fcntl(STDIN_FILENO, F_GETFL) | O_NONBLOCK);
  CLogInput input("-");
  std::thread writer([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    pipe.Write("late\n");
    pipe.Close();
  });
  std::string all;
  lum::test::ReadAll(input, all);
  writer.join();
  EXPECT_EQ(all, "late\n");
}

TEST(LogPipe, SaysThatStandardInputIsClosed) {
  CStandardInputPipe pipe;
  ::close(STDIN_FILENO);
  CLogInput closed("-");
  char byte = 0;
  try {
    closed.Read(&byte, 1);
    FAIL() << "it was read";
  } catch (const lum::decoding::DecodingError& error) {
    EXPECT_STREQ(error.what(), "cannot read standard input at byte 0: Bad file descriptor");
  }
}

TEST(LogPipe, ALineOfAHundredMegabytesTakesNoMemory) {
  CStandardInputPipe pipe;
  std::thread writer([&] {
    const std::string block(1'000'000, 'x');
    for (int i = 0; i < 100; ++i) {
      pipe.Write(block);
    }
    pipe.Write("\nnext\n");
    pipe.Close();
  });
  CLogInput input("-");
  CLineReader reader(input);
  LogLine line;
  const int before = CountedAllocations();
  ASSERT_TRUE(reader.Next(line));
  EXPECT_EQ(line.text.size(), kMaxLogLine);
  EXPECT_TRUE(line.isTooLong);
  EXPECT_EQ(line.end, 100'000'001U);
  ASSERT_TRUE(reader.Next(line));
  EXPECT_EQ(line.text, "next");
  EXPECT_EQ(line.offset, 100'000'001U);
  EXPECT_EQ(line.number, 2U);
  writer.join();
  // The writer's block, and what a thread needs.
  EXPECT_LE(CountedAllocations() - before, 4);
}

TEST(LogPipe, ReadersAllocateNothingForFurtherLines) {
  const struct {
    LogFormat format;
    std::vector<std::string> lines;
  } rows[] = {
      {LogFormat::Candump, {"(1.5) can0 123#1122", "can0  123   [2]  11 22", "can0 123#1", ""}},
      {LogFormat::J1939,
       {"can0 18ECFF00#20090002FFEBFE00", "can0 18EBFF00#0101020304050607",
        "can0 18EBFF00#020809FFFFFFFFFF", "can0 18ECFF00#20090002FFEBFE00"}},
      {LogFormat::Nmea, {"$GPHDT,1*52", "$GPHDT,1*53", "(1.5) $GPHDT,1*52"}},
      {LogFormat::Csv, {"1,2,3", R"("a ""b""",c)", R"("a)"}},
      {LogFormat::Plain, {"1 2 3", "(1.5) a", "#"}},
  };
  for (const auto& row : rows) {
    const auto reader = lum::decoding::MakeLogReader(row.format, {});
    LogRecord record;
    LineProblem problem;
    LogLine line;
    int before = 0;
    for (int round = 0; round < 100; ++round) {
      before = round == 1 ? CountedAllocations() : before;
      for (const std::string& text : row.lines) {
        line.text = text;
        reader->Take(line, record, problem);
      }
    }
    EXPECT_EQ(CountedAllocations(), before) << lum::decoding::LogFormatName(row.format);
  }
}
