#include "platform/portable/FileTargetPosix.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/portable/FileNames.h"
#include "platform/portable/SystemFile.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

constexpr std::size_t kPieceBytes = std::size_t{1} << 16;
// As many links as Linux itself follows.
constexpr int kMaxLinks = 40;

SaveStep DoneIf(bool isDone) { return isDone ? SaveStep::Done : SaveStep::Failed; }

int WhyNotReplaceable(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) {
    return EISDIR;
  }
  return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

ssize_t ReadSome(CFileCalls& calls, int descriptor, std::string& bytes) {
  const std::size_t size = bytes.size();
  bytes.resize(size + kPieceBytes);
  const ssize_t count =
      UntilUninterrupted([&] { return calls.Read(descriptor, &bytes[size], kPieceBytes); });
  bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return count;
}

bool AreOneFile(CFileCalls& calls, const Path& a, const Path& b) {
  struct stat statusA = {};
  struct stat statusB = {};
  return calls.StatusOfLink(a, statusA) == 0 && calls.StatusOfLink(b, statusB) == 0 &&
         statusA.st_dev == statusB.st_dev && statusA.st_ino == statusB.st_ino;
}

bool IsSameTime(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

}  // namespace

CDescriptor& CDescriptor::operator=(CDescriptor&& other) noexcept {
  std::swap(m_calls, other.m_calls);
  std::swap(m_descriptor, other.m_descriptor);
  return *this;
}

CDescriptor::~CDescriptor() {
  const int error = errno;
  Close();
  errno = error;
}

bool CDescriptor::Close() {
  const int descriptor = std::exchange(m_descriptor, -1);
  return descriptor < 0 || m_calls->Close(descriptor) == 0 || errno == EINTR;
}

CDescriptor OpenFile(CFileCalls& calls, const Path& path, int flags, mode_t mode) {
  return {calls, UntilUninterrupted([&] { return calls.Open(path, flags | O_CLOEXEC, mode); })};
}

Path FolderOf(const Path& file) {
  const Path folder = file.parent_path();
  return folder.empty() ? Path(".") : folder;
}

bool FollowLinks(CFileCalls& calls, Path& path) {
  for (int i = 0; i <= kMaxLinks; ++i) {
    struct stat status = {};
    if (calls.StatusOfLink(path, status) != 0) {
      // What cannot be looked at may be a link, which must not be replaced itself.
      return errno == ENOENT;
    }
    if (!S_ISLNK(status.st_mode)) {
      return true;
    }
    Path next;
    if (calls.ReadLink(path, next) != 0) {
      return false;
    }
    path = FolderOf(path) / next;
  }
  errno = ELOOP;
  return false;
}

SaveStep FindTarget(CFileCalls& calls, CTarget& target) {
  if (!FollowLinks(calls, target.path)) {
    return SaveStep::Failed;
  }
  if (calls.Status(target.path, target.status) != 0) {
    return DoneIf(errno == ENOENT && target.path.has_filename());
  }
  target.exists = true;
  if (const int reason = WhyNotReplaceable(target.status)) {
    errno = reason;
    return SaveStep::Failed;
  }
  // Renaming would go past a write protection of the file.
  return DoneIf(calls.CheckWritable(target.path) == 0);
}

bool IsUnchanged(CFileCalls& calls, const CTarget& target) {
  struct stat now = {};
  if (calls.Status(target.path, now) != 0) {
    return !target.exists && errno == ENOENT;
  }
  return target.exists && now.st_dev == target.status.st_dev &&
         now.st_ino == target.status.st_ino && now.st_size == target.status.st_size &&
         IsSameTime(now.st_mtim, target.status.st_mtim);
}

// Network file systems give exclusive locks only to those who may write.
FileLock LockFile(CFileCalls& calls, const Path& path, CDescriptor& descriptor) {
  for (const int access : {O_RDONLY, O_WRONLY}) {
    descriptor = OpenFile(calls, path, access | O_NOFOLLOW | O_NONBLOCK);
    if (!descriptor.IsOpen()) {
      continue;
    }
    if (UntilUninterrupted([&] { return calls.Lock(descriptor.Get()); }) == 0) {
      return FileLock::Held;
    }
    if (errno == EWOULDBLOCK) {
      return FileLock::Busy;
    }
  }
  return FileLock::Unavailable;
}

bool ReadFile(CFileCalls& calls, const Path& path, std::size_t limit, std::string& bytes) {
  const CDescriptor file = OpenFile(calls, path, O_RDONLY);
  if (!file.IsOpen()) {
    return false;
  }
  std::string read;
  ssize_t count = 0;
  while (read.size() <= limit && (count = ReadSome(calls, file.Get(), read)) > 0) {
  }
  if (count != 0) {
    errno = count > 0 ? EFBIG : errno;
    return false;
  }
  bytes = std::move(read);
  return true;
}

SaveStep CTargetLock::Take(CTarget& target) {
  switch (LockFile(m_calls, target.path, m_file)) {
    case FileLock::Busy:
      return SaveStep::Again;
    case FileLock::Unavailable:
      return WithoutLock();
    case FileLock::Held:
      break;
  }
  if (m_calls.StatusOfOpen(m_file.Get(), target.status) != 0) {
    return SaveStep::Failed;
  }
  // Whoever held the lock before may have put another file there.
  return IsUnchanged(m_calls, target) ? SaveStep::Done : SaveStep::Again;
}

// A file that may be written can be opened, unless it has gone or the system is in trouble.
SaveStep CTargetLock::WithoutLock() const {
  if (m_file.IsOpen()) {
    return SaveStep::Done;
  }
  return errno == ENOENT || errno == ELOOP ? SaveStep::Again : SaveStep::Failed;
}

CFolder::CFolder(CFileCalls& calls, const CTarget& target)
    : m_calls(calls),
      m_folder(OpenFile(calls, FolderOf(target.path), O_RDONLY | O_DIRECTORY)),
      m_error(m_folder.IsOpen() ? 0 : errno) {}

// Not every file system can flush a folder, and a folder may be open for writing only.
bool CFolder::Flush() const {
  if (!m_folder.IsOpen()) {
    errno = m_error;
    return m_error == EACCES;
  }
  return UntilUninterrupted([&] { return m_calls.Flush(m_folder.Get()); }) == 0 ||
         errno == EINVAL || errno == ENOTSUP;
}

CString PlaceOf(CFileCalls& calls, const Path& path) {
  struct stat folder = {};
  if (calls.Status(FolderOf(path), folder) != 0) {
    return CString();
  }
  CString place;
  place.Format(L"%llu:%llu/", static_cast<unsigned long long>(folder.st_dev),
               static_cast<unsigned long long>(folder.st_ino));
  return place + PathText(path.filename());
}

// A second name of the file itself is locked with it, and is never needed.
void RemoveLeftovers(CFileCalls& calls, const Path& path) {
  for (const Path& leftover : calls.List(FolderOf(path), TemporaryBeginning(path))) {
    CDescriptor file(calls, -1);
    if (LockFile(calls, leftover, file) == FileLock::Held || AreOneFile(calls, leftover, path)) {
      calls.Remove(leftover);
    }
  }
}

CString WhyFailed() { return SystemMessage(errno); }

CString WhyNotReplaced(const CTarget& target) {
  const bool isSpecial = target.exists && WhyNotReplaceable(target.status) == EINVAL;
  return errno == EINVAL && isSpecial ? CString(L"Not a regular file") : WhyFailed();
}

}  // namespace lum::detail
