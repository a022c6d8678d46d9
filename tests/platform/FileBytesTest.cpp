// Reading whole files: every kind of source, the limit, and the texts of failures.
#include "platform/portable/FileBytes.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/portable/SystemFile.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

#if !defined(_WIN32)
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

using lum::detail::ReadWholeFile;
namespace fs = std::filesystem;

class FileBytes : public testing::Test {
 protected:
  bool Read(const fs::path& path, std::size_t limit) {
    m_bytes = "untouched";
    m_error = L"";
    return ReadWholeFile(PathText(path), limit, m_bytes, m_error);
  }

  CTemporaryFolder m_folder;
  std::string m_bytes;
  CString m_error;
};

TEST_F(FileBytes, ReadsUpToTheLimitAndNoFurther) {
  for (const std::size_t size : {0u, 1u, 1000u, 65535u, 65536u, 65537u, 200000u}) {
    const std::string bytes(size, 'x');
    WriteBytes(m_folder.File("file"), bytes);
    EXPECT_TRUE(Read(m_folder.File("file"), size));
    EXPECT_TRUE(m_bytes == bytes) << size;
    EXPECT_TRUE(Read(m_folder.File("file"), size + 1));
    EXPECT_TRUE(m_bytes == bytes) << size;
    if (size > 0) {
      EXPECT_FALSE(Read(m_folder.File("file"), size - 1));
      EXPECT_EQ(m_bytes, "untouched");
    }
  }
  EXPECT_EQ(m_error, L"the file is larger than 199999 bytes");
}

TEST_F(FileBytes, ReadsNamesBeyondAscii) {
  const fs::path path = m_folder.File("H\xC3\xB6he \xE2\x82\xAC");
  WriteBytes(path, "text");
  EXPECT_TRUE(Read(path, 100));
  EXPECT_EQ(m_bytes, "text");
}

TEST_F(FileBytes, LeavesTheOutputWhenThereIsNoFile) {
  EXPECT_FALSE(Read(m_folder.File("missing"), 100));
  EXPECT_EQ(m_error, L"No such file or directory");
  EXPECT_FALSE(Read("", 100));
  EXPECT_FALSE(Read(m_folder.Path(), 100));
  EXPECT_EQ(m_bytes, "untouched");
  WriteBytes(m_folder.File("file"), "x");
  const CString cut = PathText(m_folder.File("file")) + CString(L"\0x", 2);
  EXPECT_FALSE(ReadWholeFile(cut, 100, m_bytes, m_error));
  EXPECT_EQ(m_bytes, "untouched");
}

TEST_F(FileBytes, NamesSystemErrors) {
  EXPECT_EQ(lum::detail::SystemMessage(ENOENT), L"No such file or directory");
  EXPECT_FALSE(lum::detail::SystemMessage(123456).IsEmpty());
}

#if !defined(_WIN32)

TEST_F(FileBytes, RefusesFolders) {
  EXPECT_FALSE(Read(m_folder.Path(), 100));
  EXPECT_EQ(m_error, L"Is a directory");
}

TEST_F(FileBytes, RefusesFilesWithoutPermission) {
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

TEST_F(FileBytes, ReadsPipes) {
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

TEST_F(FileBytes, StopsAtTheLimitOfAnEndlessSource) {
  EXPECT_FALSE(Read("/dev/zero", 100000));
  EXPECT_EQ(m_error, L"the file is larger than 100000 bytes");
}

#endif

}  // namespace
