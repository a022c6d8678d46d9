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

bool SucceedsOrIsMissing(bool result) { return result || ::GetLastError() == ERROR_FILE_NOT_FOUND; }

bool RemoveFrom(CFileCalls& calls, const Path& path, int version) {
  while (calls.Remove(VersionOf(path, version))) {
    ++version;
  }
  return ::GetLastError() == ERROR_FILE_NOT_FOUND;
}

// Makes room for a new version 1.
bool MoveVersionsUp(CFileCalls& calls, const Path& path, int count) {
  if (!RemoveFrom(calls, path, count)) {
    return false;
  }
  for (int version = count - 1; version >= 1; --version) {
    if (!SucceedsOrIsMissing(calls.Move(VersionOf(path, version), VersionOf(path, version + 1),
                                        MOVEFILE_REPLACE_EXISTING))) {
      return false;
    }
  }
  return true;
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
// file again. It becomes version 1 when it has been replaced: until then it must be found by its
// name, see FinishReplacing.
SaveStep ReplaceTarget(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                       int versions) {
  const bool keepsOld = versions > 0;
  if (keepsOld && !MoveVersionsUp(calls, target.path, versions)) {
    return SaveStep::Failed;
  }
  const Path replaced = ReplacedName(temporary.Name());
  if (!RetryWhileBusy(
          [&] { return MoveOver(calls, temporary.Name(), target.path, replaced, keepsOld); },
          [&](DWORD pause) { calls.Pause(static_cast<int>(pause)); })) {
    return ::GetLastError() == ERROR_FILE_NOT_FOUND ? SaveStep::Again : SaveStep::Failed;
  }
  temporary.Keep();
  if (!keepsOld || !calls.Move(replaced, VersionOf(target.path, 1), MOVEFILE_REPLACE_EXISTING)) {
    calls.Remove(replaced);
  }
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
