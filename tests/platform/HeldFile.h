// A file that this process has open for reading, as another program might. Windows only.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "platform/portable/WindowsApi.h"

class CHeldFile {
 public:
  /// `sharing` are the system's FILE_SHARE_ flags: what others may do meanwhile.
  CHeldFile(const std::filesystem::path& path, DWORD sharing)
      : m_handle(::CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr)) {
    EXPECT_NE(m_handle, INVALID_HANDLE_VALUE);
  }
  ~CHeldFile() { Close(); }
  CHeldFile(const CHeldFile&) = delete;
  CHeldFile& operator=(const CHeldFile&) = delete;

  void Close() {
    const HANDLE handle = std::exchange(m_handle, INVALID_HANDLE_VALUE);
    if (handle != INVALID_HANDLE_VALUE) {
      ::CloseHandle(handle);
    }
  }

 private:
  HANDLE m_handle;
};
