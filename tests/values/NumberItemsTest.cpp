// The numbers of comma-separated texts against CLumString, whose rules they are read by.
#include "values/NumberItems.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

#include "platform/LumBase.h"
#include "tests/RuntimeComparison.h"

namespace {

using lum::detail::CNumberItems;
using lum::test::ForEachText;
using lum::test::IsSame;

constexpr unsigned int kSeed = 20240302;

std::string Narrow(const std::wstring& text) {
  return std::string(text.begin(), text.end());  // NOLINT: ASCII, or else only a message.
}

// Floats as doubles, whose signs and not-a-numbers are told apart.
template <typename T>
bool IsSameNumber(T a, T b) {
  if constexpr (std::is_same_v<T, float>) {
    return IsSame(static_cast<double>(a), static_cast<double>(b));
  } else {
    return IsSame(a, b);
  }
}

// Reads items up to the first that cannot be read, and some after the end.
template <typename T>
void ExpectAsTokenizer(const std::wstring& text) {
  const CString string(text.data(), static_cast<int>(text.size()));
  const CLumString expected(string, L',', true, false);
  CNumberItems items(string);
  for (int index = 0;; ++index) {
    auto value = static_cast<T>(1);
    auto expectedValue = static_cast<T>(1);
    const bool isExpected = expected.GetItem(index, expectedValue);
    const bool isTaken = items.Take(value);
    if (isTaken != isExpected || !IsSameNumber(value, expectedValue)) {
      ADD_FAILURE() << "item " << index << " of \"" << Narrow(text) << "\": " << isTaken << ' '
                    << value << ", expected " << isExpected << ' ' << expectedValue;
    }
    if (!isTaken) {
      return;
    }
  }
}

void ExpectAsTokenizerInEveryType(const std::wstring& text) {
  ExpectAsTokenizer<bool>(text);
  ExpectAsTokenizer<int>(text);
  ExpectAsTokenizer<unsigned int>(text);
  ExpectAsTokenizer<float>(text);
  ExpectAsTokenizer<double>(text);
}

TEST(NumberItems, EveryShortTextIsReadAsTheTokenizerReadsIt) {
  ForEachText(L" \t,+-.015eE", 4, ExpectAsTokenizerInEveryType);
  ForEachText(L",+-.7e", 6, ExpectAsTokenizer<double>);
}

TEST(NumberItems, RandomTextsAreReadAsTheTokenizerReadsThem) {
  constexpr std::wstring_view kCharacters = L"00112345678999..,,-+ \teEinfatrux\0\u0663\u00A0";
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 50'000; ++i) {
    std::wstring text;
    for (std::size_t length = random() % 16; length > 0; --length) {
      text += kCharacters[random() % kCharacters.size()];
    }
    ExpectAsTokenizerInEveryType(text);
  }
}

TEST(NumberItems, WordsAndBlanksAreReadAsTheTokenizerReadsThem) {
  for (const wchar_t* text : {L"",
                              L" ",
                              L",",
                              L"inf",
                              L"-inf,+INFINITY, nan",
                              L"nan(ind),-nan",
                              L"true,FALSE,1,0,2",
                              L" 1 ,\t0\t",
                              L"1 1",
                              L"1\n",
                              L"1,",
                              L"1,,2",
                              L"01",
                              L"-0",
                              L"+0",
                              L"-0.0",
                              L"+-1",
                              L"-+1",
                              L"++1",
                              L"--1",
                              L"+ 1",
                              L"1e5,1E-5,1e+5",
                              L"1e",
                              L"1e400",
                              L"-1e-400",
                              L"1e-310,2",
                              L"2147483647,-2147483648",
                              L"2147483648",
                              L"-2147483649",
                              L"4294967295",
                              L"4294967296",
                              L"18446744073709551616",
                              L"00000000000000000000001",
                              L"0x10",
                              L".",
                              L"-.",
                              L".5,5."}) {
    ExpectAsTokenizerInEveryType(text);
  }
  // Longer than any number that is read where it stands.
  for (const std::size_t length : {18U, 19U, 20U, 47U, 48U, 49U, 400U, 5000U}) {
    for (const wchar_t digit : {L'0', L'1', L'9', L' '}) {
      const std::wstring many(length, digit);
      for (const std::wstring& text :
           {many, many + L".5", L"0." + many, L"1." + many + L",2", many + L"e-3", L"+" + many}) {
        ExpectAsTokenizerInEveryType(text);
      }
    }
  }
}

// Numbers of 1 to 25 digits, also around what a double and a float hold exactly.
TEST(NumberItems, DecimalsAreReadAsTheTokenizerAndTheRuntimeReadThem) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 100'000; ++i) {
    constexpr std::uint64_t kLimits[] = {1U << 24, std::uint64_t{1} << 53, 10'000'000'000'000'000};
    const std::uint64_t any = random();
    std::wstring text =
        std::to_wstring(i % 2 == 0 ? any >> (random() % 64) : kLimits[any % 3] + random() % 9 - 4);
    text.append(i % 5 == 0 ? random() % 5 : 0, L'0');
    text.insert(random() % (text.size() + 1), 1, L'.');
    text.insert(0, i % 7 == 0 ? random() % 12 : 0, L'0');
    ExpectAsTokenizer<double>(text);
    ExpectAsTokenizer<float>(text);
    double value = 0.0;
    ASSERT_TRUE(CNumberItems(CString(text.c_str())).Take(value));
    ASSERT_EQ(value, std::strtod(Narrow(text).c_str(), nullptr)) << Narrow(text);
  }
}

// Decimals so near to halfway between two floats that the double nearest to them lies there, and
// some that lie there themselves: rounding them to double first would lose the side.
TEST(NumberItems, FloatsAreRoundedOnce) {
  std::mt19937_64 random(kSeed);
  for (int i = 0; i < 20'000; ++i) {
    const std::uint64_t half = (random() % (1U << 24) | 1U << 23) * 2 + 1;
    for (const int power : {-24, -25, -26, 0}) {
      for (const char* format : {"%.15f", "%.16f", "%.17f", "%.30f"}) {
        char text[80];
        std::snprintf(text, sizeof text, format, std::ldexp(static_cast<double>(half), power));
        float value = 0.0F;
        ASSERT_TRUE(CNumberItems(CString(text)).Take(value));
        ASSERT_EQ(value, std::strtof(text, nullptr)) << text;
      }
    }
  }
}

TEST(NumberItems, WhatLiesHalfwayBetweenTwoFloatsBecomesTheEvenOne) {
  const struct {
    const wchar_t* text;
    float value;
  } rows[] = {
      {L"16777217", 16777216.0F},
      {L"16777219", 16777220.0F},
      {L"16777217.000000001", 16777218.0F},
      {L"16777218.999999999", 16777218.0F},
  };
  for (const auto& row : rows) {
    float value = 0.0F;
    EXPECT_TRUE(CNumberItems(CString(row.text)).Take(value));
    EXPECT_EQ(value, row.value) << Narrow(row.text);
  }
}

TEST(NumberItems, ItemsAreTakenOneAfterTheOther) {
  const CString text(L" 1.5,2 ,true, 7,8,x");
  CNumberItems items(text);
  double real = 0.0;
  int number = 0;
  bool truth = false;
  unsigned int size = 0;
  float single = 0.0F;
  EXPECT_TRUE(items.Take(real) && items.Take(number) && items.Take(truth) && items.Take(size) &&
              items.Take(single));
  EXPECT_EQ(real, 1.5);
  EXPECT_EQ(number, 2);
  EXPECT_TRUE(truth);
  EXPECT_EQ(size, 7U);
  EXPECT_EQ(single, 8.0F);
  EXPECT_FALSE(items.Take(number));
  EXPECT_EQ(number, 2);
}

}  // namespace
