// Paths of attributes: arguments, keys of both format versions, and back.
#include "tools/lumattr/AttributePath.h"

#include <gtest/gtest.h>

#include <string>

#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

TEST(AttributePath, ReadsNamesAndOccurrences) {
  const AttributePath expected = {{L"Sensor", 1}, {L"Offset", 0}, {L"X", 12}};
  EXPECT_EQ(ReadPath(L"Sensor(1).Offset.X(12)"), expected);
}

TEST(AttributePath, IsCanonicalWithoutOccurrenceZero) {
  const struct {
    const wchar_t* text;
    const wchar_t* canonical;
  } rows[] = {
      {L"A", L"A"},         {L"A(0)", L"A"},          {L"A(03).B(0)", L"A(3).B"},
      {L"A(1)B", L"A(1)B"}, {L".Name.A", L".Name.A"}, {L"@Title", L"@Title"},
      {L"A..B", L"A..B"},   {L"A(x)", L"A"},          {L"(2)", L"(2)"},
  };
  for (const auto& row : rows) {
    const auto path = ReadPath(row.text);
    ASSERT_TRUE(path) << ToUtf8(row.text);
    EXPECT_EQ(FormatPath(*path), row.canonical) << ToUtf8(row.text);
  }
}

TEST(AttributePath, RejectsOccurrencesNoLoadCreates) {
  EXPECT_FALSE(ReadPath(L"A(-1)"));
  EXPECT_FALSE(ReadPath(L"A.B(2000000000).C"));
  EXPECT_TRUE(ReadPath(L"A(1000000)"));
  EXPECT_FALSE(ReadPath(L"A(1000001)"));
}

TEST(AttributePath, RefusesArgumentsThatNameNothing) {
  for (const char* argument : {"", "A(-2)", "A(3000000)", "A\xff"}) {
    EXPECT_THROW(ParsePathArgument(argument), ToolError) << argument;
  }
  EXPECT_EQ(FormatPath(ParsePathArgument("H\xc3\xb6he(2)")), L"H\u00f6he(2)");
}

TEST(AttributePath, SaysWhichPathsReadBackFromAKey) {
  const AttributePath good[] = {{{L"A", 0}}, {{L"A", 3}, {L"@B", 1}}, {{L"A)", 0}}};
  for (const AttributePath& path : good) {
    EXPECT_TRUE(CanBeWritten(path)) << ToUtf8(FormatPath(path));
  }
  const AttributePath bad[] = {{},           {{L"", 0}},     {{L"A.B", 0}},         {{L"A=", 0}},
                               {{L"A(", 1}}, {{L"A(1)", 0}}, {{L"A", 0}, {L"", 0}}, {{L"A\n", 0}}};
  for (const AttributePath& path : bad) {
    EXPECT_FALSE(CanBeWritten(path)) << ToUtf8(FormatPath(path));
  }
}

TEST(AttributePath, MapsKeysOfBothVersions) {
  const AttributePath path = {{L"Sensor", 1}, {L"Offset", 0}};
  EXPECT_EQ(KeyOfPath(path, 1), L"@trSensor(1).Offset");
  EXPECT_EQ(KeyOfPath(path, 2), L"Sensor(1).Offset");
  EXPECT_EQ(DottedPathOfKey(L"@trA", 1), CString(L"A"));
  EXPECT_EQ(DottedPathOfKey(L"@trA", 2), CString(L"@trA"));
  EXPECT_FALSE(DottedPathOfKey(L"A", 1));
  EXPECT_FALSE(DottedPathOfKey(L"@t", 1));
  EXPECT_FALSE(DottedPathOfKey(L"A", 3));
}

TEST(AttributePath, KnowsBeginnings) {
  const AttributePath path = {{L"A", 1}, {L"B", 0}};
  EXPECT_TRUE(BeginsWith(path, path));
  EXPECT_TRUE(BeginsWith(path, {{L"A", 1}}));
  EXPECT_FALSE(BeginsWith(path, {{L"A", 0}}));
  EXPECT_FALSE(BeginsWith({{L"A", 1}}, path));
}

TEST(AttributePath, ReadsVeryDeepPathsInOnePass) {
  std::wstring text(1, L'A');
  for (int i = 1; i < 200'000; ++i) {
    text += L".A";
  }
  const auto path = ReadPath(ToCString(text));
  ASSERT_TRUE(path);
  EXPECT_EQ(path->size(), 200'000u);
  EXPECT_EQ(FormatPath(*path), ToCString(text));
}

}  // namespace
}  // namespace lum::tool
