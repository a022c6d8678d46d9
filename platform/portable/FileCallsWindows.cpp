#include "platform/portable/FileCallsWindows.h"

namespace lum::detail {

// A folder, too, can be opened for its attributes.
HANDLE CFileCalls::Open(const Path& path, DWORD access, DWORD sharing, DWORD creation) {
  return ::CreateFileW(path.c_str(), access, sharing, nullptr, creation,
                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

bool CFileCalls::Read(HANDLE file, void* bytes, DWORD size, DWORD& count) {
  return ::ReadFile(file, bytes, size, &count, nullptr) != 0;
}

bool CFileCalls::Write(HANDLE file, const void* bytes, DWORD size, DWORD& count) {
  return ::WriteFile(file, bytes, size, &count, nullptr) != 0;
}

bool CFileCalls::Flush(HANDLE file) { return ::FlushFileBuffers(file) != 0; }

bool CFileCalls::Close(HANDLE file) { return ::CloseHandle(file) != 0; }

bool CFileCalls::Lock(HANDLE file) {
  OVERLAPPED place = {};
  place.OffsetHigh = 0x7FFFFFFF;
  return ::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) !=
         0;
}

DWORD CFileCalls::Attributes(const Path& path) { return ::GetFileAttributesW(path.c_str()); }

bool CFileCalls::Information(HANDLE file, BY_HANDLE_FILE_INFORMATION& information) {
  return ::GetFileInformationByHandle(file, &information) != 0;
}

bool CFileCalls::FinalPath(HANDLE file, Path& path) {
  std::wstring name(MAX_PATH, L'\0');
  DWORD length = 0;
  while ((length = ::GetFinalPathNameByHandleW(file, name.data(), static_cast<DWORD>(name.size()),
                                               0)) > name.size()) {
    name.resize(length);
  }
  name.resize(length);
  path = name;
  return length > 0;
}

std::vector<CFileCalls::Path> CFileCalls::List(const Path& folder, const std::wstring& beginning) {
  std::vector<Path> found;
  WIN32_FIND_DATAW entry = {};
  const HANDLE search = ::FindFirstFileW((folder / (beginning + L'*')).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return found;
  }
  do {
    found.push_back(folder / entry.cFileName);
  } while (::FindNextFileW(search, &entry) != 0);
  ::FindClose(search);
  return found;
}

bool CFileCalls::Replace(const Path& target, const Path& source, const Path& backup) {
  return ::ReplaceFileW(target.c_str(), source.c_str(), backup.c_str(), 0, nullptr, nullptr) != 0;
}

bool CFileCalls::Move(const Path& from, const Path& to, DWORD flags) {
  return ::MoveFileExW(from.c_str(), to.c_str(), flags) != 0;
}

bool CFileCalls::Remove(const Path& path) { return ::DeleteFileW(path.c_str()) != 0; }

void CFileCalls::Pause(int milliseconds) { ::Sleep(static_cast<DWORD>(milliseconds)); }

}  // namespace lum::detail
