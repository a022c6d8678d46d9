// Saves between whose calls something happens to the files: they go, come, change or become links.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "platform/portable/SystemFile.h"
#include "tests/platform/FaultyCalls.h"
#include "tests/platform/FileSavingTesting.h"

namespace {

namespace fs = std::filesystem;
using lum::testing::CallKind;
using lum::testing::CFaultyCalls;
using lum::testing::CSituated;
using lum::testing::CSituation;

constexpr CSituation kExisting = {"existing"};
constexpr CSituation kNew = {"new", false};
constexpr CSituation kThroughLinks = {"through links", true, true};

/// Lets something happen before the first call of a kind for which it gives true.
void Before(CFaultyCalls& calls, CallKind kind, const std::function<bool()>& happens) {
  calls.onCall = [&calls, kind, happens](CallKind called) {
    if (called == kind && happens()) {
      calls.onCall = nullptr;
    }
  };
}

bool RemoveStray(const CSituated& situated) {
  for (const auto& entry : fs::directory_iterator(situated.Folder().Path())) {
    if (entry.path().filename().string().find(".saving-") != std::string::npos) {
      return fs::remove(entry.path());
    }
  }
  return false;
}

bool Remove(const CSituated& situated) { return fs::remove(situated.Target()); }

bool PutALinkInItsPlace(const CSituated& situated) {
  fs::rename(situated.Target(), situated.Folder().File("moved"));
  fs::create_symlink("moved", situated.Target());
  return true;
}

struct CMomentRow {
  const char* note;
  CSituation situation;
  CallKind before;
  bool (*happens)(const CSituated&);
  bool beginsAgain = true;
};

TEST(FileMoments, DoNotKeepASaveFromItsEnd) {
  const CMomentRow rows[] = {
      {"the file goes before it is locked", kExisting, CallKind::Open, Remove},
      {"a link comes before it is locked", kExisting, CallKind::Open, PutALinkInItsPlace},
      {"the file goes before the last look", kExisting, CallKind::Flush, Remove},
      {"the new file goes before it is locked", kExisting, CallKind::Lock, RemoveStray, false},
      {"the new file goes before it is renamed", kExisting, CallKind::Rename, RemoveStray},
      {"a first file goes before it is locked", kNew, CallKind::Lock, RemoveStray, false},
      {"a first file goes before it is linked", kNew, CallKind::Link, RemoveStray},
  };
  for (const CMomentRow& row : rows) {
    SCOPED_TRACE(row.note);
    CSituated situated(row.situation);
    CFaultyCalls calls;
    bool hasHappened = false;
    Before(calls, row.before, [&] { return hasHappened = row.happens(situated); });
    EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
    EXPECT_TRUE(hasHappened);
    EXPECT_EQ(calls.Paused() > 0, row.beginsAgain);
    EXPECT_EQ(situated.Content(), situated.NewContent());
    EXPECT_EQ(situated.StrayCount(), 0u);
    EXPECT_EQ(calls.OpenCount(), 0u);
  }
}

// Whoever could not load the file is asked again when it is there after all.
TEST(FileMoments, DoNotLetAFileBeReplacedUnseenThatComesLast) {
  CSituated situated(kNew);
  CFaultyCalls calls;
  situated.saved.origin.unreadPlace = lum::detail::FilePlace(PathText(situated.Path()), calls);
  Before(calls, CallKind::Link, [&] {
    WriteBytes(situated.Target(), "[S]\nother=1\n");
    return true;
  });
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Conflict);
  EXPECT_EQ(situated.Content(), "[S]\nother=1\n");
  EXPECT_EQ(situated.StrayCount(), 0u);
}

TEST(FileMoments, EndASaveWhenALinkIsNoneAnyMore) {
  CSituated situated(kThroughLinks);
  CFaultyCalls calls;
  Before(calls, CallKind::ReadLink, [&] {
    fs::remove(situated.Path());
    WriteBytes(situated.Path(), "plain");
    return true;
  });
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Failed);
  EXPECT_EQ(situated.saved.error, lum::detail::SystemMessage(EINVAL));
  EXPECT_EQ(ReadBytes(situated.Path()), "plain");
  EXPECT_EQ(situated.Content(), situated.OldContent());
}

// Another saver tidies up, too.
TEST(FileMoments, MayTakeALeftoverFromUnderASave) {
  CSituated situated(kExisting);
  WriteBytes(situated.Folder().File(".file.cfg.saving-1-2-3"), "left over");
  ASSERT_EQ(situated.StrayCount(), 1u);
  CFaultyCalls calls;
  bool isListed = false;
  calls.onCall = [&](CallKind kind) {
    if (std::exchange(isListed, kind == CallKind::List)) {
      EXPECT_TRUE(RemoveStray(situated));
    }
  };
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
  EXPECT_EQ(situated.Content(), situated.NewContent());
  EXPECT_EQ(situated.StrayCount(), 0u);
}

TEST(FileMoments, LeaveALivingSaversNewFileAlone) {
  CSituated situated(kExisting);
  const fs::path begun = situated.Folder().File(".file.cfg.saving-1-2-3");
  WriteBytes(begun, "begun");
  lum::detail::CFileCalls other;
  const int holder = other.Open(begun, O_RDONLY, 0);
  ASSERT_EQ(other.Lock(holder), 0);
  CFaultyCalls calls;
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
  EXPECT_EQ(ReadBytes(begun), "begun");
  other.Close(holder);
  CFaultyCalls later;
  EXPECT_EQ(situated.Save(later), FileSaveResult::Saved);
  EXPECT_EQ(situated.StrayCount(), 0u) << "nobody holds it any more";
}

// ---- What tells at the last look that the file is another one

class CAlteringCalls : public CFaultyCalls {
 public:
  explicit CAlteringCalls(std::function<void(struct stat&)> alter) : m_alter(std::move(alter)) {}

  int Status(const Path& path, struct stat& status) override {
    const int result = CFaultyCalls::Status(path, status);
    const bool isLastLook = std::count(Made().begin(), Made().end(), CallKind::Flush) == 1;
    if (result == 0 && isLastLook && m_alter) {
      std::exchange(m_alter, nullptr)(status);
    }
    return result;
  }

 private:
  std::function<void(struct stat&)> m_alter;
};

TEST(FileMoments, AreSeenByTheFilesStatus) {
  const struct {
    const char* note;
    void (*alter)(struct stat&);
  } rows[] = {
      {"another device", [](struct stat& status) { ++status.st_dev; }},
      {"another file", [](struct stat& status) { ++status.st_ino; }},
      {"another size", [](struct stat& status) { ++status.st_size; }},
      {"another second", [](struct stat& status) { ++status.st_mtim.tv_sec; }},
      {"another nanosecond", [](struct stat& status) { ++status.st_mtim.tv_nsec; }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.note);
    CSituated situated(kExisting);
    CAlteringCalls calls(row.alter);
    EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
    EXPECT_GT(calls.Paused(), 0) << "the save must begin again";
    EXPECT_EQ(situated.Content(), situated.NewContent());
    EXPECT_EQ(situated.StrayCount(), 0u);
  }
}

}  // namespace
