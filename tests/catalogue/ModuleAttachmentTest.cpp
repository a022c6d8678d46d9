// Attaching and detaching a module, with versions that fit the platform and versions that do not.
#include "catalogue/ModuleAttachment.h"

#include <gtest/gtest.h>

#include "platform/VersionCheck.h"

namespace {

using lum::detail::CModuleAttachment;
using lum::detail::ModuleStamp;

constexpr ModuleStamp kFitting = {LUM_PLATFORM_VERSION, "source.cpp", "Jan  1 2026 00:00:00"};

TEST(ModuleAttachment, RegistersTheModuleOnceAndFreesItAgain) {
  const int before = CDynLinkLibrary::Count();
  CModuleAttachment module;
  EXPECT_FALSE(module.IsAttached());
  EXPECT_TRUE(module.Attach(kFitting, nullptr));
  EXPECT_TRUE(module.IsAttached());
  EXPECT_EQ(CDynLinkLibrary::Count(), before + 1);
  module.Detach();
  EXPECT_FALSE(module.IsAttached());
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

TEST(ModuleAttachment, MayBeAttachedAgainAfterADetach) {
  const int before = CDynLinkLibrary::Count();
  CModuleAttachment module;
  EXPECT_TRUE(module.Attach(kFitting, nullptr));
  module.Detach();
  EXPECT_TRUE(module.Attach(kFitting, nullptr));
  EXPECT_EQ(CDynLinkLibrary::Count(), before + 1);
  module.Detach();
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

TEST(ModuleAttachment, AVersionThatDoesNotFitIsRefusedAndReported) {
  const unsigned int versions[] = {0x04050100, 0x06050100, 0x05040100, 0x05060100, 0};
  for (unsigned int version : versions) {
    const int before = CDynLinkLibrary::Count();
    CModuleAttachment module;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(module.Attach({version, "the source", "the build"}, nullptr));
    const std::string message = testing::internal::GetCapturedStderr();
    EXPECT_NE(message.find("the source"), std::string::npos) << message;
    EXPECT_NE(message.find("the build"), std::string::npos) << message;
    EXPECT_FALSE(module.IsAttached());
    EXPECT_EQ(CDynLinkLibrary::Count(), before);
    module.Detach();
    EXPECT_EQ(CDynLinkLibrary::Count(), before);
  }
}

TEST(ModuleAttachment, ASecondRegistrationIsRefused) {
  const int before = CDynLinkLibrary::Count();
  CModuleAttachment module;
  EXPECT_TRUE(module.Attach(kFitting, nullptr));
  EXPECT_FALSE(module.Attach(kFitting, nullptr));
  EXPECT_EQ(CDynLinkLibrary::Count(), before + 1);
  module.Detach();
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

}  // namespace
