#include "platform/portable/FileVersionsPosix.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/portable/FileNames.h"
#include "platform/portable/TemporaryFilePosix.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

// True when an earlier save came as far as this and then failed or was killed.
bool IsKeptAlready(CFileCalls& calls, const CTarget& target) {
  struct stat status = {};
  const Path first = VersionOf(target.path, 1);
  return calls.StatusOfLink(first, status) == 0 && status.st_dev == target.status.st_dev &&
         status.st_ino == target.status.st_ino;
}

// Not every file system has links, and not every file may be linked to.
bool Copy(CFileCalls& calls, const CTarget& target, CTemporaryFile& copy) {
  std::string bytes;
  return copy.LinkTo(target) ||
         (ReadFile(calls, target.path, bytes.max_size(), bytes) && copy.Create(target) &&
          copy.Write(bytes) && copy.TakeOver(target) && copy.Flush() && copy.Close());
}

// The first number from there on that no version has. 0, with the reason in errno, when that cannot
// be told or a folder is in the way: that is somebody's own.
int FirstFree(CFileCalls& calls, const Path& path, int version) {
  struct stat status = {};
  while (calls.StatusOfLink(VersionOf(path, version), status) == 0) {
    if (S_ISDIR(status.st_mode)) {
      errno = EISDIR;
      return 0;
    }
    ++version;
  }
  return errno == ENOENT ? version : 0;
}

// Where there are no links, a copy tells that an earlier save came as far as this: it is one
// version too many, with the very bytes. False, with the reason in errno, when that cannot be told:
// with a second copy an older version would have to go. A file that may not be read has no copy.
bool FindCopy(CFileCalls& calls, const CTarget& target, int count, bool& isThere) {
  isThere = false;
  const int free = FirstFree(calls, target.path, 1);
  if (free <= count + 1) {
    return free > 0;
  }
  const Path first = VersionOf(target.path, 1);
  std::string now;
  std::string copied;
  if (!ReadFile(calls, first, copied.max_size(), copied) ||
      !ReadFile(calls, target.path, now.max_size(), now)) {
    return errno == EACCES;
  }
  isThere = copied == now;
  return true;
}

// Versions move up to the first free number only: a save that fails or is killed here leaves a free
// number, and the next one does not move the others any further.
bool MoveVersionsUp(CFileCalls& calls, const Path& path) {
  const int free = FirstFree(calls, path, 1);
  for (int version = free - 1; version >= 1; --version) {
    if (calls.Rename(VersionOf(path, version), VersionOf(path, version + 1)) != 0) {
      return false;
    }
  }
  return free > 0;
}

}  // namespace

bool KeepVersions(CFileCalls& calls, const CTarget& target, int count) {
  if (count <= 0 || IsKeptAlready(calls, target)) {
    return true;
  }
  bool isCopied = false;
  if (!FindCopy(calls, target, count, isCopied) || isCopied) {
    return isCopied;
  }
  CTemporaryFile first(calls);
  if (!Copy(calls, target, first) || !MoveVersionsUp(calls, target.path) ||
      calls.Rename(first.Name(), VersionOf(target.path, 1)) != 0) {
    return false;
  }
  first.Keep();
  return true;
}

// From the last to the first: whenever this ends, no version behind a free number is forgotten.
void RemoveVersionsBeyond(CFileCalls& calls, const CTarget& target, int count) {
  const int free = count > 0 ? FirstFree(calls, target.path, count + 1) : 0;
  for (int version = free - 1; version > count; --version) {
    calls.Remove(VersionOf(target.path, version));
  }
}

}  // namespace lum::detail
