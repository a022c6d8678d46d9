#include "platform/portable/FileVersionsPosix.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/portable/FileNames.h"
#include "platform/portable/TemporaryFilePosix.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

bool SucceedsOrIsMissing(int result) { return result == 0 || errno == ENOENT; }

// True when an earlier save came as far as this and then failed or was killed.
bool IsKeptAlready(CFileCalls& calls, const CTarget& target) {
  struct stat status = {};
  return calls.StatusOfLink(VersionOf(target.path, 1), status) == 0 &&
         status.st_dev == target.status.st_dev && status.st_ino == target.status.st_ino;
}

bool MoveVersionsUp(CFileCalls& calls, const Path& path, int count) {
  for (int version = count - 1; version >= 1; --version) {
    if (!SucceedsOrIsMissing(
            calls.Rename(VersionOf(path, version), VersionOf(path, version + 1)))) {
      return false;
    }
  }
  return true;
}

bool CopyTo(CFileCalls& calls, const CTarget& target, const Path& version) {
  std::string bytes;
  CTemporaryFile copy(calls);
  if (!ReadFile(calls, target.path, bytes.max_size(), bytes) || !copy.Create(target) ||
      !copy.Write(bytes) || !copy.TakeOver(target) || !copy.Flush() || !copy.Close() ||
      calls.Rename(copy.Name(), version) != 0) {
    return false;
  }
  copy.Keep();
  return true;
}

// Not every file system has links, and not every file may be linked to.
bool AddFirst(CFileCalls& calls, const CTarget& target, const Path& version) {
  return calls.Link(target.path, version) == 0 || CopyTo(calls, target, version);
}

bool RemoveFrom(CFileCalls& calls, const Path& path, int version) {
  while (calls.Remove(VersionOf(path, version)) == 0) {
    ++version;
  }
  return errno == ENOENT;
}

}  // namespace

bool KeepVersions(CFileCalls& calls, const CTarget& target, int count) {
  if (count <= 0 || !target.exists || IsKeptAlready(calls, target)) {
    return true;
  }
  // The oldest goes first: a name that is taken would stop the others.
  return RemoveFrom(calls, target.path, count) && MoveVersionsUp(calls, target.path, count) &&
         AddFirst(calls, target, VersionOf(target.path, 1));
}

}  // namespace lum::detail
