// UpdateFile on a POSIX system: permissions, owners, links, folders and disks that get in
// the way, and processes that are killed meanwhile.
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <string>

#include "tests/platform/ChildProcess.h"
#include "tests/platform/FileUpdateTesting.h"

namespace {

namespace fs = std::filesystem;
using lum::testing::BecomeNobody;
using lum::testing::InChild;
using lum::testing::Mount;

class FileUpdatePosix : public FileUpdateTesting {
 protected:
  static mode_t Mode(const fs::path& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
  }
};

TEST_F(FileUpdatePosix, GivesNewFilesTheUsualPermissions) {
  const mode_t old = ::umask(027);
  EXPECT_TRUE(Write(m_folder.File("new"), "x"));
  ::umask(old);
  EXPECT_EQ(Mode(m_folder.File("new")), 0640u);
}

TEST_F(FileUpdatePosix, KeepsPermissionsAndOwner) {
  const fs::path path = m_folder.File("file");
  for (const mode_t mode : {0600u, 0644u, 0666u, 0755u, 02664u}) {
    WriteBytes(path, "old");
    if (::geteuid() == 0) {
      ASSERT_EQ(::chown(path.c_str(), 65534, 65533), 0);
    }
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    EXPECT_TRUE(Write(path, "new"));
    EXPECT_EQ(Mode(path), mode);
    if (::geteuid() == 0) {
      struct stat status = {};
      ASSERT_EQ(::stat(path.c_str(), &status), 0);
      EXPECT_EQ(status.st_uid, 65534u);
      EXPECT_EQ(status.st_gid, 65533u);
    }
  }
}

TEST_F(FileUpdatePosix, WritesNamesOfAnyLengthTheSystemTakes) {
  EXPECT_TRUE(Write(m_folder.File(std::string(255, 'n')), "1"));
  EXPECT_FALSE(Write(m_folder.File(std::string(256, 'n')), "2"));
  EXPECT_EQ(m_error, L"File name too long");
}

// ---- Links

TEST_F(FileUpdatePosix, WritesThroughSymbolicLinks) {
  fs::create_directory(m_folder.File("sub"));
  WriteBytes(m_folder.File("sub/file"), "old");
  fs::create_symlink("sub/file", m_folder.File("relative"));
  fs::create_symlink(m_folder.File("relative"), m_folder.File("absolute"));
  fs::create_symlink("../relative", m_folder.File("sub/back"));
  for (const char* link : {"relative", "absolute", "sub/back"}) {
    EXPECT_TRUE(Write(m_folder.File(link), link)) << link;
    EXPECT_TRUE(fs::is_symlink(m_folder.File(link))) << link;
    EXPECT_FALSE(fs::is_symlink(m_folder.File("sub/file"))) << link;
    EXPECT_EQ(ReadBytes(m_folder.File("sub/file")), link);
  }
  EXPECT_EQ(m_folder.EntryCount(), 3u);
}

TEST_F(FileUpdatePosix, CreatesTheFileThatADanglingLinkNames) {
  fs::create_symlink("target", m_folder.File("link"));
  EXPECT_TRUE(Write(m_folder.File("link"), "new"));
  EXPECT_TRUE(fs::is_symlink(m_folder.File("link")));
  EXPECT_EQ(ReadBytes(m_folder.File("target")), "new");
  fs::create_symlink("nowhere/target", m_folder.File("lost"));
  EXPECT_FALSE(Write(m_folder.File("lost"), "new"));
  EXPECT_EQ(m_error, L"No such file or directory");
}

TEST_F(FileUpdatePosix, RefusesLinksThatGoRound) {
  fs::create_symlink("b", m_folder.File("a"));
  fs::create_symlink("a", m_folder.File("b"));
  EXPECT_FALSE(Write(m_folder.File("a"), "new"));
  EXPECT_EQ(m_error, L"Too many levels of symbolic links");
  EXPECT_EQ(m_folder.EntryCount(), 2u);
}

// ---- What is not replaced

TEST_F(FileUpdatePosix, RefusesWhatIsNoRegularFile) {
  fs::create_directory(m_folder.File("folder"));
  EXPECT_FALSE(Write(m_folder.File("folder"), "new"));
  EXPECT_EQ(m_error, L"Is a directory");
  EXPECT_FALSE(Write(m_folder.File("folder/"), "new"));
  EXPECT_EQ(m_error, L"Is a directory");
  ASSERT_EQ(::mkfifo(m_folder.File("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(Write(m_folder.File("pipe"), "new"));
  EXPECT_EQ(m_error, L"Not a regular file");
  EXPECT_FALSE(Write("/dev/null", "new"));
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  EXPECT_EQ(m_folder.EntryCount(), 2u);
}

TEST_F(FileUpdatePosix, SaysThatAPathLeadsThroughAFile) {
  WriteBytes(m_folder.File("file"), "old");
  EXPECT_FALSE(Write(m_folder.File("file/inner"), "new"));
  EXPECT_EQ(m_error, L"Not a directory");
}

TEST_F(FileUpdatePosix, LeavesTheOldFileWhenTheFolderIsReadOnly) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  fs::create_directory(m_folder.File("folder"));
  WriteBytes(m_folder.File("folder/file"), "old");
  fs::permissions(m_folder.File("folder/file"), fs::perms(0666));
  fs::permissions(m_folder.File("folder"), fs::perms(0555));
  EXPECT_EQ(InChild([&] {
              if (!BecomeNobody()) {
                return 10;
              }
              if (Write(m_folder.File("folder/file"), "new") || m_error != L"Permission denied") {
                return 1;
              }
              return Write(m_folder.File("folder/other"), "new") ? 2 : 0;
            }),
            0);
  EXPECT_EQ(ReadBytes(m_folder.File("folder/file")), "old");
  fs::permissions(m_folder.File("folder"), fs::perms(0777));
}

TEST_F(FileUpdatePosix, RespectsAWriteProtectedFile) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  WriteBytes(m_folder.File("file"), "old");
  fs::permissions(m_folder.File("file"), fs::perms(0444));
  fs::permissions(m_folder.Path(), fs::perms(0777));
  EXPECT_EQ(InChild([&] {
              if (!BecomeNobody()) {
                return 10;
              }
              return Write(m_folder.File("file"), "new") || m_error != L"Permission denied" ? 1 : 0;
            }),
            0);
  EXPECT_EQ(ReadBytes(m_folder.File("file")), "old");
}

TEST_F(FileUpdatePosix, WritesIntoAFolderThatCannotBeRead) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  fs::create_directory(m_folder.File("folder"));
  fs::permissions(m_folder.Path(), fs::perms(0777));
  fs::permissions(m_folder.File("folder"), fs::perms(0333));
  EXPECT_EQ(
      InChild([&] { return BecomeNobody() && Write(m_folder.File("folder/file"), "new") ? 0 : 1; }),
      0);
  fs::permissions(m_folder.File("folder"), fs::perms(0777));
  EXPECT_EQ(ReadBytes(m_folder.File("folder/file")), "new");
}

// ---- A full disk

bool LimitFileSize(rlim_t bytes) {
  const struct rlimit limit = {bytes, bytes};
  std::signal(SIGXFSZ, SIG_IGN);
  return ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

bool HoldsOldFileOnly(const fs::path& folder) {
  return ReadBytes(folder / "file") == "old" &&
         std::distance(fs::directory_iterator(folder), fs::directory_iterator()) == 1;
}

TEST_F(FileUpdatePosix, LeavesTheOldFileWhenTheDiskIsFull) {
  constexpr int kNoDisk = 20;
  const int result = InChild([&] {
    if (!Mount(m_folder.Path(), "size=64k")) {
      return kNoDisk;
    }
    WriteBytes(m_folder.File("file"), "old");
    if (Write(m_folder.File("file"), std::string(1 << 20, 'x'))) {
      return 1;
    }
    if (m_error != L"No space left on device") {
      return 2;
    }
    return HoldsOldFileOnly(m_folder.Path()) && Write(m_folder.File("file"), "small") ? 0 : 3;
  });
  if (result == kNoDisk) {
    GTEST_SKIP() << "mounting a small disk is not allowed here";
  }
  std::cout << "full disk: a file system of 64 KiB\n";
  EXPECT_EQ(result, 0);
}

TEST_F(FileUpdatePosix, LeavesTheOldFileWhenTheFileMayNotGrow) {
  WriteBytes(m_folder.File("file"), "old");
  EXPECT_EQ(
      InChild([&] {
        if (!LimitFileSize(10000)) {
          return 10;
        }
        // The limit cuts one write short before the next one fails.
        if (Write(m_folder.File("file"), std::string(20000, 'x')) || m_error != L"File too large") {
          return 1;
        }
        return HoldsOldFileOnly(m_folder.Path()) ? 0 : 2;
      }),
      0);
  EXPECT_EQ(ReadBytes(m_folder.File("file")), "old");
}

// ---- A crash

// A writer that is killed at any moment leaves the old content or the new one, whole.
TEST_F(FileUpdatePosix, LeavesAWholeFileWhenKilled) {
  const fs::path path = m_folder.File("file");
  const std::string contents[] = {std::string(300000, 'a'), std::string(200000, 'b')};
  WriteBytes(path, contents[0]);
  for (int round = 0; round < 30; ++round) {
    const pid_t child = ::fork();
    if (child == 0) {
      for (int i = 1;; ++i) {
        Write(path, contents[i % 2]);
      }
    }
    ::usleep(static_cast<useconds_t>(500 + 300 * round));
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    const std::string found = ReadBytes(path);
    EXPECT_TRUE(found == contents[0] || found == contents[1]) << found.size();
  }
}

}  // namespace
