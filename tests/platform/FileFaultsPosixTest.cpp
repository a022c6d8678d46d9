// Every call of a save fails once, or from then on, in every way that fits it: the file is the old
// one or the new one, the result says which, and nothing is left behind.
#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/portable/SystemFile.h"
#include "tests/platform/FaultyCalls.h"
#include "tests/platform/FileSavingTesting.h"

namespace {

using lum::testing::CallKind;
using lum::testing::CEndless;
using lum::testing::CFault;
using lum::testing::CFaultyCalls;
using lum::testing::CSituated;
using lum::testing::CSituation;
using lum::testing::kSituations;

struct CEffect {
  int effect;
  int times;
};

constexpr int kEver = CFaultyCalls::kForEver;

// What can happen to a call, each once and for ever; signals come and go.
std::vector<CEffect> EffectsOn(CallKind kind) {
  static const std::map<CallKind, std::vector<int>> kErrors = {
      {CallKind::Open,
       {EACCES, EEXIST, EIO, EMFILE, ENFILE, EROFS, ENOSPC, EDQUOT, ESTALE, ENOMEM}},
      {CallKind::Read, {EIO, ESTALE, CFault::kShort}},
      {CallKind::Write, {ENOSPC, EIO, EDQUOT, EFBIG, ESTALE, CFault::kShort, CFault::kNothing}},
      {CallKind::ChangeOwner, {EPERM, EIO, EROFS}},
      {CallKind::ChangeMode, {EPERM, EIO, EROFS}},
      {CallKind::Flush, {EIO, ENOSPC, EDQUOT, EINVAL, ENOTSUP}},
      {CallKind::Close, {EIO, ENOSPC, EDQUOT, EINTR}},
      {CallKind::Lock, {ENOLCK, EOPNOTSUPP, EWOULDBLOCK, EIO, EBADF}},
      {CallKind::Status, {EIO, EACCES, ESTALE, ENOMEM}},
      {CallKind::StatusOfLink, {EIO, EACCES, ESTALE, ENOMEM}},
      {CallKind::StatusOfOpen, {EIO, ESTALE}},
      {CallKind::ReadLink, {EIO, EACCES, ESTALE}},
      {CallKind::CheckWritable, {EACCES, EROFS, EIO}},
      {CallKind::List, {EIO}},
      {CallKind::Rename, {EACCES, EIO, ENOSPC, EROFS, EPERM, EBUSY, EDQUOT, EXDEV}},
      {CallKind::Link, {EPERM, EOPNOTSUPP, EMLINK, ENOSPC, EIO, EACCES}},
      {CallKind::Remove, {EACCES, EIO, EBUSY, EPERM, EROFS}},
  };
  std::vector<CEffect> effects;
  for (const int error : kErrors.at(kind)) {
    effects.push_back({error, 1});
    effects.push_back({error, kEver});
  }
  for (const CallKind interrupted :
       {CallKind::Open, CallKind::Read, CallKind::Write, CallKind::Flush, CallKind::Lock,
        CallKind::ChangeOwner, CallKind::ChangeMode}) {
    if (kind == interrupted) {
      effects.push_back({EINTR, 1});
      effects.push_back({EINTR, 10});
    }
  }
  return effects;
}

std::string Describe(const CFault& fault, CallKind kind) {
  const std::string effect = fault.effect == CFault::kShort     ? "one byte"
                             : fault.effect == CFault::kNothing ? "nothing"
                                                                : std::strerror(fault.effect);
  const std::string times = fault.times == kEver ? "for ever" : std::to_string(fault.times) + "x";
  return std::string("call ") + std::to_string(fault.first) + " (" + NameOf(kind) + "): " + effect +
         ", " + times;
}

class FileFaults : public testing::TestWithParam<CSituation> {
 protected:
  std::vector<CallKind> CallsOfASave() {
    CSituated situated(GetParam());
    CFaultyCalls calls;
    EXPECT_EQ(situated.Save(calls), situated.Success());
    EXPECT_EQ(situated.Content(), situated.NewContent());
    EXPECT_EQ(calls.OpenCount(), 0u);
    return calls.Made();
  }

  static void ExpectTruth(const CSituated& situated, const CFaultyCalls& calls,
                          FileSaveResult result, const CFault& fault) {
    const bool isSaved = result == situated.Success();
    EXPECT_TRUE(isSaved || result == FileSaveResult::Failed) << static_cast<int>(result);
    EXPECT_FALSE(isSaved && calls.HasLostBytes()) << "what may be lost is not saved";
    const bool isNew = isSaved || calls.HasLeftInPlace(situated.Target());
    EXPECT_EQ(situated.Content(), isNew ? situated.NewContent() : situated.OldContent());
    if (isSaved) {
      EXPECT_EQ(situated.saved.error, L"");
    } else if (fault.effect > 0 && fault.effect != EWOULDBLOCK) {
      EXPECT_EQ(situated.saved.error, lum::detail::SystemMessage(fault.effect));
    } else {
      EXPECT_FALSE(situated.saved.error.IsEmpty());
    }
    EXPECT_TRUE(situated.LinksStand());
    EXPECT_TRUE(situated.VersionsAreWhole(isNew));
    EXPECT_EQ(calls.OpenCount(), 0u);
  }

  // A failed save changes neither the document nor what it knows of files.
  static void ExpectUnchanged(const CSituated& situated, const std::string& mine,
                              const CString& knownPlace) {
    EXPECT_EQ(situated.saved.Bytes(), mine);
    EXPECT_EQ(situated.saved.origin.loaded.place, knownPlace);
    EXPECT_EQ(situated.saved.origin.savedElsewhere.place, L"");
  }

  static void ExpectNextSaveTidies(CSituated& situated) {
    CFaultyCalls calls;
    situated.saved.Set(L"S", L"again", L"1");
    EXPECT_NE(situated.Save(calls), FileSaveResult::Failed) << situated.saved.error.GetLength();
    EXPECT_EQ(situated.saved.Bytes(), situated.Content());
    EXPECT_NE(situated.Content()->find("mine=1"), std::string::npos);
    EXPECT_NE(situated.Content()->find("again=1"), std::string::npos);
    EXPECT_EQ(situated.StrayCount(), 0u);
    EXPECT_EQ(calls.OpenCount(), 0u);
  }

  void Run(const CFault& fault, CallKind kind) {
    SCOPED_TRACE(Describe(fault, kind));
    CSituated situated(GetParam());
    const CString knownPlace = situated.saved.origin.loaded.place;
    CFaultyCalls calls(fault);
    FileSaveResult result = FileSaveResult::None;
    ASSERT_NO_THROW(result = situated.Save(calls)) << "the save never ends";
    EXPECT_GT(calls.HitCount(), 0);
    ExpectTruth(situated, calls, result, fault);
    if (kind != CallKind::Remove) {
      EXPECT_EQ(situated.StrayCount(), 0u);
    }
    if (result == FileSaveResult::Failed && !calls.HasLeftInPlace(situated.Target())) {
      ExpectUnchanged(situated, situated.Mine(), knownPlace);
    }
    ExpectNextSaveTidies(situated);
  }
};

TEST_P(FileFaults, LeaveTheOldFileOrTheNewOneAndTellWhich) {
  const std::vector<CallKind> made = CallsOfASave();
  int count = 0;
  for (std::size_t i = 0; i < made.size(); ++i) {
    for (const CEffect& effect : EffectsOn(made[i])) {
      Run({static_cast<int>(i) + 1, effect.effect, effect.times, false}, made[i]);
      ++count;
    }
  }
  EXPECT_GT(count, 100);
  std::cout << "faults injected: " << count << " into " << made.size() << " calls\n";
}

// The disk goes away: whatever is called from then on fails.
TEST_P(FileFaults, LeaveAWholeFileWhenEverythingFailsFromThenOn) {
  const std::vector<CallKind> made = CallsOfASave();
  for (int first = 1; first <= static_cast<int>(made.size()); ++first) {
    SCOPED_TRACE(first);
    CSituated situated(GetParam());
    CFaultyCalls calls({first, EIO, kEver, true});
    FileSaveResult result = FileSaveResult::None;
    ASSERT_NO_THROW(result = situated.Save(calls));
    const bool isNew = result != FileSaveResult::Failed || calls.HasLeftInPlace(situated.Target());
    EXPECT_EQ(situated.Content(), isNew ? situated.NewContent() : situated.OldContent());
    EXPECT_EQ(calls.OpenCount(), 0u);
    EXPECT_TRUE(situated.VersionsAreWhole(isNew));
    ExpectNextSaveTidies(situated);
  }
  std::cout << "faults injected: " << made.size() << " times everything from one call on\n";
}

// A save that fails again and again must not use up the previous versions.
TEST_P(FileFaults, KeepThePreviousVersionsHoweverOftenTheyStrike) {
  const std::vector<CallKind> made = CallsOfASave();
  for (std::size_t i = 0; i < made.size(); ++i) {
    SCOPED_TRACE(std::string("call ") + std::to_string(i + 1) + " " + NameOf(made[i]));
    CSituated situated(GetParam());
    for (int round = 0; round < 5; ++round) {
      CFaultyCalls calls({static_cast<int>(i) + 1, EIO, kEver, false});
      if (situated.Save(calls) != FileSaveResult::Failed ||
          calls.HasLeftInPlace(situated.Target())) {
        break;
      }
      EXPECT_TRUE(situated.VersionsAreWhole(false)) << "after failure " << round + 1;
    }
  }
}

// ---- Others get in between

// A saver that keeps to the lock tries its luck before every call: what it has saved must stay.
TEST_P(FileFaults, LoseNothingOfASaverThatTriesAtEveryMoment) {
  const std::vector<CallKind> made = CallsOfASave();
  int count = 0;
  for (std::size_t moment = 0; moment < made.size(); ++moment) {
    SCOPED_TRACE(std::string("before call ") + std::to_string(moment + 1) + " " +
                 NameOf(made[moment]));
    CSituated situated(GetParam());
    bool isSaved = false;
    CFaultyCalls calls;
    calls.onCall = [&](CallKind) {
      if (calls.Made().size() != moment || !std::filesystem::exists(situated.Target())) {
        return;
      }
      lum::testing::CSavedDocument other;
      other.Load(situated.Path());
      other.Set(L"S", L"other", L"1");
      CFaultyCalls others;
      others.onPause = [] { throw CEndless(); };  // It finds the file locked.
      try {
        isSaved = other.Save(situated.Path(), {}, others) == FileSaveResult::Saved;
      } catch (const CEndless&) {
      }
    };
    EXPECT_NE(situated.Save(calls), FileSaveResult::Failed);
    if (isSaved) {
      ++count;
      EXPECT_NE(situated.Content()->find("other=1"), std::string::npos);
    }
    EXPECT_EQ(situated.StrayCount(), 0u);
  }
  std::cout << "others' saves in between: " << count << "\n";
}

// Programs that know nothing of the lock: theirs may only be lost between the last look at the
// file and the renaming.
TEST_P(FileFaults, MergeWhatOtherProgramsWriteUntilTheLastLook) {
  if (!GetParam().exists) {
    return;
  }
  const std::vector<CallKind> made = CallsOfASave();
  // The new file is flushed and closed, then comes the look.
  const auto flush = std::find(made.begin(), made.end(), CallKind::Flush);
  const auto lastLook = static_cast<std::size_t>(std::distance(made.begin(), flush)) + 2;
  for (std::size_t moment = 0; moment <= lastLook; ++moment) {
    SCOPED_TRACE(std::string("before call ") + std::to_string(moment + 1));
    CSituated situated(GetParam());
    CFaultyCalls calls;
    calls.onCall = [&](CallKind) {
      if (calls.Made().size() == moment) {
        WriteBytes(situated.Folder().File("foreign"), "[S]\na=1\nforeign=123456\n");
        std::filesystem::rename(situated.Folder().File("foreign"), situated.Target());
      }
    };
    EXPECT_EQ(situated.Save(calls), FileSaveResult::Merged);
    EXPECT_EQ(situated.Content(), "[S]\na=1\nforeign=123456\nmine=1\n");
    EXPECT_EQ(situated.StrayCount(), 0u);
  }
}

INSTANTIATE_TEST_SUITE_P(Situations, FileFaults, testing::ValuesIn(kSituations),
                         [](const auto& instance) {
                           std::string name = instance.param.name;
                           std::erase_if(name, [](char ch) { return ch == ' ' || ch == ','; });
                           return name;
                         });

// ---- Waiting for a lock, without waiting

TEST(FileLocks, AreWaitedForAndGivenUpAfterTenSeconds) {
  for (const bool isReleased : {true, false}) {
    CSituated situated(kSituations[0]);
    lum::detail::CFileCalls other;
    int holder = other.Open(situated.Target(), O_RDONLY, 0);
    ASSERT_EQ(other.Lock(holder), 0);
    CFaultyCalls calls;
    calls.onPause = [&] {
      if (isReleased && calls.Paused() > 500 && holder >= 0) {
        other.Close(std::exchange(holder, -1));
      }
    };
    const FileSaveResult result = situated.Save(calls);
    if (isReleased) {
      EXPECT_EQ(result, FileSaveResult::Saved);
      EXPECT_EQ(situated.Content(), situated.NewContent());
      EXPECT_LT(calls.Paused(), 600);
    } else {
      EXPECT_EQ(result, FileSaveResult::Failed);
      EXPECT_EQ(situated.Content(), situated.OldContent());
      EXPECT_EQ(situated.saved.error, L"another program is saving it");
      EXPECT_GE(calls.Paused(), 9500);
      EXPECT_LE(calls.Paused(), 10500);
      other.Close(holder);
    }
    EXPECT_EQ(calls.OpenCount(), 0u);
    EXPECT_EQ(situated.StrayCount(), 0u);
  }
}

// What was under the lock while it was waited for is not what was found before.
TEST(FileLocks, AreFollowedByAFreshLookAtTheFile) {
  CSituated situated(kSituations[0]);
  lum::detail::CFileCalls other;
  int holder = other.Open(situated.Target(), O_RDONLY, 0);
  ASSERT_EQ(other.Lock(holder), 0);
  CFaultyCalls calls;
  calls.onPause = [&] {
    if (holder >= 0) {
      WriteBytes(situated.Folder().File("next"), "[S]\na=1\nnext=7\n");
      std::filesystem::rename(situated.Folder().File("next"), situated.Target());
      other.Close(std::exchange(holder, -1));
    }
  };
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Merged);
  EXPECT_EQ(situated.Content(), "[S]\na=1\nnext=7\nmine=1\n");
}

// Between looking the file up and locking it, the holder of the lock replaces it and lets go.
TEST(FileLocks, CountOnlyOnTheFileThatHasTheName) {
  CSituated situated(kSituations[0]);
  CFaultyCalls calls;
  bool isReplaced = false;
  calls.onCall = [&](CallKind kind) {
    if (kind == CallKind::Lock && !std::exchange(isReplaced, true)) {
      WriteBytes(situated.Folder().File("next"), "[S]\na=1\nnext=7\n");
      std::filesystem::rename(situated.Folder().File("next"), situated.Target());
      // A saver that holds the new file's lock: the old file's is worth nothing.
      lum::detail::CFileCalls other;
      const int holder = other.Open(situated.Target(), O_RDONLY, 0);
      ASSERT_EQ(other.Lock(holder), 0);
      calls.onPause = [&calls, holder] {
        EXPECT_EQ(std::count(calls.Made().begin(), calls.Made().end(), CallKind::Write), 0);
        lum::detail::CFileCalls().Close(holder);
        calls.onPause = nullptr;
      };
    }
  };
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Merged);
  EXPECT_GT(calls.Paused(), 0);
  EXPECT_EQ(situated.Content(), "[S]\na=1\nnext=7\nmine=1\n");
}

// A new file's savers have no lock in common: each must respect what the other has begun.
TEST(FileLocks, ProtectWhatALivingSaverHasBegun) {
  CSituated situated(kSituations[1]);
  ASSERT_FALSE(std::filesystem::exists(situated.Target()));
  CFaultyCalls calls;
  bool isTried = false;
  calls.onCall = [&](CallKind kind) {
    if (kind == CallKind::Flush && !std::exchange(isTried, true)) {
      lum::testing::CSavedDocument other;
      other.Set(L"S", L"other", L"1");
      CFaultyCalls others;
      EXPECT_EQ(other.Save(situated.Path(), {}, others), FileSaveResult::Saved);
      EXPECT_EQ(situated.StrayCount(), 1u);
    }
  };
  EXPECT_EQ(situated.Save(calls), FileSaveResult::Saved);
  EXPECT_TRUE(isTried);
  EXPECT_EQ(situated.StrayCount(), 0u);
}

// ---- Durability

// What has the name must be on the disk whole before it gets it, and the name after that.
TEST(FileOrder, FlushesTheFileThenRenamesThenFlushesTheFolder) {
  for (const CSituation& situation : kSituations) {
    SCOPED_TRACE(situation.name);
    CSituated situated(situation);
    CFaultyCalls calls;
    ASSERT_EQ(situated.Save(calls), situated.Success());
    const std::vector<CallKind>& made = calls.Made();
    const auto last = [&](CallKind kind) {
      return std::distance(made.begin(), std::find(made.rbegin(), made.rend(), kind).base());
    };
    const auto first = [&](CallKind kind) {
      return std::distance(made.begin(), std::find(made.begin(), made.end(), kind)) + 1;
    };
    const auto named =
        std::max(last(CallKind::Rename), situation.exists ? 0 : last(CallKind::Link));
    EXPECT_GT(first(CallKind::Flush), last(CallKind::Write));
    EXPECT_LT(first(CallKind::Flush), named);
    EXPECT_GT(last(CallKind::Flush), named);
    EXPECT_EQ(std::count(made.begin(), made.end(), CallKind::Flush), 2);
  }
}

}  // namespace
