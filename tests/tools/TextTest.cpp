// Texts between the library, the command line and the terminal.
#include "tools/lumattr/Text.h"

#include <gtest/gtest.h>

#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

TEST(Text, ConvertsUtf8BothWays) {
  for (const char* text :
       {"", "plain", "H\xc3\xb6he", "\xe6\xb7\xb1\xe5\xba\xa6", "\xf0\x9f\x8c\x8a"}) {
    EXPECT_EQ(ToUtf8(FromUtf8(text)), text);
  }
}

TEST(Text, TakesBytesThatAreNoUtf8AsLatin1ButRefusesThemAsArguments) {
  EXPECT_EQ(FromUtf8("H\xf6he"), L"H\u00f6he");
  for (const char* argument : {"H\xf6he", "\xc3", "\xff", "\xc0\x80"}) {
    EXPECT_THROW(ArgumentText(argument, "VALUE"), ToolError) << argument;
  }
  EXPECT_EQ(ArgumentText("H\xc3\xb6he", "VALUE"), L"H\u00f6he");
}

TEST(Text, PrintsControlCharactersAsEscapes) {
  EXPECT_EQ(Printable(L"a\tb\nc\rd"), "a\\tb\\nc\\rd");
  EXPECT_EQ(Printable(L"\x1b[31m\x7f\x9b"), "\\x1b[31m\\x7f\\x9b");
  EXPECT_EQ(Printable(L"H\u00f6he"), "H\xc3\xb6he");
  EXPECT_EQ(Quoted(L"a\n"), "'a\\n'");
}

TEST(Text, TellsWholeCharactersFromAnUnfinishedOneAtTheEnd) {
  const struct {
    std::string_view bytes;
    std::size_t whole;
  } rows[] = {
      {"", 0},
      {"ab", 2},
      {"a\xC3", 1},
      {"a\xC3\xB6", 3},
      {"a\xE2\x82", 1},
      {"a\xE2\x82\xAC", 4},
      {"\xF0\x9F\x9A", 0},
      {"\xF0\x9F\x9A\xA2", 4},
      {"\xF0\x9F\x9A\xA2\xF0", 4},
      {"\xA2\xA2", 2},  // No lead byte: nothing to wait for.
      {"a\xA2\xA2\xA2\xA2", 5},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(WholeCharacters(row.bytes), row.whole) << row.bytes;
  }
}

TEST(Text, KnowsTheWidthOfATerminal) {
  EXPECT_EQ(DisplayWidth(""), 0);
  EXPECT_EQ(DisplayWidth("abc"), 3);
  EXPECT_EQ(DisplayWidth("H\xc3\xb6he"), 4);
  EXPECT_EQ(DisplayWidth("o\xcc\x88"), 1);                 // combining diaeresis
  EXPECT_EQ(DisplayWidth("\xe6\xb7\xb1\xe5\xba\xa6"), 4);  // two ideographs
  EXPECT_EQ(DisplayWidth("\xf0\x9f\x8c\x8a"), 2);          // a pictograph
}

}  // namespace
}  // namespace lum::tool
