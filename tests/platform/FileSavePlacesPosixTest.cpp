// FileObject::Save where something about the place is special: links, permissions, owners, file
// systems, limits, and who else holds the lock.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <string>

#include "tests/platform/ChildProcess.h"
#include "tests/platform/FaultyCalls.h"
#include "tests/platform/FileObjectTesting.h"
#include "tests/platform/FileSavingTesting.h"

namespace {

namespace fs = std::filesystem;
using lum::testing::BecomeNobody;
using lum::testing::CFaultyCalls;
using lum::testing::CSituated;
using lum::testing::InChild;
using lum::testing::kNobody;
using lum::testing::kSituations;
using lum::testing::Mount;

constexpr int kNotAllowedHere = 20;

class FileSavePlaces : public FileObjectTesting {
 protected:
  bool Save(const fs::path& path, const CString& value, const FileSaveOptions& options = {}) {
    FileObject file;
    file.SetItem(L"S", L"a", value, true);
    const bool isSaved = file.Save(PathText(path), options);
    m_error = file.LastError();
    return isSaved;
  }
  bool FailsWith(const wchar_t* reason) const { return m_error.Find(reason) >= 0; }

  static bool HoldsOld(const fs::path& path) { return ReadBytes(path) == "[S]\na=old\n"; }
  static bool HoldsNew(const fs::path& path) { return ReadBytes(path) == "[S]\na=new\n"; }
  static void WriteOld(const fs::path& path) { WriteBytes(path, "[S]\na=old\n"); }

  static struct stat Status(const fs::path& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status;
  }

  CString m_error;
};

// ---- Links

TEST_F(FileSavePlaces, AreFoundThroughChainsOfLinks) {
  fs::create_directories(m_folder.File("a/b"));
  WriteOld(m_folder.File("a/b/file"));
  fs::create_symlink("b/file", m_folder.File("a/relative"));
  fs::create_symlink(m_folder.File("a/relative"), m_folder.File("absolute"));
  fs::create_symlink("../../absolute", m_folder.File("a/b/up"));
  fs::create_directory_symlink("a/b", m_folder.File("folder"));
  for (const char* path : {"a/relative", "absolute", "a/b/up", "folder/file", "folder/up"}) {
    WriteOld(m_folder.File("a/b/file"));
    EXPECT_TRUE(Save(m_folder.File(path), L"new", {FileConflict::Merge, 1})) << path;
    EXPECT_TRUE(HoldsNew(m_folder.File("a/b/file"))) << path;
    EXPECT_TRUE(HoldsOld(m_folder.File("a/b/file.bak1"))) << path;
  }
  EXPECT_TRUE(fs::is_symlink(m_folder.File("a/relative")));
  EXPECT_TRUE(fs::is_symlink(m_folder.File("absolute")));
  EXPECT_TRUE(fs::is_symlink(m_folder.File("a/b/up")));
  EXPECT_TRUE(fs::is_symlink(m_folder.File("folder")));
}

TEST_F(FileSavePlaces, MayBeNamedByALinkToNothing) {
  fs::create_symlink("target", m_folder.File("link"));
  EXPECT_TRUE(Save(m_folder.File("link"), L"new"));
  EXPECT_TRUE(fs::is_symlink(m_folder.File("link")));
  EXPECT_TRUE(HoldsNew(m_folder.File("target")));
  fs::create_symlink("nowhere/target", m_folder.File("lost"));
  EXPECT_FALSE(Save(m_folder.File("lost"), L"new"));
  EXPECT_TRUE(FailsWith(L"No such file or directory"));
  fs::create_symlink("self", m_folder.File("self"));
  EXPECT_FALSE(Save(m_folder.File("self"), L"new"));
  EXPECT_TRUE(FailsWith(L"Too many levels of symbolic links"));
  FileObject file;
  EXPECT_FALSE(file.Load(PathText(m_folder.File("self"))));
  EXPECT_GE(file.LastError().Find(L"Too many levels of symbolic links"), 0);
}

// A save could not tell that it replaces this very file.
TEST_F(FileSavePlaces, AreNotLoadedFromAFolderThatIsGone) {
  fs::create_directory(m_folder.File("folder"));
  WriteOld(m_folder.File("folder/file"));
  const int descriptor = ::open(m_folder.File("folder/file").c_str(), O_RDONLY);
  const fs::path path = "/proc/self/fd/" + std::to_string(descriptor);
  if (!fs::exists(path)) {
    ::close(descriptor);
    GTEST_SKIP() << "needs /proc, which names open files";
  }
  EXPECT_TRUE(FileObject().Load(PathText(path)));
  fs::remove_all(m_folder.File("folder"));
  FileObject file;
  EXPECT_FALSE(file.Load(PathText(path)));
  EXPECT_GE(file.LastError().Find(L"its folder cannot be examined"), 0);
  EXPECT_TRUE(file.SectionNames().empty());
  ::close(descriptor);
}

TEST_F(FileSavePlaces, AreRegularFilesOnly) {
  fs::create_directory(m_folder.File("folder"));
  ASSERT_EQ(::mkfifo(m_folder.File("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(Save(m_folder.File("folder"), L"new"));
  EXPECT_TRUE(FailsWith(L"Is a directory"));
  EXPECT_FALSE(Save(m_folder.File("pipe"), L"new", {FileConflict::Overwrite}));
  EXPECT_TRUE(FailsWith(L"Not a regular file"));
  EXPECT_FALSE(Save("/dev/null", L"new", {FileConflict::Overwrite, 3}));
  EXPECT_TRUE(FailsWith(L"Not a regular file"));
  EXPECT_TRUE(fs::is_fifo(m_folder.File("pipe")));
  EXPECT_EQ(m_folder.EntryCount(), 2u);
}

// ---- Permissions and owners

TEST_F(FileSavePlaces, KeepAllPermissionBits) {
  const fs::path path = m_folder.File("file");
  for (const mode_t mode : {0600u, 0640u, 0666u, 0755u, 04755u, 02775u, 06711u, 01644u, 0200u}) {
    WriteOld(path);
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    EXPECT_TRUE(Save(path, L"new")) << mode;
    EXPECT_EQ(Status(path).st_mode & 07777, mode);
    fs::permissions(path, fs::perms(0600));
    EXPECT_TRUE(HoldsNew(path));
  }
}

// What ran with the rights of the owner or the group must not run with those of another.
TEST_F(FileSavePlaces, LoseTheBitsThatLendRightsWithTheirOwner) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs the superuser, who makes files of several owners";
  }
  const fs::path path = m_folder.File("file");
  WriteOld(path);
  ASSERT_EQ(::chown(path.c_str(), 1234, 1234), 0);
  ASSERT_EQ(::chmod(path.c_str(), 06666), 0);
  fs::permissions(m_folder.Path(), fs::perms(0777));
  EXPECT_EQ(InChild([&] { return BecomeNobody() && Save(path, L"new") ? 0 : 1; }), 0);
  EXPECT_TRUE(HoldsNew(path));
  EXPECT_EQ(Status(path).st_uid, kNobody) << "the owner is kept only as far as that is allowed";
  EXPECT_EQ(Status(path).st_mode & 07777, 0666u);
}

TEST_F(FileSavePlaces, KeepOwnerAndGroupWhereAllowed) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs the superuser, who gives files away";
  }
  const fs::path path = m_folder.File("file");
  WriteOld(path);
  ASSERT_EQ(::chown(path.c_str(), 1234, 4321), 0);
  EXPECT_TRUE(Save(path, L"new", {FileConflict::Merge, 1}));
  EXPECT_EQ(Status(path).st_uid, 1234u);
  EXPECT_EQ(Status(path).st_gid, 4321u);
}

TEST_F(FileSavePlaces, AreLeftAloneInAReadOnlyFolder) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  fs::create_directory(m_folder.File("folder"));
  const fs::path path = m_folder.File("folder/file");
  WriteOld(path);
  fs::permissions(path, fs::perms(0666));
  fs::permissions(m_folder.Path(), fs::perms(0755));
  fs::permissions(m_folder.File("folder"), fs::perms(0555));
  EXPECT_EQ(InChild([&] {
              return !BecomeNobody() || Save(path, L"new", {FileConflict::Merge, 2}) ||
                     !FailsWith(L"Permission denied");
            }),
            0);
  fs::permissions(m_folder.File("folder"), fs::perms(0755));
  EXPECT_TRUE(HoldsOld(path));
}

// In a sticky folder only owners rename: the file of another can be written, but not replaced.
TEST_F(FileSavePlaces, AreLeftAloneWhenAnotherOwnsThemInAStickyFolder) {
  if (!lum::testing::NobodyReachesTemporaryFiles()) {
    GTEST_SKIP() << lum::testing::kOutOfReach;
  }
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs the superuser, who makes files of several owners";
  }
  const fs::path path = m_folder.File("file");
  WriteOld(path);
  fs::permissions(path, fs::perms(0666));
  fs::permissions(m_folder.Path(), fs::perms(01777));
  EXPECT_EQ(InChild([&] {
              return !BecomeNobody() || Save(path, L"new") ||
                     !FailsWith(L"Operation not permitted");
            }),
            0);
  EXPECT_TRUE(HoldsOld(path));
  EXPECT_EQ(m_folder.EntryCount(), 1u);
}

// ---- File systems

std::size_t EntriesOf(const fs::path& folder) {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST_F(FileSavePlaces, AreLeftAloneOnAReadOnlyFileSystem) {
  const fs::path path = m_folder.File("file");
  const int result = InChild([&] {
    if (!Mount(m_folder.Path(), "size=64k")) {
      return kNotAllowedHere;
    }
    WriteOld(path);
    if (::mount(nullptr, m_folder.Path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
      return kNotAllowedHere;
    }
    if (Save(path, L"new") || !FailsWith(L"Read-only file system")) {
      return 1;
    }
    if (Save(m_folder.File("other"), L"new") || !FailsWith(L"Read-only file system")) {
      return 2;
    }
    return HoldsOld(path) ? 0 : 3;
  });
  if (result == kNotAllowedHere) {
    GTEST_SKIP() << "mounting a file system is not allowed here";
  }
  EXPECT_EQ(result, 0);
}

// A merged save with versions on a disk that has no room for it leaves everything as it was; with
// room again, the same object saves.
TEST_F(FileSavePlaces, AreLeftAloneOnAFullDisk) {
  const fs::path path = m_folder.File("file");
  const int result = InChild([&] {
    if (!Mount(m_folder.Path(), "size=16k")) {
      return kNotAllowedHere;
    }
    WriteBytes(path, "[S]\na=1\n");
    FileObject file;
    file.Load(PathText(path));
    file.SetItem(L"S", L"mine", L"1", true);
    WriteBytes(path, "[S]\na=1\ntheirs=1\n");
    WriteBytes(m_folder.File("file.bak1"), "[S]\na=0\n");
    const fs::path filler = m_folder.File("filler");
    std::ofstream(filler) << std::string(1 << 20, 'x');
    const std::size_t entries = EntriesOf(m_folder.Path());
    for (int round = 0; round < 5; ++round) {
      if (file.Save(PathText(path), {FileConflict::Merge, 2}) ||
          file.LastError().Find(L"No space left on device") < 0 ||
          ReadBytes(path) != "[S]\na=1\ntheirs=1\n" ||
          ReadBytes(m_folder.File("file.bak1")) != "[S]\na=0\n" ||
          EntriesOf(m_folder.Path()) != entries || file.ItemCount(L"S") != 2) {
        return 1;
      }
    }
    fs::remove(filler);
    return file.Save(PathText(path), {FileConflict::Merge, 2}) &&
                   file.LastSave() == FileSaveResult::Merged &&
                   ReadBytes(path) == "[S]\na=1\ntheirs=1\nmine=1\n" &&
                   ReadBytes(m_folder.File("file.bak2")) == "[S]\na=0\n"
               ? 0
               : 2;
  });
  if (result == kNotAllowedHere) {
    GTEST_SKIP() << "mounting a small disk is not allowed here";
  }
  EXPECT_EQ(result, 0);
}

// ---- Limits

// With every number of descriptors left, a save works or changes nothing, and says why.
TEST_F(FileSavePlaces, AreWholeWhenFilesCannotBeOpened) {
#if defined(LUM_SANITIZED)
  GTEST_SKIP() << "the sanitizers themselves need descriptors to look at an object";
#endif
  constexpr int kRefused = 11;
  const fs::path path = m_folder.File("file");
  int works = 0;
  for (rlim_t spare = 0; spare < 8; ++spare) {
    WriteOld(path);
    const int result = InChild([&] {
      const int next = ::open("/dev/null", O_RDONLY);
      struct rlimit limit = {};
      ::getrlimit(RLIMIT_NOFILE, &limit);
      // The whole run may have few descriptors already.
      limit.rlim_cur = std::min(limit.rlim_cur, static_cast<rlim_t>(next) + spare);
      ::close(next);
      if (::setrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return 3;
      }
      if (Save(path, L"new", {FileConflict::Merge, 1})) {
        return 0;
      }
      return FailsWith(L"Too many open files") ? kRefused : 2;
    });
    ASSERT_TRUE(result == 0 || result == kRefused) << spare << " " << result;
    EXPECT_TRUE(result == 0 ? HoldsNew(path) : HoldsOld(path)) << spare;
    EXPECT_EQ(m_folder.EntryCount(), result == 0 ? 2u : 1u) << spare;
    fs::remove(m_folder.File("file.bak1"));
    works += result == 0 ? 1 : 0;
  }
  EXPECT_GT(works, 0);
  EXPECT_LT(works, 8);
}

// ---- Another holds the lock

class CLockHolder {
 public:
  explicit CLockHolder(const fs::path& path) {
    int ready[2] = {};
    EXPECT_EQ(::pipe(ready), 0);
    m_child = ::fork();
    if (m_child == 0) {
      const int file = ::open(path.c_str(), O_RDONLY);
      const char locked = ::flock(file, LOCK_EX) == 0 ? 'y' : 'n';
      if (::write(ready[1], &locked, 1) == 1) {
        ::pause();
      }
      ::_exit(0);
    }
    char locked = 'n';
    EXPECT_EQ(::read(ready[0], &locked, 1), 1);
    EXPECT_EQ(locked, 'y');
    ::close(ready[0]);
    ::close(ready[1]);
  }
  CLockHolder(const CLockHolder&) = delete;
  CLockHolder& operator=(const CLockHolder&) = delete;
  ~CLockHolder() { Kill(); }

  void Stop() const {
    ::kill(m_child, SIGSTOP);
    int status = 0;
    EXPECT_EQ(::waitpid(m_child, &status, WUNTRACED), m_child);
    EXPECT_TRUE(WIFSTOPPED(status));
  }

  void Kill() {
    if (m_child > 0) {
      ::kill(m_child, SIGKILL);
      ::waitpid(m_child, nullptr, 0);
      m_child = -1;
    }
  }

 private:
  pid_t m_child = -1;
};

TEST(FileLockHolders, AreWaitedForUntilTheyEnd) {
  CSituated situated(kSituations[0]);
  CLockHolder holder(situated.Target());
  CFaultyCalls calls;
  calls.onPause = [&] {
    if (calls.Paused() > 1000) {
      holder.Kill();
    }
  };
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
  EXPECT_GT(calls.Paused(), 1000);
  EXPECT_LT(calls.Paused(), 1100);
  EXPECT_EQ(situated.Content(), situated.NewContent());
}

TEST(FileLockHolders, ThatAreStoppedAreGivenUpAfterTenSeconds) {
  CSituated situated(kSituations[0]);
  CLockHolder holder(situated.Target());
  holder.Stop();
  CFaultyCalls calls;
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Failed);
  EXPECT_EQ(situated.saved.error, L"another program is saving it");
  EXPECT_GE(calls.Paused(), 9500);
  EXPECT_EQ(situated.Content(), situated.OldContent());
  holder.Kill();
  CFaultyCalls freed;
  EXPECT_EQ(situated.Save(freed), FileSaveResult::Saved);
  EXPECT_EQ(freed.Paused(), 0);
}

}  // namespace
