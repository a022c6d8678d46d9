// The procedure of a save, the same on every system. A saver holds a lock on the file that it
// replaces; the new file beside it is locked as well, by which others see that its writer lives.
#include "platform/portable/FileUpdate.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/portable/FileBytes.h"
#include "platform/portable/FileCalls.h"
#include "platform/portable/FileTarget.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/TemporaryFile.h"

namespace lum::detail {

namespace {

// Pauses of 1, 2, 3 … and then 20 ms: ten seconds in all.
constexpr int kMaxAttempts = 510;
constexpr int kMaxPause = 20;

class CTargetFile : public CCurrentFile {
 public:
  CTargetFile(CFileCalls& calls, const CTarget& target) : m_calls(calls), m_target(target) {}

  CString Place(CString& error) const override {
    CString place = PlaceOf(m_calls, m_target.path);
    if (place.IsEmpty()) {
      error = WhyFailed();
    }
    return place;
  }

  bool Exists() const override { return m_target.exists; }

  bool Read(std::size_t limit, std::string& bytes, CString& error) const override {
    const bool isRead = ReadFile(m_calls, m_target.path, limit, bytes);
    if (!isRead) {
      error = WhyFailed();
    }
    return isRead;
  }

 private:
  CFileCalls& m_calls;
  const CTarget& m_target;
};

class CUpdate {
 public:
  CUpdate(const CString& path, int versions, const CMakeContent& make, CString& error,
          CFileCalls& calls)
      : m_path(SystemPath(path)),
        m_versions(versions),
        m_make(make),
        m_error(error),
        m_calls(calls) {}

  FileUpdateResult Run() {
    for (int attempt = 1; attempt <= kMaxAttempts; ++attempt) {
      switch (TryOnce()) {
        case SaveStep::Done:
          return m_result;
        case SaveStep::Failed:
          return FileUpdateResult::Failed;
        case SaveStep::Again:
          m_calls.Pause(std::min(attempt, kMaxPause));
      }
    }
    m_error = L"another program is saving it";
    return FileUpdateResult::Failed;
  }

 private:
  SaveStep TryOnce() {
    CTarget target;
    target.path = m_path;
    CTargetLock lock(m_calls);
    SaveStep step = FindTarget(m_calls, target);
    if (step == SaveStep::Done && target.exists) {
      step = lock.Take(target);
    }
    if (step != SaveStep::Done) {
      return step == SaveStep::Failed ? Fail(target) : step;
    }
    const auto bytes = m_make(CTargetFile(m_calls, target), m_error);
    if (bytes == nullptr) {
      return SaveStep::Failed;
    }
    step = Replace(target, *bytes);
    return step == SaveStep::Failed ? Fail(target) : step;
  }

  SaveStep Fail(const CTarget& target) {
    m_error = WhyNotReplaced(target);
    return SaveStep::Failed;
  }

  SaveStep Replace(const CTarget& target, std::string_view bytes) {
    const CFolder folder(m_calls, target);
    RemoveLeftovers(m_calls, target.path);
    CTemporaryFile temporary(m_calls);
    if (!temporary.Create(target) || !temporary.Write(bytes) || !temporary.TakeOver(target) ||
        !temporary.Flush() || !temporary.Close()) {
      return SaveStep::Failed;
    }
    // Programs that know nothing of the lock may have been here, too.
    if (!IsUnchanged(m_calls, target)) {
      return SaveStep::Again;
    }
    const SaveStep step = PutInPlace(m_calls, temporary, target, m_versions);
    if (step == SaveStep::Done) {
      NoteResult(folder.Flush());
    }
    return step;
  }

  void NoteResult(bool isDurable) {
    m_result = isDurable ? FileUpdateResult::Done : FileUpdateResult::InPlace;
    if (!isDurable) {
      m_error = WhyFailed();
    }
  }

  std::filesystem::path m_path;
  int m_versions;
  const CMakeContent& m_make;
  CString& m_error;
  CFileCalls& m_calls;
  FileUpdateResult m_result = FileUpdateResult::Failed;
};

// Whether to look again for a file that was not there.
bool MayComeBack(const CString& path, CFileCalls& calls) {
  std::filesystem::path target = SystemPath(path);
  return path.Find(L'\0') < 0 && FollowLinks(calls, target) &&
         FinishReplacing(calls, target) == SaveStep::Again;
}

}  // namespace

FileUpdateResult UpdateFile(const CString& path, int versions, const CMakeContent& make,
                            CString& error, CFileCalls& calls) {
  if (path.Find(L'\0') >= 0) {
    error = SystemMessage(ENOENT);
    return FileUpdateResult::Failed;
  }
  return CUpdate(path, versions, make, error, calls).Run();
}

bool ReadSavedFile(const CString& path, std::size_t limit, std::string& bytes, CString& error,
                   CFileCalls& calls) {
  for (int attempt = 1; !ReadWholeFile(path, limit, bytes, error); ++attempt) {
    if (error != SystemMessage(ENOENT) || attempt > kMaxAttempts || !MayComeBack(path, calls)) {
      return false;
    }
    calls.Pause(std::min(attempt, kMaxPause));
  }
  return true;
}

CString FilePlace(const CString& path, CFileCalls& calls) {
  std::filesystem::path target = SystemPath(path);
  return FollowLinks(calls, target) ? PlaceOf(calls, target) : CString();
}

std::filesystem::path FileBehindLinks(const CString& path, CFileCalls& calls) {
  std::filesystem::path target = SystemPath(path);
  FollowLinks(calls, target);
  return target;
}

}  // namespace lum::detail
