// The implementation for Windows.
#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/TextEncoding.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/WindowsApi.h"
#include "platform/portable/WindowsHandle.h"

namespace lum::detail {

namespace {

// The absolute form of a path, empty when the system has none.
std::wstring FullPath(const std::wstring& path) {
  std::wstring full(path.size() + MAX_PATH, L'\0');
  const DWORD length =
      ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  full.resize(length < full.size() ? length : 0);
  return full;
}

// Only with this prefix does the system take paths of any length.
std::wstring WithLongPrefix(const std::wstring& fullPath) {
  const bool isShare = fullPath.starts_with(L"\\\\");
  return isShare ? L"\\\\?\\UNC" + fullPath.substr(1) : L"\\\\?\\" + fullPath;
}

bool IsFolder(const std::filesystem::path& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The C library's file for a handle, which it closes from then on, also when this fails.
CFilePointer FileOfHandle(HANDLE handle) {
  const int descriptor = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle),
                                           _O_RDONLY | _O_BINARY | _O_NOINHERIT);
  if (descriptor < 0) {
    ::CloseHandle(handle);
    return nullptr;
  }
  CFilePointer file(::_fdopen(descriptor, "rb"));
  if (!file) {
    ::_close(descriptor);
  }
  return file;
}

}  // namespace

std::filesystem::path SystemPath(const CString& path) {
  // Beside the file there must be room for the name of a temporary one.
  constexpr std::size_t kMostWithoutPrefix = MAX_PATH - 80;
  const std::wstring text(path.GetString(), static_cast<std::size_t>(path.GetLength()));
  const bool hasPrefix = text.starts_with(L"\\\\?\\") || text.starts_with(L"\\\\.\\");
  const std::wstring full = hasPrefix ? text : FullPath(text);
  if (full.empty()) {
    return text;
  }
  return hasPrefix || full.size() <= kMostWithoutPrefix ? full : WithLongPrefix(full);
}

CString PathText(const std::filesystem::path& path) { return CString(path.c_str()); }

CString SystemMessage(int error) {
  return Utf8ToWide(CStringA(std::generic_category().message(error).c_str()));
}

CFilePointer OpenForReading(const CString& path, CString& error) {
  const std::filesystem::path systemPath = SystemPath(path);
  if (IsFolder(systemPath)) {
    error = SystemMessage(EISDIR);
    return nullptr;
  }
  // The C library itself would not let others rename and delete the file meanwhile.
  HANDLE handle = INVALID_HANDLE_VALUE;
  const auto open = [&] {
    handle = OpenExisting(systemPath, GENERIC_READ, kShareAll);
    return handle != INVALID_HANDLE_VALUE;
  };
  if (!RetryWhileBusy(open, [](DWORD pause) { ::Sleep(pause); })) {
    error = WindowsMessage(::GetLastError());
    return nullptr;
  }
  CFilePointer file = FileOfHandle(handle);
  if (!file) {
    error = SystemMessage(errno);
  }
  return file;
}

}  // namespace lum::detail
