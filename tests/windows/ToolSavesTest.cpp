// Saves of the tool as a system treats them in earnest: processes that are ended at any moment, and
// several that write one file. The environment variable LUM_KILLS says how many are ended.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/TemporaryFolder.h"
#include "tests/windows/Library.h"
#include "tests/windows/Process.h"

namespace lum::test {

namespace {

using testing::HasSubstr;

class ToolSaves : public testing::Test {
 protected:
  std::wstring Set(const std::wstring& name, const std::wstring& value) const {
    return CommandLine({(ProgramFolder() / "lumattr.exe").wstring(), L"set", L"a.cfg", L"S", name,
                        value, L"--create"});
  }
  void Write(std::string_view bytes) { WriteBytes(File(), bytes); }
  std::string Read() { return ReadBytes(File()); }
  std::filesystem::path File() const { return m_folder.Path() / L"a.cfg"; }

  /// The system puts a file in another's place in two steps. What was ended between them the next
  /// command finishes, one that only reads, too.
  bool FinishReplacing() {
    const bool isMissing = !std::filesystem::exists(File());
    if (isMissing) {
      RunProcess(CommandLine({(ProgramFolder() / "lumattr.exe").wstring(), L"get", L"a.cfg", L"S",
                              L"Name"}),
                 {m_folder.Path()});
    }
    return isMissing;
  }

  CTemporaryFolder m_folder;
};

int Kills() {
  const char* number = std::getenv("LUM_KILLS");
  return number != nullptr ? std::atoi(number) : 30;
}

TEST_F(ToolSaves, AreWholeOrNotThereWhenTheProcessIsEnded) {
  constexpr int kLongestWait = 150;  // Milliseconds; a start and a save take about so long.
  const std::string rest(200'000, 'x');
  std::string old = "[S]\n@trName=0,start\n@trRest=0," + rest + "\n";
  Write(old);
  std::mt19937 random(1);
  int endedBefore = 0;
  int endedBetween = 0;
  for (int i = 0; i < Kills(); ++i) {
    const std::string value = "value" + std::to_string(i);
    const CHandle process =
        StartProcess(Set(L"Name", std::wstring(value.begin(), value.end())), {m_folder.Path()});
    ASSERT_NE(process.Get(), nullptr) << "not started: " << ::GetLastError();
    ::Sleep(static_cast<DWORD>(random() % kLongestWait));
    ::TerminateProcess(process.Get(), 99);
    ::WaitForSingleObject(process.Get(), 60'000);
    endedBetween += FinishReplacing() ? 1 : 0;
    const std::string content = Read();
    const std::string now = "[S]\n@trName=0," + value + "\n@trRest=0," + rest + "\n";
    ASSERT_TRUE(content == old || content == now) << content.substr(0, 100);
    endedBefore += content == old ? 1 : 0;
    old = content;
  }
  std::cout << "ended: " << Kills() << ", before the file was replaced: " << endedBefore
            << ", while it was: " << endedBetween << "\n";
  EXPECT_EQ(RunProcess(Set(L"Name", L"last"), {m_folder.Path()}), 0u);
  EXPECT_THAT(Read(), HasSubstr("@trName=0,last\n"));
  // The file and its three previous versions: what the ended ones left is tidied up.
  EXPECT_LE(m_folder.EntryCount(), 4u);
}

TEST_F(ToolSaves, LoseNothingOfEachOther) {
  constexpr int kWriters = 4;
  constexpr int kSavesEach = 6;
  Write("[S]\n");
  std::vector<std::thread> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([&, writer] {
      for (int i = 0; i < kSavesEach; ++i) {
        const std::wstring name = L"W" + std::to_wstring(writer) + L"N" + std::to_wstring(i);
        EXPECT_EQ(RunProcess(Set(name, L"1"), {m_folder.Path()}), 0u);
      }
    });
  }
  for (std::thread& writer : writers) {
    writer.join();
  }
  const std::string content = Read();
  for (int writer = 0; writer < kWriters; ++writer) {
    for (int i = 0; i < kSavesEach; ++i) {
      EXPECT_THAT(content,
                  HasSubstr("@trW" + std::to_string(writer) + "N" + std::to_string(i) + "=0,1\n"));
    }
  }
}

}  // namespace

}  // namespace lum::test
