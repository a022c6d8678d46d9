// The file that a save is to replace: found behind symbolic links, locked, read. Windows only.
// Functions give false with the reason in GetLastError().
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "platform/FrameworkString.h"
#include "platform/portable/FileCallsWindows.h"
#include "platform/portable/FileUpdate.h"

namespace lum::detail {

/// An open file, closed at the end of its life.
class CFileHandle {
 public:
  CFileHandle(CFileCalls& calls, HANDLE handle) : m_calls(&calls), m_handle(handle) {}
  CFileHandle(CFileHandle&& other) noexcept;
  CFileHandle& operator=(CFileHandle&& other) noexcept;
  ~CFileHandle();

  bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return m_handle; }
  /// True also when there is nothing to close.
  bool Close();

 private:
  CFileCalls* m_calls;
  HANDLE m_handle;
};

/// Goes from a path to the file behind links and junctions. Leaves the path of a file that is not
/// there as it is.
bool FollowLinks(CFileCalls& calls, std::filesystem::path& path);

struct CTarget {
  std::filesystem::path path;
  bool exists = false;
  BY_HANDLE_FILE_INFORMATION status = {};
};

/// Fills in a target whose path is given. Fails also when it may not be replaced; Again when
/// another saver is at work there.
SaveStep FindTarget(CFileCalls& calls, CTarget& target);

/// To be called where no file has the target's name. Replacing gives the old file another name
/// first, and then the new one the target's. A saver that was killed in between leaves none under
/// that name: gives the old file its name back. Again when it did, when the saver is still at work,
/// and when the name is there by now. Done when there is nothing to wait for.
SaveStep FinishReplacing(CFileCalls& calls, const std::filesystem::path& path);

/// True while the target is the very file that was found, with the content that it had then.
bool IsUnchanged(CFileCalls& calls, const CTarget& target);

/// The lock on the target, held until it is released or the end of its life.
class CTargetLock {
 public:
  explicit CTargetLock(CFileCalls& calls) : m_calls(calls), m_file(calls, INVALID_HANDLE_VALUE) {}

  /// Again when another program holds it or has put another file there. Done also where there are
  /// no locks. `target` gets the status of the locked file.
  SaveStep Take(CTarget& target);

 private:
  CFileCalls& m_calls;
  CFileHandle m_file;
};

/// The folder of the target, whose names the system makes durable when it is told to flush a file.
class CFolder {
 public:
  CFolder(CFileCalls& calls, const CTarget& target) : m_calls(calls), m_target(target) {}

  bool Flush() const;

 private:
  CFileCalls& m_calls;
  const CTarget& m_target;
};

/// See FilePlace() for a path without symbolic links.
CString PlaceOf(CFileCalls& calls, const std::filesystem::path& path);

/// Removes what savers of the file have left behind that live no more: their files are not open.
void RemoveLeftovers(CFileCalls& calls, const std::filesystem::path& path);

/// Reads a file to its end. False, with `bytes` untouched, also when there are more than `limit`.
bool ReadFile(CFileCalls& calls, const std::filesystem::path& path, std::size_t limit,
              std::string& bytes);

/// The reason in GetLastError() as a text.
CString WhyFailed();
CString WhyNotReplaced(const CTarget& target);

}  // namespace lum::detail
