// CFaultyCalls: the system's calls with faults in them. It numbers the calls, lets chosen ones fail
// or kills the process around them, and keeps account of what is open. POSIX systems only.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/portable/FileCalls.h"

namespace lum::testing {

enum class CallKind {
  Open,
  Read,
  Write,
  ChangeOwner,
  ChangeMode,
  Flush,
  Close,
  Lock,
  Status,
  StatusOfLink,
  StatusOfOpen,
  ReadLink,
  CheckWritable,
  List,
  Rename,
  Link,
  Remove
};

inline const char* NameOf(CallKind kind) {
  constexpr const char* kNames[] = {
      "Open",          "Read", "Write",  "ChangeOwner",  "ChangeMode",   "Flush",
      "Close",         "Lock", "Status", "StatusOfLink", "StatusOfOpen", "ReadLink",
      "CheckWritable", "List", "Rename", "Link",         "Remove"};
  return kNames[static_cast<std::size_t>(kind)];
}

/// What is done to some calls.
struct CFault {
  /// Beside the system's error numbers.
  enum Effect { kShort = -1, kNothing = -2, kKillBefore = -3, kKillAfter = -4 };

  int first = 0;            ///< The number of the first call, from 1; 0 for no fault.
  int effect = 0;           ///< An error number or one of Effect.
  int times = 1;            ///< So many calls, from that one on, of its kind.
  bool touchesAll = false;  ///< Those of other kinds, too.
};

/// Thrown when a save makes so many calls that it would never end.
struct CEndless {};

class CFaultyCalls : public detail::CFileCalls {
 public:
  static constexpr int kForEver = 1 << 30;

  explicit CFaultyCalls(const CFault& fault = {}) : m_fault(fault) {}

  const std::vector<CallKind>& Made() const { return m_made; }
  int HitCount() const { return m_hits; }
  std::size_t OpenCount() const { return m_open.size(); }
  int Paused() const { return m_paused; }
  /// True when a file got a name, but it was not possible to make the name durable.
  bool HasLeftInPlace(const Path& path) const {
    return m_hasFolderFlushFailed && m_named.count(path.filename()) > 0;
  }
  /// True when the system has said that what was written to a new file may be lost.
  bool HasLostBytes() const { return m_hasLostBytes; }
  /// Called before every call of the save and with its kind.
  std::function<void(CallKind)> onCall;
  /// Called instead of waiting.
  std::function<void()> onPause;

  int Open(const Path& path, int flags, mode_t mode) override {
    const int descriptor = Do(CallKind::Open, [&] { return CFileCalls::Open(path, flags, mode); });
    if (descriptor >= 0) {
      m_open.insert(descriptor);
      m_isNew[descriptor] = (flags & O_CREAT) != 0;
    } else if ((flags & O_DIRECTORY) != 0 && errno != EACCES) {
      // Some folders may be written only; any other that cannot be opened should be flushed.
      m_hasFolderFlushFailed = true;
    }
    return descriptor;
  }
  ssize_t Read(int descriptor, void* bytes, std::size_t size) override {
    return Do(CallKind::Read, [&] {
      return CFileCalls::Read(descriptor, bytes, m_isShort ? std::min<std::size_t>(size, 1) : size);
    });
  }
  ssize_t Write(int descriptor, const void* bytes, std::size_t size) override {
    return NoteLoss(descriptor, Do(CallKind::Write, [&] {
                      return CFileCalls::Write(descriptor, bytes, m_isShort ? 1 : size);
                    }));
  }
  int ChangeOwner(int descriptor, uid_t user, gid_t group) override {
    return Do(CallKind::ChangeOwner,
              [&] { return CFileCalls::ChangeOwner(descriptor, user, group); });
  }
  int ChangeMode(int descriptor, mode_t mode) override {
    return Do(CallKind::ChangeMode, [&] { return CFileCalls::ChangeMode(descriptor, mode); });
  }
  /// Does not wait for the disk: no test pulls the plug.
  int Flush(int descriptor) override {
    const int result = NoteLoss(descriptor, Do(CallKind::Flush, [] { return 0; }));
    struct stat status = {};
    const int error = errno;
    if (result != 0 && ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
      m_hasFolderFlushFailed = true;
    }
    errno = error;
    return result;
  }
  /// The descriptor is closed even when that reports an error, as on Linux.
  int Close(int descriptor) override {
    EraseOpen(descriptor);
    const int before = m_hits;
    const int result =
        NoteLoss(descriptor, Do(CallKind::Close, [&] { return CFileCalls::Close(descriptor); }));
    if (result != 0 && m_hits != before) {
      const int error = errno;
      CFileCalls::Close(descriptor);
      errno = error;
    }
    return result;
  }
  int Lock(int descriptor) override {
    return Do(CallKind::Lock, [&] { return CFileCalls::Lock(descriptor); });
  }
  int Status(const Path& path, struct stat& status) override {
    return Do(CallKind::Status, [&] { return CFileCalls::Status(path, status); });
  }
  int StatusOfLink(const Path& path, struct stat& status) override {
    return Do(CallKind::StatusOfLink, [&] { return CFileCalls::StatusOfLink(path, status); });
  }
  int StatusOfOpen(int descriptor, struct stat& status) override {
    return Do(CallKind::StatusOfOpen, [&] { return CFileCalls::StatusOfOpen(descriptor, status); });
  }
  int ReadLink(const Path& path, Path& target) override {
    return Do(CallKind::ReadLink, [&] { return CFileCalls::ReadLink(path, target); });
  }
  int CheckWritable(const Path& path) override {
    return Do(CallKind::CheckWritable, [&] { return CFileCalls::CheckWritable(path); });
  }
  std::vector<Path> List(const Path& folder, const std::string& beginning) override {
    std::vector<Path> found;
    Do(CallKind::List, [&] {
      found = CFileCalls::List(folder, beginning);
      return 0;
    });
    return found;
  }
  int Rename(const Path& from, const Path& to) override {
    return Name(to, Do(CallKind::Rename, [&] { return CFileCalls::Rename(from, to); }));
  }
  int Link(const Path& from, const Path& to) override {
    return Name(to, Do(CallKind::Link, [&] { return CFileCalls::Link(from, to); }));
  }
  int Remove(const Path& path) override {
    return Do(CallKind::Remove, [&] { return CFileCalls::Remove(path); });
  }
  void Pause(int milliseconds) override {
    m_paused += milliseconds;
    if (onPause) {
      onPause();
    }
  }

 private:
  template <typename Result>
  Result NoteLoss(int descriptor, Result result) {
    m_hasLostBytes = m_hasLostBytes || (result < 0 && errno != EINTR && m_isNew[descriptor]);
    return result;
  }

  int Name(const Path& path, int result) {
    if (result == 0) {
      m_named.insert(path.filename());
    }
    return result;
  }

  static constexpr std::size_t kMostCalls = 100000;

  // A descriptor that is closed twice, or was never opened here, shows as a wrong account.
  void EraseOpen(int descriptor) {
    if (m_open.erase(descriptor) == 0) {
      m_open.insert(-descriptor - 1);
    }
  }

  bool IsHit(CallKind kind) {
    const int number = static_cast<int>(m_made.size());
    if (m_fault.first == 0 || number < m_fault.first || m_hits >= m_fault.times) {
      return false;
    }
    const auto firstKind = m_made[static_cast<std::size_t>(m_fault.first) - 1];
    return m_fault.touchesAll || kind == firstKind;
  }

  template <typename Real>
  auto Do(CallKind kind, const Real& real) -> decltype(real()) {
    using Result = decltype(real());
    if (onCall) {
      onCall(kind);
    }
    m_made.push_back(kind);
    if (m_made.size() == kMostCalls) {
      throw CEndless();
    }
    if (!IsHit(kind)) {
      return real();
    }
    ++m_hits;
    return Suffer(real, Result{});
  }

  template <typename Real, typename Result>
  Result Suffer(const Real& real, Result nothing) {
    switch (m_fault.effect) {
      case CFault::kNothing:
        return nothing;
      case CFault::kKillBefore:
        return Die(nothing);
      case CFault::kKillAfter:
        return Die(real());
      case CFault::kShort: {
        m_isShort = true;
        const Result result = real();
        m_isShort = false;
        return result;
      }
      default:
        errno = m_fault.effect;
        return static_cast<Result>(-1);
    }
  }

  template <typename Result>
  static Result Die(Result result) {
    ::kill(::getpid(), SIGKILL);
    return result;
  }

  CFault m_fault;
  std::vector<CallKind> m_made;
  std::set<int> m_open;
  std::set<Path> m_named;
  std::map<int, bool> m_isNew;
  bool m_hasLostBytes = false;
  int m_hits = 0;
  int m_paused = 0;
  bool m_isShort = false;
  bool m_hasFolderFlushFailed = false;
};

}  // namespace lum::testing
