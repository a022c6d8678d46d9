// Handles of the system, and opening files that are there. Windows only.
#pragma once

#include <windows.h>

#include <filesystem>
#include <utility>

namespace lum::detail {

/// An open handle, closed at the end of its life.
class CHandle {
 public:
  explicit CHandle(HANDLE handle = INVALID_HANDLE_VALUE) : m_handle(handle) {}
  CHandle(const CHandle&) = delete;
  CHandle& operator=(const CHandle&) = delete;
  ~CHandle() { Close(); }

  bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE && m_handle != nullptr; }
  HANDLE Get() const { return m_handle; }
  /// For calls that give a handle by its address.
  HANDLE* Receive() { return &m_handle; }
  /// False when the system could not close it; true also when there was nothing to close.
  bool Close() {
    const bool wasOpen = IsOpen();
    const HANDLE handle = std::exchange(m_handle, INVALID_HANDLE_VALUE);
    return !wasOpen || ::CloseHandle(handle) != 0;
  }

 private:
  HANDLE m_handle;
};

/// Others may read, write, rename and delete the file meanwhile.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens a file that is there; `sharing` says what others may do meanwhile. INVALID_HANDLE_VALUE
/// when that fails, with the reason in GetLastError().
inline HANDLE OpenExisting(const std::filesystem::path& path, DWORD access, DWORD sharing,
                           DWORD flags = FILE_ATTRIBUTE_NORMAL) {
  return ::CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING, flags, nullptr);
}

}  // namespace lum::detail
