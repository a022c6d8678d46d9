// How messages show texts, which come from files that anyone may have written.
#include "decoding/Utf8Text.h"

#include <gtest/gtest.h>

namespace lum::decoding {
namespace {

TEST(Utf8Text, ShowsControlCharactersAsEscapes) {
  const struct {
    std::wstring_view text;
    std::string_view shown;
  } rows[] = {
      {L"plain \u00E4\u20AC", "plain \xC3\xA4\xE2\x82\xAC"},
      {L"a\tb\nc\rd", "a\\tb\\nc\\rd"},
      {L"\x01\x1B[1m ~\x7F", "\\x01\\x1b[1m ~\\x7f"},
      {L"\u0080\u009F\u00A0", "\\x80\\x9f\xC2\xA0"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Printable(ToCString(row.text)), row.shown);
  }
}

TEST(Utf8Text, CutsQuotedPartsBetweenTwoCharacters) {
  const std::string sixty(60, 'x');
  const std::string before(59, 'x');
  EXPECT_EQ(QuotedPart(sixty), "'" + sixty + "'");
  EXPECT_EQ(QuotedPart(sixty + "y"), "'" + sixty + "\xE2\x80\xA6'");
  EXPECT_EQ(QuotedPart(before + "\xC3\xA4"), "'" + before + "\xE2\x80\xA6'");
  EXPECT_EQ(QuotedPart(std::string(61, '\x80')), "'\xE2\x80\xA6'");
}

}  // namespace
}  // namespace lum::decoding
