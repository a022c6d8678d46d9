// The form of paths on Windows.
#include <gtest/gtest.h>

#include <string>

#include "platform/portable/SystemFile.h"

namespace {

std::wstring SystemForm(const std::wstring& path) {
  return lum::detail::SystemPath(CString(path.c_str())).wstring();
}

TEST(SystemFileWindows, PathsAreAbsolute) {
  EXPECT_EQ(SystemForm(L"C:\\a\\b.cfg"), L"C:\\a\\b.cfg");
  EXPECT_EQ(SystemForm(L"C:/a/./x/../b.cfg"), L"C:\\a\\b.cfg");
  EXPECT_TRUE(SystemForm(L"b.cfg").ends_with(L"\\b.cfg"));
  EXPECT_EQ(SystemForm(L""), L"");
}

TEST(SystemFileWindows, LongPathsGetThePrefixThatLiftsTheLimit) {
  const std::wstring name(300, L'n');
  EXPECT_EQ(SystemForm(L"C:/a/" + name), L"\\\\?\\C:\\a\\" + name);
  EXPECT_EQ(SystemForm(L"//server/share/" + name), L"\\\\?\\UNC\\server\\share\\" + name);
}

TEST(SystemFileWindows, PathsWithAPrefixStayAsTheyAre) {
  const std::wstring name(300, L'n');
  for (const std::wstring& path : {L"\\\\?\\C:\\a\\" + name, L"\\\\.\\pipe\\" + name}) {
    EXPECT_EQ(SystemForm(path), path);
  }
}

TEST(SystemFileWindows, PathsThatALongerNameBesideWouldMakeTooLongGetThePrefix) {
  const std::wstring folder = L"C:\\" + std::wstring(180, L'f') + L"\\";
  EXPECT_EQ(SystemForm(folder + L"a.cfg"), L"\\\\?\\" + folder + L"a.cfg");
}

}  // namespace
