// UpdateFile on every system: what a save leaves behind when it works, and that it leaves
// nothing when it does not.
#include <filesystem>
#include <string>

#include "tests/platform/FileUpdateTesting.h"

namespace {

namespace fs = std::filesystem;

class FileUpdate : public FileUpdateTesting {};

TEST_F(FileUpdate, WritesNewFiles) {
  const fs::path path = m_folder.File("new");
  const std::string bytes("a\0\xFF\r\n", 5);
  EXPECT_TRUE(Write(path, bytes)) << Why();
  EXPECT_EQ(ReadBytes(path), bytes);
  EXPECT_EQ(m_error, L"untouched");
  EXPECT_EQ(m_folder.EntryCount(), 1u);
}

TEST_F(FileUpdate, ReplacesFilesByShorterAndEmptyOnes) {
  const fs::path path = m_folder.File("file");
  const std::string large(3 << 20, 'x');
  EXPECT_TRUE(Write(path, large)) << Why();
  EXPECT_TRUE(ReadBytes(path) == large);
  EXPECT_TRUE(Write(path, "short")) << Why();
  EXPECT_EQ(ReadBytes(path), "short");
  EXPECT_TRUE(Write(path, "")) << Why();
  EXPECT_EQ(ReadBytes(path), "");
  EXPECT_EQ(m_folder.EntryCount(), 1u);
}

TEST_F(FileUpdate, NeverChangesTheOldFileItself) {
  const fs::path path = m_folder.File("file");
  WriteBytes(path, "old");
  fs::create_hard_link(path, m_folder.File("second name"));
  EXPECT_TRUE(Write(path, "new")) << Why();
  EXPECT_EQ(ReadBytes(path), "new");
  EXPECT_EQ(ReadBytes(m_folder.File("second name")), "old");
}

TEST_F(FileUpdate, WritesRelativeAndForeignNames) {
  const fs::path before = fs::current_path();
  fs::current_path(m_folder.Path());
  EXPECT_TRUE(Write("plain", "1")) << Why();
  EXPECT_TRUE(Write("./dotted", "2")) << Why();
  fs::create_directory("sub");
  EXPECT_TRUE(Write("sub/../sub/inner", "3")) << Why();
  fs::current_path(before);
  EXPECT_EQ(ReadBytes(m_folder.File("plain")), "1");
  EXPECT_EQ(ReadBytes(m_folder.File("dotted")), "2");
  EXPECT_EQ(ReadBytes(m_folder.File("sub/inner")), "3");

  const fs::path foreign = m_folder.File("H\xC3\xB6he \xE2\x82\xAC \xF0\x9F\x98\x80.ini");
  EXPECT_TRUE(Write(foreign, "4")) << Why();
  EXPECT_TRUE(Write(foreign, "5")) << Why();
  EXPECT_EQ(ReadBytes(foreign), "5");
}

TEST_F(FileUpdate, ReadsTheOldFileUpToALimit) {
  for (const std::size_t size : {1u, 5u, 65535u, 65536u, 65537u}) {
    const std::string old(size, 'o');
    WriteBytes(m_folder.File("file"), old);
    for (const std::size_t limit : {size, size - 1}) {
      std::string read = "untouched";
      CString reason;
      bool isRead = false;
      lum::detail::CFileCalls calls;
      lum::detail::UpdateFile(
          PathText(m_folder.File("file")), 0,
          [&](const lum::detail::CCurrentFile& file, CString&) {
            isRead = file.Read(limit, read, reason);
            return nullptr;
          },
          m_error, calls);
      EXPECT_EQ(isRead, size <= limit) << size << " " << limit;
      EXPECT_EQ(reason.IsEmpty(), isRead) << size << " " << limit;
      EXPECT_TRUE(read == (isRead ? old : "untouched")) << size << " " << limit;
    }
  }
}

TEST_F(FileUpdate, RefusesBadPaths) {
  const fs::path file = m_folder.File("file");
  WriteBytes(file, "old");
  EXPECT_FALSE(Write("", "new"));
  EXPECT_EQ(m_error, L"No such file or directory");
  EXPECT_FALSE(Write(m_folder.File("missing/file"), "new"));
  EXPECT_EQ(m_error, L"No such file or directory");
  EXPECT_FALSE(Write(m_folder.File("missing/"), "new"));
  EXPECT_FALSE(Write(m_folder.File("file/inner"), "new"));
  EXPECT_NE(m_error, L"untouched");
  EXPECT_FALSE(Write(m_folder.Path(), "new"));
  EXPECT_NE(m_error, L"untouched");
  const CString cut = PathText(file) + CString(L"\0x", 2);
  EXPECT_FALSE(Write(cut, "new"));
  EXPECT_EQ(ReadBytes(file), "old");
  EXPECT_EQ(m_folder.EntryCount(), 1u);
}

}  // namespace
