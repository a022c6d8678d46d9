// UTF-8 and ANSI conversions.
#include "platform/TextEncoding.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/TextPrinting.h"

#if defined(_WIN32)
#include "platform/portable/WindowsApi.h"
#endif

namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

CString WideOf(char32_t code) {
  CString text;
  if (kWideIsUtf16 && code >= 0x10000) {
    text.AppendChar(static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)));
    text.AppendChar(static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
  } else {
    text.AppendChar(static_cast<wchar_t>(code));
  }
  return text;
}

CString Latin1Of(const CStringA& bytes) {
  CString text;
  for (int i = 0; i < bytes.GetLength(); ++i) {
    text.AppendChar(static_cast<wchar_t>(static_cast<unsigned char>(bytes[i])));
  }
  return text;
}

struct EncodedScalar {
  char32_t code;
  const char* bytes;
};

constexpr EncodedScalar kScalars[] = {
    {0x01, "\x01"},
    {0x7F, "\x7F"},
    {0x80, "\xC2\x80"},
    {0x7FF, "\xDF\xBF"},
    {0x800, "\xE0\xA0\x80"},
    {0xD7FF, "\xED\x9F\xBF"},
    {0xE000, "\xEE\x80\x80"},
    {0xFFFD, "\xEF\xBF\xBD"},
    {0xFFFF, "\xEF\xBF\xBF"},
    {0x10000, "\xF0\x90\x80\x80"},
    {0x1F600, "\xF0\x9F\x98\x80"},
    {0x10FFFF, "\xF4\x8F\xBF\xBF"},
};

// Byte texts of which no byte is part of valid UTF-8 beyond ASCII.
constexpr const char* kInvalid[] = {
    "\x80",
    "\xBF",
    "\xC0\x80",
    "\xC1\xBF",
    "\xE0\x9F\xBF",
    "\xED\xA0\x80",
    "\xED\xBF\xBF",
    "\xF0\x8F\xBF\xBF",
    "\xF4\x90\x80\x80",
    "\xF5\x80",
    "\xFE",
    "\xFF",
    "\xC3",
    "\xE2\x82",
    "\xF0\x9F\x98",
    "\xC3(",
    "\xE2\x82(",
    "\xE2(\x82",
    "\xF0\x9F\x98z",
    "gr\xFC\xDF",
};

}  // namespace

TEST(TextEncoding, ConvertsScalarsAtTheEdgesOfEachLength) {
  for (const EncodedScalar& row : kScalars) {
    EXPECT_EQ(WideToUtf8(WideOf(row.code)), row.bytes);
    EXPECT_EQ(Utf8ToWide(row.bytes), WideOf(row.code));
  }
}

TEST(TextEncoding, EveryScalarReadsBack) {
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    if (code == 0xD800) {
      code = 0xE000;
    }
    const CString wide = WideOf(code);
    ASSERT_EQ(Utf8ToWide(WideToUtf8(wide)), wide) << static_cast<unsigned long>(code);
  }
}

TEST(TextEncoding, InvalidBytesReadAsLatin1) {
  for (const char* bytes : kInvalid) {
    EXPECT_EQ(Utf8ToWide(bytes), Latin1Of(bytes));
  }
}

TEST(TextEncoding, ValidPartsAroundInvalidBytesAreRead) {
  EXPECT_EQ(Utf8ToWide("\xC3\xA4\xE4\xC3\xA4"), L"\u00E4\u00E4\u00E4");
  // An interrupted sequence does not swallow what comes after it.
  EXPECT_EQ(Utf8ToWide("\xE2\x82\xC3\xA4"), L"\u00E2\u0082\u00E4");
}

TEST(TextEncoding, WhatIsNoScalarBecomesTheReplacementCharacter) {
  const char* replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(WideToUtf8(CString(static_cast<wchar_t>(0xD800))), replacement);
  EXPECT_EQ(WideToUtf8(CString(static_cast<wchar_t>(0xDFFF))), replacement);
  if constexpr (!kWideIsUtf16) {
    EXPECT_EQ(WideToUtf8(CString(static_cast<wchar_t>(0x110000))), replacement);
    EXPECT_EQ(WideToUtf8(CString(static_cast<wchar_t>(-1))), replacement);
  }
  CString reversed(static_cast<wchar_t>(0xDC00));
  reversed.AppendChar(static_cast<wchar_t>(0xD800));
  EXPECT_EQ(WideToUtf8(reversed), CStringA(replacement) + replacement);
}

TEST(TextEncoding, NulsAndEmptyTextsPassThrough) {
  EXPECT_EQ(WideToUtf8(CString(L"a\0b", 3)), CStringA("a\0b", 3));
  EXPECT_EQ(Utf8ToWide(CStringA("a\0b", 3)), CString(L"a\0b", 3));
  EXPECT_TRUE(WideToUtf8(CString()).IsEmpty());
  EXPECT_TRUE(Utf8ToWide(CStringA()).IsEmpty());
  EXPECT_TRUE(WideToAnsi(CString()).IsEmpty());
  EXPECT_TRUE(AnsiToWide(CStringA()).IsEmpty());
}

TEST(TextEncoding, RandomBytesNeverGrowAndStayTerminated) {
  std::mt19937 random(7);
  for (int round = 0; round < 20'000; ++round) {
    CStringA bytes;
    for (auto left = random() % 12; left > 0; --left) {
      bytes.AppendChar(static_cast<char>(random() % 256));
    }
    const CString wide = Utf8ToWide(bytes);
    ASSERT_LE(wide.GetLength(), bytes.GetLength());
    ASSERT_EQ(wide.GetString()[wide.GetLength()], L'\0');
    ASSERT_EQ(Utf8ToWide(WideToUtf8(wide)), wide);
  }
}

TEST(TextEncoding, AnsiTakesAsciiEverywhere) {
  EXPECT_EQ(WideToAnsi(L"abc ~"), "abc ~");
  EXPECT_EQ(AnsiToWide("abc ~"), L"abc ~");
}

#if !defined(_WIN32)
TEST(TextEncoding, AnsiIsUtf8WhereThereIsNoCodePage) {
  EXPECT_EQ(WideToAnsi(L"\u00E4\u20AC"), "\xC3\xA4\xE2\x82\xAC");
  EXPECT_EQ(AnsiToWide("\xC3\xA4\xE4"), L"\u00E4\u00E4");
  EXPECT_EQ(CStringA(CString(L"\u20AC")), "\xE2\x82\xAC");
}
#else
TEST(TextEncoding, AnsiIsTheCodePageOfTheSystem) {
  if (::GetACP() != 1252) {
    GTEST_SKIP() << "the system's code page is " << ::GetACP();
  }
  EXPECT_EQ(WideToAnsi(L"\u00E4\u20AC"), "\xE4\x80");
  EXPECT_EQ(AnsiToWide("\xE4\x80"), L"\u00E4\u20AC");
  EXPECT_EQ(CStringA(CString(L"\u20AC")), "\x80");
  EXPECT_EQ(CString(CStringA("\x80")), L"\u20AC");
  EXPECT_EQ(WideToAnsi(L"x\u6D77y"), "x?y");
  EXPECT_EQ(WideToAnsi(CString(L"a\0b", 3)), CStringA("a\0b", 3));
}
#endif
