// Patterns with * and ?.
#include "decoding/Glob.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

TEST(Glob, MatchesWholeTextsCaseApart) {
  const struct {
    const wchar_t* pattern;
    const wchar_t* text;
    bool expected;
  } rows[] = {
      {L"", L"", true},
      {L"", L"a", false},
      {L"*", L"", true},
      {L"*", L"abc", true},
      {L"?", L"", false},
      {L"?", L"a", true},
      {L"a?c", L"abc", true},
      {L"a?c", L"ac", false},
      {L"ABC", L"abc", true},
      {L"above*", L"AboveColor", true},
      {L"*Color", L"AboveColor", true},
      {L"*col*", L"AboveColor", true},
      {L"col", L"AboveColor", false},
      {L"a*b*c", L"aXbYbZc", true},
      {L"a*b*c", L"aXbYbZ", false},
      {L"**a**", L"a", true},
      {L"\u00c4*", L"\u00e4x", true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CGlob(row.pattern).Matches(row.text), row.expected)
        << ToUtf8(row.pattern) << " " << ToUtf8(row.text);
  }
}

TEST(Glob, MatchesBytesOfUtf8WhereCaseCounts) {
  const struct {
    std::string_view pattern;
    std::string_view text;
    bool expected;
  } rows[] = {
      {"", "", true},
      {"*", "", true},
      {"$GP*", "$GPGGA,1", true},
      {"$gp*", "$GPGGA,1", false},
      {"?", "\u00e4", true},
      {"??", "\u00e4", false},
      {"?*?", "\u00e4", false},
      {"*??", "\u00e4", false},
      {"*?", "\u00e4", true},
      {"?x", "\u00e4x", true},
      {"*?x", "\u00e4x", true},
      {"*??x", "\u00e4x", false},
      {"\u00e4", "\u00c4", false},
      {"a?c", std::string_view("a\0c", 3), true},
      {"a*", std::string_view("a\0c", 3), true},
      {"a", std::string_view("a\0", 2), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MatchesGlob(row.pattern, row.text), row.expected) << row.pattern << " " << row.text;
  }
}

TEST(Glob, TakesBoundedTimeForManyStars) {
  std::string pattern;
  for (int i = 0; i < 1000; ++i) {
    pattern += "*a";
  }
  EXPECT_FALSE(MatchesGlob(pattern + "b", std::string(20'000, 'a')));
  EXPECT_TRUE(MatchesGlob(pattern, std::string(20'000, 'a')));
}

bool MatchesSimply(const std::wstring& pattern, const std::wstring& text) {
  if (pattern.empty()) {
    return text.empty();
  }
  if (pattern[0] == L'*') {
    return MatchesSimply(pattern.substr(1), text) ||
           (!text.empty() && MatchesSimply(pattern, text.substr(1)));
  }
  return !text.empty() && (pattern[0] == L'?' || pattern[0] == text[0]) &&
         MatchesSimply(pattern.substr(1), text.substr(1));
}

TEST(Glob, AgreesWithTheDefinitionOnRandomTexts) {
  std::mt19937 random(7);
  const auto make = [&random](const wchar_t* letters, unsigned int count) {
    std::wstring text;
    for (auto length = random() % 8; length > 0; --length) {
      text += letters[random() % count];
    }
    return text;
  };
  for (int i = 0; i < 20'000; ++i) {
    const std::wstring pattern = make(L"a\u00e4*?", 4);
    const std::wstring text = make(L"a\u00e4", 2);
    ASSERT_EQ(CGlob(ToCString(pattern)).Matches(ToCString(text)), MatchesSimply(pattern, text))
        << ToUtf8(ToCString(pattern)) << " " << ToUtf8(ToCString(text));
    ASSERT_EQ(MatchesGlob(ToUtf8(ToCString(pattern)), ToUtf8(ToCString(text))),
              MatchesSimply(pattern, text))
        << ToUtf8(ToCString(pattern)) << " " << ToUtf8(ToCString(text));
  }
}

}  // namespace
}  // namespace lum::decoding
