// Tests of decoding/LineReader.h: lines and their places, the limit of their length, pipes.
#include "decoding/LineReader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "decoding/DecodingError.h"
#include "tests/decoding/LogFiles.h"

using lum::decoding::CLineReader;
using lum::decoding::CLogInput;
using lum::decoding::DecodingError;
using lum::decoding::kMaxLogLine;
using lum::decoding::LogLine;
using lum::test::CLogFile;
using lum::test::Gzip;

namespace {

struct KeptLine {
  std::string text;
  std::uint64_t number;
  std::uint64_t offset;
  std::uint64_t end;
  bool isTooLong;
  bool operator==(const KeptLine&) const = default;
};

std::vector<KeptLine> ReadLines(std::string_view content, std::uint64_t offset = 0) {
  const CLogFile file(content);
  CLogInput input(file.Path());
  CLineReader reader(input, offset);
  std::vector<KeptLine> lines;
  LogLine line;
  while (reader.Next(line)) {
    lines.push_back({std::string(line.text), line.number, line.offset, line.end, line.isTooLong});
  }
  EXPECT_FALSE(reader.Next(line));
  return lines;
}

/// The same by the rules alone.
std::vector<KeptLine> SplitLines(std::string_view content) {
  std::vector<KeptLine> lines;
  std::size_t start = 0;
  while (start < content.size()) {
    const std::size_t feed = std::min(content.find('\n', start), content.size());
    std::string_view text = content.substr(start, feed - start);
    text.remove_suffix(text.ends_with('\r') ? 1 : 0);
    const std::size_t end = std::min(feed + 1, content.size());
    lines.push_back({std::string(text.substr(0, kMaxLogLine)), lines.size() + 1, start, end,
                     text.size() > kMaxLogLine});
    start = end;
  }
  return lines;
}

}  // namespace

TEST(LineReader, GivesLinesAndTheirPlaces) {
  const std::vector<KeptLine> expected = {{"one", 1, 100, 104, false},
                                          {"", 2, 104, 106, false},
                                          {"\r", 3, 106, 109, false},
                                          {"last", 4, 109, 113, false}};
  EXPECT_EQ(ReadLines("one\n\r\n\r\r\nlast", 100), expected);
}

TEST(LineReader, SplitsAsTheRulesSay) {
  const std::string big(300'000, 'x');
  const std::string contents[] = {"",
                                  "\n",
                                  "\r",
                                  "\r\n",
                                  "a",
                                  "a\n",
                                  "a\r",
                                  "a\n\n",
                                  std::string("\0\n\xFF", 3),
                                  big,
                                  big + "\nnext",
                                  "first\n" + big + "\r\nnext\n" + big + "\n"};
  for (const std::string& content : contents) {
    EXPECT_EQ(ReadLines(content), SplitLines(content));
  }
}

TEST(LineReader, CutsLinesBeyondTheLimit) {
  for (const std::size_t more : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{3}}) {
    for (const char* end : {"", "\n", "\r\n", "\r"}) {
      const std::string content = "a\n" + std::string(kMaxLogLine - 1 + more, 'x') + end;
      const std::vector<KeptLine> lines = ReadLines(content);
      ASSERT_EQ(lines.size(), 2U);
      EXPECT_EQ(lines[1].isTooLong, more > 1);
      EXPECT_EQ(lines[1].text.size(), std::min(kMaxLogLine, kMaxLogLine - 1 + more));
      EXPECT_EQ(lines[1].end, content.size());
    }
  }
}

TEST(LineReader, SplitsRandomTextsWhoseLinesCrossTheBuffer) {
  std::mt19937 random(7);
  for (int round = 0; round < 12; ++round) {
    std::string content;
    while (content.size() < 3'000'000) {
      const std::size_t length = random() % 8 == 0 ? random() % 200'000 : random() % 200;
      content.append(length, static_cast<char>('a' + random() % 26));
      content += random() % 2 == 0 ? "\n" : "\r\n";
    }
    ASSERT_TRUE(ReadLines(content) == SplitLines(content)) << round;
  }
}

TEST(LineReader, DeliversWholeLinesBeforeDamage) {
  const std::string text = "one\ntwo\nthree without an end";
  const CLogFile file(Gzip(text) + "garbage");
  CLogInput input(file.Path());
  CLineReader reader(input);
  LogLine line;
  EXPECT_TRUE(reader.Next(line));
  EXPECT_EQ(line.text, "one");
  EXPECT_TRUE(reader.HasBuffered());
  EXPECT_TRUE(reader.Next(line));
  EXPECT_FALSE(reader.HasBuffered());
  EXPECT_THROW(reader.Next(line), DecodingError);
  EXPECT_THROW(reader.Next(line), DecodingError);
}
