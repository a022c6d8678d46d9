// The tool as other programs of Windows start it: wide arguments, redirected output, and files that
// another process has open.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "tests/TemporaryFolder.h"
#include "tests/windows/Library.h"
#include "tests/windows/Process.h"

namespace lum::test {

namespace {

using testing::HasSubstr;

class Tool : public testing::Test {
 protected:
  ProcessResult Run(const std::vector<std::wstring>& arguments) {
    std::vector<std::wstring> words = {(ProgramFolder() / "lumattr.exe").wstring()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return RunAndCollect(words, m_folder.Path());
  }

  HANDLE Open(const std::wstring& name, DWORD sharing) {
    const HANDLE handle = lum::detail::OpenExisting(m_folder.Path() / name, GENERIC_READ, sharing);
    EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    return handle;
  }

  void Write(const std::wstring& name, std::string_view bytes) {
    WriteBytes(m_folder.Path() / name, bytes);
  }
  std::string Read(const std::wstring& name) { return ReadBytes(m_folder.Path() / name); }

  CTemporaryFolder m_folder;
};

TEST_F(Tool, TakesNamesAndTextsOfAnyCharacters) {
  const std::wstring name = L"\u6D77 Gr\u00F6\u00DFe \U0001F6A2.cfg";
  Write(name, "[S]\n@trName=0,old\n");
  const ProcessResult set = Run({L"set", name, L"S", L"Name", L"\u03A9 \U0001F6A2 \"x\" \\"});
  EXPECT_EQ(set.exitCode, 0u) << set.errors;
  EXPECT_EQ(Read(name), "[S]\n@trName=0,\xCE\xA9 \xF0\x9F\x9A\xA2 \"x\" \\\n");
  EXPECT_EQ(Run({L"get", name, L"S", L"Name"}).output, "\xCE\xA9 \xF0\x9F\x9A\xA2 \"x\" \\\n");
}

TEST_F(Tool, RefusesLoneSurrogates) {
  Write(L"a.cfg", "[S]\n@trName=0,old\n");
  const ProcessResult set = Run({L"set", L"a.cfg", L"S", L"Name", L"x\xD83Dy"});
  EXPECT_EQ(set.exitCode, 2u);
  EXPECT_EQ(set.errors, "lumattr: VALUE is not valid UTF-8\n");
  EXPECT_EQ(Read(L"a.cfg"), "[S]\n@trName=0,old\n");
}

TEST_F(Tool, LeavesPatternsAsTheyWereTyped) {
  Write(L"abovecolor.txt", "");  // Some runtimes would put it in the pattern's place.
  const ProcessResult names = Run({L"names", L"above*"});
  EXPECT_EQ(names.exitCode, 0u) << names.errors;
  EXPECT_THAT(names.output, HasSubstr("ATTR_ABOVECOLOR"));
}

TEST_F(Tool, WritesUtf8WithLineFeedsIntoFilesAndPipes) {
  Write(L"a.cfg", "[S]\r\n@trName=0,\xCE\xA9\r\n");
  EXPECT_EQ(Run({L"get", L"a.cfg", L"S", L"Name"}).output, "\xCE\xA9\n");
  EXPECT_EQ(Run({L"get", L"a.cfg", L"S", L"\u03A9"}).errors,
            "lumattr: no attribute '\xCE\xA9' in section 'S'\n");
}

TEST_F(Tool, TakesTheNameOfItsDefinitionsFromTheEnvironmentWhateverItsCharacters) {
  Write(L"a.cfg", "[S]\n@trDepth=0,2\n");
  ::SetEnvironmentVariableW(L"LUMATTR_DEFS", L"\u03A9.def");
  const ProcessResult shown = Run({L"show", L"a.cfg", L"S"});
  ::SetEnvironmentVariableW(L"LUMATTR_DEFS", nullptr);
  EXPECT_EQ(shown.exitCode, 2u);
  EXPECT_THAT(shown.errors, HasSubstr("\xCE\xA9.def"));
}

TEST_F(Tool, SaysClearlyThatAnotherProcessHasTheFileOpenAndLeavesItWhole) {
  const std::string old = "[S]\n@trName=0,old\n";
  Write(L"a.cfg", old);
  const CHandle reader(Open(L"a.cfg", FILE_SHARE_READ));  // Lets others read, not replace.
  const ProcessResult set = Run({L"set", L"a.cfg", L"S", L"Name", L"new"});
  EXPECT_EQ(set.exitCode, 2u);
  EXPECT_THAT(set.errors, HasSubstr("lumattr: cannot write \"a.cfg\": "));
  EXPECT_EQ(Read(L"a.cfg"), old);
  EXPECT_EQ(m_folder.EntryCount(), 1u);
}

TEST_F(Tool, WaitsUntilAnotherProcessIsDoneWithTheFile) {
  Write(L"a.cfg", "[S]\n@trName=0,old\n");
  CHandle reader(Open(L"a.cfg", FILE_SHARE_READ));
  std::thread other([&] {
    ::Sleep(250);
    reader.Close();
  });
  const ProcessResult set = Run({L"set", L"a.cfg", L"S", L"Name", L"new"});
  other.join();
  EXPECT_EQ(set.exitCode, 0u) << set.errors;
  EXPECT_EQ(Read(L"a.cfg"), "[S]\n@trName=0,new\n");
}

TEST_F(Tool, ReplacesAFileThatOthersOnlyReadAndShare) {
  Write(L"a.cfg", "[S]\n@trName=0,old\n");
  const CHandle reader(Open(L"a.cfg", lum::detail::kShareAll));
  const ProcessResult set = Run({L"set", L"a.cfg", L"S", L"Name", L"new"});
  EXPECT_EQ(set.exitCode, 0u) << set.errors;
  EXPECT_EQ(Read(L"a.cfg"), "[S]\n@trName=0,new\n");
  char old[64] = "";
  DWORD count = 0;
  EXPECT_NE(::ReadFile(reader.Get(), old, sizeof old, &count, nullptr), 0);
  EXPECT_EQ(std::string(old, count), "[S]\n@trName=0,old\n");  // The reader keeps what it opened.
}

}  // namespace

}  // namespace lum::test
