// The tool in a console: what a user sees, also of texts that no code page holds.
//
// The tests run without a console of their own. They start this program again in a new one without
// a window; there it starts the tool, reads the console's cells back and writes them into a file.
#include "tests/windows/ConsoleTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/TemporaryFolder.h"
#include "tests/windows/Library.h"
#include "tests/windows/Process.h"

namespace lum::test {

namespace {

// The rows from the first one to the cursor, without the blanks at their ends.
std::wstring ShownText(HANDLE console) {
  CONSOLE_SCREEN_BUFFER_INFO info = {};
  ::GetConsoleScreenBufferInfo(console, &info);
  std::wstring text;
  for (SHORT row = 0; row <= info.dwCursorPosition.Y; ++row) {
    std::wstring cells(static_cast<std::size_t>(info.dwSize.X), L' ');
    DWORD count = 0;
    ::ReadConsoleOutputCharacterW(console, cells.data(), static_cast<DWORD>(cells.size()), {0, row},
                                  &count);
    cells.resize(count);
    text += cells.substr(0, cells.find_last_not_of(L' ') + 1) + L'\n';
  }
  return text;
}

void WriteWide(const std::wstring& file, const std::wstring& text) {
  WriteBytes(file, {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
}

}  // namespace

int RunInThisConsole(const std::wstring& commandLine, const std::wstring& shownFile) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const CHandle console(::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING,
                                      0, nullptr));
  if (!console.IsOpen()) {
    return 100;
  }
  const DWORD exitCode = RunProcess(commandLine, {{}, console.Get(), console.Get(), 0});
  WriteWide(shownFile, ShownText(console.Get()));
  return static_cast<int>(exitCode);
}

namespace {

class Console : public testing::Test {
 protected:
  // What a console shows of the tool.
  std::wstring Shown(const std::vector<std::wstring>& arguments, DWORD expectedExitCode) {
    std::vector<std::wstring> words = {(ProgramFolder() / "lumattr.exe").wstring()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const std::filesystem::path shownFile = m_folder.Path() / "shown";
    const std::wstring program = (ProgramFolder() / "windows_tests.exe").wstring();
    const std::wstring line =
        CommandLine({program, kInConsole, CommandLine(words), shownFile.wstring()});
    EXPECT_EQ(RunProcess(line, {m_folder.Path(), nullptr, nullptr, CREATE_NO_WINDOW}),
              expectedExitCode);
    const std::string bytes = ReadBytes(shownFile);
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(text.data()));
    return text;
  }

  CTemporaryFolder m_folder;
};

TEST_F(Console, ShowsTextsThatNoCodePageHolds) {
  WriteBytes(m_folder.File("a.cfg"),
             "[S]\n@trName=0,Gr\xC3\xB6\xC3\x9F"
             "e \xCE\xA9 \xD0\x96\n");
  EXPECT_EQ(Shown({L"get", L"a.cfg", L"S", L"Name"}, 0), L"Gr\u00F6\u00DFe \u03A9 \u0416\n\n");
}

TEST_F(Console, ShowsMessages) {
  EXPECT_EQ(Shown({L"get", L"\u03A9.cfg", L"S", L"Name"}, 2),
            L"lumattr: cannot read \"\u03A9.cfg\": No such file or directory\n\n");
}

TEST_F(Console, ShowsLongOutputsWhole) {
  // Not every console takes the sequences of bold titles for itself.
  ::SetEnvironmentVariableW(L"NO_COLOR", L"1");
  const std::wstring shown = Shown({L"names", L"above*"}, 0);
  ::SetEnvironmentVariableW(L"NO_COLOR", nullptr);
  EXPECT_THAT(shown, testing::HasSubstr(L"ATTR_ABOVECOLOR"));
  EXPECT_THAT(shown, testing::HasSubstr(L"AboveColor"));
  EXPECT_EQ(shown.find(L'\x1b'), std::wstring::npos);
}

}  // namespace

}  // namespace lum::test
