// A folder for the files of one test, deleted with all it holds at the end of the test. This one
// needs nothing of the libraries: the tests load them by themselves.
#pragma once

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace lum::test {

class CWorkFolder {
 public:
  CWorkFolder()
      : m_path(std::filesystem::temp_directory_path() /
               (L"lum-windows-test-" + std::to_wstring(::GetCurrentProcessId()))) {
    std::filesystem::create_directory(m_path);
  }
  ~CWorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  CWorkFolder(const CWorkFolder&) = delete;
  CWorkFolder& operator=(const CWorkFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

  void Write(const std::wstring& name, std::string_view bytes) const {
    std::ofstream(m_path / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::wstring& name) const {
    std::ifstream stream(m_path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  /// How many entries the folder has: shows temporary files that were left over.
  std::size_t EntryCount() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path),
                                                  std::filesystem::directory_iterator()));
  }

 private:
  std::filesystem::path m_path;
};

}  // namespace lum::test
