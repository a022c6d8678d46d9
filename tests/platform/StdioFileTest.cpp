// CStdioFile: opening, line ends, encodings.
#include "platform/StdioFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/TextEncoding.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

namespace {

class StdioFile : public testing::Test {
 protected:
  bool Open(CStdioFile& file, const std::string& bytes) {
    WriteBytes(m_folder.File("file"), bytes);
    return file.Open(PathText(m_folder.File("file")),
                     CStdioFile::modeRead | CStdioFile::shareDenyWrite | CStdioFile::typeText);
  }

  std::vector<CString> Lines(const std::string& bytes) {
    CStdioFile file;
    EXPECT_TRUE(Open(file, bytes));
    return Rest(file);
  }

  static std::vector<CString> Rest(CStdioFile& file) {
    std::vector<CString> lines;
    CString line = L"untouched";
    while (file.ReadString(line)) {
      lines.push_back(line);
    }
    EXPECT_EQ(line, L"");
    return lines;
  }

  CTemporaryFolder m_folder;
};

struct Text {
  const char* note;
  std::string bytes;
  std::vector<CString> lines;
};

TEST_F(StdioFile, ReadsLinesInEveryEncoding) {
  const Text cases[] = {
      {"empty", "", {}},
      {"only a mark", "\xEF\xBB\xBF", {}},
      {"one line feed", "\n", {L""}},
      {"with and without end", "a\nb", {L"a", L"b"}},
      {"end after the last", "a\nb\n", {L"a", L"b"}},
      {"mixed ends", "a\r\nb\n\r\nc\r", {L"a", L"b", L"", L"c\r"}},
      {"a return alone ends no line", "a\rb\r\r\n", {L"a\rb\r"}},
      {"blanks stay", " a \t\n", {L" a \t"}},
      {"UTF-8", "\xC3\xA4\n\xE2\x82\xAC", {L"\u00E4", L"\u20AC"}},
      {"UTF-8 with mark", "\xEF\xBB\xBF\xC3\xA4\n", {L"\u00E4"}},
      {"Latin-1", "\xE4\n\xFC", {L"\u00E4", L"\u00FC"}},
      {"a mark is one only at the start",
       "a\n\xEF\xBB\xBF"
       "b",
       {L"a",
        L"\uFEFF"
        L"b"}},
      {"NULs", std::string("a\0b\n\0", 5), {CString(L"a\0b", 3), CString(L"\0", 1)}},
      {"UTF-16 low first",
       std::string("\xFF\xFE"
                   "a\0\r\0\n\0\xAC\x20",
                   10),
       {L"a", L"\u20AC"}},
      {"UTF-16 high first", std::string("\xFE\xFF\0a\0\n\x20\xAC", 8), {L"a", L"\u20AC"}},
      {"UTF-16 of odd size",
       std::string("\xFF\xFE"
                   "a\0b",
                   5),
       {L"a"}},
      {"UTF-16 mark and one byte", "\xFF\xFEx", {}},
      {"beyond 16 bits", std::string("\xFF\xFE\x3D\xD8\x00\xDE", 6), {L"\U0001F600"}},
  };
  for (const Text& test : cases) {
    EXPECT_EQ(Lines(test.bytes), test.lines) << test.note;
  }
}

TEST_F(StdioFile, ReadsOneVeryLongLine) {
  const std::string bytes(5 << 20, 'x');
  const std::vector<CString> lines = Lines(bytes);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].GetLength(), static_cast<int>(bytes.size()));
}

TEST_F(StdioFile, StartsOver) {
  CStdioFile file;
  ASSERT_TRUE(Open(file,
                   "\xEF\xBB\xBF"
                   "a\nb\n"));
  const std::vector<CString> expected = {L"a", L"b"};
  EXPECT_EQ(Rest(file), expected);
  EXPECT_EQ(Rest(file), std::vector<CString>());
  file.SeekToBegin();
  EXPECT_EQ(Rest(file), expected);
}

TEST_F(StdioFile, ReadsNothingWhenClosed) {
  CStdioFile file;
  CString line = L"untouched";
  EXPECT_FALSE(file.ReadString(line));
  EXPECT_EQ(line, L"");
  file.SeekToBegin();
  file.Close();
  ASSERT_TRUE(Open(file, "a\n"));
  file.Close();
  file.SeekToBegin();
  EXPECT_FALSE(file.ReadString(line));
}

TEST_F(StdioFile, OpensAnotherFileInstead) {
  CStdioFile file;
  ASSERT_TRUE(Open(file, "a\nb\n"));
  ASSERT_TRUE(Open(file, "c\n"));
  EXPECT_EQ(Rest(file), std::vector<CString>{L"c"});
}

TEST_F(StdioFile, HasNothingOpenAfterAFailure) {
  CStdioFile file;
  ASSERT_TRUE(Open(file, "a\n"));
  CString line;
  EXPECT_FALSE(file.Open(PathText(m_folder.File("missing")), CStdioFile::modeRead));
  EXPECT_FALSE(file.ReadString(line));
  EXPECT_FALSE(file.Open(PathText(m_folder.Path()), CStdioFile::modeRead));
  EXPECT_FALSE(file.Open(L"", CStdioFile::modeRead));
  EXPECT_FALSE(file.Open(nullptr, CStdioFile::modeRead));
  EXPECT_FALSE(file.ReadString(line));
}

TEST_F(StdioFile, RefusesFilesAboveTheLimit) {
  const std::filesystem::path path = m_folder.File("large");
  WriteBytes(path, "a\n");
  std::filesystem::resize_file(path, CStdioFile::kMaxFileBytes + 1);
  CStdioFile file;
  EXPECT_FALSE(file.Open(PathText(path), CStdioFile::modeRead));
}

TEST_F(StdioFile, ReadsWhatTheFileHeldWhenItWasOpened) {
  CStdioFile file;
  ASSERT_TRUE(Open(file, "a\nb\n"));
  WriteBytes(m_folder.File("file"), "c\n");
  EXPECT_EQ(Rest(file), (std::vector<CString>{L"a", L"b"}));
}

// Kept lines share their characters with the string that the next one is read into.
TEST_F(StdioFile, ReadsLinesOfAllLengthsOneAfterTheOther) {
  std::string bytes;
  std::vector<CString> expected;
  for (const int length : {0, 1, 40, 3, 4095, 4096, 2, 4097, 100000, 5, 0, 4096, 8000, 7}) {
    for (const char* start : {"", "x", "\xC3\xA4"}) {
      const std::string line = start + std::string(static_cast<std::size_t>(length), 'a');
      bytes += line + "\n";
      expected.push_back(Utf8ToWide(line.c_str()));
    }
  }
  EXPECT_EQ(Lines(bytes), expected);
}

TEST_F(StdioFile, AKeptLineStaysWhenTheNextOneIsRead) {
  CStdioFile file;
  ASSERT_TRUE(Open(file, "first\nsecond, longer\nx\n"));
  CString line;
  ASSERT_TRUE(file.ReadString(line));
  const CString kept = line;
  ASSERT_TRUE(file.ReadString(line));
  EXPECT_EQ(kept, L"first");
  EXPECT_EQ(line, L"second, longer");
  ASSERT_TRUE(file.ReadString(line));
  EXPECT_EQ(line, L"x");
  EXPECT_EQ(line.GetLength(), 1);
}

}  // namespace
