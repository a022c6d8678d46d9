// CheckDllVersion: which versions fit, and what is said of those that do not.
#include "platform/VersionCheck.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct CheckResult {
  bool fits;
  std::string output;
};

CheckResult Check(unsigned int version, const char* sourceFile, const char* buildStamp) {
  testing::internal::CaptureStderr();
  const bool fits = CheckDllVersion(version, sourceFile, buildStamp);
  return {fits, testing::internal::GetCapturedStderr()};
}

}  // namespace

TEST(VersionCheck, AcceptsTheSameFirstTwoPartsSilently) {
  for (const unsigned int version : {0x05050100U, 0x05050000U, 0x0505FFFFU, LUM_PLATFORM_VERSION}) {
    const CheckResult result = Check(version, "a.cpp", "today");
    EXPECT_TRUE(result.fits) << version;
    EXPECT_EQ(result.output, "") << version;
  }
}

TEST(VersionCheck, RefusesOtherVersions) {
  for (const unsigned int version :
       {0U, 0x05040100U, 0x05060100U, 0x04050100U, 0x06050100U, 0x00000505U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(Check(version, "a.cpp", "today").fits) << version;
  }
}

TEST(VersionCheck, SaysInOneLineWhatDoesNotFit) {
  EXPECT_EQ(Check(0x0604FF01, "src/Main.cpp", "Jan  1 2024 12:00:00").output,
            "library version 6.4.255.1 does not fit platform version 5.5.1.0 "
            "(source src/Main.cpp, built Jan  1 2024 12:00:00)\n");
}

TEST(VersionCheck, NullTextsPrintAsQuestionMarks) {
  EXPECT_EQ(Check(0, nullptr, nullptr).output,
            "library version 0.0.0.0 does not fit platform version 5.5.1.0 "
            "(source ?, built ?)\n");
}
