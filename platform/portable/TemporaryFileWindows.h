// The new file beside the one that it is to replace. Windows only.
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/portable/FileCallsWindows.h"
#include "platform/portable/FileTargetWindows.h"
#include "platform/portable/FileUpdate.h"

namespace lum::detail {

/// Removed at the end of its life unless it was kept. Nobody else can open it, or remove it, while
/// it is open. Functions give false with the reason in GetLastError().
class CTemporaryFile {
 public:
  explicit CTemporaryFile(CFileCalls& calls)
      : m_calls(calls), m_file(calls, INVALID_HANDLE_VALUE) {}
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;
  ~CTemporaryFile();

  bool Create(const CTarget& target);
  bool Write(std::string_view bytes);
  /// Replacing hands over permissions and attributes by itself.
  bool TakeOver(const CTarget&) { return true; }
  bool Flush() { return m_calls.Flush(m_file.Get()); }
  bool Close() { return m_file.Close(); }

  const std::filesystem::path& Name() const { return m_path; }
  /// It has another name now.
  void Keep() { m_path.clear(); }

 private:
  CFileCalls& m_calls;
  std::filesystem::path m_path;
  CFileHandle m_file;
};

/// Gives the closed file the target's name, keeping that many previous versions. Again when a new
/// target has appeared meanwhile. Others may have the files open for a moment: tries for half a
/// second.
SaveStep PutInPlace(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                    int versions);

}  // namespace lum::detail
