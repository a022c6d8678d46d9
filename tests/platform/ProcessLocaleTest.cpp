// Nothing here depends on the process locale: the same texts under one that writes a decimal comma.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <locale>
#include <string>

#include "platform/FrameworkString.h"
#include "platform/StringAppend.h"
#include "platform/TextEncoding.h"
#include "platform/Tokenizer.h"
#include "tests/CommaLocale.h"
#include "tests/TextPrinting.h"

namespace {

using lum::test::kCommaLocale;

// The streams' locale beside that of the C library. MinGW's C++ library knows the classic one only.
std::locale SetStreamLocale() {
#if defined(_WIN32)
  return std::locale();
#else
  return std::locale::global(std::locale(kCommaLocale));
#endif
}

// Runs each test under the comma locale, or skips it where that is not installed.
class ProcessLocale : public testing::Test {
 protected:
  void SetUp() override {
    m_isSet = std::setlocale(LC_ALL, kCommaLocale) != nullptr;
    if (!m_isSet) {
      GTEST_SKIP() << "the locale " << kCommaLocale << " is not installed";
    }
    m_previous = SetStreamLocale();
  }

  void TearDown() override {
    if (m_isSet) {
      std::locale::global(m_previous);
      std::setlocale(LC_ALL, "C");
    }
  }

 private:
  bool m_isSet = false;
  std::locale m_previous;
};

}  // namespace

TEST_F(ProcessLocale, IsInForce) {
  char text[16];
  std::snprintf(text, sizeof text, "%.1f", 0.5);
  EXPECT_STREQ(text, "0,5");
}

TEST_F(ProcessLocale, DoesNotReachFormat) {
  CString text;
  text.Format(L"%f|%g|%e|%.2f|%'d", 1234567.5, 0.5, 0.5, -0.25, 1);
  EXPECT_EQ(text, L"1234567.500000|0.5|5.000000e-01|-0.25|%'d");
  CStringA bytes;
  bytes.Format("%f", 0.5);
  EXPECT_EQ(bytes, "0.500000");
}

TEST_F(ProcessLocale, DoesNotReachAppending) {
  CString text;
  text << 0.5 << L' ' << 1234567;
  EXPECT_EQ(text, L"0.5 1234567");
}

TEST_F(ProcessLocale, DoesNotReachReading) {
  double value = 77;
  EXPECT_TRUE(CLumString(L"0.5", L';', true, false).GetItem(0, value));
  EXPECT_EQ(value, 0.5);
  EXPECT_FALSE(CLumString(L"1,5", L';', true, false).GetItem(0, value));
  EXPECT_EQ(value, 0.5);
  int number = 77;
  EXPECT_FALSE(CLumString(L"1.000", L';', true, false).GetItem(0, number));
  EXPECT_EQ(number, 77);
}

TEST_F(ProcessLocale, DoesNotReachCaseAndEncoding) {
  EXPECT_EQ(CStringA("\xE4").MakeUpper(), "\xE4");
  EXPECT_EQ(CString(L"\u00E4").MakeUpper(), L"\u00C4");
  EXPECT_GT(CString(L"\u00E4").Compare(L"z"), 0);
  EXPECT_EQ(WideToUtf8(L"\u00E4"), "\xC3\xA4");
}
