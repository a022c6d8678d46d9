// WriteFileAtomically on Windows: what a save leaves behind when it works, when others hold the
// file open, and that it leaves nothing when it does not work.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/portable/AtomicFile.h"
#include "platform/portable/FileBytes.h"
#include "platform/portable/SystemFile.h"
#include "platform/portable/WindowsApi.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

namespace {

using lum::detail::WriteFileAtomically;
namespace fs = std::filesystem;

class AtomicFile : public testing::Test {
 protected:
  bool Write(const fs::path& path, std::string_view bytes) {
    m_error = L"untouched";
    return WriteFileAtomically(CString(path.c_str()), bytes, m_error);
  }

  // Holds the file open without sharing it.
  static HANDLE Hold(const fs::path& path) {
    const HANDLE handle = ::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(handle, INVALID_HANDLE_VALUE);
    return handle;
  }

  CTemporaryFolder m_folder;
  CString m_error;
};

TEST_F(AtomicFile, WritesNewFiles) {
  const fs::path path = m_folder.File("new");
  const std::string bytes("a\0\xFF\r\n", 5);
  EXPECT_TRUE(Write(path, bytes)) << CStringA(m_error).GetString();
  EXPECT_EQ(ReadBytes(path), bytes);
  EXPECT_EQ(m_error, L"untouched");
  EXPECT_EQ(m_folder.EntryCount(), 1U);
}

TEST_F(AtomicFile, ReplacesFilesByShorterAndEmptyOnes) {
  const fs::path path = m_folder.File("old");
  for (const char* bytes : {"a long text", "short", ""}) {
    EXPECT_TRUE(Write(path, bytes)) << CStringA(m_error).GetString();
    EXPECT_EQ(ReadBytes(path), bytes);
  }
  EXPECT_EQ(m_folder.EntryCount(), 1U);
}

TEST_F(AtomicFile, TakesNamesBeyondTheAnsiCodePageAndTheBasicPlane) {
  const fs::path path = m_folder.File(
      "Gr\xC3\xB6\xC3\x9F"
      "e \xE6\xB5\xB7 \xF0\x9F\x9A\xA2.cfg");
  EXPECT_TRUE(Write(path, "1")) << CStringA(m_error).GetString();
  EXPECT_TRUE(Write(path, "2")) << CStringA(m_error).GetString();
  EXPECT_EQ(ReadBytes(path), "2");
}

TEST_F(AtomicFile, TakesPathsBeyond260Characters) {
  fs::path folder = m_folder.Path();
  for (int i = 0; i < 6; ++i) {
    folder /= std::wstring(60, L'x');
  }
  const CString path((folder / L"survey.cfg").c_str());
  ASSERT_GT(path.GetLength(), 260);
  fs::create_directories(lum::detail::SystemPath(CString(folder.c_str())));
  EXPECT_TRUE(WriteFileAtomically(path, "1", m_error)) << CStringA(m_error).GetString();
  EXPECT_TRUE(WriteFileAtomically(path, "22", m_error)) << CStringA(m_error).GetString();
  std::string bytes;
  EXPECT_TRUE(lum::detail::ReadWholeFile(path, 100, bytes, m_error));
  EXPECT_EQ(bytes, "22");
  fs::remove(lum::detail::SystemPath(path));
  for (; folder != m_folder.Path(); folder = folder.parent_path()) {
    fs::remove(lum::detail::SystemPath(CString(folder.c_str())));
  }
}

TEST_F(AtomicFile, RefusesFoldersAndProtectedFiles) {
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

TEST_F(AtomicFile, RefusesMissingFolders) {
  EXPECT_FALSE(Write(m_folder.File("none") / "file", "new"));
  EXPECT_NE(m_error, L"untouched");
  EXPECT_EQ(m_folder.EntryCount(), 0U);
}

TEST_F(AtomicFile, GivesUpAfterAWhileWhenAnotherHoldsTheFile) {
  const fs::path path = m_folder.File("held");
  ASSERT_TRUE(Write(path, "old"));
  const HANDLE handle = Hold(path);
  EXPECT_FALSE(Write(path, "new"));
  EXPECT_NE(m_error, L"untouched");
  EXPECT_FALSE(m_error.IsEmpty());
  EXPECT_EQ(m_folder.EntryCount(), 1U);
  ::CloseHandle(handle);
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST_F(AtomicFile, WaitsForAnotherToCloseTheFile) {
  const fs::path path = m_folder.File("held");
  ASSERT_TRUE(Write(path, "old"));
  const HANDLE handle = Hold(path);
  std::thread other([handle] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    ::CloseHandle(handle);
  });
  EXPECT_TRUE(Write(path, "new")) << CStringA(m_error).GetString();
  other.join();
  EXPECT_EQ(ReadBytes(path), "new");
  EXPECT_EQ(m_folder.EntryCount(), 1U);
}

}  // namespace
