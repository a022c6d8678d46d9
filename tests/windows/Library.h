// A dynamic library loaded by the system's loader, freed at the end of its life; and where the
// programs under test are.
#pragma once

#include <windows.h>

#include <filesystem>

namespace lum::test {

/// The folder of this program, of the libraries and of the tool.
inline std::filesystem::path ProgramFolder() {
  wchar_t path[1024] = L"";
  ::GetModuleFileNameW(nullptr, path, 1024);
  return std::filesystem::path(path).parent_path();
}

class CLibrary {
 public:
  /// Looks for what the library needs in the library's own folder. LastError tells why it was not
  /// loaded.
  explicit CLibrary(const std::filesystem::path& file)
      : m_module(::LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH)),
        m_error(m_module == nullptr ? ::GetLastError() : ERROR_SUCCESS) {}
  ~CLibrary() { Free(); }
  CLibrary(const CLibrary&) = delete;
  CLibrary& operator=(const CLibrary&) = delete;

  bool IsLoaded() const { return m_module != nullptr; }
  DWORD LastError() const { return m_error; }
  HMODULE Module() const { return m_module; }

  void Free() {
    if (m_module != nullptr) {
      ::FreeLibrary(m_module);
      m_module = nullptr;
    }
  }

  /// Null when the library exports no such name.
  void* Address(const char* name) const {
    return reinterpret_cast<void*>(::GetProcAddress(m_module, name));
  }
  template <typename Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(Address(name));
  }

 private:
  HMODULE m_module;
  DWORD m_error;
};

}  // namespace lum::test
