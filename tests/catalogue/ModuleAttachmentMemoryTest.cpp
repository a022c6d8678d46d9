// Attaching the module when memory is short.
#include <gtest/gtest.h>

#include "catalogue/ModuleAttachment.h"
#include "platform/VersionCheck.h"
#include "tests/Allocations.h"

namespace {

constexpr lum::detail::ModuleStamp kFitting = {LUM_PLATFORM_VERSION, "source.cpp",
                                               "Jan  1 2026 00:00:00"};

TEST(ModuleAttachmentMemory, TheModuleAttachesWithoutItsListOfClasses) {
  const int before = CDynLinkLibrary::Count();
  lum::detail::CModuleAttachment module;
  LimitAllocations(0);
  const bool isAttached = module.Attach(kFitting, nullptr);
  LimitAllocations(-1);
  EXPECT_TRUE(isAttached);
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
  module.Detach();
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

}  // namespace
