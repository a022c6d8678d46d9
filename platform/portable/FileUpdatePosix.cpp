// The implementation for POSIX systems. A saver holds a lock on the file that it replaces, and one
// on the new file beside it, by which others see that its writer lives.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/portable/FileCallsPosix.h"
#include "platform/portable/FileTargetPosix.h"
#include "platform/portable/FileUpdate.h"
#include "platform/portable/FileNames.h"
#include "platform/portable/FileVersionsPosix.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/TemporaryFilePosix.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

// Pauses of 1, 2, 3 … and then 20 ms: ten seconds in all.
constexpr int kMaxAttempts = 510;
constexpr int kMaxPause = 20;

// What a step came to. After Failed the reason is in errno.
enum class Step { Done, Failed, Again };

class CTargetFile : public CCurrentFile {
 public:
  CTargetFile(CFileCalls& calls, const CTarget& target) : m_calls(calls), m_target(target) {}

  CString Place() const override {
    struct stat folder = {};
    if (m_calls.Status(FolderOf(m_target.path), folder) != 0) {
      return CString();
    }
    return PathText(std::to_string(folder.st_dev) + ':' + std::to_string(folder.st_ino) + '/' +
                    m_target.path.filename().native());
  }

  bool Exists() const override { return m_target.exists; }

  bool Read(std::size_t limit, std::string& bytes, CString& error) const override {
    const bool isRead = ReadFile(m_calls, m_target.path, limit, bytes);
    if (!isRead) {
      error = SystemMessage(errno);
    }
    return isRead;
  }

 private:
  CFileCalls& m_calls;
  const CTarget& m_target;
};

class CUpdate {
 public:
  CUpdate(const CString& path, int versions, const CMakeContent& make, CString& error,
          CFileCalls& calls)
      : m_path(SystemPath(path)), m_versions(versions), m_make(make), m_error(error),
        m_calls(calls) {}

  FileUpdateResult Run() {
    for (int attempt = 1; attempt <= kMaxAttempts; ++attempt) {
      switch (TryOnce()) {
        case Step::Done:
          return m_result;
        case Step::Failed:
          return FileUpdateResult::Failed;
        case Step::Again:
          m_calls.Pause(std::min(attempt, kMaxPause));
      }
    }
    m_error = L"another program is saving it";
    return FileUpdateResult::Failed;
  }

 private:
  Step TryOnce() {
    CTarget target;
    target.path = m_path;
    if (!FindTarget(m_calls, target)) {
      return Refuse(target);
    }
    CDescriptor lock(m_calls, -1);
    if (target.exists && !LockTarget(target, lock)) {
      return Step::Again;
    }
    const auto bytes = m_make(CTargetFile(m_calls, target), m_error);
    if (bytes == nullptr) {
      return Step::Failed;
    }
    const Step step = Replace(target, *bytes);
    if (step == Step::Failed) {
      m_error = SystemMessage(errno);
    }
    return step;
  }

  // Whoever held the lock before may have put another file there.
  bool LockTarget(CTarget& target, CDescriptor& lock) {
    switch (LockFile(m_calls, target.path, lock)) {
      case FileLock::Busy:
        return false;
      case FileLock::Unavailable:
        return true;
      case FileLock::Held:
        break;
    }
    return m_calls.StatusOfOpen(lock.Get(), target.status) == 0 && IsUnchanged(m_calls, target);
  }

  Step Refuse(const CTarget& target) {
    m_error = errno == EINVAL && target.exists ? CString(L"Not a regular file")
                                               : SystemMessage(errno);
    return Step::Failed;
  }

  Step Replace(const CTarget& target, std::string_view bytes) {
    const CDescriptor folder =
        OpenFile(m_calls, FolderOf(target.path), O_RDONLY | O_DIRECTORY);
    RemoveLeftovers(target.path);
    CTemporaryFile temporary(m_calls);
    if (!temporary.Create(target) || !temporary.Write(bytes) ||
        (target.exists && !temporary.TakeOver(target.status)) || !temporary.Flush() ||
        !temporary.Close()) {
      return Step::Failed;
    }
    // Programs that know nothing of the lock may have been here, too.
    if (!IsUnchanged(m_calls, target)) {
      return Step::Again;
    }
    const Step step = target.exists ? RenameOver(temporary, target) : Appear(temporary, target);
    if (step == Step::Done) {
      m_result = FlushFolder(folder) ? FileUpdateResult::Done : FileUpdateResult::InPlace;
    }
    return step;
  }

  Step RenameOver(CTemporaryFile& temporary, const CTarget& target) {
    if (!KeepVersions(m_calls, target, m_versions) ||
        m_calls.Rename(temporary.Name(), target.path) != 0) {
      return Step::Failed;
    }
    temporary.Keep();
    return Step::Done;
  }

  // A link is refused when the name is taken. Not every file system has links. A closed file has no
  // lock: another saver may have taken it for a dead one's.
  Step Appear(CTemporaryFile& temporary, const CTarget& target) {
    if (m_calls.Link(temporary.Name(), target.path) == 0) {
      return Step::Done;
    }
    if (errno == EEXIST || errno == ENOENT) {
      return Step::Again;
    }
    return RenameOver(temporary, target);
  }

  // Not every file system can flush a folder, and a folder may be open for writing only.
  bool FlushFolder(const CDescriptor& folder) {
    if (!folder.IsOpen() ||
        UntilUninterrupted([&] { return m_calls.Flush(folder.Get()); }) == 0 || errno == EINVAL ||
        errno == ENOTSUP) {
      return true;
    }
    m_error = SystemMessage(errno);
    return false;
  }

  void RemoveLeftovers(const Path& target) {
    const std::string beginning = TemporaryBeginning(target.filename().native());
    for (const Path& path : m_calls.List(FolderOf(target), beginning)) {
      CDescriptor file(m_calls, -1);
      if (LockFile(m_calls, path, file) == FileLock::Held) {
        m_calls.Remove(path);
      }
    }
  }

  Path m_path;
  int m_versions;
  const CMakeContent& m_make;
  CString& m_error;
  CFileCalls& m_calls;
  FileUpdateResult m_result = FileUpdateResult::Failed;
};

}  // namespace

FileUpdateResult UpdateFile(const CString& path, int versions, const CMakeContent& make,
                            CString& error, CFileCalls& calls) {
  if (path.Find(L'\0') >= 0) {
    error = SystemMessage(ENOENT);
    return FileUpdateResult::Failed;
  }
  return CUpdate(path, versions, make, error, calls).Run();
}

CString FilePlace(const CString& path, CFileCalls& calls) {
  CTarget target;
  target.path = SystemPath(path);
  return FollowLinks(calls, target.path) ? CTargetFile(calls, target).Place() : CString();
}

CString VersionPath(const CString& path, int version, CFileCalls& calls) {
  Path target = SystemPath(path);
  FollowLinks(calls, target);
  return PathText(VersionOf(target, version));
}

}  // namespace lum::detail
