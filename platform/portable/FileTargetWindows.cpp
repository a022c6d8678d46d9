#include "platform/portable/FileTargetWindows.h"

#include <algorithm>
#include <utility>

#include "platform/portable/FileNames.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/WindowsHandle.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

constexpr DWORD kPieceBytes = DWORD{1} << 16;

bool Fail(DWORD error) {
  ::SetLastError(error);
  return false;
}

CFileHandle OpenThere(CFileCalls& calls, const Path& path, DWORD access) {
  return {calls, calls.Open(path, access, kShareAll, OPEN_EXISTING)};
}

bool ReadStatus(CFileCalls& calls, const Path& path, BY_HANDLE_FILE_INFORMATION& status) {
  const CFileHandle file = OpenThere(calls, path, FILE_READ_ATTRIBUTES);
  return file.IsOpen() && calls.Information(file.Get(), status);
}

// Takes the lock where the file system has locks.
bool IsLockedByOther(CFileCalls& calls, const CFileHandle& file) {
  return !calls.Lock(file.Get()) && ::GetLastError() == ERROR_LOCK_VIOLATION;
}

// Another saver may have given the file its other name this moment.
SaveStep AgainIfGone() {
  return ::GetLastError() == ERROR_FILE_NOT_FOUND ? SaveStep::Again : SaveStep::Failed;
}

bool IsSameTime(const FILETIME& a, const FILETIME& b) {
  return a.dwLowDateTime == b.dwLowDateTime && a.dwHighDateTime == b.dwHighDateTime;
}

bool IsSameFile(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) {
  return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
         a.nFileIndexLow == b.nFileIndexLow && a.nFileSizeHigh == b.nFileSizeHigh &&
         a.nFileSizeLow == b.nFileSizeLow && IsSameTime(a.ftLastWriteTime, b.ftLastWriteTime);
}

}  // namespace

CFileHandle::CFileHandle(CFileHandle&& other) noexcept
    : m_calls(other.m_calls), m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}

CFileHandle& CFileHandle::operator=(CFileHandle&& other) noexcept {
  std::swap(m_calls, other.m_calls);
  std::swap(m_handle, other.m_handle);
  return *this;
}

CFileHandle::~CFileHandle() {
  const DWORD error = ::GetLastError();
  Close();
  ::SetLastError(error);
}

bool CFileHandle::Close() {
  const HANDLE handle = std::exchange(m_handle, INVALID_HANDLE_VALUE);
  return handle == INVALID_HANDLE_VALUE || m_calls->Close(handle);
}

bool FollowLinks(CFileCalls& calls, Path& path) {
  const DWORD attributes = calls.Attributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    return true;
  }
  const CFileHandle file = OpenThere(calls, path, FILE_READ_ATTRIBUTES);
  return file.IsOpen() && calls.FinalPath(file.Get(), path);
}

SaveStep FindTarget(CFileCalls& calls, CTarget& target) {
  const DWORD attributes = calls.Attributes(target.path);
  target.exists = attributes != INVALID_FILE_ATTRIBUTES;
  if (!target.exists) {
    return ::GetLastError() == ERROR_FILE_NOT_FOUND && target.path.has_filename()
               ? FinishReplacing(calls, target.path)
               : SaveStep::Failed;
  }
  if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    ::SetLastError(ERROR_ACCESS_DENIED);
    return SaveStep::Failed;
  }
  return FollowLinks(calls, target.path) && ReadStatus(calls, target.path, target.status)
             ? SaveStep::Done
             : AgainIfGone();
}

SaveStep FinishReplacing(CFileCalls& calls, const Path& path) {
  for (const Path& leftover : calls.List(path.parent_path(), TemporaryBeginning(path))) {
    if (!IsReplaced(leftover)) {
      continue;
    }
    const CFileHandle file = OpenThere(calls, leftover, GENERIC_READ);
    if (file.IsOpen() && !IsLockedByOther(calls, file)) {
      calls.Move(leftover, path, MOVEFILE_WRITE_THROUGH);
    }
    return SaveStep::Again;
  }
  return calls.Attributes(path) != INVALID_FILE_ATTRIBUTES ? SaveStep::Again : SaveStep::Done;
}

bool IsUnchanged(CFileCalls& calls, const CTarget& target) {
  BY_HANDLE_FILE_INFORMATION now = {};
  if (!ReadStatus(calls, target.path, now)) {
    return !target.exists && ::GetLastError() == ERROR_FILE_NOT_FOUND;
  }
  return target.exists && IsSameFile(now, target.status);
}

// A file that others have open for themselves cannot be locked; replacing it tells them then.
SaveStep CTargetLock::Take(CTarget& target) {
  m_file = OpenThere(m_calls, target.path, GENERIC_READ);
  if (!m_file.IsOpen()) {
    return MayPass(::GetLastError()) ? SaveStep::Done : AgainIfGone();
  }
  if (IsLockedByOther(m_calls, m_file)) {
    return SaveStep::Again;
  }
  if (!m_calls.Information(m_file.Get(), target.status)) {
    return SaveStep::Failed;
  }
  // Whoever held the lock before may have put another file there.
  return IsUnchanged(m_calls, target) ? SaveStep::Done : SaveStep::Again;
}

// The move itself may be on disk already: a file that cannot be opened now is none the worse.
bool CFolder::Flush() const {
  const CFileHandle file = OpenThere(m_calls, m_target.path, GENERIC_WRITE);
  if (file.IsOpen()) {
    m_calls.Flush(file.Get());
  }
  return true;
}

// The system does not tell apart names by case.
CString PlaceOf(CFileCalls& calls, const Path& path) {
  Path folder = path.parent_path().empty() ? Path(".") : path.parent_path();
  const CFileHandle file = OpenThere(calls, folder, FILE_READ_ATTRIBUTES);
  if (!file.IsOpen() || !calls.FinalPath(file.Get(), folder)) {
    return CString();
  }
  CString place = PathText(folder / path.filename());
  place.MakeUpper();
  return place;
}

void RemoveLeftovers(CFileCalls& calls, const Path& path) {
  for (const Path& leftover : calls.List(path.parent_path(), TemporaryBeginning(path))) {
    const CFileHandle file = OpenThere(calls, leftover, GENERIC_READ);
    if (file.IsOpen() && !IsLockedByOther(calls, file)) {
      calls.Remove(leftover);
    }
  }
}

bool ReadFile(CFileCalls& calls, const Path& path, std::size_t limit, std::string& bytes) {
  CFileHandle file(calls, INVALID_HANDLE_VALUE);
  const auto open = [&] {
    file = OpenThere(calls, path, GENERIC_READ);
    return file.IsOpen();
  };
  if (!RetryWhileBusy(open, [&](DWORD pause) { calls.Pause(static_cast<int>(pause)); })) {
    return false;
  }
  std::string read;
  DWORD count = kPieceBytes;
  while (count > 0) {
    const std::size_t size = read.size();
    if (size > limit) {
      return Fail(ERROR_FILE_TOO_LARGE);
    }
    read.resize(size + kPieceBytes);
    if (!calls.Read(file.Get(), &read[size], kPieceBytes, count)) {
      return false;
    }
    read.resize(size + count);
  }
  bytes = std::move(read);
  return true;
}

CString WhyFailed() { return WindowsMessage(::GetLastError()); }

CString WhyNotReplaced(const CTarget&) { return WhyFailed(); }

}  // namespace lum::detail
