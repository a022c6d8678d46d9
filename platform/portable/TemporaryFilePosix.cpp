#include "platform/portable/TemporaryFilePosix.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <utility>

#include "platform/portable/FileNames.h"
#include "platform/portable/FileVersionsPosix.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

constexpr int kMaxNameAttempts = 100;

Path TemporaryPath(const Path& target, int attempt) {
  std::timespec now = {};
  std::timespec_get(&now, TIME_UTC);
  char end[80];
  std::snprintf(end, sizeof end, "%ld-%lld-%d", static_cast<long>(::getpid()),
                static_cast<long long>(now.tv_nsec), attempt);
  return FolderOf(target) / (TemporaryBeginning(target) + end);
}

// A closed file has no lock: another saver may have taken it for a dead one's and removed it.
SaveStep RenameOver(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                    int versions) {
  if (!KeepVersions(calls, target, versions)) {
    return SaveStep::Failed;
  }
  if (calls.Rename(temporary.Name(), target.path) != 0) {
    return errno == ENOENT ? SaveStep::Again : SaveStep::Failed;
  }
  temporary.Keep();
  RemoveVersionsBeyond(calls, target, versions);
  return SaveStep::Done;
}

// A link is refused when the name is taken. Not every file system has links.
SaveStep Appear(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target) {
  if (calls.Link(temporary.Name(), target.path) == 0) {
    return SaveStep::Done;
  }
  if (errno == EEXIST || errno == ENOENT) {
    return SaveStep::Again;
  }
  return RenameOver(calls, temporary, target, 0);
}

}  // namespace

CTemporaryFile::~CTemporaryFile() {
  if (!m_path.empty()) {
    GiveUp(m_path);
  }
}

// A file that replaces another is nobody else's to read until it has that one's permissions.
bool CTemporaryFile::Create(const CTarget& target) {
  const mode_t mode = target.exists ? S_IRUSR | S_IWUSR : 0666;
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    Path path = TemporaryPath(target.path, attempt);
    m_file = OpenFile(m_calls, path, O_WRONLY | O_CREAT | O_EXCL, mode);
    if (!m_file.IsOpen() && errno != EEXIST) {
      break;
    }
    if (m_file.IsOpen() && IsOurs()) {
      m_path = std::move(path);
      return true;
    }
    if (m_file.IsOpen()) {
      GiveUp(path);
    }
  }
  return false;
}

bool CTemporaryFile::LinkTo(const CTarget& target) {
  Path path = TemporaryPath(target.path, kMaxNameAttempts);
  if (m_calls.Link(target.path, path) != 0) {
    return false;
  }
  m_path = std::move(path);
  return true;
}

bool CTemporaryFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count =
        UntilUninterrupted([&] { return m_calls.Write(m_file.Get(), bytes.data(), bytes.size()); });
    if (count <= 0) {
      // A disk that takes nothing, and says nothing, would be written to for ever.
      errno = count < 0 ? errno : EIO;
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

// The owner first: changing it takes some permission bits away. Only a privileged process may give
// files away; the group alone may still be allowed.
bool CTemporaryFile::TakeOver(const CTarget& target) {
  if (!target.exists) {
    return true;
  }
  const struct stat& status = target.status;
  mode_t mode = status.st_mode & 07777;
  if (!ChangeOwner(status.st_uid, status.st_gid)) {
    // What ran as the old owner must not run as the new one.
    mode &= ~static_cast<mode_t>(S_ISUID);
    if (!ChangeOwner(static_cast<uid_t>(-1), status.st_gid)) {
      mode &= ~static_cast<mode_t>(S_ISGID);
    }
  }
  return UntilUninterrupted([&] { return m_calls.ChangeMode(m_file.Get(), mode); }) == 0;
}

bool CTemporaryFile::ChangeOwner(uid_t user, gid_t group) {
  return UntilUninterrupted([&] { return m_calls.ChangeOwner(m_file.Get(), user, group); }) == 0;
}

bool CTemporaryFile::Flush() {
  return UntilUninterrupted([&] { return m_calls.Flush(m_file.Get()); }) == 0;
}

void CTemporaryFile::GiveUp(const Path& path) {
  const int error = errno;
  m_calls.Remove(path);
  errno = error;
}

// Before it was locked, another saver may have taken the file for a dead one's and removed it.
bool CTemporaryFile::IsOurs() {
  struct stat status = {};
  const int locked = UntilUninterrupted([&] { return m_calls.Lock(m_file.Get()); });
  return (locked == 0 || errno != EWOULDBLOCK) && m_calls.StatusOfOpen(m_file.Get(), status) == 0 &&
         status.st_nlink > 0;
}

SaveStep PutInPlace(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                    int versions) {
  return target.exists ? RenameOver(calls, temporary, target, versions)
                       : Appear(calls, temporary, target);
}

}  // namespace lum::detail
