// Registration of extension modules.
#include "platform/ExtensionModule.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

HINSTANCE InstanceOf(int& place) { return reinterpret_cast<HINSTANCE>(&place); }

class CWatchedLibrary : public CDynLinkLibrary {
 public:
  CWatchedLibrary(AFX_EXTENSION_MODULE& module, int& deleted)
      : CDynLinkLibrary(module), m_deleted(deleted) {}
  ~CWatchedLibrary() override { ++m_deleted; }

 private:
  int& m_deleted;
};

}  // namespace

TEST(ExtensionModule, RegistersOnce) {
  int place = 0;
  int other = 0;
  AFX_EXTENSION_MODULE module;
  EXPECT_TRUE(AfxInitExtensionModule(module, InstanceOf(place)));
  EXPECT_TRUE(module.bInitialized);
  EXPECT_EQ(module.hModule, InstanceOf(place));
  EXPECT_FALSE(AfxInitExtensionModule(module, InstanceOf(other)));
  EXPECT_EQ(module.hModule, InstanceOf(place));
  AfxTermExtensionModule(module);
  EXPECT_FALSE(module.bInitialized);
  EXPECT_EQ(module.hModule, nullptr);
}

TEST(ExtensionModule, MayRegisterAgainAfterItWasTakenBack) {
  AFX_EXTENSION_MODULE module;
  EXPECT_TRUE(AfxInitExtensionModule(module, nullptr));
  AfxTermExtensionModule(module, false);
  EXPECT_TRUE(AfxInitExtensionModule(module, nullptr));
  AfxTermExtensionModule(module, true);
}

TEST(ExtensionModule, TakingBackWhatIsNotRegisteredIsHarmless) {
  AFX_EXTENSION_MODULE module;
  AfxTermExtensionModule(module);
  AfxTermExtensionModule(module);
  EXPECT_FALSE(module.bInitialized);
}

TEST(ExtensionModule, FreesTheLibrariesOfItsModuleOnly) {
  const int before = CDynLinkLibrary::Count();
  AFX_EXTENSION_MODULE first;
  AFX_EXTENSION_MODULE second;
  ASSERT_TRUE(AfxInitExtensionModule(first, nullptr));
  ASSERT_TRUE(AfxInitExtensionModule(second, nullptr));
  int firstDeleted = 0;
  int secondDeleted = 0;
  new CWatchedLibrary(first, firstDeleted);
  new CWatchedLibrary(second, secondDeleted);
  const CDynLinkLibrary* last = new CWatchedLibrary(first, firstDeleted);
  EXPECT_EQ(&last->Module(), &first);
  EXPECT_EQ(CDynLinkLibrary::Count(), before + 3);
  AfxTermExtensionModule(first);
  EXPECT_EQ(firstDeleted, 2);
  EXPECT_EQ(secondDeleted, 0);
  EXPECT_EQ(CDynLinkLibrary::Count(), before + 1);
  AfxTermExtensionModule(second);
  EXPECT_EQ(secondDeleted, 1);
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

TEST(ExtensionModule, LibraryDeletedByItsMakerIsForgotten) {
  const int before = CDynLinkLibrary::Count();
  AFX_EXTENSION_MODULE module;
  ASSERT_TRUE(AfxInitExtensionModule(module, nullptr));
  int deleted = 0;
  delete new CWatchedLibrary(module, deleted);
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
  AfxTermExtensionModule(module);
  EXPECT_EQ(deleted, 1);
}

TEST(ExtensionModule, ModulesMayComeAndGoInSeveralThreads) {
  const int before = CDynLinkLibrary::Count();
  std::vector<std::thread> threads;
  std::vector<int> deleted(4, 0);
  for (int& count : deleted) {
    threads.emplace_back([&count] {
      for (int i = 0; i < 1000; ++i) {
        AFX_EXTENSION_MODULE module;
        AfxInitExtensionModule(module, nullptr);
        new CWatchedLibrary(module, count);
        AfxTermExtensionModule(module);
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(deleted, std::vector<int>(4, 1000));
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}
