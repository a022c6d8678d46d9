// The implementation for Windows.
#include <algorithm>
#include <string>
#include <utility>

#include "platform/portable/AtomicFile.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/TemporaryName.h"
#include "platform/portable/WindowsApi.h"
#include "platform/portable/WindowsHandle.h"

namespace lum::detail {

namespace {

using Path = std::filesystem::path;

constexpr int kMaxNameAttempts = 100;

void RemoveKeepingLastError(const Path& path) {
  const DWORD error = ::GetLastError();
  ::DeleteFileW(path.c_str());
  ::SetLastError(error);
}

using CTemporaryFile = CTemporaryName<&RemoveKeepingLastError>;

// Steps below return false with the reason in GetLastError().

bool Fail(DWORD error) {
  ::SetLastError(error);
  return false;
}

// The file behind symbolic links and junctions.
bool FollowLinks(Path& path) {
  const CHandle file(
      OpenExisting(path, FILE_READ_ATTRIBUTES, kShareAll, FILE_FLAG_BACKUP_SEMANTICS));
  if (!file.IsOpen()) {
    return false;
  }
  std::wstring name(MAX_PATH, L'\0');
  DWORD length = 0;
  while ((length = ::GetFinalPathNameByHandleW(file.Get(), name.data(),
                                               static_cast<DWORD>(name.size()), 0)) > name.size()) {
    name.resize(length);
  }
  name.resize(length);
  path = name;
  return length > 0;
}

// Whether there is a file to replace. False, with the reason, also when it may not be replaced.
bool FindTarget(Path& path, bool& exists) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  exists = attributes != INVALID_FILE_ATTRIBUTES;
  if (!exists) {
    return ::GetLastError() == ERROR_FILE_NOT_FOUND && path.has_filename();
  }
  if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    return Fail(ERROR_ACCESS_DENIED);
  }
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 || FollowLinks(path);
}

Path TemporaryPath(const Path& target, int attempt) {
  LARGE_INTEGER now = {};
  ::QueryPerformanceCounter(&now);
  const std::wstring name = L".saving-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                            std::to_wstring(now.QuadPart) + L"-" + std::to_wstring(attempt);
  return target.parent_path() / name;
}

HANDLE CreateBeside(const Path& target, CTemporaryFile& temporary) {
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    Path path = TemporaryPath(target, attempt);
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
      temporary.Set(std::move(path));
      return file;
    }
    if (::GetLastError() != ERROR_FILE_EXISTS) {
      break;
    }
  }
  return INVALID_HANDLE_VALUE;
}

bool WriteAll(HANDLE file, std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 26;
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (::WriteFile(file, bytes.data(), wanted, &count, nullptr) == 0) {
      return false;
    }
    bytes.remove_prefix(count);
  }
  return true;
}

// Gives the new file the old one's permissions and attributes. Without a name for the old one the
// system would choose one itself, and not everywhere delete the file again.
bool ReplaceExisting(const Path& source, const Path& target, const Path& backup) {
  if (::ReplaceFileW(target.c_str(), source.c_str(), backup.c_str(), 0, nullptr, nullptr) != 0) {
    ::DeleteFileW(backup.c_str());
    return true;
  }
  const DWORD error = ::GetLastError();
  if (error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
    // The old file has its other name already.
    ::MoveFileExW(backup.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH);
  }
  return Fail(error);
}

// Not every file system can replace files; then, and for a new file, the move alone must do.
bool MoveOver(const Path& source, const Path& target, const Path& backup, bool exists) {
  if (exists && ReplaceExisting(source, target, backup)) {
    return true;
  }
  if (exists && MayPass(::GetLastError())) {
    return false;
  }
  return ::MoveFileExW(source.c_str(), target.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

// Has the system write down that the file has its new name, as the move does on its own.
void FlushName(const Path& path) {
  const CHandle file(OpenExisting(path, GENERIC_WRITE, kShareAll));
  if (file.IsOpen()) {
    ::FlushFileBuffers(file.Get());
  }
}

bool Replace(Path target, std::string_view bytes) {
  bool exists = false;
  if (!FindTarget(target, exists)) {
    return false;
  }
  CTemporaryFile temporary;
  CHandle file(CreateBeside(target, temporary));
  if (!file.IsOpen() || !WriteAll(file.Get(), bytes) || ::FlushFileBuffers(file.Get()) == 0 ||
      !file.Close()) {
    return false;
  }
  const Path backup = Path(temporary.Get()).concat(L"-old");
  if (!RetryWhileBusy([&] { return MoveOver(temporary.Get(), target, backup, exists); })) {
    return false;
  }
  temporary.Keep();
  FlushName(target);
  return true;
}

}  // namespace

bool WriteFileAtomically(const CString& path, std::string_view bytes, CString& error) {
  const bool isDone =
      path.Find(L'\0') < 0 ? Replace(SystemPath(path), bytes) : Fail(ERROR_INVALID_NAME);
  if (!isDone) {
    error = WindowsMessage(::GetLastError());
  }
  return isDone;
}

}  // namespace lum::detail
