// Reading whole files on a POSIX system: permissions, pipes and devices.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>

#include "tests/platform/FileBytesTesting.h"

namespace {

namespace fs = std::filesystem;

class FileBytesPosix : public FileBytesTesting {};

TEST_F(FileBytesPosix, RefusesFilesWithoutPermission) {
  WriteBytes(m_folder.File("file"), "secret");
  fs::permissions(m_folder.File("file"), fs::perms(0));
  fs::permissions(m_folder.Path(), fs::perms(0777));
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isOrdinary = ::geteuid() != 0 || ::setuid(65534) == 0;
    const bool isRefused =
        !Read(m_folder.File("file"), 100) && m_error == L"Permission denied" && !m_bytes.empty();
    ::_exit(isOrdinary && isRefused ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
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

TEST_F(FileBytesPosix, StopsAtTheLimitOfAnEndlessSource) {
  EXPECT_FALSE(Read("/dev/zero", 100000));
  EXPECT_EQ(m_error, L"the file is larger than 100000 bytes");
}

}  // namespace
