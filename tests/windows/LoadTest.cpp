// The library under the system's loader: what it does when it comes and goes, when it is refused,
// and that nothing of it stays.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <atomic>
#include <cstdio>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "tests/windows/Library.h"
#include "tests/windows/Process.h"
#include "tests/windows/SpyPlatform.h"

namespace {

using lum::test::CLibrary;
using lum::test::ProcessResult;
using lum::test::ProgramFolder;
using lum::test::RunAndCollect;
using lum::test::SpyPlatform;

constexpr const char* kIsAttached = "_Z21LumAttributesAttachedv";
constexpr const char* kGetAttribDefMap = "_ZN13CAttribDefMap15GetAttribDefMapEv";

bool IsInProcess(const wchar_t* name) { return ::GetModuleHandleW(name) != nullptr; }

TEST(Load, IsAcceptedByThePlatformOfItsVersion) {
  ASSERT_FALSE(IsInProcess(L"LumAttributes.dll"));
  CLibrary library(ProgramFolder() / "LumAttributes.dll");
  ASSERT_TRUE(library.IsLoaded()) << library.LastError();
  EXPECT_TRUE(IsInProcess(L"LumPlatform.dll"));
  const auto isAttached = library.Find<bool()>(kIsAttached);
  ASSERT_NE(isAttached, nullptr);
  EXPECT_TRUE(isAttached());
  library.Free();
  EXPECT_FALSE(IsInProcess(L"LumAttributes.dll"));
  EXPECT_FALSE(IsInProcess(L"LumPlatform.dll"));
}

TEST(Load, IsRefusedByAPlatformOfAnotherVersion) {
  ASSERT_FALSE(IsInProcess(L"LumPlatform.dll"));
  testing::internal::CaptureStderr();
  const CLibrary library(ProgramFolder() / "other_version" / "LumAttributes.dll");
  const std::string message = testing::internal::GetCapturedStderr();
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_EQ(library.LastError(), static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
  EXPECT_THAT(message, testing::HasSubstr("library version " LUM_PROJECT_VERSION
                                          " does not fit platform version 6.0.0.0"));
  EXPECT_THAT(message, testing::HasSubstr("catalogue/LumAttributes.cpp"));
  EXPECT_FALSE(IsInProcess(L"LumAttributes.dll"));
  EXPECT_FALSE(IsInProcess(L"LumPlatform.dll"));
}

TEST(Load, ARefusalKeepsALinkedProgramFromStarting) {
  const std::filesystem::path folder = ProgramFolder() / "other_version";
  const std::filesystem::path tool = folder / "lumattr.exe";
  ASSERT_TRUE(::CopyFileW((ProgramFolder() / "lumattr.exe").c_str(), tool.c_str(), FALSE));
  const ProcessResult result = RunAndCollect({tool.wstring(), L"--version"}, folder);
  EXPECT_EQ(result.exitCode, 0xC0000142u);  // STATUS_DLL_INIT_FAILED
  EXPECT_EQ(result.output, "");
}

class SpiedLoad : public testing::Test {
 protected:
  SpiedLoad() : m_platform(ProgramFolder() / "spy" / "LumPlatform.dll") {}

  void SetUp() override {
    ASSERT_TRUE(m_platform.IsLoaded()) << m_platform.LastError();
    m_spy = static_cast<SpyPlatform*>(m_platform.Address("g_spy"));
    ASSERT_NE(m_spy, nullptr);
  }

  static std::filesystem::path LibraryFile() {
    return ProgramFolder() / "spy" / "LumAttributes.dll";
  }

  CLibrary m_platform;
  SpyPlatform* m_spy = nullptr;
};

TEST_F(SpiedLoad, ChecksThenRegistersThenMakesItsClassesKnown) {
  CLibrary library(LibraryFile());
  ASSERT_TRUE(library.IsLoaded()) << library.LastError();
  EXPECT_STREQ(m_spy->events, "check register classes ");
  EXPECT_EQ(m_spy->instance, static_cast<void*>(library.Module()));
  library.Free();
  EXPECT_STREQ(m_spy->events, "check register classes unregister ");
}

TEST_F(SpiedLoad, TellsTheCheckItsVersionItsSourceAndItsBuild) {
  const CLibrary library(LibraryFile());
  EXPECT_EQ(m_spy->version, 0x05050100u);
  EXPECT_STREQ(m_spy->sourceFile, "catalogue/LumAttributes.cpp");
  char month[4] = "";
  int numbers[5] = {};
  int length = 0;
  EXPECT_EQ(std::sscanf(m_spy->build, "%3[A-Za-z] %2d %4d %2d:%2d:%2d%n", month, &numbers[0],
                        &numbers[1], &numbers[2], &numbers[3], &numbers[4], &length),
            6)
      << m_spy->build;
  EXPECT_EQ(length, 20);
}

TEST_F(SpiedLoad, ItsGlobalsAreThereFromBeforeTheCheckUntilAfterTheDeparture) {
  CLibrary library(LibraryFile());
  EXPECT_TRUE(m_spy->wasCatalogueThere);
  EXPECT_TRUE(m_spy->wasUnitConverterThere);
  EXPECT_FALSE(m_spy->isCatalogueThereAtTheEnd);
  library.Free();
  EXPECT_TRUE(m_spy->isCatalogueThereAtTheEnd);
  EXPECT_TRUE(m_spy->isUnitConverterThereAtTheEnd);
}

TEST_F(SpiedLoad, IsRefusedWhenTheCheckSaysNo) {
  m_spy->versionFits = false;
  const CLibrary library(LibraryFile());
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_EQ(library.LastError(), static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
  EXPECT_EQ(std::string(m_spy->events).find("register classes"), std::string::npos);
}

TEST_F(SpiedLoad, IsRefusedWhenItCannotBeRegistered) {
  m_spy->moduleRegisters = false;
  const CLibrary library(LibraryFile());
  EXPECT_FALSE(library.IsLoaded());
  EXPECT_EQ(library.LastError(), static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
  EXPECT_EQ(std::string(m_spy->events).find("classes"), std::string::npos);
}

TEST_F(SpiedLoad, SucceedsWithoutMemoryForMakingItsClassesKnown) {
  m_spy->hasMemory = false;
  const CLibrary library(LibraryFile());
  EXPECT_TRUE(library.IsLoaded()) << library.LastError();
  EXPECT_STREQ(m_spy->events, "check register classes ");
}

TEST_F(SpiedLoad, DoesNothingForThreads) {
  const CLibrary library(LibraryFile());
  ASSERT_TRUE(library.IsLoaded());
  std::thread([] {}).join();
  EXPECT_STREQ(m_spy->events, "check register classes ");
}

// ---- Loaded again and again

struct HeapUse {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};

HeapUse UsedHeap() {
  HeapUse use;
  _HEAPINFO block = {};
  while (::_heapwalk(&block) == _HEAPOK) {
    if (block._useflag == _USEDENTRY) {
      ++use.blocks;
      use.bytes += block._size;
    }
  }
  return use;
}

void LoadUseAndFree(const std::filesystem::path& file) {
  const CLibrary library(file);
  ASSERT_TRUE(library.IsLoaded()) << library.LastError();
  const auto getMap = library.Find<void*()>(kGetAttribDefMap);
  ASSERT_NE(getMap, nullptr);
  ASSERT_NE(getMap(), nullptr);
}

TEST(Load, AHundredTimesLeavesNothingBehind) {
  const std::filesystem::path file = ProgramFolder() / "LumAttributes.dll";
  for (int i = 0; i < 10; ++i) {
    ASSERT_NO_FATAL_FAILURE(LoadUseAndFree(file));  // What the system itself keeps is there now.
  }
  const HeapUse before = UsedHeap();
  ASSERT_GT(before.blocks, 0u);
  DWORD handlesBefore = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &handlesBefore);
  for (int i = 0; i < 100; ++i) {
    ASSERT_NO_FATAL_FAILURE(LoadUseAndFree(file));
  }
  const HeapUse after = UsedHeap();
  DWORD handlesAfter = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &handlesAfter);
  // Less than one block for each load.
  EXPECT_LT(after.blocks, before.blocks + 50);
  EXPECT_LT(after.bytes, before.bytes + 8192);
  EXPECT_LE(handlesAfter, handlesBefore);
  EXPECT_FALSE(IsInProcess(L"LumAttributes.dll"));
}

TEST(Load, SeveralThreadsMeetAtTheFirstCallOfTheDefinitionTable) {
  constexpr int kThreads = 8;
  for (int round = 0; round < 20; ++round) {
    const CLibrary library(ProgramFolder() / "LumAttributes.dll");
    ASSERT_TRUE(library.IsLoaded());
    const auto getMap = library.Find<void*()>(kGetAttribDefMap);
    ASSERT_NE(getMap, nullptr);
    std::atomic<int> ready = 0;
    std::vector<void*> maps(kThreads);
    std::vector<std::thread> threads;
    for (void*& map : maps) {
      threads.emplace_back([&] {
        for (++ready; ready < kThreads;) {
        }
        map = getMap();
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    EXPECT_NE(maps.front(), nullptr);
    EXPECT_EQ(std::set<void*>(maps.begin(), maps.end()).size(), 1u);
  }
}

}  // namespace
