// Reading whole files on a POSIX system: permissions, pipes and devices.
#include <pthread.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include "tests/platform/ChildProcess.h"
#include "tests/platform/FileBytesTesting.h"

namespace {

namespace fs = std::filesystem;

class FileBytesPosix : public FileBytesTesting {};

TEST_F(FileBytesPosix, RefusesFilesWithoutPermission) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  WriteBytes(m_folder.File("file"), "secret");
  fs::permissions(m_folder.File("file"), fs::perms(0));
  fs::permissions(m_folder.Path(), fs::perms(0777));
  EXPECT_EQ(lum::testing::InChild([&] {
              const bool isRefused = lum::testing::BecomeNobody() &&
                                     !Read(m_folder.File("file"), 100) &&
                                     m_error == L"Permission denied" && m_bytes == "untouched";
              return isRefused ? 0 : 1;
            }),
            0);
}

TEST_F(FileBytesPosix, ReadsPipes) {
  const fs::path pipe = m_folder.File("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const std::string bytes(150000, 'p');
  for (const std::size_t limit : {bytes.size(), bytes.size() - 1}) {
    std::thread writer([&] {
      std::ofstream out(pipe, std::ios::binary);
      out << bytes;
    });
    const bool isRead = Read(pipe, limit);
    writer.join();
    EXPECT_EQ(isRead, limit == bytes.size());
    EXPECT_TRUE(m_bytes == (isRead ? bytes : "untouched"));
  }
}

std::atomic<int> signalCount = 0;

TEST_F(FileBytesPosix, ReadsOnAfterASignal) {
  struct sigaction counting = {};
  struct sigaction before = {};
  counting.sa_handler = [](int) { ++signalCount; };
  ASSERT_EQ(::sigaction(SIGUSR1, &counting, &before), 0);
  // A reader that gives up must not end the tests.
  std::signal(SIGPIPE, SIG_IGN);
  const fs::path pipe = m_folder.File("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const pthread_t reader = ::pthread_self();
  std::thread writer([&] {
    std::ofstream out(pipe, std::ios::binary);
    // The first ones may come before the reader waits.
    while (signalCount < 20) {
      ::pthread_kill(reader, SIGUSR1);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    out << "bytes";
  });
  EXPECT_TRUE(Read(pipe, 100));
  writer.join();
  EXPECT_EQ(m_bytes, "bytes");
  std::signal(SIGPIPE, SIG_DFL);
  ASSERT_EQ(::sigaction(SIGUSR1, &before, nullptr), 0);
}

TEST_F(FileBytesPosix, StopsAtTheLimitOfAnEndlessSource) {
  EXPECT_FALSE(Read("/dev/zero", 100000));
  EXPECT_EQ(m_error, L"the file is larger than 100000 bytes");
}

}  // namespace
