// Checks in a process of their own, whose rights, limits and file systems they may change. POSIX
// systems only.
#pragma once

#include <grp.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

namespace lum::testing {

inline constexpr uid_t kNobody = 65534;

/// Runs a check in a child. The check gives its exit code: 0 when all is well.
template <typename Check>
int InChild(Check check) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::_exit(check());
  }
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A user without privileges, where the tests run as root.
inline bool BecomeNobody() {
  return ::geteuid() != 0 ||
         (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

/// Whether that user comes to the folders of the tests: the superuser's temporary files may be kept
/// from everybody else.
inline bool NobodyReachesTemporaryFiles() {
  return InChild([] {
           const std::filesystem::path folder = std::filesystem::temp_directory_path();
           return BecomeNobody() && ::access(folder.c_str(), X_OK) == 0 ? 0 : 1;
         }) == 0;
}

inline constexpr const char* kOutOfReach = "the folder of temporary files is closed to other users";

/// Puts a file system of this process's own over a folder, where that is allowed. The options give
/// its size.
inline bool Mount(const std::filesystem::path& folder, const char* options) {
  return ::unshare(CLONE_NEWNS) == 0 &&
         ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("tmpfs", folder.c_str(), "tmpfs", 0, options) == 0;
}

}  // namespace lum::testing
