// Bytes and text: finding the encoding, the rules of each, line ends, and lossless writing.
#include "platform/portable/EncodedText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/TextEncoding.h"
#include "tests/TextPrinting.h"

namespace {

using lum::detail::CLineBounds;
using lum::detail::DecodeText;
using lum::detail::EncodeText;
using lum::detail::IsValidText;
using lum::detail::IsValidUtf8;
using E = TextFileEncoding;

constexpr E kAll[] = {E::Utf8, E::Utf8WithMark, E::Utf16LittleEndian, E::Utf16BigEndian, E::Ansi};

struct Detection {
  std::string file;
  E encoding;
};

TEST(EncodedText, FindsTheEncoding) {
  const Detection cases[] = {
      {"", E::Utf8},
      {"abc", E::Utf8},
      {std::string("\0\0", 2), E::Utf8},
      {"\xC3\xA4\n\xE2\x82\xAC", E::Utf8},
      {"\xC3\xA4\n\xE4", E::Ansi},
      {"\xC3\n\xA4", E::Ansi},
      {"\xEF\xBB", E::Ansi},
      {"\xEF\xBB\xBF", E::Utf8WithMark},
      {"\xEF\xBB\xBF\xE4", E::Utf8WithMark},
      {"\xFF\xFE", E::Utf16LittleEndian},
      {"\xFE\xFFx", E::Utf16BigEndian},
      {"\xFF", E::Ansi},
      {"x\xEF\xBB\xBF", E::Utf8},
  };
  for (const Detection& test : cases) {
    EXPECT_EQ(lum::detail::DetectEncoding(test.file), test.encoding)
        << testing::PrintToString(test.file);
  }
}

struct Validity {
  const char* bytes;
  bool isValid;
};

TEST(EncodedText, KnowsTheRulesOfUtf8) {
  const Validity cases[] = {
      {"plain\n", true},
      {"\xC2\x80", true},
      {"\xDF\xBF", true},
      {"\xE0\xA0\x80", true},
      {"\xED\x9F\xBF", true},
      {"\xEE\x80\x80", true},
      {"\xEF\xBF\xBD", true},
      {"\xF0\x90\x80\x80", true},
      {"\xF4\x8F\xBF\xBF", true},
      {"\x80", false},
      {"\xC0\x80", false},
      {"\xC1\xBF", false},
      {"\xE0\x9F\xBF", false},
      {"\xED\xA0\x80", false},
      {"\xF0\x8F\xBF\xBF", false},
      {"\xF4\x90\x80\x80", false},
      {"\xF5\x80\x80\x80", false},
      {"\xC3", false},
      {"\xE2\x82", false},
      {"\xC3\n\xA4", false},
      {"ok\n\xE2\x82\xAC\n\xFF", false},
  };
  for (const Validity& test : cases) {
    EXPECT_EQ(IsValidUtf8(test.bytes), test.isValid) << testing::PrintToString(test.bytes);
  }
}

TEST(EncodedText, WritesWhatReadsBack) {
  const CString texts[] = {L"",
                           L"plain",
                           L"\u00E4\u20AC",
                           L"\U0001F600",
                           L"\uFEFF",
                           L"\uFFFD",
                           L"a\nb\r",
                           L"\x01\x7F",
                           L"\x7F\x80",
                           L"\u00E4plain",
                           L"plain\u00E4",
                           L"x\u00FFy",
                           CString(L"\0a\0", 3)};
  for (const E encoding : kAll) {
    for (const CString& text : texts) {
      std::string bytes = "before";
      if (encoding == E::Ansi && AnsiToWide(WideToAnsi(text)) != text) {
        EXPECT_FALSE(EncodeText(text, encoding, bytes));  // A code page has few characters.
        continue;
      }
      EXPECT_TRUE(EncodeText(text, encoding, bytes));
      EXPECT_EQ(bytes.substr(0, 6), "before");
      EXPECT_EQ(DecodeText(std::string_view(bytes).substr(6), encoding), text);
    }
  }
}

TEST(EncodedText, AsciiIsTheSameInUtf8AndAnsi) {
  for (const E encoding : {E::Utf8, E::Utf8WithMark, E::Ansi}) {
    for (int code = 0; code < 0x80; ++code) {
      const CString text(static_cast<wchar_t>(code), 3);
      const std::string expected(3, static_cast<char>(code));
      std::string bytes;
      EXPECT_TRUE(EncodeText(text, encoding, bytes));
      EXPECT_EQ(bytes, expected);
      EXPECT_EQ(DecodeText(expected, encoding), text);
    }
  }
}

TEST(EncodedText, TellsWhatCannotBeWritten) {
  std::string bytes;
  EXPECT_FALSE(EncodeText(L"\xD800", E::Utf8, bytes));
  EXPECT_FALSE(EncodeText(L"\xDC00x", E::Utf8WithMark, bytes));
  EXPECT_TRUE(EncodeText(L"\xDC00\xD800", E::Utf16LittleEndian, bytes));
  if constexpr (sizeof(wchar_t) > 2) {
    EXPECT_FALSE(EncodeText(CString(static_cast<wchar_t>(0x110000)), E::Utf16BigEndian, bytes));
    EXPECT_FALSE(EncodeText(CString(static_cast<wchar_t>(-1)), E::Utf16LittleEndian, bytes));
    EXPECT_FALSE(EncodeText(CString(static_cast<wchar_t>(0x110000)), E::Utf8, bytes));
    // Two characters of a 32-bit text would come back as one.
    EXPECT_FALSE(EncodeText(L"\xD83D\xDE00", E::Utf16LittleEndian, bytes));
  }
}

TEST(EncodedText, OrdersTheBytesOfAUnit) {
  std::string little;
  std::string big;
  EXPECT_TRUE(EncodeText(L"\u20AC\U0001F600", E::Utf16LittleEndian, little));
  EXPECT_TRUE(EncodeText(L"\u20AC\U0001F600", E::Utf16BigEndian, big));
  EXPECT_EQ(little, std::string("\xAC\x20\x3D\xD8\x00\xDE", 6));
  EXPECT_EQ(big, std::string("\x20\xAC\xD8\x3D\xDE\x00", 6));
}

TEST(EncodedText, SplitsLinesAtLineFeedsOnly) {
  const std::string text = "a\r\n\n\rb\r\r\nc\r";
  const std::vector<std::string> lines = {"a", "", "\rb\r", "c\r"};
  for (const E encoding : kAll) {
    std::string bytes;
    ASSERT_TRUE(EncodeText(Utf8ToWide(CStringA(text.c_str())), encoding, bytes));
    std::size_t place = 0;
    for (const std::string& expected : lines) {
      ASSERT_LT(place, bytes.size());
      const CLineBounds line = lum::detail::LineAt(bytes, place, encoding);
      EXPECT_EQ(line.begin, place);
      EXPECT_EQ(DecodeText(std::string_view(bytes).substr(place, line.end - place), encoding),
                Utf8ToWide(CStringA(expected.c_str())));
      place = line.next;
    }
    EXPECT_EQ(place, bytes.size());
  }
}

TEST(EncodedText, TakesNoHalfUnitForALineFeed) {
  // U+0A0A and U+0A0D hold the bytes of line ends.
  const std::string bytes("\x0A\x0A\x0D\x0A\x00\x0A", 6);
  const CLineBounds line = lum::detail::LineAt(bytes, 0, E::Utf16BigEndian);
  EXPECT_EQ(line.end, 4u);
  EXPECT_EQ(line.next, 6u);
  const CLineBounds odd = lum::detail::LineAt("\x0A", 0, E::Utf16BigEndian);
  EXPECT_EQ(odd.end, 0u);
  EXPECT_EQ(odd.next, 1u);
}

TEST(EncodedText, SeesWhenAFileWouldReadBackOtherwise) {
  using lum::detail::ReadsBackAs;
  EXPECT_TRUE(ReadsBackAs("abc", E::Utf8));
  EXPECT_FALSE(ReadsBackAs("\xEF\xBB\xBFk", E::Utf8));
  EXPECT_FALSE(ReadsBackAs("\xFF\xFEk", E::Ansi));
  EXPECT_TRUE(ReadsBackAs("\xE4", E::Ansi));
  // What made the file ANSI is gone, but plain text is the same in both.
  EXPECT_TRUE(ReadsBackAs("abc", E::Ansi));
  // Other characters are not, unless UTF-8 is the code page.
  EXPECT_EQ(ReadsBackAs("\xC3\xA4", E::Ansi), DecodeText("\xC3\xA4", E::Ansi) == L"\u00E4");
}

TEST(EncodedText, KnowsTheRulesOfUtf16) {
  const struct {
    std::string bytes;
    bool isValid;
  } cases[] = {
      {"a", false},
      {std::string("a\0", 2), true},
      {std::string("a\0b", 3), false},
      {std::string("\x3D\xD8\x00\xDE", 4), true},
      {std::string("\x3D\xD8", 2), false},
      {std::string("\x00\xDE", 2), false},
      {std::string("\x00\xDE\x3D\xD8", 4), false},
      {std::string("\x00\xE0", 2), true},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(IsValidText(test.bytes, E::Utf16LittleEndian), test.isValid)
        << testing::PrintToString(test.bytes);
  }
}

TEST(EncodedText, ALoneByteOfUtf16IsNoText) {
  EXPECT_EQ(DecodeText("a", E::Utf16LittleEndian), L"");
}

}  // namespace
