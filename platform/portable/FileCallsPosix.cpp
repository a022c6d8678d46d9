#include "platform/portable/FileCallsPosix.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>
#include <thread>

namespace lum::detail {

namespace {

struct CFolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

int CFileCalls::Open(const Path& path, int flags, mode_t mode) {
  return ::open(path.c_str(), flags, mode);
}

ssize_t CFileCalls::Read(int descriptor, void* bytes, std::size_t size) {
  return ::read(descriptor, bytes, size);
}

ssize_t CFileCalls::Write(int descriptor, const void* bytes, std::size_t size) {
  return ::write(descriptor, bytes, size);
}

int CFileCalls::ChangeOwner(int descriptor, uid_t user, gid_t group) {
  return ::fchown(descriptor, user, group);
}

int CFileCalls::ChangeMode(int descriptor, mode_t mode) { return ::fchmod(descriptor, mode); }

int CFileCalls::Flush(int descriptor) { return ::fsync(descriptor); }

int CFileCalls::Close(int descriptor) { return ::close(descriptor); }

int CFileCalls::Lock(int descriptor) { return ::flock(descriptor, LOCK_EX | LOCK_NB); }

int CFileCalls::Status(const Path& path, struct stat& status) {
  return ::stat(path.c_str(), &status);
}

int CFileCalls::StatusOfLink(const Path& path, struct stat& status) {
  return ::lstat(path.c_str(), &status);
}

int CFileCalls::StatusOfOpen(int descriptor, struct stat& status) {
  return ::fstat(descriptor, &status);
}

int CFileCalls::ReadLink(const Path& path, Path& target) {
  std::error_code error;
  target = std::filesystem::read_symlink(path, error);
  errno = error.value();
  return error ? -1 : 0;
}

int CFileCalls::CheckWritable(const Path& path) {
  return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS);
}

// The standard library's iterator ends the process when there is no memory for its paths.
std::vector<CFileCalls::Path> CFileCalls::List(const Path& folder, const std::string& beginning) {
  std::vector<Path> found;
  const std::unique_ptr<DIR, CFolderCloser> entries(::opendir(folder.c_str()));
  while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
    if (std::string_view(entry->d_name).starts_with(beginning)) {
      found.push_back(folder / entry->d_name);
    }
  }
  return found;
}

int CFileCalls::Rename(const Path& from, const Path& to) {
  return ::rename(from.c_str(), to.c_str());
}

int CFileCalls::Link(const Path& from, const Path& to) { return ::link(from.c_str(), to.c_str()); }

int CFileCalls::Remove(const Path& path) { return ::unlink(path.c_str()); }

void CFileCalls::Pause(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace lum::detail
