// Lines without blanks and signs against the reading run by run: in a line that IsSolid accepts,
// the runs stand where their widths put them, and HexByte reads what TakeHex does.
#include "formulas/FrameText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace lum::detail {
namespace {

constexpr unsigned int kSeed = 20240229;

::testing::AssertionResult ReadsAlike(std::string_view text) {
  CFrameText bytes(text);
  CFrameText runs(text);
  for (std::size_t place = 0; place + 2 <= text.size(); place += 2) {
    const int byte = bytes.TakeHex(2);
    const bool isSame =
        byte != -1 && static_cast<std::uint8_t>(byte) == HexByte(text[place], text[place + 1]);
    if (!isSame || runs.TakeRun(2).data() != text.data() + place) {
      return ::testing::AssertionFailure()
             << ::testing::PrintToString(std::string(text)) << " at " << place << ": " << byte;
    }
  }
  return ::testing::AssertionSuccess();
}

TEST(FrameText, ASolidLineIsReadAlikeByPlacesAndByRuns) {
  constexpr std::string_view kCharacters("0123456789abcdefABCDEFxXgGZz.>\0 \t\r+-\x7F\x80\xFF", 39);
  std::mt19937_64 random(kSeed);
  int solid = 0;
  for (int i = 0; i < 500000; ++i) {
    // Mostly of what devices send, or hardly a line would be solid.
    std::string text;
    for (std::size_t length = random() % 40; length > 0; --length) {
      text += kCharacters[random() % (random() % 32 == 0 ? kCharacters.size() : 30)];
    }
    if (IsSolid(text)) {
      ++solid;
      ASSERT_TRUE(ReadsAlike(text));
    }
  }
  EXPECT_GE(solid, 100000);
}

// A character decides wherever it stands, whatever stands beside it.
TEST(FrameText, EveryCharacterBreaksALineOrNoneOfItsPlacesDoes) {
  for (const char neighbour : {'0', 'F', '.', '\x7F'}) {
    for (std::size_t length = 8; length <= 25; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        for (int code = 0; code < 256; ++code) {
          std::string text(length, neighbour);
          text[place] = static_cast<char>(code);
          ASSERT_EQ(IsSolid(text), code >= '.' && code < 0x80) << code << ' ' << place;
        }
      }
    }
  }
}

TEST(FrameText, EveryPairOfCharactersIsReadAlike) {
  for (int first = '.'; first < 0x80; ++first) {
    for (int second = '.'; second < 0x80; ++second) {
      ASSERT_TRUE(ReadsAlike(std::string{static_cast<char>(first), static_cast<char>(second)}));
    }
  }
}

TEST(FrameText, ALineIsNotSolidBelowEightCharacters) {
  EXPECT_FALSE(IsSolid(""));
  EXPECT_FALSE(IsSolid("1234567"));
  EXPECT_TRUE(IsSolid("12345678"));
}

}  // namespace
}  // namespace lum::detail
