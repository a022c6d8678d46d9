// Upper and lower case and comparison without case, through CString.
#include <gtest/gtest.h>

#include <clocale>
#include <cwctype>
#include <string>
#include <vector>

#include "platform/FrameworkString.h"
#include "tests/TextPrinting.h"

namespace {

struct CasePair {
  const wchar_t* upper;
  const wchar_t* lower;
};

constexpr CasePair kPairs[] = {
    {L"AZ", L"az"},
    {L"\u00C0\u00D6\u00D8\u00DE", L"\u00E0\u00F6\u00F8\u00FE"},
    {L"\u0100\u012E\u0132\u0139\u0147\u014A\u0176\u0178\u0179\u017D",
     L"\u0101\u012F\u0133\u013A\u0148\u014B\u0177\u00FF\u017A\u017E"},
    {L"\u0386\u0388\u038C\u038E\u038F\u0391\u03A1\u03A3\u03A9\u03AB",
     L"\u03AC\u03AD\u03CC\u03CD\u03CE\u03B1\u03C1\u03C3\u03C9\u03CB"},
    {L"\u0400\u040F\u0410\u042F\u0460\u0480\u048A\u04C0\u04C1\u04CD\u04D0\u052E",
     L"\u0450\u045F\u0430\u044F\u0461\u0481\u048B\u04CF\u04C2\u04CE\u04D1\u052F"},
};

// Characters that have no case here, or none that is one character.
constexpr const wchar_t* kUnchanged[] = {
    L"019 @[`{~",    L"\u00D7\u00F7\u00DF",       L"\u0138\u0149",
    L"\u0390\u03B0", L"\u0482\u0487\u2028\u4E2D",
};

wchar_t Upper(wchar_t ch) { return CString(ch).MakeUpper()[0]; }
wchar_t Lower(wchar_t ch) { return CString(ch).MakeLower()[0]; }

// The Unicode blocks that the mapping covers.
std::vector<wchar_t> CoveredCharacters() {
  std::vector<wchar_t> all;
  for (unsigned int code = 1; code < 0x180; ++code) {
    all.push_back(static_cast<wchar_t>(code));
  }
  for (unsigned int code = 0x370; code < 0x530; ++code) {
    all.push_back(static_cast<wchar_t>(code));
  }
  return all;
}

}  // namespace

TEST(CaseMapping, MapsLatinGreekAndCyrillicBothWays) {
  for (const CasePair& pair : kPairs) {
    EXPECT_EQ(CString(pair.upper).MakeLower(), pair.lower);
    EXPECT_EQ(CString(pair.lower).MakeUpper(), pair.upper);
    EXPECT_EQ(CString(pair.upper).MakeUpper(), pair.upper);
    EXPECT_EQ(CString(pair.lower).MakeLower(), pair.lower);
    EXPECT_EQ(CString(pair.upper).CompareNoCase(pair.lower), 0);
  }
}

TEST(CaseMapping, LeavesOtherCharactersAlone) {
  for (const wchar_t* text : kUnchanged) {
    EXPECT_EQ(CString(text).MakeUpper(), text);
    EXPECT_EQ(CString(text).MakeLower(), text);
  }
}

TEST(CaseMapping, VariantsOfALetterCompareEqual) {
  EXPECT_EQ(CString(L"\u03C3\u03C2\u03A3").CompareNoCase(L"\u03A3\u03A3\u03C2"), 0);
  EXPECT_EQ(CString(L"\u017F").CompareNoCase(L"S"), 0);
  EXPECT_EQ(CString(L"\u00B5").CompareNoCase(L"\u03BC"), 0);
}

TEST(CaseMapping, TurkishLettersIAreNoVariantsOfTheLatinOne) {
  EXPECT_EQ(Upper(L'\u0131'), L'I');
  EXPECT_EQ(Lower(L'\u0130'), L'i');
  EXPECT_NE(CString(L"\u0131").CompareNoCase(L"i"), 0);
  EXPECT_NE(CString(L"\u0130").CompareNoCase(L"i"), 0);
}

TEST(CaseMapping, ComparesWithoutCaseByTheFoldedLetters) {
  EXPECT_LT(CString(L"A").CompareNoCase(L"b"), 0);
  EXPECT_GT(CString(L"B").CompareNoCase(L"a"), 0);
  EXPECT_LT(CString(L"ab").CompareNoCase(L"ABC"), 0);
  EXPECT_LT(CString(L"_").CompareNoCase(L"A"), 0);
  EXPECT_GT(CString(L"a\0b", 3).CompareNoCase(L"A"), 0);
}

TEST(CaseMapping, OfBytesOnlyAsciiLettersHaveACase) {
  EXPECT_EQ(CStringA("aZ{\xE4\xC4").MakeUpper(), "AZ{\xE4\xC4");
  EXPECT_EQ(CStringA("aZ\xE4\xC4").MakeLower(), "az\xE4\xC4");
  EXPECT_EQ(CStringA("Abc").CompareNoCase("aBC"), 0);
  EXPECT_NE(CStringA("\xE4").CompareNoCase("\xC4"), 0);
}

TEST(CaseMapping, LowerOfUpperIsStable) {
  for (const wchar_t ch : CoveredCharacters()) {
    EXPECT_EQ(Upper(Upper(ch)), Upper(ch)) << static_cast<unsigned int>(ch);
    EXPECT_EQ(Lower(Lower(ch)), Lower(ch)) << static_cast<unsigned int>(ch);
    if (ch != L'\u0130' && ch != L'\u0131') {
      EXPECT_EQ(CString(ch).CompareNoCase(CString(Upper(ch))), 0) << static_cast<unsigned int>(ch);
      EXPECT_EQ(CString(ch).CompareNoCase(CString(Lower(ch))), 0) << static_cast<unsigned int>(ch);
    }
  }
}

TEST(CaseMapping, AgreesWithTheRuntimesUnicodeTables) {
  if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) {
    GTEST_SKIP() << "the locale C.UTF-8 is not there";
  }
  for (const wchar_t ch : CoveredCharacters()) {
    const auto code = static_cast<std::wint_t>(ch);
    EXPECT_EQ(static_cast<std::wint_t>(Upper(ch)), std::towupper(code)) << std::hex << code;
    EXPECT_EQ(static_cast<std::wint_t>(Lower(ch)), std::towlower(code)) << std::hex << code;
  }
  std::setlocale(LC_CTYPE, "C");
}
