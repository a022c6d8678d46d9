#include "platform/portable/TemporaryFileWindows.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/portable/FileNames.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

constexpr int kMaxNameAttempts = 100;

Path TemporaryPath(const Path& target, int attempt) {
  LARGE_INTEGER now = {};
  ::QueryPerformanceCounter(&now);
  const std::wstring name = TemporaryBeginning(target) + std::to_wstring(::GetCurrentProcessId()) +
                            L'-' + std::to_wstring(now.QuadPart) + L'-' + std::to_wstring(attempt);
  return target.parent_path() / name;
}

// The first number from there on that no version has. 0, with the reason in GetLastError(), when
// that cannot be told or a folder is in the way: that is somebody's own.
int FirstFree(CFileCalls& calls, const Path& path, int version) {
  DWORD attributes = 0;
  while ((attributes = calls.Attributes(VersionOf(path, version))) != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      ::SetLastError(ERROR_DIRECTORY);
      return 0;
    }
    ++version;
  }
  return ::GetLastError() == ERROR_FILE_NOT_FOUND ? version : 0;
}

// Versions move up to the first free number only: a save that fails or is killed later leaves a
// free number, and the next one does not move the others any further.
bool MoveVersionsUp(CFileCalls& calls, const Path& path) {
  const int free = FirstFree(calls, path, 1);
  for (int version = free - 1; version >= 1; --version) {
    if (!calls.Move(VersionOf(path, version), VersionOf(path, version + 1), 0)) {
      return false;
    }
  }
  return free > 0;
}

// From the last to the first: whenever this ends, no version behind a free number is forgotten.
void RemoveVersionsBeyond(CFileCalls& calls, const Path& path, int count) {
  const int free = FirstFree(calls, path, count + 1);
  for (int version = free - 1; version > count; --version) {
    calls.Remove(VersionOf(path, version));
  }
}

// The replaced file becomes version 1 only now: until it was replaced it had to be found by its
// name, see FinishReplacing.
void KeepReplaced(CFileCalls& calls, const Path& replaced, const Path& target, int versions) {
  if (versions > 0 && calls.Move(replaced, VersionOf(target, 1), 0)) {
    RemoveVersionsBeyond(calls, target, versions);
  } else {
    calls.Remove(replaced);
  }
}

bool Replace(CFileCalls& calls, const Path& source, const Path& target, const Path& backup) {
  if (calls.Replace(target, source, backup)) {
    return true;
  }
  const DWORD error = ::GetLastError();
  if (error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
    // The old file has its other name already.
    calls.Move(backup, target, MOVEFILE_WRITE_THROUGH);
  }
  ::SetLastError(error);
  return false;
}

// Not every file system can replace files; then the moves alone must do.
bool MoveOver(CFileCalls& calls, const Path& source, const Path& target, const Path& backup,
              bool keepsBackup) {
  if (Replace(calls, source, target, backup)) {
    return true;
  }
  if (MayPass(::GetLastError()) || keepsBackup) {
    return false;
  }
  return calls.Move(source, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

// Without a name for the old file the system would choose one itself, and not everywhere delete the
// file again.
SaveStep ReplaceTarget(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                       int versions) {
  const bool keepsOld = versions > 0;
  if (keepsOld && !MoveVersionsUp(calls, target.path)) {
    return SaveStep::Failed;
  }
  const Path replaced = ReplacedName(temporary.Name());
  if (!RetryWhileBusy(
          [&] { return MoveOver(calls, temporary.Name(), target.path, replaced, keepsOld); },
          [&](DWORD pause) { calls.Pause(static_cast<int>(pause)); })) {
    return ::GetLastError() == ERROR_FILE_NOT_FOUND ? SaveStep::Again : SaveStep::Failed;
  }
  temporary.Keep();
  KeepReplaced(calls, replaced, target.path, versions);
  return SaveStep::Done;
}

// A closed file can be removed by another saver, who takes it for a dead one's.
SaveStep Appear(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target) {
  if (calls.Move(temporary.Name(), target.path, MOVEFILE_WRITE_THROUGH)) {
    temporary.Keep();
    return SaveStep::Done;
  }
  const DWORD error = ::GetLastError();
  return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ||
                 error == ERROR_FILE_NOT_FOUND || MayPass(error)
             ? SaveStep::Again
             : SaveStep::Failed;
}

}  // namespace

CTemporaryFile::~CTemporaryFile() {
  const DWORD error = ::GetLastError();
  m_file.Close();
  if (!m_path.empty()) {
    m_calls.Remove(m_path);
  }
  ::SetLastError(error);
}

bool CTemporaryFile::Create(const CTarget& target) {
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    Path path = TemporaryPath(target.path, attempt);
    m_file = CFileHandle(m_calls, m_calls.Open(path, GENERIC_WRITE, 0, CREATE_NEW));
    if (m_file.IsOpen()) {
      m_path = std::move(path);
      return true;
    }
    if (::GetLastError() != ERROR_FILE_EXISTS) {
      break;
    }
  }
  return false;
}

bool CTemporaryFile::Write(std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 26;
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (!m_calls.Write(m_file.Get(), bytes.data(), wanted, count)) {
      return false;
    }
    bytes.remove_prefix(count);
  }
  return true;
}

SaveStep PutInPlace(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                    int versions) {
  return target.exists ? ReplaceTarget(calls, temporary, target, versions)
                       : Appear(calls, temporary, target);
}

}  // namespace lum::detail
