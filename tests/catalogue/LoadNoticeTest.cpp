// What the library tells the platform while it is loaded, and what it does with the answers. The
// program's own CheckDllVersion and AfxInitExtensionModule stand in front of the platform's; they
// answer as LUM_TEST_VERSION_FITS and LUM_TEST_MODULE_REGISTERS say. Built once for each answer,
// under the name LUM_TEST_SUITE.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "catalogue/AttributeNames.h"
#include "catalogue/LumAttributes.h"
#include "platform/ExtensionModule.h"
#include "platform/VersionCheck.h"

namespace {

// Written before main, by the library's constructor.
int g_checks = 0;
unsigned int g_version = 0;
const char* g_sourceFile = nullptr;
const char* g_buildStamp = nullptr;
int g_registrations = 0;
bool g_instanceWasNull = false;

constexpr bool kVersionFits = LUM_TEST_VERSION_FITS;
constexpr bool kModuleRegisters = LUM_TEST_MODULE_REGISTERS;

}  // namespace

bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp) {
  ++g_checks;
  g_version = version;
  g_sourceFile = sourceFile;
  g_buildStamp = buildStamp;
  return kVersionFits;
}

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance) {
  ++g_registrations;
  g_instanceWasNull = instance == nullptr;
  module.bInitialized = kModuleRegisters;
  return kModuleRegisters;
}

namespace {

TEST(LUM_TEST_SUITE, TellsTheVersionPackedFromItsText) {
  unsigned int parts[4] = {};
  ASSERT_EQ(std::sscanf(LumAttributesVersion(), "%u.%u.%u.%u", &parts[0], &parts[1], &parts[2],
                        &parts[3]),
            4);
  EXPECT_EQ(g_checks, 1);
  EXPECT_EQ(g_version, parts[0] << 24 | parts[1] << 16 | parts[2] << 8 | parts[3]);
  EXPECT_EQ(g_version, 0x05050100u);
}

TEST(LUM_TEST_SUITE, NamesTheMainSourceFileWithoutAMachinesPath) {
  EXPECT_STREQ(g_sourceFile, "catalogue/LumAttributes.cpp");
}

TEST(LUM_TEST_SUITE, StampsTheBuildAsTheCompilerWritesIt) {
  char month[4] = {};
  int numbers[5] = {};
  int length = -1;
  ASSERT_EQ(std::sscanf(g_buildStamp, "%3[A-Za-z] %2d %4d %2d:%2d:%2d%n", month, &numbers[0],
                        &numbers[1], &numbers[2], &numbers[3], &numbers[4], &length),
            6)
      << g_buildStamp;
  EXPECT_EQ(length, 20);
  EXPECT_EQ(std::string(g_buildStamp).size(), 20u);
  EXPECT_NE(std::string("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec").find(month),
            std::string::npos);
}

TEST(LUM_TEST_SUITE, RegistersOnlyAfterTheVersionWasAccepted) {
  EXPECT_EQ(g_registrations, kVersionFits ? 1 : 0);
  EXPECT_EQ(g_instanceWasNull, kVersionFits);
}

TEST(LUM_TEST_SUITE, RemembersWhetherItWasAccepted) {
  EXPECT_EQ(LumAttributesAttached(), kVersionFits && kModuleRegisters);
  EXPECT_EQ(CDynLinkLibrary::Count(), kVersionFits && kModuleRegisters ? 1 : 0);
}

TEST(LUM_TEST_SUITE, TheCatalogueIsThereWhateverTheAnswer) {
  EXPECT_EQ(ATTR_ABOVECOLOR, CString(L"AboveColor"));
}

}  // namespace
