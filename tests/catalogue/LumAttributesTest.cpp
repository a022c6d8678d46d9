// The library as it is loaded into an ordinary program.
#include "catalogue/LumAttributes.h"

#include <gtest/gtest.h>

#include "platform/Framework.h"

namespace {

TEST(LoadedLibrary, IsAttachedAndRegistered) {
  EXPECT_TRUE(LumAttributesAttached());
  EXPECT_EQ(CDynLinkLibrary::Count(), 1);
}

TEST(LoadedLibrary, TellsTheProjectsVersion) {
  EXPECT_STREQ(LumAttributesVersion(), LUM_PROJECT_VERSION);
}

}  // namespace
