// The order in which the library's global objects come and go where their strings need code to be
// built: the catalogue's texts, the unit converter, then the version check; and the other way
// round.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/LumBase.h"

namespace {

std::vector<std::string> g_events;
const CString* g_name = nullptr;

const CString* NameInTheLibrary() {
  void* library = dlopen(LUM_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD);
  if (library == nullptr) {
    return nullptr;
  }
  const void* name = dlsym(library, "ATTR_ABOVECOLOR");
  dlclose(library);
  return static_cast<const CString*>(name);
}

// The first event happens in a constructor of the library, when its names can be looked up already.
// In its destructors they no longer can.
void Note(const char* event) {
  if (g_name == nullptr) {
    g_name = NameInTheLibrary();
  }
  const bool isThere = g_name != nullptr && *g_name == L"AboveColor";
  g_events.push_back(event + std::string(isThere ? "" : ", without the catalogue"));
}

TEST(GlobalOrder, TheCatalogueComesFirstAndGoesLast) {
  g_libraryObserver = &Note;
  void* library = dlopen(LUM_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  EXPECT_THAT(g_events, testing::ElementsAre("unit converter built", "version checked"));
  g_events.clear();
  EXPECT_EQ(dlclose(library), 0);
  EXPECT_THAT(g_events, testing::ElementsAre("unit converter destroyed"));
  EXPECT_EQ(NameInTheLibrary(), nullptr);
  g_libraryObserver = nullptr;
}

}  // namespace
