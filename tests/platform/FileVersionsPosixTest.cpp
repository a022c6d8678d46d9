// Previous versions: how many are kept, what stands in their way, and that none is lost.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "platform/FileObject.h"
#include "platform/portable/SystemFile.h"
#include "tests/platform/FaultyCalls.h"
#include "tests/platform/FileObjectTesting.h"
#include "tests/platform/FileSavingTesting.h"

namespace {

namespace fs = std::filesystem;
using lum::testing::CFaultyCalls;
using lum::testing::CSavedDocument;
using lum::testing::CSituated;

class FileVersions : public FileObjectTesting {
 protected:
  fs::path File() const { return m_folder.File("file.cfg"); }
  fs::path Version(int number) const {
    return m_folder.File("file.cfg.bak" + std::to_string(number));
  }

  static std::string Bytes(int count) { return "[S]\ncount=" + std::to_string(count) + "\n"; }

  bool SaveCount(int count, int versions) {
    FileObject file;
    CString value;
    value.Format(L"%d", count);
    file.SetItem(L"S", L"count", value, true);
    const bool isSaved = file.Save(PathText(File()), {FileConflict::Merge, versions});
    m_error = file.LastError();
    return isSaved;
  }

  // The counts of the file and of its versions, the newest first.
  std::string Counts() const {
    std::string counts = CountIn(File());
    for (const FileVersion& version : FileObject::PreviousVersions(PathText(File()))) {
      EXPECT_EQ(version.path, PathText(Version(version.number)));
      counts += " " + std::to_string(version.number) + ":" + CountIn(Version(version.number));
    }
    return counts;
  }

  static std::string CountIn(const fs::path& path) {
    const std::string bytes = ReadBytes(path);
    const std::string begin = "[S]\ncount=";
    EXPECT_TRUE(bytes.starts_with(begin) && bytes.ends_with("\n")) << bytes;
    return bytes.substr(begin.size(), bytes.size() - begin.size() - 1);
  }

  CString m_error;
};

TEST_F(FileVersions, AreAsManyAsAreWanted) {
  EXPECT_TRUE(SaveCount(1, 3));
  EXPECT_EQ(Counts(), "1");
  EXPECT_TRUE(SaveCount(2, 0));
  EXPECT_EQ(Counts(), "2");
  EXPECT_TRUE(SaveCount(3, 3));
  EXPECT_EQ(Counts(), "3 1:2");
  EXPECT_TRUE(SaveCount(4, 3));
  EXPECT_TRUE(SaveCount(5, 3));
  EXPECT_EQ(Counts(), "5 1:4 2:3 3:2");
  EXPECT_TRUE(SaveCount(6, 3));
  EXPECT_EQ(Counts(), "6 1:5 2:4 3:3");
  EXPECT_TRUE(SaveCount(7, 1)) << "fewer from now on";
  EXPECT_EQ(Counts(), "7 1:6");
  EXPECT_TRUE(SaveCount(8, 0)) << "none is added, none goes";
  EXPECT_EQ(Counts(), "8 1:6");
  EXPECT_TRUE(SaveCount(9, -1));
  EXPECT_EQ(Counts(), "9 1:6");
  EXPECT_TRUE(SaveCount(9, 2)) << "the same content is a version, too";
  EXPECT_EQ(Counts(), "9 1:9 2:6");
}

TEST_F(FileVersions, AreNinetyNineAtMost) {
  for (int count = 1; count <= 105; ++count) {
    ASSERT_TRUE(SaveCount(count, 1000));
  }
  const std::vector<FileVersion> versions = FileObject::PreviousVersions(PathText(File()));
  ASSERT_EQ(versions.size(), 99u);
  EXPECT_EQ(CountIn(Version(1)), "104");
  EXPECT_EQ(CountIn(Version(99)), "6");
  EXPECT_EQ(m_folder.EntryCount(), 100u);
}

// A gap is filled; what is above it is not moved, so that nothing is lost for nothing.
TEST_F(FileVersions, FillAGap) {
  for (int count = 1; count <= 4; ++count) {
    ASSERT_TRUE(SaveCount(count, 3));
  }
  fs::remove(Version(2));
  EXPECT_EQ(Counts(), "4 1:3 3:1");
  EXPECT_TRUE(SaveCount(5, 3));
  EXPECT_EQ(Counts(), "5 1:4 2:3 3:1");
}

TEST_F(FileVersions, AreLoadedLikeAnyFile) {
  ASSERT_TRUE(SaveCount(1, 2));
  ASSERT_TRUE(SaveCount(2, 2));
  FileObject old;
  ASSERT_TRUE(old.Load(FileObject::PreviousVersions(PathText(File())).at(0).path));
  EXPECT_EQ(Value(old, L"S", L"count"), L"1");
  EXPECT_TRUE(old.Save(PathText(File()), {FileConflict::Overwrite, 2}));
  EXPECT_EQ(Counts(), "1 1:2 2:1");
  EXPECT_TRUE(FileObject::PreviousVersions(PathText(m_folder.File("missing"))).empty());
  EXPECT_TRUE(FileObject::PreviousVersions(L"").empty());
}

TEST_F(FileVersions, HoldWhatAMergeReplaced) {
  ASSERT_TRUE(SaveCount(1, 0));
  FileObject file;
  ASSERT_TRUE(file.Load(PathText(File())));
  WriteBytes(File(), Bytes(2));
  file.SetItem(L"S", L"mine", L"1", true);
  EXPECT_TRUE(file.Save(PathText(File()), {FileConflict::Merge, 1}));
  EXPECT_EQ(ReadBytes(File()), "[S]\ncount=2\nmine=1\n");
  EXPECT_EQ(ReadBytes(Version(1)), Bytes(2));
}

TEST_F(FileVersions, StandBesideTheFileBehindLinks) {
  fs::create_directory(m_folder.File("sub"));
  fs::create_symlink("sub/real.cfg", File());
  ASSERT_TRUE(SaveCount(1, 2));
  ASSERT_TRUE(SaveCount(2, 2));
  EXPECT_TRUE(fs::is_symlink(File()));
  EXPECT_EQ(CountIn(m_folder.File("sub/real.cfg.bak1")), "1");
  const auto versions = FileObject::PreviousVersions(PathText(File()));
  ASSERT_EQ(versions.size(), 1u);
  EXPECT_TRUE(
      fs::equivalent(WideToUtf8(versions[0].path).GetString(), m_folder.File("sub/real.cfg.bak1")));
  EXPECT_EQ(m_folder.EntryCount(), 2u);
}

TEST_F(FileVersions, KeepPermissionsAndOwner) {
  ASSERT_TRUE(SaveCount(1, 0));
  fs::permissions(File(), fs::perms(0640));
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(File().c_str(), 65534, 65533), 0);
  }
  struct stat before = {};
  ASSERT_EQ(::stat(File().c_str(), &before), 0);
  for (int count = 2; count <= 4; ++count) {
    ASSERT_TRUE(SaveCount(count, 2));
  }
  for (const fs::path& path : {File(), Version(1), Version(2)}) {
    struct stat now = {};
    ASSERT_EQ(::stat(path.c_str(), &now), 0);
    EXPECT_EQ(now.st_mode, before.st_mode);
    EXPECT_EQ(now.st_uid, before.st_uid);
    EXPECT_EQ(now.st_gid, before.st_gid);
  }
}

// ---- What stands in the way

class CLinklessCalls : public CFaultyCalls {
 public:
  using CFaultyCalls::CFaultyCalls;

  int Link(const Path&, const Path&) override {
    errno = EPERM;
    return -1;
  }
};

TEST_F(FileVersions, AreCopiesWhereThereAreNoLinks) {
  CSavedDocument saved;
  for (int count = 1; count <= 4; ++count) {
    CLinklessCalls calls;
    CString value;
    value.Format(L"%d", count);
    saved.Set(L"S", L"count", value);
    ASSERT_EQ(saved.Save(File(), {FileConflict::Merge, 2}, calls), FileSaveResult::Saved);
    EXPECT_EQ(calls.OpenCount(), 0u);
  }
  EXPECT_EQ(Counts(), "4 1:3 2:2");
  EXPECT_EQ(m_folder.EntryCount(), 3u);
}

// No links, and the file itself cannot be replaced.
class CStubbornCalls : public CLinklessCalls {
 public:
  explicit CStubbornCalls(fs::path target) : m_target(std::move(target)) {}

  int Rename(const Path& from, const Path& to) override {
    if (to == m_target) {
      errno = EPERM;
      return -1;
    }
    return CFaultyCalls::Rename(from, to);
  }

 private:
  fs::path m_target;
};

TEST_F(FileVersions, AreCopiedOnceHoweverOftenASaveFails) {
  for (int count = 1; count <= 4; ++count) {
    ASSERT_TRUE(SaveCount(count, 2));
  }
  EXPECT_EQ(Counts(), "4 1:3 2:2");
  CSavedDocument saved;
  saved.Load(File());
  saved.Set(L"S", L"count", L"5");
  for (int round = 0; round < 5; ++round) {
    CStubbornCalls calls(File());
    EXPECT_EQ(saved.Save(File(), {FileConflict::Merge, 2}, calls), FileSaveResult::Failed);
    EXPECT_EQ(Counts(), "4 1:4 2:3 3:2");
    EXPECT_EQ(m_folder.EntryCount(), 4u);
  }
  CFaultyCalls calls;
  EXPECT_EQ(saved.Save(File(), {FileConflict::Merge, 2}, calls), FileSaveResult::Saved);
  EXPECT_EQ(Counts(), "5 1:4 2:3");
}

// Before the save, too, one may have failed and have left a version too many.
TEST(FileVersionCopies, LoseNothingWhateverFails) {
  for (const int versions : {1, 3}) {
    for (const bool hasFailedBefore : {false, true}) {
      for (int number = 1;; ++number) {
        SCOPED_TRACE(std::to_string(versions) + " versions, call " + std::to_string(number));
        CSituated situated({"versions", true, false, false, versions});
        if (hasFailedBefore) {
          CStubbornCalls stubborn(situated.Target());
          ASSERT_EQ(situated.Save(stubborn), FileSaveResult::Failed);
        }
        CLinklessCalls calls({number, EIO, 1, false});
        const bool isSaved = situated.Save(calls) == FileSaveResult::Saved;
        const bool isNew = isSaved || calls.HasLeftInPlace(situated.Target());
        EXPECT_EQ(situated.Content(), isNew ? situated.NewContent() : situated.OldContent());
        EXPECT_TRUE(situated.VersionsAreWhole(isNew));
        EXPECT_EQ(calls.OpenCount(), 0u);
        if (calls.HitCount() == 0) {
          EXPECT_TRUE(isSaved);
          EXPECT_GT(number, 30) << "a save with a copy makes many calls";
          break;
        }
      }
    }
  }
}

class CUnreadableCalls : public CFaultyCalls {
 public:
  explicit CUnreadableCalls(fs::path path) : m_path(std::move(path)) {}

  int Open(const Path& path, int flags, mode_t mode) override {
    if (path == m_path) {
      errno = EACCES;
      return -1;
    }
    return CFaultyCalls::Open(path, flags, mode);
  }

 private:
  fs::path m_path;
};

TEST_F(FileVersions, AreMovedUpAlsoWhereTheyMayNotBeRead) {
  for (int count = 1; count <= 4; ++count) {
    ASSERT_TRUE(SaveCount(count, 3));
  }
  CSavedDocument saved;
  saved.Load(File());
  saved.Set(L"S", L"count", L"5");
  CUnreadableCalls calls(Version(1));
  EXPECT_EQ(saved.Save(File(), {FileConflict::Merge, 1}, calls), FileSaveResult::Saved);
  EXPECT_EQ(Counts(), "5 1:4");
}

TEST_F(FileVersions, RefuseTheSaveWhenAFolderHasTheirName) {
  for (const int number : {1, 2}) {
    ASSERT_TRUE(SaveCount(1, 0));
    fs::create_directory(Version(number));
    const std::string before = Counts();
    EXPECT_EQ(SaveCount(2, 2), number == 2) << "a first version needs only its own place";
    EXPECT_EQ(SaveCount(3, 2), false);
    EXPECT_NE(m_error.Find(L"Is a directory"), -1);
    EXPECT_EQ(Counts(), number == 2 ? "2 1:1" : before);
    EXPECT_TRUE(fs::is_directory(Version(number)));
    EXPECT_TRUE(SaveCount(4, 0)) << "without versions it is in nobody's way";
    fs::remove(Version(number));
    fs::remove(Version(1));
    EXPECT_EQ(m_folder.EntryCount(), 1u);
  }
}

TEST_F(FileVersions, RefuseTheSaveWhenTheirNameIsTooLong) {
  const std::string name(251, 'n');
  FileObject file;
  file.SetItem(L"S", L"a", L"1", true);
  const CString path = PathText(m_folder.File(name));
  EXPECT_TRUE(file.Save(path, {FileConflict::Merge, 3})) << "nothing to keep yet";
  file.SetItem(L"S", L"a", L"2", true);
  EXPECT_FALSE(file.Save(path, {FileConflict::Merge, 3}));
  EXPECT_NE(file.LastError().Find(L"File name too long"), -1);
  EXPECT_EQ(ReadBytes(m_folder.File(name)), "[S]\na=1\n");
  EXPECT_EQ(m_folder.EntryCount(), 1u);
  EXPECT_TRUE(file.Save(path));
  EXPECT_EQ(ReadBytes(m_folder.File(name)), "[S]\na=2\n");
}

}  // namespace
