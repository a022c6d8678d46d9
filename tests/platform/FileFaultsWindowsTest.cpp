// Every call of a save fails on Windows, once or from then on: the file is the old one or the new
// one, the result says which, and nothing is left behind. Others hold and lock the file meanwhile.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <set>
#include <string>
#include <utility>

#include "platform/portable/FileCalls.h"
#include "platform/portable/WindowsHandle.h"
#include "tests/platform/FileSavingTesting.h"

namespace {

using lum::detail::CFileCalls;
using lum::detail::CHandle;
using lum::testing::CSituated;
using lum::testing::CSituation;
using lum::testing::kSituations;

/// The system's calls, of which those from the n-th on fail so many times.
class CFaultyCalls : public CFileCalls {
 public:
  CFaultyCalls() = default;
  CFaultyCalls(int first, int times, DWORD error)
      : m_first(first), m_times(times), m_error(error) {}

  int Count() const { return m_count; }
  std::size_t OpenCount() const { return m_open.size(); }
  int Pauses() const { return m_pauses; }
  bool HasFailedToRemove() const { return m_hasFailedToRemove; }
  /// Called instead of waiting.
  std::function<void()> onPause;

  HANDLE Open(const Path& path, DWORD access, DWORD sharing, DWORD creation) override {
    if (Fails()) {
      return INVALID_HANDLE_VALUE;
    }
    const HANDLE file = CFileCalls::Open(path, access, sharing, creation);
    if (file != INVALID_HANDLE_VALUE) {
      m_open.insert(file);
    }
    return file;
  }
  bool Read(HANDLE file, void* bytes, DWORD size, DWORD& count) override {
    return !Fails() && CFileCalls::Read(file, bytes, size, count);
  }
  bool Write(HANDLE file, const void* bytes, DWORD size, DWORD& count) override {
    return !Fails() && CFileCalls::Write(file, bytes, std::min<DWORD>(size, 20), count);
  }
  bool Flush(HANDLE file) override { return !Fails() && CFileCalls::Flush(file); }
  bool Close(HANDLE file) override {
    m_open.erase(file);
    const bool isClosed = CFileCalls::Close(file);
    return !Fails() && isClosed;
  }
  bool Lock(HANDLE file) override { return !Fails() && CFileCalls::Lock(file); }
  DWORD Attributes(const Path& path) override {
    return Fails() ? INVALID_FILE_ATTRIBUTES : CFileCalls::Attributes(path);
  }
  bool Information(HANDLE file, BY_HANDLE_FILE_INFORMATION& information) override {
    return !Fails() && CFileCalls::Information(file, information);
  }
  bool FinalPath(HANDLE file, Path& path) override {
    return !Fails() && CFileCalls::FinalPath(file, path);
  }
  std::vector<Path> List(const Path& folder, const std::wstring& beginning) override {
    return Fails() ? std::vector<Path>() : CFileCalls::List(folder, beginning);
  }
  bool Replace(const Path& target, const Path& source, const Path& backup) override {
    return !Fails() && CFileCalls::Replace(target, source, backup);
  }
  bool Move(const Path& from, const Path& to, DWORD flags) override {
    return !Fails() && CFileCalls::Move(from, to, flags);
  }
  bool Remove(const Path& path) override {
    const bool fails = Fails();
    m_hasFailedToRemove = m_hasFailedToRemove || fails;
    return !fails && CFileCalls::Remove(path);
  }
  void Pause(int) override {
    ++m_pauses;
    if (onPause) {
      onPause();
    }
  }

 private:
  bool Fails() {
    ++m_count;
    if (m_first == 0 || m_count < m_first || m_count - m_first >= m_times) {
      return false;
    }
    ::SetLastError(m_error);
    return true;
  }

  int m_first = 0;
  int m_times = 0;
  DWORD m_error = 0;
  int m_count = 0;
  int m_pauses = 0;
  bool m_hasFailedToRemove = false;
  std::set<HANDLE> m_open;
};

class FileFaultsWindows : public testing::TestWithParam<CSituation> {};

void ExpectOldOrNew(CSituated& situated, const CFaultyCalls& calls, FileSaveResult result) {
  const bool isSaved = result == situated.Success();
  EXPECT_TRUE(isSaved || result == FileSaveResult::Failed) << static_cast<int>(result);
  EXPECT_EQ(situated.Content(), isSaved ? situated.NewContent() : situated.OldContent());
  EXPECT_EQ(situated.saved.error.IsEmpty(), isSaved);
  EXPECT_EQ(calls.OpenCount(), 0u);
  if (!calls.HasFailedToRemove()) {
    EXPECT_EQ(situated.StrayCount(), 0u);
  }
}

void ExpectNextSaveTidies(CSituated& situated) {
  CFileCalls calls;
  const FileSaveResult result = situated.Save(calls);
  EXPECT_TRUE(result == FileSaveResult::Saved || result == FileSaveResult::Merged)
      << CStringA(situated.saved.error).GetString();
  EXPECT_EQ(situated.Content(), situated.NewContent());
  CFileCalls again;
  situated.Save(again);
  EXPECT_EQ(situated.StrayCount(), 0u);
}

TEST_P(FileFaultsWindows, AnyCallThatFailsLeavesTheOldFileOrTheNewOne) {
  CSituated plain(GetParam());
  CFaultyCalls unharmed;
  ASSERT_EQ(plain.Save(unharmed), plain.Success()) << CStringA(plain.saved.error).GetString();
  int faults = 0;
  for (const DWORD error : {ERROR_DISK_FULL, ERROR_ACCESS_DENIED, ERROR_FILE_NOT_FOUND}) {
    for (const int times : {1, 1 << 30}) {
      for (int first = 1; first <= unharmed.Count(); ++first) {
        SCOPED_TRACE("call " + std::to_string(first) + " of " + std::to_string(unharmed.Count()) +
                     ", error " + std::to_string(error) + (times == 1 ? ", once" : ", for ever"));
        CSituated situated(GetParam());
        CFaultyCalls calls(first, times, error);
        ExpectOldOrNew(situated, calls, situated.Save(calls));
        ExpectNextSaveTidies(situated);
        ++faults;
      }
    }
  }
  std::cout << "faults injected: " << faults << '\n';
}

// Programs do not make links under Wine.
INSTANTIATE_TEST_SUITE_P(Situations, FileFaultsWindows,
                         testing::Values(kSituations[0], kSituations[1], kSituations[4],
                                         kSituations[6]));

TEST(FileLockWindows, WaitsForAnotherSaver) {
  CSituated situated(kSituations[0]);
  CFileCalls other;
  CHandle held(lum::detail::OpenExisting(situated.Target(), GENERIC_READ, lum::detail::kShareAll));
  ASSERT_TRUE(other.Lock(held.Get()));
  CFaultyCalls calls;
  calls.onPause = [&] {
    if (calls.Pauses() == 5) {
      held.Close();
    }
  };
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
  EXPECT_EQ(calls.Pauses(), 5);
  EXPECT_EQ(situated.Content(), situated.NewContent());
}

TEST(FileLockWindows, GivesUpWhenAnotherSaverNeverEnds) {
  CSituated situated(kSituations[0]);
  CFileCalls other;
  const CHandle held(
      lum::detail::OpenExisting(situated.Target(), GENERIC_READ, lum::detail::kShareAll));
  ASSERT_TRUE(other.Lock(held.Get()));
  CFaultyCalls calls;
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Failed);
  EXPECT_EQ(situated.saved.error, L"another program is saving it");
  EXPECT_GT(calls.Pauses(), 100);
  EXPECT_EQ(situated.Content(), situated.OldContent());
  EXPECT_EQ(situated.StrayCount(), 0u);
}

TEST(FileLockWindows, DoesNotHinderReaders) {
  CSituated situated(kSituations[0]);
  CFileCalls calls;
  const CHandle locked(
      lum::detail::OpenExisting(situated.Target(), GENERIC_READ, lum::detail::kShareAll));
  ASSERT_TRUE(calls.Lock(locked.Get()));
  EXPECT_EQ(situated.Content(), situated.OldContent());
}

TEST(FileHeldWindows, LeavesTheOldFileWhileAnotherHasItToItself) {
  for (const int versions : {0, 1, 3}) {
    CSituated situated({"held", true, false, false, versions});
    {
      const CHandle held(lum::detail::OpenExisting(situated.Target(), GENERIC_READ, 0));
      ASSERT_TRUE(held.IsOpen());
      CFaultyCalls calls;
      EXPECT_EQ(situated.Save(calls), FileSaveResult::Failed);
      EXPECT_GT(calls.Pauses(), 0);
      EXPECT_FALSE(situated.saved.error.IsEmpty());
    }
    EXPECT_EQ(situated.Content(), situated.OldContent());
    EXPECT_EQ(situated.StrayCount(), 0u);
    ExpectNextSaveTidies(situated);
  }
}

// What a saver leaves that is killed between the two steps of replacing.
class FileHalfReplaced : public testing::Test {
 protected:
  FileHalfReplaced() : m_situated(kSituations[0]) {
    std::filesystem::rename(m_situated.Target(), Replaced());
  }
  std::filesystem::path Replaced() const {
    return m_situated.Folder().File(".file.cfg.saving-1-2-3-old");
  }
  CSituated m_situated;
};

TEST_F(FileHalfReplaced, IsWholeAgainForReaders) {
  FileObject file;
  EXPECT_TRUE(file.Load(PathText(m_situated.Target())));
  EXPECT_EQ(m_situated.Content(), m_situated.OldContent());
  EXPECT_EQ(m_situated.StrayCount(), 0u);
}

TEST_F(FileHalfReplaced, IsWholeAgainForSavers) {
  CFaultyCalls calls;
  EXPECT_EQ(m_situated.Save(calls), FileSaveResult::Saved);
  EXPECT_EQ(m_situated.Content(), m_situated.NewContent());
  EXPECT_EQ(m_situated.StrayCount(), 0u);
}

TEST_F(FileHalfReplaced, IsLeftToASaverThatLives) {
  CFileCalls other;
  CHandle held(lum::detail::OpenExisting(Replaced(), GENERIC_READ, lum::detail::kShareAll));
  ASSERT_TRUE(other.Lock(held.Get()));
  CFaultyCalls calls;
  calls.onPause = [&] {
    if (calls.Pauses() == 3) {
      std::filesystem::rename(Replaced(), m_situated.Target());
      held.Close();
    }
  };
  EXPECT_EQ(m_situated.Save(calls), FileSaveResult::Saved);
  EXPECT_EQ(calls.Pauses(), 3);
  EXPECT_EQ(m_situated.Content(), m_situated.NewContent());
}

}  // namespace
