// The new file beside the one that it is to replace. POSIX systems only.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string_view>

#include "platform/portable/FileCallsPosix.h"
#include "platform/portable/FileTargetPosix.h"
#include "platform/portable/FileUpdate.h"

namespace lum::detail {

/// Removed at the end of its life unless it was kept. Locked while it is open, by which others see
/// that its writer lives. Functions give false with the reason in errno.
class CTemporaryFile {
 public:
  explicit CTemporaryFile(CFileCalls& calls) : m_calls(calls), m_file(calls, -1) {}
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;
  ~CTemporaryFile();

  bool Create(const CTarget& target);
  /// Makes it another name of the target instead.
  bool LinkTo(const CTarget& target);
  bool Write(std::string_view bytes);
  /// Takes over owner and permissions of a target that exists, the owner as far as that is allowed.
  bool TakeOver(const CTarget& target);
  bool Flush();
  bool Close() { return m_file.Close(); }

  const std::filesystem::path& Name() const { return m_path; }
  /// It has another name now.
  void Keep() { m_path.clear(); }

 private:
  bool IsOurs();
  bool ChangeOwner(uid_t user, gid_t group);
  void GiveUp(const std::filesystem::path& path);

  CFileCalls& m_calls;
  std::filesystem::path m_path;
  CDescriptor m_file;
};

/// Gives the closed file the target's name, keeping that many previous versions. Again when a new
/// target has appeared meanwhile.
SaveStep PutInPlace(CFileCalls& calls, CTemporaryFile& temporary, const CTarget& target,
                    int versions);

}  // namespace lum::detail
