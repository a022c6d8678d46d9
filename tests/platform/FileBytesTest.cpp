// Reading whole files: the limit, names and the texts of failures.
#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/portable/SystemFile.h"
#include "tests/platform/FileBytesTesting.h"

namespace {

using lum::detail::ReadWholeFile;
namespace fs = std::filesystem;

class FileBytes : public FileBytesTesting {};

TEST_F(FileBytes, ReadsUpToTheLimitAndNoFurther) {
  for (const std::size_t size : {0u, 1u, 1000u, 65535u, 65536u, 65537u, 200000u}) {
    const std::string bytes(size, 'x');
    WriteBytes(m_folder.File("file"), bytes);
    EXPECT_TRUE(Read(m_folder.File("file"), size));
    EXPECT_TRUE(m_bytes == bytes) << size;
    EXPECT_TRUE(Read(m_folder.File("file"), size + 1));
    EXPECT_TRUE(m_bytes == bytes) << size;
    if (size > 0) {
      EXPECT_FALSE(Read(m_folder.File("file"), size - 1));
      EXPECT_EQ(m_bytes, "untouched");
    }
  }
  EXPECT_EQ(m_error, L"the file is larger than 199999 bytes");
}

TEST_F(FileBytes, ReadsNamesBeyondAscii) {
  const fs::path path = m_folder.File("H\xC3\xB6he \xE2\x82\xAC");
  WriteBytes(path, "text");
  EXPECT_TRUE(Read(path, 100));
  EXPECT_EQ(m_bytes, "text");
}

TEST_F(FileBytes, LeavesTheOutputWhenThereIsNoFile) {
  EXPECT_FALSE(Read(m_folder.File("missing"), 100));
  EXPECT_EQ(m_error, L"No such file or directory");
  EXPECT_FALSE(Read("", 100));
  EXPECT_FALSE(Read(m_folder.Path(), 100));
  EXPECT_EQ(m_bytes, "untouched");
  WriteBytes(m_folder.File("file"), "x");
  const CString cut = PathText(m_folder.File("file")) + CString(L"\0x", 2);
  EXPECT_FALSE(ReadWholeFile(cut, 100, m_bytes, m_error));
  EXPECT_EQ(m_bytes, "untouched");
}

TEST_F(FileBytes, NamesSystemErrors) {
  EXPECT_EQ(lum::detail::SystemMessage(ENOENT), L"No such file or directory");
  EXPECT_FALSE(lum::detail::SystemMessage(123456).IsEmpty());
}

TEST_F(FileBytes, RefusesFolders) {
  EXPECT_FALSE(Read(m_folder.Path(), 100));
  EXPECT_EQ(m_error, L"Is a directory");
}

}  // namespace
