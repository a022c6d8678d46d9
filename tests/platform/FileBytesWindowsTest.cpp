// Reading whole files on Windows, where whoever opens a file says what others may do with it.
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/LumBase.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/WindowsHandle.h"
#include "tests/platform/FileBytesTesting.h"

namespace {

using lum::detail::CHandle;
using lum::detail::OpenExisting;
namespace fs = std::filesystem;

class FileBytesWindows : public FileBytesTesting {};

TEST_F(FileBytesWindows, SaysThatAnotherHasTheFileToItself) {
  const fs::path path = m_folder.File("held");
  WriteBytes(path, "text");
  const CHandle held(OpenExisting(path, GENERIC_READ, 0));
  ASSERT_TRUE(held.IsOpen());
  EXPECT_FALSE(Read(path, 100));
  EXPECT_FALSE(m_error.IsEmpty());
  EXPECT_NE(m_error, L"No such file or directory");
  EXPECT_EQ(m_bytes, "untouched");
}

TEST_F(FileBytesWindows, WaitsForAnotherToCloseTheFile) {
  const fs::path path = m_folder.File("held");
  WriteBytes(path, "text");
  CHandle held(OpenExisting(path, GENERIC_READ, 0));
  ASSERT_TRUE(held.IsOpen());
  std::thread other([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    held.Close();
  });
  EXPECT_TRUE(Read(path, 100)) << CStringA(m_error).GetString();
  other.join();
  EXPECT_EQ(m_bytes, "text");
}

TEST_F(FileBytesWindows, LetsOthersReplaceTheFileMeanwhile) {
  const fs::path path = m_folder.File("read");
  WriteBytes(path, "old");
  const lum::detail::CFilePointer file = lum::detail::OpenForReading(PathText(path), m_error);
  ASSERT_NE(file, nullptr);
  FileObject other;
  EXPECT_TRUE(other.SetItem(L"S", L"a", L"1", true));
  EXPECT_TRUE(other.Save(PathText(path))) << CStringA(other.LastError()).GetString();
  char bytes[4] = "";
  EXPECT_EQ(std::fread(bytes, 1, 3, file.get()), 3u);
  EXPECT_STREQ(bytes, "old");
  EXPECT_TRUE(Read(path, 100));
  EXPECT_EQ(m_bytes, "[S]\r\na=1\r\n");
}

}  // namespace
