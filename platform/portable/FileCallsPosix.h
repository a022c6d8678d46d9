// The calls to the system through which a file is saved, in one place, so that tests can let each
// of them fail. POSIX systems only.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace lum::detail {

/// Every call is the system's of the same purpose: -1 (an empty list) with the reason in errno when
/// it fails. Calls that signals interrupt are repeated by whoever makes them.
class CFileCalls {
 public:
  using Path = std::filesystem::path;

  CFileCalls() = default;
  CFileCalls(const CFileCalls&) = delete;
  CFileCalls& operator=(const CFileCalls&) = delete;
  virtual ~CFileCalls() = default;

  virtual int Open(const Path& path, int flags, mode_t mode);
  virtual ssize_t Read(int descriptor, void* bytes, std::size_t size);
  virtual ssize_t Write(int descriptor, const void* bytes, std::size_t size);
  virtual int ChangeOwner(int descriptor, uid_t user, gid_t group);
  virtual int ChangeMode(int descriptor, mode_t mode);
  virtual int Flush(int descriptor);
  virtual int Close(int descriptor);
  /// An exclusive lock that belongs to the open file, without waiting.
  virtual int Lock(int descriptor);

  virtual int Status(const Path& path, struct stat& status);
  virtual int StatusOfLink(const Path& path, struct stat& status);
  virtual int StatusOfOpen(int descriptor, struct stat& status);
  virtual int ReadLink(const Path& path, Path& target);
  /// Whether the process may write the file.
  virtual int CheckWritable(const Path& path);
  /// The files of a folder whose names begin with a text.
  virtual std::vector<Path> List(const Path& folder, const std::string& beginning);

  virtual int Rename(const Path& from, const Path& to);
  virtual int Link(const Path& from, const Path& to);
  virtual int Remove(const Path& path);

  /// Lets other programs go on for some milliseconds.
  virtual void Pause(int milliseconds);
};

}  // namespace lum::detail
