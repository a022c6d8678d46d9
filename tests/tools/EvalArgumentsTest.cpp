// The arguments of eval: what is an option, what a number, what a text.
#include "tools/lumattr/EvalArguments.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

using Words = std::vector<std::string>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The parser's words and the others.
std::pair<Words, Words> Split(Words line) {
  std::vector<char*> argv;
  for (std::string& word : line) {
    argv.push_back(word.data());
  }
  EvalLine split = SplitEvalLine(static_cast<int>(argv.size()), argv.data());
  return {Words(split.rest.begin(), split.rest.end()), split.words};
}

TEST(EvalArguments, AreEveryWordThatIsNoOption) {
  const struct {
    Words line;
    Words rest;
    Words words;
  } rows[] = {
      {{"Sin", "-7"}, {}, {"Sin", "-7"}},
      {{"ClipValue", "-.5", "-inf", "-0x10"}, {}, {"ClipValue", "-.5", "-inf", "-0x10"}},
      {{"Val", "-half"}, {}, {"Val", "-half"}},
      {{"Val", "[1,2]"}, {}, {"Val", "[1,2]"}},
      {{"Val", ""}, {}, {"Val", ""}},
      {{"Val", "-"}, {}, {"Val", "-"}},
      {{"Val", "--5"}, {}, {"Val", "--5"}},
      {{"Val", "++", "eval"}, {}, {"Val", "++", "eval"}},
      {{"Val", "--lenient", "x"}, {"--lenient"}, {"Val", "x"}},
      {{"--json", "Val", "x"}, {"--json"}, {"Val", "x"}},
      {{"Sin", "-h", "1"}, {"-h"}, {"Sin", "1"}},
      {{"Sin", "--previous", "-5", "1"}, {"--previous", "-5"}, {"Sin", "1"}},
      {{"Sin", "--previous=-5", "1"}, {"--previous=-5"}, {"Sin", "1"}},
      {{"Sin", "--previous"}, {"--previous"}, {"Sin"}},
      {{"Sin", "--bogus", "1"}, {"--bogus"}, {"Sin", "1"}},
      {{"Val", "--json", "--", "--lenient"}, {"--json"}, {"Val", "--lenient"}},
      {{"Val", "--", "--", "-h"}, {}, {"Val", "--", "-h"}},
      {{}, {}, {}},
  };
  for (const auto& row : rows) {
    Words line = {"lumattr", "eval"};
    Words rest = line;
    line.insert(line.end(), row.line.begin(), row.line.end());
    rest.insert(rest.end(), row.rest.begin(), row.rest.end());
    EXPECT_EQ(Split(line), std::pair(rest, row.words)) << testing::PrintToString(line);
  }
}

TEST(EvalArguments, AreTakenFromNoOtherCommand) {
  for (const Words& line : {Words{}, Words{"lumattr"}, Words{"lumattr", "get", "a", "-7", "--"},
                            Words{"lumattr", "--version", "eval", "Sin"}}) {
    EXPECT_EQ(Split(line), std::pair(line, Words{})) << testing::PrintToString(line);
  }
}

TEST(EvalArguments, ReadNumbersAsAWhole) {
  const struct {
    const char* argument;
    double expected;
  } rows[] = {
      {"0", 0.0},          {"-0", -0.0},         {"7", 7.0},
      {"+7", 7.0},         {"-.5", -0.5},        {"5.", 5.0},
      {"1e3", 1000.0},     {"-1.5E-3", -0.0015}, {"0x10", 16.0},
      {"-0XfF", -255.0},   {"inf", kInfinity},   {"-inf", -kInfinity},
      {"0.1", 0.1},        {"007", 7.0},         {"1e+2", 100.0},
      {"+inf", kInfinity}, {"5e-324", 5e-324},   {"0x1fffffffffffff", 9007199254740991.0},
  };
  for (const auto& row : rows) {
    const double number = NumberArgument(row.argument, "value");
    EXPECT_EQ(std::bit_cast<std::uint64_t>(number), std::bit_cast<std::uint64_t>(row.expected))
        << row.argument << " gave " << number;
  }
  EXPECT_TRUE(std::isnan(NumberArgument("nan", "value")));
}

TEST(EvalArguments, RefuseWhatIsNoNumber) {
  for (const char* argument :
       {"",      "x",  "1x",  "1 ",   " 1",    "1,5",   "--1",      "-+1",     "+-1", "1e",
        ".",     "-",  "0x",  "0x-1", "0x1p3", "0x1.8", "1e400",    "1e-400",  "INF", "NaN",
        "nan()", "e5", "1-2", "0x1g", "0b1",   "1_000", "infinity", "\xc2\xb9"}) {
    EXPECT_THROW(NumberArgument(argument, "value"), ToolError) << argument;
  }
}

TEST(EvalArguments, NameThemselvesWhenRefused) {
  try {
    NumberArgument("x\n", "Sin: degrees");
    FAIL();
  } catch (const ToolError& error) {
    EXPECT_STREQ(error.what(),
                 "Sin: degrees 'x\\n' is no number; expected a decimal or 0x number "
                 "that a double can hold, inf or nan");
  }
}

TEST(EvalArguments, NameAnOperationExactly) {
  EXPECT_EQ(NamedOperation("Sin").name, "Sin");
  for (const char* name : {"", "sin", "Sin ", "Tan"}) {
    EXPECT_THROW(NamedOperation(name), ToolError) << name;
  }
  try {
    NamedOperation("CanVall");
    FAIL();
  } catch (const ToolError& error) {
    EXPECT_STREQ(error.what(), "unknown operation 'CanVall'; did you mean 'CanVal'?");
  }
}

TEST(EvalArguments, ReadVectorsOfOneToThreeNumbers) {
  EXPECT_EQ(VectorArgument("1", "value"), (std::vector{1.0}));
  EXPECT_EQ(VectorArgument("1,-2", "value"), (std::vector{1.0, -2.0}));
  EXPECT_EQ(VectorArgument("0x1,-.5,inf", "value"), (std::vector{1.0, -0.5, kInfinity}));
  for (const char* argument : {"", ",", "1,", ",1", "1,,2", "1,x", "1, 2", "1,2,3,4", "1,2,3,"}) {
    EXPECT_THROW(VectorArgument(argument, "value"), ToolError) << argument;
  }
}

TEST(EvalArguments, ReadTextsLiterallyOrAsBytes) {
  using namespace std::string_view_literals;
  const struct {
    const char* argument;
    std::string_view expected;
  } rows[] = {
      {"", ""sv},
      {"plain text", "plain text"sv},
      {"H\xc3\xb6he\xff", "H\xc3\xb6he\xff"sv},
      {"hex:", ""sv},
      {"hex:3412", "\x34\x12"sv},
      {"hex: 34  12 ", "\x34\x12"sv},
      {"hex:00fFaB", "\x00\xff\xab"sv},
      {"HEX:34", "HEX:34"sv},
      {" hex:34", " hex:34"sv},
      {"text:hex:34", "hex:34"sv},
      {"text:text:", "text:"sv},
      {"text:", ""sv},
  };
  for (const auto& row : rows) {
    const CStringA bytes = BytesArgument(row.argument, "record");
    EXPECT_EQ(std::string_view(bytes.GetString(), static_cast<std::size_t>(bytes.GetLength())),
              row.expected)
        << row.argument;
  }
}

TEST(EvalArguments, RefuseBytesThatAreNoPairsOfDigits) {
  for (const char* argument :
       {"hex:3", "hex:341", "hex:3 4", "hex:zz", "hex:34,12", "hex:0x34", "hex:34\t12", "hex:-1"}) {
    EXPECT_THROW(BytesArgument(argument, "record"), ToolError) << argument;
  }
}

}  // namespace
}  // namespace lum::tool
