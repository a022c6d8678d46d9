// Runs the tests, or in a new console the part of one that needs it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/windows/ConsoleTest.h"
#include "tests/windows/Library.h"

#include <shellapi.h>

int main(int argc, char** argv) {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (count == 4 && std::wstring(words[1]) == lum::test::kInConsole) {
    return lum::test::RunInThisConsole(words[2], words[3]);
  }
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
