// LoadedLines: what tools are told about every line of a file.
#include <string>
#include <vector>

#include "tests/platform/FileObjectTesting.h"

namespace {

using FileObjectLines = FileObjectTesting;

TEST_F(FileObjectLines, TellsTheLoadedLines) {
  FileObject file =
      Loaded("\xEF\xBB\xBFtop=1\r\n\r\n ; n\xC3\xB6te\n[S] x\n \tk\xC3\xB6 =  v \n[bad\n");
  EXPECT_TRUE(file.RemoveSection(L"S"));
  const std::vector<FileObjectLine> lines = file.LoadedLines();
  using Kind = FileObjectLine::Kind;
  ASSERT_EQ(lines.size(), 6u);
  const Kind kinds[] = {Kind::Item,    Kind::Blank, Kind::Comment,
                        Kind::Section, Kind::Item,  Kind::Unknown};
  const wchar_t* texts[] = {L"top=1", L"", L" ; n\u00F6te", L"[S] x", L" \tk\u00F6 =  v ", L"[bad"};
  const wchar_t* sections[] = {L"", L"", L"", L"S", L"S", L"S"};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i].kind, kinds[i]) << i;
    EXPECT_EQ(lines[i].number, static_cast<int>(i) + 1);
    EXPECT_EQ(lines[i].text, CString(texts[i])) << i;
    EXPECT_EQ(lines[i].section, CString(sections[i])) << i;
    EXPECT_TRUE(lines[i].validText) << i;
  }
  EXPECT_EQ(lines[4].key, L"k\u00F6");
  EXPECT_EQ(lines[4].value, L"v ");
  EXPECT_EQ(lines[4].keyColumn, 3);
  EXPECT_EQ(lines[4].valueColumn, 9);
  EXPECT_EQ(lines[5].keyColumn, 0);
  EXPECT_EQ(lines[5].valueColumn, 0);
  EXPECT_EQ(lines[0].valueColumn, 5);
}

TEST_F(FileObjectLines, TakesTwoSlashesForACommentAndOneForAKey) {
  using Kind = FileObjectLine::Kind;
  const struct {
    const char* line;
    Kind kind;
  } cases[] = {
      {"//a=1", Kind::Comment}, {"//", Kind::Comment}, {" //a=1", Kind::Comment},
      {"/a=1", Kind::Item},     {"/=1", Kind::Item},   {"/", Kind::Unknown},
      {"/ /=1", Kind::Item},    {"a//=1", Kind::Item},
  };
  for (const auto& test : cases) {
    const std::string line = test.line;
    std::string wide = "\xFF\xFE";
    for (const char ch : line) {
      wide += ch;
      wide += '\0';
    }
    for (const std::string& bytes : {line, wide}) {
      const std::vector<FileObjectLine> lines = Loaded(bytes).LoadedLines();
      ASSERT_EQ(lines.size(), 1u) << line;
      EXPECT_EQ(lines[0].kind, test.kind) << line;
    }
  }
}

TEST_F(FileObjectLines, PutsTheColumnOfAnEmptyValueBehindTheLine) {
  EXPECT_EQ(Loaded("k= ").LoadedLines()[0].valueColumn, 4);
  EXPECT_EQ(Loaded("k=").LoadedLines()[0].valueColumn, 3);
}

TEST_F(FileObjectLines, MarksLinesWhoseBytesAreNoText) {
  const std::vector<FileObjectLine> lines = Loaded("a=1\nb=\xE4\nc=\xC3\xA4\n").LoadedLines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_TRUE(lines[0].validText);
  EXPECT_FALSE(lines[1].validText);
  EXPECT_TRUE(lines[2].validText);
  const std::string lone(
      "\xFF\xFE"
      "a\0=\0\x00\xD8\n\0b\0=\0\x3D\xD8\x00\xDE",
      18);
  const std::vector<FileObjectLine> wide = Loaded(lone).LoadedLines();
  ASSERT_EQ(wide.size(), 2u);
  EXPECT_FALSE(wide[0].validText);
  EXPECT_TRUE(wide[1].validText);
}

}  // namespace
