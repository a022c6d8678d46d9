// The implementation for POSIX systems.
#include "platform/portable/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>

#include "platform/portable/SystemFile.h"
#include "platform/portable/TemporaryName.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

// As many links as Linux itself follows.
constexpr int kMaxLinks = 40;
constexpr int kMaxNameAttempts = 100;

/// What is known about the file to replace.
struct CTarget {
  Path path;
  bool exists = false;
  struct stat status = {};
};

/// An open file descriptor, closed at the end of its life.
class CDescriptor {
 public:
  explicit CDescriptor(int descriptor) : m_descriptor(descriptor) {}
  CDescriptor(const CDescriptor&) = delete;
  CDescriptor& operator=(const CDescriptor&) = delete;
  ~CDescriptor() { Close(); }

  bool IsOpen() const { return m_descriptor >= 0; }
  int Get() const { return m_descriptor; }
  // An interrupted close has closed the file all the same.
  bool Close() {
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
  }

 private:
  int m_descriptor;
};

void RemoveKeepingErrno(const Path& path) {
  const int error = errno;
  ::unlink(path.c_str());
  errno = error;
}

using CTemporaryFile = CTemporaryName<&RemoveKeepingErrno>;

// Steps below return false with the reason in errno.

Path FolderOf(const Path& file) {
  const Path folder = file.parent_path();
  return folder.empty() ? Path(".") : folder;
}

// Follows symbolic links from the path to the file that is to be replaced, which may be missing.
bool FollowLinks(Path& path) {
  for (int i = 0; i <= kMaxLinks; ++i) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
      return true;
    }
    std::error_code error;
    const Path next = std::filesystem::read_symlink(path, error);
    if (error) {
      errno = error.value();
      return false;
    }
    path = FolderOf(path) / next;
  }
  errno = ELOOP;
  return false;
}

int WhyNotReplaceable(const CTarget& target) {
  if (S_ISDIR(target.status.st_mode)) {
    return EISDIR;
  }
  return S_ISREG(target.status.st_mode) ? 0 : EINVAL;
}

bool FindTarget(CTarget& target) {
  if (!FollowLinks(target.path)) {
    return false;
  }
  if (::stat(target.path.c_str(), &target.status) != 0) {
    return errno == ENOENT && target.path.has_filename();
  }
  target.exists = true;
  if (const int reason = WhyNotReplaceable(target)) {
    errno = reason;
    return false;
  }
  // Renaming would go past a write protection of the file.
  return ::faccessat(AT_FDCWD, target.path.c_str(), W_OK, AT_EACCESS) == 0;
}

Path TemporaryPath(const Path& target, int attempt) {
  std::timespec now = {};
  std::timespec_get(&now, TIME_UTC);
  char name[80];
  std::snprintf(name, sizeof name, ".saving-%ld-%lld-%d", static_cast<long>(::getpid()),
                static_cast<long long>(now.tv_nsec), attempt);
  return FolderOf(target) / name;
}

// A file that replaces another is nobody else's to read until it has that one's permissions.
int CreateBeside(const CTarget& target, CTemporaryFile& temporary) {
  const mode_t mode = target.exists ? S_IRUSR | S_IWUSR : 0666;
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    Path path = TemporaryPath(target.path, attempt);
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor >= 0) {
      temporary.Set(std::move(path));
      return descriptor;
    }
    if (errno != EEXIST && errno != EINTR) {
      return -1;
    }
  }
  return -1;
}

bool WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

// The owner first: changing it takes some permission bits away.
bool TakeOver(int descriptor, const CTarget& target) {
  if (!target.exists) {
    return true;
  }
  if (::fchown(descriptor, target.status.st_uid, target.status.st_gid) != 0) {
    // Only a privileged process may give files away; the group alone may still be allowed.
    [[maybe_unused]] const int ignored =
        ::fchown(descriptor, static_cast<uid_t>(-1), target.status.st_gid);
  }
  return ::fchmod(descriptor, target.status.st_mode & 07777) == 0;
}

bool Flush(int descriptor) {
  int result = ::fsync(descriptor);
  while (result != 0 && errno == EINTR) {
    result = ::fsync(descriptor);
  }
  return result == 0;
}

// Not every file system can flush a folder, and a folder may be open for writing only.
bool FlushFolder(const CDescriptor& folder) {
  return !folder.IsOpen() || Flush(folder.Get()) || errno == EINVAL || errno == ENOTSUP;
}

bool Replace(CTarget& target, std::string_view bytes) {
  if (!FindTarget(target)) {
    return false;
  }
  const CDescriptor folder(
      ::open(FolderOf(target.path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  CTemporaryFile temporary;
  CDescriptor file(CreateBeside(target, temporary));
  if (!file.IsOpen() || !WriteAll(file.Get(), bytes) || !TakeOver(file.Get(), target) ||
      !Flush(file.Get()) || !file.Close() ||
      ::rename(temporary.Get().c_str(), target.path.c_str()) != 0) {
    return false;
  }
  temporary.Keep();
  return FlushFolder(folder);
}

}  // namespace

bool WriteFileAtomically(const CString& path, std::string_view bytes, CString& error) {
  CTarget target;
  target.path = SystemPath(path);
  if (path.Find(L'\0') >= 0) {
    error = SystemMessage(ENOENT);
    return false;
  }
  if (!Replace(target, bytes)) {
    error = target.exists && WhyNotReplaceable(target) == EINVAL ? CString(L"Not a regular file")
                                                                 : SystemMessage(errno);
    return false;
  }
  return true;
}

}  // namespace lum::detail
