// Tests of decoding/DecimalDigits.h, against digits taken one after the other.
#include "decoding/DecimalDigits.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

using namespace lum::decoding::detail;

namespace {

std::string EightDigits(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof text, "%08u", number);
  return text;
}

/// Numbers at the edges of each count of digits, and others.
template <typename Check>
void ForNumbers(Check check) {
  for (std::uint32_t power = 1; power <= kWordEnd; power *= 10) {
    for (const std::uint32_t number : {power - 1, power / 2, power / 3}) {
      check(number);
    }
  }
  std::mt19937 random(1);
  for (int i = 0; i < 100'000; ++i) {
    check(static_cast<std::uint32_t>(random() % kWordEnd));
  }
}

}  // namespace

TEST(DecimalDigits, AreFoundInFrontOfAnyOtherCharacter) {
  for (std::size_t place = 0; place < kWordDigits; ++place) {
    for (int code = 0; code < 256; ++code) {
      for (const char neighbour : {'0', '9', '/', ':', '\xFF'}) {
        std::string text = "90909090";
        text[place] = static_cast<char>(code);
        if (place + 1 < kWordDigits) {
          text[place + 1] = neighbour;
        }
        const std::size_t count = text.find_first_not_of("0123456789");
        ASSERT_EQ(CountLeadingDigits(LoadDigits(text.data())),
                  count == std::string::npos ? kWordDigits : count)
            << "code " << code << " at " << place;
      }
    }
  }
}

TEST(DecimalDigits, AreReadWithoutWhatFollows) {
  ForNumbers([](std::uint32_t number) {
    const std::string text = EightDigits(number);
    for (std::size_t count = 1; count <= kWordDigits; ++count) {
      const std::string begun = text.substr(0, count);
      const std::string filled = begun + std::string(kWordDigits - count, '\xFF');
      ASSERT_EQ(NumberOfDigits(LoadDigits(filled.data()), count),
                static_cast<std::uint32_t>(std::strtoul(begun.c_str(), nullptr, 10)))
          << begun;
    }
  });
}

TEST(DecimalDigits, AreWrittenWithZerosInFront) {
  ForNumbers([](std::uint32_t number) {
    char text[kWordDigits];
    StoreDigits(AsCharacters(SplitDigits(number)), text);
    ASSERT_EQ(std::string(text, kWordDigits), EightDigits(number));
  });
}

TEST(DecimalDigits, OfSmallNumbersFitHalfAWord) {
  for (std::uint32_t number = 0; number < kHalfEnd; ++number) {
    char text[kWordDigits / 2];
    StoreDigits(AsCharacters(SplitFours(number)), text);
    ASSERT_EQ(std::string(text, kWordDigits / 2), EightDigits(number).substr(4));
  }
}
