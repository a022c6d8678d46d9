// Loading the library into a running process and taking it out again.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "platform/ExtensionModule.h"

namespace {

TEST(Unload, TakesTheRegistrationBack) {
  ASSERT_EQ(CDynLinkLibrary::Count(), 0);
  for (int round = 0; round < 3; ++round) {
    void* library = dlopen(LUM_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_EQ(CDynLinkLibrary::Count(), 1);
    EXPECT_EQ(dlclose(library), 0);
    EXPECT_EQ(CDynLinkLibrary::Count(), 0);
    EXPECT_EQ(dlopen(LUM_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr);
  }
}

}  // namespace
