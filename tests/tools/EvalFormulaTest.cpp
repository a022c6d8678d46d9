// The eval command against the same call as a formula: both have a value or none, and the same one.
#include <gtest/gtest.h>

#include <charconv>
#include <sstream>
#include <string>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/NumberLiteral.h"
#include "tests/decoding/SingleCalls.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/EvalArguments.h"
#include "tools/lumattr/RunTool.h"

namespace lum::tool {
namespace {

using lum::test::CallArgument;
using lum::test::SingleCall;

std::string Word(const CallArgument& argument) {
  if (!argument.isText) {
    return decoding::NumberText(argument.number);
  }
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string word = "hex:";
  for (const char byte : argument.bytes) {
    const auto code = static_cast<unsigned char>(byte);
    word += {kDigits[code / 16], kDigits[code % 16]};
  }
  return word;
}

std::vector<std::string> CommandLine(const SingleCall& call) {
  std::vector<std::string> line = {"lumattr", "eval", "--json", std::string(call.operation->name)};
  for (const CallArgument& argument : call.arguments) {
    line.push_back(Word(argument));
  }
  if (call.lenient) {
    line.emplace_back("--lenient");
  }
  return line;
}

struct ToolAnswer {
  int exitCode = 0;
  std::string result;
};

/// The member "result" of what the command printed. Its numbers are read here, since a JSON library
/// reads them by the C library, whose decimal point follows the process locale.
std::string ResultText(const std::string& output) {
  constexpr std::string_view kMember = "\"result\":";
  const std::size_t begin = output.find(kMember) + kMember.size();
  std::string text = output.substr(begin, output.find(",\"holds\"", begin) - begin);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc() && end == text.data() + text.size()) {
    return decoding::NumberText(number);
  }
  std::erase(text, '"');
  return text == "null" || output.empty() ? "-" : text;
}

/// Runs the command as the program does.
ToolAnswer RunEval(std::vector<std::string> words) {
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  std::ostringstream out;
  std::ostringstream err;
  ToolContext context{out, err};
  EvalLine line = SplitEvalLine(static_cast<int>(argv.size()), argv.data());
  const auto addCommand = [&context, &line](const CCommand& app) {
    AddEvalCommand(app, context, line.words);
  };
  const int exitCode =
      RunTool(static_cast<int>(line.rest.size()), line.rest.data(), context, addCommand);
  return {exitCode, ResultText(out.str())};
}

std::string FormulaResult(const std::string& formula) {
  auto compiled = decoding::CExpression::Compile(formula);
  if (const auto* error = std::get_if<decoding::ExpressionError>(&compiled)) {
    return error->Message();
  }
  decoding::CFormulaInputs inputs;
  const decoding::Evaluation evaluation =
      std::get<decoding::CExpression>(compiled).Evaluate(inputs);
  return evaluation.HasValue() ? decoding::NumberText(evaluation.value) : "-";
}

TEST(EvalFormula, GivesWhatTheSameFormulaGives) {
  int values = 0;
  for (const SingleCall& call : lum::test::SingleCalls()) {
    const std::string formula = call.Formula();
    const ToolAnswer answer = RunEval(CommandLine(call));
    ASSERT_LE(answer.exitCode, kExitFinding) << formula;
    EXPECT_EQ(answer.result, FormulaResult(formula)) << formula;
    EXPECT_EQ(answer.exitCode == kExitFine, answer.result != "-") << formula;
    values += answer.exitCode == kExitFine ? 1 : 0;
  }
  EXPECT_GT(values, 400);
}

}  // namespace
}  // namespace lum::tool
