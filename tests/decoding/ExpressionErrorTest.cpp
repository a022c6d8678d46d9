// What is no formula, and how that is told.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <string_view>

#include "decoding/Expression.h"

namespace lum::decoding {
namespace {

/// The message for a text that is no formula.
std::string MessageFor(std::string_view text) {
  const auto compiled = CExpression::Compile(text);
  const auto* error = std::get_if<ExpressionError>(&compiled);
  return error != nullptr ? error->Message() : "a formula";
}

TEST(ExpressionErrors, TellPlaceCauseAndRemedy) {
  const struct {
    std::string_view text;
    std::string_view message;
  } rows[] = {
      // Values that are missing.
      {"", "line 1, column 1: found the end, expected a value"},
      {" \n ", "line 2, column 2: found the end, expected a value"},
      {"1 +", "line 1, column 4: found the end, expected a value"},
      {"-", "line 1, column 2: found the end, expected a value"},
      {"* 2", "line 1, column 1: found '*', expected a value"},
      {"1 + * 2", "line 1, column 5: found '*', expected a value"},
      {"()", "line 1, column 2: found ')', expected a value"},
      {"Sin(,)", "line 1, column 5: found ',', expected a value"},
      {"CanVal(frame, )", "line 1, column 15: found ')', expected a value"},
      {"true", "line 1, column 1: found 'true', expected a value"},
      {"1 + lenient", "line 1, column 5: found 'lenient', expected a value"},
      {"#", "line 1, column 1: found '#', expected a value"},
      {"{", "line 1, column 1: found '{', expected a value"},
      {".", "line 1, column 1: found '.', expected a value"},
      {".e5", "line 1, column 1: found '.', expected a value"},
      {")", "line 1, column 1: found ')', expected a value"},
      {"\xC3\xA4", "line 1, column 1: found '\xC3\xA4', expected a value"},
      // Operators that are missing.
      {"1 2", "line 1, column 3: found '2', expected an operator or the end"},
      {"pgn raw", "line 1, column 5: found 'raw', expected an operator or the end"},
      {"1 , 2", "line 1, column 3: found ',', expected an operator or the end"},
      {"1)", "line 1, column 2: found ')', expected an operator or the end"},
      {"1 ^ 2", "line 1, column 3: found '^', expected an operator or the end"},
      {"2(3)", "line 1, column 2: found '(', expected an operator or the end"},
      {"pgn\n  %", "line 2, column 3: found '%', expected an operator or the end"},
      {"'\xC3\xA4' ?", "line 1, column 5: found '?', expected an operator or the end"},
      {"(1", "line 1, column 3: found the end, expected an operator or ')'"},
      {"(1, 2)", "line 1, column 3: found ',', expected an operator or ')'"},
      {"Sin(1", "line 1, column 6: found the end, expected an operator, ',' or ')'"},
      {"Sin(1 2)", "line 1, column 7: found '2', expected an operator, ',' or ')'"},
      // Names.
      {"CanVall(frame, 7, 0)",
       "line 1, column 1: unknown operation 'CanVall'; did you mean 'CanVal'?"},
      {"1 + canval(frame, 7, 0)",
       "line 1, column 5: unknown operation 'canval'; did you mean 'CanVal'?"},
      {"fields(3)", "line 1, column 1: unknown operation 'fields'; did you mean 'field'?"},
      {"frame(3)", "line 1, column 1: unknown operation 'frame'"},
      {"Tangent(3)", "line 1, column 1: unknown operation 'Tangent'"},
      {"fram", "line 1, column 1: unknown name 'fram'; did you mean 'frame'?"},
      {"PGN", "line 1, column 1: unknown name 'PGN'; did you mean 'pgn'?"},
      {"CanVa", "line 1, column 1: unknown name 'CanVa'; did you mean 'CanVal'?"},
      {"zzzzz", "line 1, column 1: unknown name 'zzzzz'"},
      {"_z", "line 1, column 1: unknown name '_z'"},
      {"Sin", "line 1, column 1: found 'Sin' without its arguments, expected Sin(degrees)"},
      {"field",
       "line 1, column 1: found 'field' without its arguments, expected field(0) to field(255)"},
      {"ValToStr(3)",
       "line 1, column 1: found operation 'ValToStr', which gives no value, expected an operation "
       "that does"},
      // Fields.
      {"field(256)",
       "line 1, column 7: found '256', expected the number of a field, a whole number from 0 to "
       "255"},
      {"field(-1)",
       "line 1, column 7: found '-', expected the number of a field, a whole number from 0 to 255"},
      {"field(1.5)",
       "line 1, column 7: found '1.5', expected the number of a field, a whole number from 0 to "
       "255"},
      {"field(nan)",
       "line 1, column 7: found 'nan', expected the number of a field, a whole number from 0 to "
       "255"},
      {"field(raw)",
       "line 1, column 7: found 'raw', expected the number of a field, a whole number from 0 to "
       "255"},
      {"field()",
       "line 1, column 7: found ')', expected the number of a field, a whole number from 0 to 255"},
      {"field(1 + 1)", "line 1, column 9: found '+', expected ')'"},
      // Arguments.
      {"Sin()", "line 1, column 5: found 0 arguments, expected 1 argument: Sin(degrees)"},
      {"Sin(1, 2)", "line 1, column 6: found another argument, expected 1 argument: Sin(degrees)"},
      {"Sin(1, lenient)",
       "line 1, column 6: found another argument, expected 1 argument: Sin(degrees)"},
      {"CanVal(frame, 7)",
       "line 1, column 16: found 2 arguments, expected 3 arguments: CanVal(frame, typeCode, "
       "startByte)"},
      {"CanVal(frame, 7, 0, 1)",
       "line 1, column 21: found '1', expected lenient, true or false, behind 3 arguments: "
       "CanVal(frame, typeCode, startByte)"},
      {"CanVal(frame, 7, 0, )",
       "line 1, column 21: found ')', expected lenient, true or false, behind 3 arguments: "
       "CanVal(frame, typeCode, startByte)"},
      {"CanVal(frame, 7, 0, lenient, 1)", "line 1, column 28: found ',', expected ')'"},
      {"CanVal(frame, lenient)", "line 1, column 15: found 'lenient', expected a value"},
      // Kinds.
      {"CanVal(pgn, 7, 0)",
       "line 1, column 8: found a number, expected a text: the frame of CanVal(frame, typeCode, "
       "startByte)"},
      {"NMEAPos(field(1), 5)",
       "line 1, column 19: found a number, expected a text: the hemisphere of NMEAPos(position, "
       "hemisphere)"},
      {"TimeConv(-line)",
       "line 1, column 10: found a number, expected a text: the text of TimeConv(text)"},
      // Numbers and texts.
      {"12abc",
       "line 1, column 1: found '12abc', expected a decimal or 0x number that a double "
       "can hold"},
      {"1 + 0x",
       "line 1, column 5: found '0x', expected a decimal or 0x number that a double can "
       "hold"},
      {"1e",
       "line 1, column 1: found '1e', expected a decimal or 0x number that a double can hold"},
      {"1.2.3",
       "line 1, column 1: found '1.2.3', expected a decimal or 0x number that a double "
       "can hold"},
      {"1e999",
       "line 1, column 1: found '1e999', expected a decimal or 0x number that a double "
       "can hold"},
      {"'abc", "line 1, column 1: a text without its closing quote"},
      {"1 + \"abc'", "line 1, column 5: a text without its closing quote"},
      {"'\\",
       R"(line 1, column 2: found '\', expected \\, \", \', \n, \t or \x and two hexadecimal)"
       " digits"},
      {R"('a\qb')",
       R"(line 1, column 3: found '\q', expected \\, \", \', \n, \t or \x and two hexadecimal)"
       " digits"},
      {R"('\x4')",
       R"(line 1, column 2: found '\x', expected \\, \", \', \n, \t or \x and two hexadecimal)"
       " digits"},
      // Nothing steers a terminal.
      {"\x1b[1m", R"(line 1, column 1: found '\x1b', expected a value)"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MessageFor(row.text), row.message) << row.text;
  }
}

TEST(ExpressionErrors, AreWithinTheTextWhereverItIsCut) {
  const std::string_view whole =
      "CanVal(frame, -7, 2, lenient) * 0x1F\n+ NMEAPos('4807\\x2E0', field(3)) / (raw - \"1\")";
  int errors = 0;
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string_view text = whole.substr(0, length);
    const auto compiled = CExpression::Compile(text);
    if (const auto* error = std::get_if<ExpressionError>(&compiled)) {
      const auto breaks = std::count(text.begin(), text.end(), '\n');
      EXPECT_GE(error->line, 1);
      EXPECT_LE(error->line, 1 + breaks);
      EXPECT_GE(error->column, 1);
      EXPECT_LE(error->column, static_cast<int>(length) + 1);
      ++errors;
    }
  }
  EXPECT_GT(errors, 40);
}

TEST(ExpressionErrors, QuoteLongPartsShortened) {
  const std::string message = MessageFor(std::string(1000, 'a'));
  EXPECT_EQ(message, "line 1, column 1: unknown name '" + std::string(60, 'a') + "\xE2\x80\xA6'");
}

std::string Nested(std::string_view open, int levels, std::string_view close) {
  std::string text;
  for (int i = 0; i < levels; ++i) {
    text += open;
  }
  text += "raw";
  for (int i = 0; i < levels; ++i) {
    text += close;
  }
  return text;
}

TEST(ExpressionErrors, AllowAsManyLevelsAsTheLimitSays) {
  const struct {
    std::string_view open;
    std::string_view close;
  } rows[] = {{"(", ")"}, {"-", ""}, {"+ ", ""}, {"Sin(", ")"}, {"1+(", ")"}};
  for (const auto& row : rows) {
    EXPECT_EQ(MessageFor(Nested(row.open, kMaxExpressionDepth, row.close)), "a formula");
    const std::string tooDeep = Nested(row.open, kMaxExpressionDepth + 1, row.close);
    EXPECT_NE(MessageFor(tooDeep).find("found a part nested too deep, expected at most 200 levels"),
              std::string::npos)
        << MessageFor(tooDeep);
  }
  // Side by side is not nested.
  std::string wide = "(1)";
  for (int i = 0; i < 2 * kMaxExpressionDepth; ++i) {
    wide += "+(-raw*2)";
  }
  EXPECT_EQ(MessageFor(wide), "a formula");
}

TEST(ExpressionErrors, AllowAsManyBytesAsTheLimitSays) {
  const std::string longest = std::string(kMaxExpressionLength - 1, ' ') + "5";
  EXPECT_EQ(MessageFor(longest), "a formula");
  EXPECT_EQ(MessageFor(longest + " "),
            "line 1, column 65537: found 65537 bytes, expected a formula of at most 65536");
}

TEST(ExpressionErrors, ComeAtOnceForHostileTexts) {
  const std::string many(10'000'000, '(');
  const std::string deep(60'000, '-');
  const std::string opens(60'000, '(');
  std::string calls;
  while (calls.size() < 60'000) {
    calls += "Sin(";
  }
  const std::string continuations(60'000, '\x80');
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string& text :
       {many, deep, opens, calls, continuations, std::string(60'000, '9') + "x",
        std::string(60'000, 'q'), std::string(60'000, '\'')}) {
    EXPECT_NE(MessageFor(text), "a formula") << text.substr(0, 10);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

}  // namespace
}  // namespace lum::decoding
