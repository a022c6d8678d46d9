// The name of a file that is there only for a while.
#pragma once

#include <filesystem>
#include <utility>

namespace lum::detail {

/// Removes the file at the end of its life unless it was kept. `Remove` must leave the system's
/// last error as it is: it is the reason why the file is not kept.
template <void (*Remove)(const std::filesystem::path&)>
class CTemporaryName {
 public:
  CTemporaryName() = default;
  CTemporaryName(const CTemporaryName&) = delete;
  CTemporaryName& operator=(const CTemporaryName&) = delete;
  ~CTemporaryName() {
    if (!m_path.empty()) {
      Remove(m_path);
    }
  }

  void Set(std::filesystem::path path) { m_path = std::move(path); }
  const std::filesystem::path& Get() const { return m_path; }
  void Keep() { m_path.clear(); }

 private:
  std::filesystem::path m_path;
};

}  // namespace lum::detail
