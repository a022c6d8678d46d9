// Tests of decoding/LogInput.h: files as they are and compressed, whole and damaged.
#include "decoding/LogInput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "decoding/DecodingError.h"
#include "tests/decoding/LogFiles.h"

using lum::decoding::CLogInput;
using lum::decoding::DecodingError;
using lum::test::CLogFile;
using lum::test::Gzip;
using lum::test::ReadAll;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

std::string Lines(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "(1.5) can0 123#" + std::to_string(100000 + i) + "\n";
  }
  return text;
}

struct ReadResult {
  std::string bytes;
  std::string error;
};

ReadResult ReadFile(std::string_view content, std::size_t room = 1000) {
  const CLogFile file(content);
  CLogInput input(file.Path());
  ReadResult result;
  try {
    ReadAll(input, result.bytes, room);
  } catch (const DecodingError& error) {
    result.error = error.what();
  }
  return result;
}

std::string OpenError(const std::string& path) {
  try {
    CLogInput input(path);
    char byte = 0;
    input.Read(&byte, 1);
  } catch (const DecodingError& error) {
    return error.what();
  }
  return "";
}

}  // namespace

TEST(LogInput, GivesTheBytesOfAFile) {
  for (const std::string& content :
       {std::string(), std::string("a"), std::string("\x1F"), std::string("\x1F\x8A"),
        std::string("\0\n\0", 3), Lines(10'000)}) {
    for (const std::size_t room : {std::size_t{1}, std::size_t{7}, std::size_t{100'000}}) {
      const ReadResult result = ReadFile(content, room);
      EXPECT_EQ(result.bytes, content);
      EXPECT_EQ(result.error, "");
    }
  }
}

TEST(LogInput, GivesTheBytesOfCompressedParts) {
  const std::string text = Lines(10'000);
  const std::string halves = Gzip(text.substr(0, 7777)) + Gzip("") + Gzip(text.substr(7777));
  for (const std::string& content : {Gzip(text), halves}) {
    for (const std::size_t room : {std::size_t{1}, std::size_t{7}, std::size_t{1'000'000}}) {
      const ReadResult result = ReadFile(content, room);
      EXPECT_EQ(result.bytes, text);
      EXPECT_EQ(result.error, "");
    }
  }
  EXPECT_EQ(ReadFile(Gzip("")).error, "");
}

TEST(LogInput, TellsCompressedDataThatBreakOffAtEveryPlace) {
  const std::string text = Lines(20);
  const std::string whole = Gzip(text);
  for (std::size_t size = 2; size < whole.size(); ++size) {
    const ReadResult result = ReadFile(whole.substr(0, size), 16);
    EXPECT_TRUE(text.starts_with(result.bytes)) << size;
    EXPECT_THAT(result.error,
                EndsWith("at byte " + std::to_string(size) + ": compressed data break off"));
  }
  // What lacks its checksum alone has all its bytes.
  EXPECT_EQ(ReadFile(whole.substr(0, whole.size() - 8)).bytes, text);
}

TEST(LogInput, TellsWhatFollowsCompressedData) {
  const std::string whole = Gzip("text\n");
  const std::string place = "at byte " + std::to_string(whole.size());
  const ReadResult garbage = ReadFile(whole + "garbage");
  EXPECT_EQ(garbage.bytes, "text\n");
  EXPECT_THAT(garbage.error, EndsWith(place + ": something else follows the compressed data"));
  EXPECT_THAT(ReadFile(whole + std::string(1, '\0')).error, HasSubstr("something else follows"));
  const ReadResult halfPart = ReadFile(whole + whole.substr(0, 1));
  EXPECT_EQ(halfPart.bytes, "text\n");
  EXPECT_THAT(halfPart.error, HasSubstr("compressed data break off"));
}

TEST(LogInput, DamagedBytesAreNeverTakenForWhole) {
  const std::string text = Lines(20);
  const std::string whole = Gzip(text);
  // The header's time, flags of speed and system are nobody's data.
  for (std::size_t place = 10; place < whole.size(); ++place) {
    std::string damaged = whole;
    damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
    EXPECT_NE(ReadFile(damaged).error, "") << place;
  }
}

TEST(LogInput, ThrowsAgainWhenItIsReadOnceMore) {
  const CLogFile file(Gzip("text\n") + "garbage");
  CLogInput input(file.Path());
  std::string bytes;
  EXPECT_THROW(ReadAll(input, bytes), DecodingError);
  EXPECT_THROW(ReadAll(input, bytes), DecodingError);
  EXPECT_EQ(bytes, "text\n");
}

TEST(LogInput, CountsTheBytesOfTheFile) {
  const std::string text = Lines(10'000);
  for (const std::string& content : {text, Gzip(text)}) {
    const CLogFile file(content);
    CLogInput input(file.Path());
    EXPECT_EQ(input.Size(), content.size());
    EXPECT_EQ(input.IsCompressed(), content != text);
    std::string all;
    ReadAll(input, all);
    EXPECT_EQ(input.BytesTaken(), content.size());
  }
}

TEST(LogInput, SaysWhyAFileCannotBeRead) {
  const CTemporaryFolder folder;
  const std::u8string path = folder.Path().u8string();
  const std::string folderPath(path.begin(), path.end());
  EXPECT_EQ(OpenError(folderPath + "/none.log"),
            "cannot open '" + folderPath + "/none.log': No such file or directory");
  EXPECT_THAT(OpenError(folderPath), HasSubstr("'" + folderPath + "'"));
  EXPECT_THAT(OpenError(std::string("a\0b", 3)), HasSubstr("NUL"));
}
