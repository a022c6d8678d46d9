// Rows that are put together of pieces of any length.
#include "tools/lumattr/RowText.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace lum::tool {
namespace {

TEST(RowText, PutsPiecesBehindTheText) {
  std::string text = "begun:";
  CRowText row(text);
  row.Add('a');
  row.Add(std::string_view());
  row.Add("bc");
  row.AddWhole(12345);
  row.Add(' ');
  row.AddFixed(-1.5, 3);
  row.Add(' ');
  row.AddNumber(0.25, std::nullopt);
  row.Finish();
  EXPECT_EQ(text, "begun:abc12345 -1.500 0.25");
  row.Add("more");
  row.Finish();
  EXPECT_EQ(text, "begun:abc12345 -1.500 0.25more");
}

TEST(RowText, KeepsTheOrderOfPiecesThatAreLongerThanItsRoom) {
  std::mt19937 random(1);
  std::string text;
  std::string expected;
  CRowText row(text);
  for (std::size_t i = 0; i < 2'000; ++i) {
    const std::string piece(random() % (i % 10 == 0 ? 5'000 : 40), static_cast<char>('a' + i % 26));
    row.Add(piece);
    expected += piece;
    row.Add(',');
    expected += ',';
    row.AddWhole(i);
    decoding::AppendWhole(expected, i);
  }
  row.Finish();
  EXPECT_EQ(text, expected);
}

TEST(RowText, HasRoomForTheLongestNumbers) {
  constexpr double kLongest = std::numeric_limits<double>::lowest();
  std::string text;
  std::string expected;
  CRowText row(text);
  for (int i = 0; i < 100; ++i) {
    row.AddFixed(kLongest, 17);
    decoding::AppendFixed(expected, kLongest, 17);
    row.Add(',');
    expected += ',';
  }
  row.Finish();
  EXPECT_EQ(text, expected);
  EXPECT_EQ(text.size(), 100U * (1 + 309 + 1 + 17 + 1));
}

}  // namespace
}  // namespace lum::tool
