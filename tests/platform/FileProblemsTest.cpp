// FileObject::LoadProblems: where a loaded file could not be read as what it should be; and that
// such lines survive a save.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/platform/FileObjectTesting.h"

namespace {

using namespace std::string_literals;

class FileProblems : public FileObjectTesting {
 protected:
  // "line:column reason" of each problem, with "|" between them.
  static std::string Problems(const FileObject& file, std::size_t most = 100) {
    std::string text;
    for (const FileObjectProblem& problem : file.LoadProblems(most)) {
      text += text.empty() ? "" : " | ";
      text += std::to_string(problem.line) + ":" + std::to_string(problem.column) + " " +
              WideToUtf8(problem.reason).GetString();
    }
    return text;
  }
};

struct CProblemRow {
  const char* what;
  std::string bytes;
  std::string problems;
};

const std::string kUnknown = "expected key=value, [section] or a comment after \";\" or \"//\"";
const std::string kOpen = "a section's name must end with \"]\"";
const std::string kNoKey = "there is no key before \"=\"";
const std::string kNoUtf8 = "a byte that is no UTF-8";
const std::string kHalfPair = "half a UTF-16 pair";
const std::string kHalfUnit = "half a UTF-16 character at the end of the file";

std::string Utf16(const std::u16string& text, bool isBigEndian) {
  std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += isBigEndian ? high : low;
    bytes += isBigEndian ? low : high;
  }
  return bytes;
}

TEST_F(FileProblems, HavePlacesAndReasons) {
  const CProblemRow rows[] = {
      {"an empty file", "", ""},
      {"nothing wrong", "; c\n// c\n\n \t\n[S]\na=1\n b = 2\n[T] x\n[]\nempty=", ""},
      {"an unknown line", "[S]\n  what is it\n", "2:3 " + kUnknown},
      {"the last line, unended", "[S]\nwhat", "2:1 " + kUnknown},
      {"after CR and LF", "[S]\r\na=1\r\n\twhat\r\n", "3:2 " + kUnknown},
      {"a section that is open", "[S]\n[x\n  [ y\n", "2:1 " + kOpen + " | 3:3 " + kOpen},
      {"no key", "=v\n \t= v\n=", "1:1 " + kNoKey + " | 2:3 " + kNoKey + " | 3:1 " + kNoKey},
      {"one slash", "/ x\n", "1:1 " + kUnknown},
      {"a byte at the beginning", "[S]\n\xFF=1\n; \xC3\xA4\n", "2:1 " + kNoUtf8},
      {"a byte in a value", "[S]\n\xC3\xA4=\xC3\xA4\x80z\n", "2:4 " + kNoUtf8},
      {"a character cut at the end", "[S]\n\xC3\xA4=1\nab=\xE2\x82\n", "3:4 " + kNoUtf8},
      {"a surrogate in UTF-8", "\xC3\xA4=1\nab=\xED\xA0\x80\n", "2:4 " + kNoUtf8},
      {"too long a form", "\xC3\xA4=1\nab=\xC0\x80\n", "2:4 " + kNoUtf8},
      {"both in one line", "\xC3\xA4=1\nab \xFF\n", "2:4 " + kNoUtf8 + " | 2:1 " + kUnknown},
      {"zero characters", "[S]\na=\0\0\n"s, ""},
      {"a line of zero characters", "[S]\n\0\0\0\n"s, "2:1 " + kUnknown},
      {"a lone CR", "a=1\rb\nc=1\n", ""},
      {"UTF-16", Utf16(u"[S]\na=1\n", false), ""},
      {"UTF-16, an unknown line", Utf16(u"[S]\n  x\n", true), "2:3 " + kUnknown},
      {"a high half alone", Utf16(u"[S]\nab=\xD83Dx\n", false), "2:4 " + kHalfPair},
      {"a low half alone", Utf16(u"[S]\n\xD83D\xDE00=\xDE00\n", true), ""},
      {"an odd byte", Utf16(u"[S]\na=1\n", false) + "x", "3:1 " + kHalfUnit},
      {"a mark alone", "\xEF\xBB\xBF", ""},
      {"a byte that begins its own character", "\xEF\xBB\xBF[S]\na=\xC3z\n", "2:3 " + kNoUtf8},
      {"a mark and a bad byte", "\xEF\xBB\xBF[S]\na=\xFF\n", "2:3 " + kNoUtf8},
  };
  for (const CProblemRow& row : rows) {
    std::string expected = row.problems;
    if (row.what == "a low half alone"s) {
      // A pair is one character, and takes two places where characters have 16 bits.
      expected = (sizeof(wchar_t) == 2 ? "2:4 " : "2:3 ") + kHalfPair;
    }
    EXPECT_EQ(Problems(Loaded(row.bytes)), expected) << row.what;
  }
}

TEST_F(FileProblems, SurviveASave) {
  const std::string files[] = {"[S]\n  what\n=v\n[x\n\xC3\xA4=\xFF\x80\na=1\n"s,
                               "[S]\n\0\0\na=1\n"s,
                               Utf16(u"[S]\nq\xD83D\n=\xDE00\na=1\n", false) + "x",
                               Utf16(u"[S]\n[\xD83D\na=1\n", true) + "\0"s};
  for (const std::string& bytes : files) {
    FileObject file = Loaded(bytes);
    const std::string problems = Problems(file);
    EXPECT_NE(problems, "");
    EXPECT_EQ(Saved(file), bytes);
    EXPECT_TRUE(file.SetItem(L"S", L"a", L"2", false));
    const std::string saved = Saved(file);
    EXPECT_EQ(saved.size(), bytes.size());
    EXPECT_EQ(Problems(file), problems) << "they are those of the loaded file";
    FileObject again = Loaded(saved);
    EXPECT_EQ(Problems(again), problems);
    EXPECT_EQ(Value(again, L"S", L"a"), L"2");
  }
}

TEST_F(FileProblems, SurviveAMergeWithAnothersSave) {
  FileObject mine = Loaded("[S]\nwhat\na=1\n");
  mine.SetItem(L"S", L"b", L"1", true);
  WriteBytes(m_folder.File("loaded"), "[S]\nwhat\nand that\na=2\n\xFF\xFE\n");
  EXPECT_TRUE(mine.Save(PathText(m_folder.File("loaded"))));
  EXPECT_EQ(ReadBytes(m_folder.File("loaded")), "[S]\nwhat\nand that\na=2\nb=1\n\xFF\xFE\n");
}

TEST_F(FileProblems, AreNoMoreThanAreAskedFor) {
  std::string bytes;
  for (int line = 0; line < 150; ++line) {
    bytes += "what\n";
  }
  const FileObject file = Loaded(bytes);
  EXPECT_EQ(file.LoadProblems().size(), 100u);
  EXPECT_EQ(file.LoadProblems(0).size(), 0u);
  EXPECT_EQ(file.LoadProblems(7).size(), 7u);
  EXPECT_EQ(file.LoadProblems(1000).size(), 150u);
  EXPECT_EQ(file.LoadProblems(1000).back().line, 150);
  const FileObject twoInOneLine = Loaded("\xC3\xA4=1\nab \xFF\n");
  EXPECT_EQ(twoInOneLine.LoadProblems(1).size(), 1u);
  EXPECT_EQ(twoInOneLine.LoadProblems(2).size(), 2u);
}

TEST_F(FileProblems, AreThoseOfTheLastLoad) {
  FileObject file = Loaded("what\n");
  EXPECT_FALSE(file.Load(PathText(m_folder.File("missing"))));
  EXPECT_EQ(Problems(file), "1:1 " + kUnknown) << "a load that fails changes nothing";
  EXPECT_EQ(Problems(Loaded("a=1\n")), "");
  EXPECT_EQ(Problems(FileObject()), "");
}

}  // namespace
