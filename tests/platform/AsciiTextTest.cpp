// The loops over eight characters at a time beside plain ones.
#include "platform/portable/AsciiText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

using lum::detail::HasOneOf;
using lum::detail::NarrowAscii;
using lum::detail::ReadWord;
using lum::detail::WidenAscii;

// Several eights, and every place within one.
constexpr std::size_t kLongest = 70;

std::string RandomAscii(std::mt19937& random, std::size_t length) {
  std::string text(length, '\0');
  std::generate(text.begin(), text.end(), [&] { return static_cast<char>(random() % 0x80); });
  return text;
}

TEST(AsciiText, NarrowsAndWidensEveryCharacter) {
  std::mt19937 random(1);
  for (std::size_t length = 0; length <= kLongest; ++length) {
    const std::string bytes = RandomAscii(random, length);
    const std::wstring text(bytes.begin(), bytes.end());
    std::string narrow(length + 1, '?');
    EXPECT_TRUE(NarrowAscii(text.data(), length, narrow.data())) << length;
    EXPECT_EQ(narrow, bytes + '?');
    std::wstring wide(length + 1, L'?');
    WidenAscii(bytes, wide.data());
    EXPECT_EQ(wide, text + L'?') << length;
  }
}

TEST(AsciiText, SeesACharacterBeyondAsciiAtEveryPlace) {
  for (std::size_t length = 1; length <= kLongest; ++length) {
    for (std::size_t place = 0; place < length; ++place) {
      for (const wchar_t ch : {L'\x80', L'\xFF', L'\x100', L'\x4E00', L'\xFF41'}) {
        std::wstring text(length, L'a');
        text[place] = ch;
        std::string narrow(length, '?');
        EXPECT_FALSE(NarrowAscii(text.data(), length, narrow.data())) << length << " " << place;
      }
    }
  }
}

TEST(AsciiText, FindsEachOfTheCharactersAtEveryPlaceAndNoOther) {
  for (std::size_t length = 1; length <= kLongest; ++length) {
    for (std::size_t place = 0; place < length; ++place) {
      for (int code = 0; code < 0x100; ++code) {
        std::string text(length, 'a');
        text[place] = static_cast<char>(code);
        EXPECT_EQ(HasOneOf(text, '\n', '\r', '='), code == '\n' || code == '\r' || code == '=')
            << length << " " << place << " " << code;
      }
    }
  }
}

TEST(AsciiText, FindsNoneInRandomTextsWithoutThem) {
  std::mt19937 random(2);
  for (int round = 0; round < 20000; ++round) {
    const std::string text = RandomAscii(random, random() % kLongest);
    EXPECT_EQ(HasOneOf(text, '\n', '\r', '='), text.find_first_of("\n\r=") != std::string::npos);
  }
}

TEST(AsciiText, WordsTellTextsOfOneLengthApart) {
  for (std::size_t size = 1; size <= 8; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      std::string text(size, 'a');
      const auto word = ReadWord(text.data(), size);
      text[place] = 'b';
      EXPECT_NE(ReadWord(text.data(), size), word) << size << " " << place;
    }
  }
}

}  // namespace
