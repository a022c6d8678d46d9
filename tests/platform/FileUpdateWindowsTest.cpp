// UpdateFile on Windows: long paths, protected files, and others that hold the file open.
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/portable/FileBytes.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/WindowsHandle.h"
#include "tests/platform/FileUpdateTesting.h"

namespace {

using lum::detail::CHandle;
using lum::detail::OpenExisting;
namespace fs = std::filesystem;

class FileUpdateWindows : public FileUpdateTesting {};

TEST_F(FileUpdateWindows, TakesPathsBeyond260Characters) {
  fs::path folder = m_folder.Path();
  for (int i = 0; i < 6; ++i) {
    folder /= std::wstring(60, L'x');
  }
  const CString path((folder / L"survey.cfg").c_str());
  ASSERT_GT(path.GetLength(), 260);
  fs::create_directories(lum::detail::SystemPath(CString(folder.c_str())));
  EXPECT_TRUE(Write(path, "1")) << Why();
  EXPECT_TRUE(Write(path, "22")) << Why();
  std::string bytes;
  EXPECT_TRUE(lum::detail::ReadWholeFile(path, 100, bytes, m_error));
  EXPECT_EQ(bytes, "22");
  fs::remove(lum::detail::SystemPath(path));
  for (; folder != m_folder.Path(); folder = folder.parent_path()) {
    fs::remove(lum::detail::SystemPath(CString(folder.c_str())));
  }
}

TEST_F(FileUpdateWindows, RefusesFoldersAndProtectedFiles) {
  const fs::path folder = m_folder.File("folder");
  fs::create_directory(folder);
  EXPECT_FALSE(Write(folder, "new"));
  EXPECT_FALSE(m_error.IsEmpty());
  const fs::path path = m_folder.File("protected");
  ASSERT_TRUE(Write(path, "old"));
  ASSERT_TRUE(::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_FALSE(Write(path, "new"));
  EXPECT_NE(m_error, L"untouched");
  EXPECT_EQ(ReadBytes(path), "old");
  EXPECT_EQ(m_folder.EntryCount(), 2U);
  ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileUpdateWindows, GivesUpAfterAWhileWhenAnotherHoldsTheFile) {
  const fs::path path = m_folder.File("held");
  ASSERT_TRUE(Write(path, "old"));
  CHandle held(OpenExisting(path, GENERIC_READ, 0));
  ASSERT_TRUE(held.IsOpen());
  EXPECT_FALSE(Write(path, "new"));
  EXPECT_NE(m_error, L"untouched");
  EXPECT_FALSE(m_error.IsEmpty());
  EXPECT_EQ(m_folder.EntryCount(), 1U);
  held.Close();
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST_F(FileUpdateWindows, WaitsForAnotherToCloseTheFile) {
  const fs::path path = m_folder.File("held");
  ASSERT_TRUE(Write(path, "old"));
  CHandle held(OpenExisting(path, GENERIC_READ, 0));
  ASSERT_TRUE(held.IsOpen());
  std::thread other([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    held.Close();
  });
  EXPECT_TRUE(Write(path, "new")) << Why();
  other.join();
  EXPECT_EQ(ReadBytes(path), "new");
  EXPECT_EQ(m_folder.EntryCount(), 1U);
}

}  // namespace
