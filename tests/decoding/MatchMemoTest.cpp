// Lists of messages by key.
#include "decoding/MatchMemo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace lum::decoding {
namespace {

using testing::ElementsAre;

MatchKey KeyWith(std::uint64_t word, std::size_t place = 0) {
  MatchKey key;
  key.words[place] = word;
  return key;
}

TEST(MatchMemo, FindsWhatItRemembers) {
  CMatchMemo memo;
  std::span<const std::size_t> found;
  EXPECT_FALSE(memo.Find(KeyWith(0), found));
  const std::vector<std::size_t> two = {3, 5};
  EXPECT_THAT(memo.Remember(KeyWith(0), two), ElementsAre(3, 5));
  for (std::size_t place = 0; place < 6; ++place) {
    memo.Remember(KeyWith(7, place), std::vector<std::size_t>{place});
  }
  ASSERT_TRUE(memo.Find(KeyWith(0), found));
  EXPECT_THAT(found, ElementsAre(3, 5));
  for (std::size_t place = 0; place < 6; ++place) {
    ASSERT_TRUE(memo.Find(KeyWith(7, place), found));
    EXPECT_THAT(found, ElementsAre(place));
  }
  memo.Remember(KeyWith(9), {});
  ASSERT_TRUE(memo.Find(KeyWith(9), found));
  EXPECT_TRUE(found.empty());
}

TEST(MatchMemo, RemembersTheLastListOfAKey) {
  CMatchMemo memo;
  memo.Remember(KeyWith(7), std::vector<std::size_t>{1});
  EXPECT_THAT(memo.Remember(KeyWith(7), std::vector<std::size_t>{2, 3}), ElementsAre(2, 3));
  std::span<const std::size_t> found;
  ASSERT_TRUE(memo.Find(KeyWith(7), found));
  EXPECT_THAT(found, ElementsAre(2, 3));
}

TEST(MatchMemo, NeverGivesAnotherKeysListHoweverManyThereAre) {
  CMatchMemo memo;
  std::mt19937_64 random(7);
  std::size_t hits = 0;
  for (std::size_t i = 0; i < 20 * CMatchMemo::kMaxKeys; ++i) {
    const std::uint64_t word = random() % (3 * CMatchMemo::kMaxKeys);
    std::span<const std::size_t> found;
    if (memo.Find(KeyWith(word), found)) {
      ++hits;
    } else {
      found = memo.Remember(KeyWith(word), std::vector<std::size_t>{word, word + 1});
    }
    ASSERT_THAT(found, ElementsAre(word, word + 1));
  }
  EXPECT_GT(hits, CMatchMemo::kMaxKeys);
}

TEST(MatchMemo, RemembersManyKeysAtOnce) {
  CMatchMemo memo;
  for (std::uint64_t word = 0; word < CMatchMemo::kMaxKeys / 2; ++word) {
    memo.Remember(KeyWith(word << 8), std::vector<std::size_t>{word});
  }
  std::size_t kept = 0;
  for (std::uint64_t word = 0; word < CMatchMemo::kMaxKeys / 2; ++word) {
    std::span<const std::size_t> found;
    kept += memo.Find(KeyWith(word << 8), found) ? 1 : 0;
  }
  EXPECT_GT(kept, CMatchMemo::kMaxKeys * 45 / 100);
}

TEST(MatchMemo, ForgetsEverythingBeyondItsNumbers) {
  CMatchMemo memo;
  const std::vector<std::size_t> most(CMatchMemo::kMaxNumbers, 1);
  memo.Remember(KeyWith(1), most);
  std::span<const std::size_t> found;
  EXPECT_TRUE(memo.Find(KeyWith(1), found));
  EXPECT_THAT(memo.Remember(KeyWith(2), std::vector<std::size_t>{4}), ElementsAre(4));
  EXPECT_FALSE(memo.Find(KeyWith(1), found));
  EXPECT_TRUE(memo.Find(KeyWith(2), found));
}

}  // namespace
}  // namespace lum::decoding
