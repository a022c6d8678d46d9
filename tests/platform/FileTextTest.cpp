// The forms in which documents keep texts.
#include "platform/portable/FileText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/TextPrinting.h"

namespace {

using lum::detail::CFileText;
using lum::detail::CFileTextOf;
using lum::detail::ReadText;
using lum::detail::ToCString;
using lum::detail::WideChars;

std::vector<CString> Texts() {
  return {L"",
          L"a",
          L"Sensor.Offset",
          CString(L"a\0b", 3),
          CString(L'x', 127),
          CString(L'x', 128),
          CString(L'x', 129),
          CString(L'x', 1000),
          L"\x80",
          L"Gr\xF6\xDF"
          L"e",
          L"\x65E5\x672C",
          CString(L'x', 500) + L"\x2103",
          CString(static_cast<wchar_t>(0xD800))};
}

TEST(FileText, GivesTheTextAgain) {
  for (const CString& text : Texts()) {
    const CFileTextOf form(text);
    EXPECT_EQ(ToCString(form), text);
    EXPECT_EQ(CString(WideChars(form).c_str(), static_cast<int>(WideChars(form).size())), text);
    for (CString output : {CString(), CString(L"before"), CString(L'-', 2000)}) {
      ReadText(form, output);
      EXPECT_EQ(output, text);
    }
  }
}

TEST(FileText, LeavesCopiesOfTheOutputAlone) {
  CString output = L"Sensor.Offset";
  const CString copy = output;
  ReadText(CFileTextOf(L"Depth"), output);
  EXPECT_EQ(output, L"Depth");
  EXPECT_EQ(copy, L"Sensor.Offset");
}

TEST(FileText, TakesAByteForAnAsciiCharacter) {
  const CFileTextOf ascii(L"Unit");
  const CFileText& form = ascii;
  EXPECT_EQ(form.bytes, "Unit");
  EXPECT_FALSE(form.isWide);
}

TEST(FileText, EqualsFormsOfEqualTextsAlone) {
  const std::vector<CString> texts = Texts();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = 0; j < texts.size(); ++j) {
      const CFileTextOf form(texts[i]);
      const CFileText& other = form;
      EXPECT_EQ(CFileTextOf(texts[j]) == other, i == j) << i << " " << j;
    }
  }
}

// The bytes of a wide text may themselves be an ASCII text.
TEST(FileText, TellsAWideTextFromItsBytes) {
  const CString text(static_cast<wchar_t>(0x6161));
  const CFileTextOf wide(text);
  const CFileText& form = wide;
  EXPECT_TRUE(form.isWide);
  EXPECT_FALSE(form == CFileText{form.bytes});
}

}  // namespace
