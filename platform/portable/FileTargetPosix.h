// The file that a save is to replace: found behind symbolic links, locked, read. POSIX systems
// only. Functions give false with the reason in errno.
#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>

#include "platform/FrameworkString.h"
#include "platform/portable/FileCallsPosix.h"
#include "platform/portable/FileUpdate.h"

namespace lum::detail {

/// An open file, closed at the end of its life.
class CDescriptor {
 public:
  CDescriptor(CFileCalls& calls, int descriptor) : m_calls(&calls), m_descriptor(descriptor) {}
  CDescriptor& operator=(CDescriptor&& other) noexcept;
  ~CDescriptor();

  bool IsOpen() const { return m_descriptor >= 0; }
  int Get() const { return m_descriptor; }
  /// True also when there is nothing to close, and when a signal came: the file is closed then.
  bool Close();

 private:
  CFileCalls* m_calls;
  int m_descriptor;
};

/// Repeats a call that signals interrupt.
template <typename Call>
auto UntilUninterrupted(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

CDescriptor OpenFile(CFileCalls& calls, const std::filesystem::path& path, int flags,
                     mode_t mode = 0);

std::filesystem::path FolderOf(const std::filesystem::path& file);

/// Goes from a path to the file behind its symbolic links, which may be missing.
bool FollowLinks(CFileCalls& calls, std::filesystem::path& path);

struct CTarget {
  std::filesystem::path path;
  bool exists = false;
  struct stat status = {};
};

/// Fills in a target whose path is given. Fails also when it may not be replaced; EINVAL means that
/// it is no regular file.
SaveStep FindTarget(CFileCalls& calls, CTarget& target);

/// Renaming replaces a file in one step.
inline SaveStep FinishReplacing(CFileCalls&, const std::filesystem::path&) {
  return SaveStep::Done;
}

/// True while the target is the very file that was found, with the content that it had then.
bool IsUnchanged(CFileCalls& calls, const CTarget& target);

enum class FileLock {
  Held,         ///< Until the descriptor is closed.
  Unavailable,  ///< The file cannot be opened, or its file system has no locks.
  Busy,         ///< Another program holds it.
};

/// Locks a file that is there. Opens it, into `descriptor`, in the way that its file system needs
/// for a lock.
FileLock LockFile(CFileCalls& calls, const std::filesystem::path& path, CDescriptor& descriptor);

/// The lock on the target, held until the end of its life.
class CTargetLock {
 public:
  explicit CTargetLock(CFileCalls& calls) : m_calls(calls), m_file(calls, -1) {}

  /// Again when another program holds it or has put another file there. Done also where there are
  /// no locks. `target` gets the status of the locked file.
  SaveStep Take(CTarget& target);

 private:
  SaveStep WithoutLock() const;

  CFileCalls& m_calls;
  CDescriptor m_file;
};

/// The folder of the target.
class CFolder {
 public:
  CFolder(CFileCalls& calls, const CTarget& target);

  /// Makes the names in it durable, where the system can do that.
  bool Flush() const;

 private:
  CFileCalls& m_calls;
  CDescriptor m_folder;
  int m_error;  ///< Why it could not be opened.
};

/// See FilePlace() for a path without symbolic links.
CString PlaceOf(CFileCalls& calls, const std::filesystem::path& path);

/// Removes what savers of the file have left behind that live no more.
void RemoveLeftovers(CFileCalls& calls, const std::filesystem::path& path);

/// Reads a file to its end. False, with `bytes` untouched, also when there are more than `limit`.
bool ReadFile(CFileCalls& calls, const std::filesystem::path& path, std::size_t limit,
              std::string& bytes);

/// The reason in errno as a text.
CString WhyFailed();
/// The same where the target itself may be the reason.
CString WhyNotReplaced(const CTarget& target);

}  // namespace lum::detail
