// Savers that are killed: before and after every single call, and by the hundred under load. The
// environment variable LUM_KILLS says how many are killed under load.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <new>
#include <random>
#include <string>

#include "platform/FileObject.h"
#include "tests/platform/FaultyCalls.h"
#include "tests/platform/FileSavingTesting.h"

namespace {

namespace fs = std::filesystem;
using lum::testing::CFault;
using lum::testing::CFaultyCalls;
using lum::testing::CSituated;
using lum::testing::CSituation;
using lum::testing::kSituations;

class FileKills : public testing::TestWithParam<CSituation> {
 protected:
  // True when the child did not live to see the end of its save.
  static bool SaveAndDie(CSituated& situated, const CFault& fault) {
    const pid_t child = ::fork();
    if (child == 0) {
      CFaultyCalls calls(fault);
      situated.Save(calls);
      ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

  static void ExpectWhole(const CSituated& situated) {
    const auto content = situated.Content();
    EXPECT_TRUE(content == situated.OldContent() || content == situated.NewContent())
        << content.value_or("no file");
    EXPECT_TRUE(situated.LinksStand());
    EXPECT_TRUE(situated.VersionsAreWhole(content == situated.NewContent()));
    EXPECT_LE(situated.StrayCount(), 2u);
  }

  static void ExpectNextSaveTidies(CSituated& situated) {
    CFaultyCalls calls;
    EXPECT_NE(situated.Save(calls), FileSaveResult::Failed);
    EXPECT_EQ(situated.Content()->find("mine=1") != std::string::npos, true);
    EXPECT_EQ(situated.StrayCount(), 0u);
  }
};

TEST_P(FileKills, LeaveTheOldFileOrTheNewOneAtEveryCall) {
  int kills = 0;
  for (const int moment : {CFault::kKillBefore, CFault::kKillAfter}) {
    bool isKilled = true;
    for (int number = 1; isKilled; ++number) {
      SCOPED_TRACE((moment == CFault::kKillBefore ? "before call " : "after call ") +
                   std::to_string(number));
      CSituated situated(GetParam());
      isKilled = SaveAndDie(situated, {number, moment, 1, false});
      ExpectWhole(situated);
      ExpectNextSaveTidies(situated);
      kills += isKilled ? 1 : 0;
    }
  }
  EXPECT_GT(kills, 20);
  std::cout << "killed: " << kills << "\n";
}

// However often savers are killed at one place, the previous versions stay.
TEST_P(FileKills, LeaveThePreviousVersionsHoweverOftenTheyHappen) {
  for (int number = 1;; ++number) {
    CSituated situated(GetParam());
    bool isKilled = false;
    for (int round = 0; round < 3 && situated.Content() == situated.OldContent(); ++round) {
      isKilled = SaveAndDie(situated, {number, CFault::kKillBefore, 1, false});
      EXPECT_TRUE(situated.VersionsAreWhole(situated.Content() == situated.NewContent()))
          << "before call " << number << ", kill " << round + 1;
    }
    if (!isKilled) {
      break;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Situations, FileKills, testing::ValuesIn(kSituations),
                         [](const auto& instance) {
                           std::string name = instance.param.name;
                           std::erase_if(name, [](char ch) { return ch == ' ' || ch == ','; });
                           return name;
                         });

// ---- Under load

constexpr int kSavers = 4;
constexpr int kVersions = 2;

/// What each saver knows to be saved, seen by all processes.
struct CConfirmed {
  std::array<std::atomic<int>, kSavers> counts = {};
};

class CSharedMemory {
 public:
  CSharedMemory()
      : m_memory(::mmap(nullptr, sizeof(CConfirmed), PROT_READ | PROT_WRITE,
                        MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
        m_confirmed(new (m_memory) CConfirmed) {}
  CSharedMemory(const CSharedMemory&) = delete;
  CSharedMemory& operator=(const CSharedMemory&) = delete;
  ~CSharedMemory() { ::munmap(m_memory, sizeof(CConfirmed)); }
  CConfirmed* operator->() const { return m_confirmed; }

 private:
  void* m_memory;
  CConfirmed* m_confirmed;
};

CString KeyOf(int saver) {
  CString key;
  key.Format(L"saver%d", saver);
  return key;
}

int CountOf(const FileObject& file, int saver) {
  CString text;
  return file.GetItem(L"Counts", KeyOf(saver), text) ? std::stoi(text.GetString()) : 0;
}

// Counts up in the file for as long as it lives.
[[noreturn]] void SaveForEver(const CString& path, int saver, const CSharedMemory& confirmed) {
  for (;;) {
    FileObject file;
    if (!file.Load(path)) {
      ::_exit(1);
    }
    CString value;
    value.Format(L"%d", CountOf(file, saver) + 1);
    file.SetItem(L"Counts", KeyOf(saver), value, true);
    if (file.Save(path, {FileConflict::Merge, kVersions})) {
      confirmed->counts[static_cast<std::size_t>(saver)] = CountOf(file, saver);
    }
  }
}

std::string Padding() {
  std::string lines;
  for (int i = 0; i < 500; ++i) {
    lines += "line" + std::to_string(i) + "=0,a value of some length\n";
  }
  return lines + "[Counts]\n";
}

int WantedKills() {
  const char* wanted = std::getenv("LUM_KILLS");
  return wanted != nullptr ? std::atoi(wanted) : 200;
}

class FileKillsUnderLoad : public testing::Test {
 protected:
  void Start(int saver) {
    const pid_t child = ::fork();
    if (child == 0) {
      SaveForEver(PathText(m_path), saver, m_confirmed);
    }
    m_children[static_cast<std::size_t>(saver)] = child;
  }

  void Kill(int saver) {
    int status = 0;
    const pid_t child = m_children[static_cast<std::size_t>(saver)];
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status)) << "a saver ended by itself: " << WEXITSTATUS(status);
  }

  static void ExpectWhole(const std::string& bytes) {
    static const std::string padding = Padding();
    EXPECT_EQ(bytes.substr(0, padding.size()), padding);
    EXPECT_TRUE(bytes.ends_with("\n"));
  }

  // What was confirmed before the file is read must be in it.
  void ExpectNothingLost() {
    std::array<int, kSavers> least = {};
    for (std::size_t saver = 0; saver < kSavers; ++saver) {
      least[saver] = m_confirmed->counts[saver];
    }
    FileObject file;
    ASSERT_TRUE(file.Load(PathText(m_path)));
    for (std::size_t saver = 0; saver < kSavers; ++saver) {
      EXPECT_GE(CountOf(file, static_cast<int>(saver)), least[saver]);
    }
    ExpectWhole(ReadBytes(m_path));
  }

  CTemporaryFolder m_folder;
  fs::path m_path = m_folder.File("file.cfg");
  CSharedMemory m_confirmed;
  std::array<pid_t, kSavers> m_children = {};
};

TEST_F(FileKillsUnderLoad, LoseNothingThatWasSaved) {
  WriteBytes(m_path, Padding());
  for (int saver = 0; saver < kSavers; ++saver) {
    Start(saver);
  }
  std::minstd_rand random(1);
  const int kills = WantedKills();
  for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
    ::usleep(static_cast<useconds_t>(1000 + random() % 15000));
    const int saver = static_cast<int>(random() % kSavers);
    Kill(saver);
    ExpectNothingLost();
    Start(saver);
  }
  int saves = 0;
  for (int saver = 0; saver < kSavers; ++saver) {
    Kill(saver);
    saves += m_confirmed->counts[static_cast<std::size_t>(saver)];
  }
  ExpectNothingLost();
  EXPECT_GT(saves, kills / 4);

  FileObject file;
  ASSERT_TRUE(file.Load(PathText(m_path)));
  EXPECT_TRUE(file.Save(PathText(m_path), {FileConflict::Merge, kVersions}));
  EXPECT_EQ(m_folder.EntryCount(), 1u + kVersions) << "strays stay behind";
  for (const FileVersion& version : FileObject::PreviousVersions(PathText(m_path))) {
    ExpectWhole(ReadBytes(fs::path(WideToUtf8(version.path).GetString())));
  }
  std::cout << "killed under load: " << kills << ", confirmed saves: " << saves << "\n";
}

}  // namespace
