// A folder for the files of one test, deleted with all it holds at the end of the test; and whole
// files as bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/Framework.h"
#include "platform/TextEncoding.h"

class CTemporaryFolder {
 public:
  CTemporaryFolder() {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
      m_path = std::filesystem::temp_directory_path() / ("lum-test-" + std::to_string(random()));
      if (std::filesystem::create_directory(m_path)) {
        return;
      }
    }
    throw std::runtime_error("no temporary folder");
  }
  ~CTemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  CTemporaryFolder(const CTemporaryFolder&) = delete;
  CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }
  /// A file in the folder, by its UTF-8 name.
  std::filesystem::path File(const std::string& name) const {
    return m_path / std::filesystem::path(std::u8string(name.begin(), name.end()));
  }
  /// How many entries the folder has: shows temporary files that were left over.
  std::size_t EntryCount() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path),
                                                  std::filesystem::directory_iterator()));
  }

 private:
  std::filesystem::path m_path;
};

/// A path as the library takes it.
inline CString PathText(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return Utf8ToWide(CStringA(reinterpret_cast<const char*>(text.c_str())));
}

inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) {
    throw std::runtime_error("cannot write " + path.string());
  }
}

inline std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("cannot read " + path.string());
  }
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}
