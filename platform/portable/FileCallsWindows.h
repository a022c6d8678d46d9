// The calls to the system through which a file is saved, in one place, so that tests can let each
// of them fail. Windows only.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/portable/WindowsApi.h"

namespace lum::detail {

/// Every call is the system's of the same purpose: false (an invalid handle, an empty list) with
/// the reason in GetLastError() when it fails.
class CFileCalls {
 public:
  using Path = std::filesystem::path;

  CFileCalls() = default;
  CFileCalls(const CFileCalls&) = delete;
  CFileCalls& operator=(const CFileCalls&) = delete;
  virtual ~CFileCalls() = default;

  /// `creation` is OPEN_EXISTING, CREATE_NEW …; `sharing` says what others may do meanwhile.
  virtual HANDLE Open(const Path& path, DWORD access, DWORD sharing, DWORD creation);
  virtual bool Read(HANDLE file, void* bytes, DWORD size, DWORD& count);
  virtual bool Write(HANDLE file, const void* bytes, DWORD size, DWORD& count);
  virtual bool Flush(HANDLE file);
  virtual bool Close(HANDLE file);
  /// An exclusive lock that belongs to the open file, without waiting. It covers no data: readers
  /// and writers that know nothing of it are not hindered.
  virtual bool Lock(HANDLE file);

  virtual DWORD Attributes(const Path& path);
  virtual bool Information(HANDLE file, BY_HANDLE_FILE_INFORMATION& information);
  /// The path of an open file behind symbolic links and junctions.
  virtual bool FinalPath(HANDLE file, Path& path);
  /// The files of a folder whose names begin with a text.
  virtual std::vector<Path> List(const Path& folder, const std::wstring& beginning);

  /// Gives `source` the name, permissions and attributes of `target`, and `target` the name
  /// `backup`.
  virtual bool Replace(const Path& target, const Path& source, const Path& backup);
  virtual bool Move(const Path& from, const Path& to, DWORD flags);
  virtual bool Remove(const Path& path);

  /// Lets other programs go on for some milliseconds.
  virtual void Pause(int milliseconds);
};

}  // namespace lum::detail
