// One formula has one answer: the same bits, or the same absence, from the operations of C++, from
// a compiled formula, from lumattr eval and from lumattr decode.
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "decoding/Expression.h"
#include "decoding/NumberLiteral.h"
#include "tests/TemporaryFolder.h"
#include "tests/decoding/DirectCalls.h"
#include "tests/decoding/Formulas.h"
#include "tests/decoding/NaiveFormula.h"
#include "tests/decoding/SingleCalls.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/EvalArguments.h"
#include "tools/lumattr/RowWriter.h"
#include "tools/lumattr/RunTool.h"

namespace lum::tool {
namespace {

using decoding::AbsenceReason;
using decoding::CellReason;
using decoding::Input;
using lum::test::CallArgument;
using lum::test::NaiveInputs;
using lum::test::SingleCall;

constexpr int kComposedFormulas = 2000;

/// A number, or why there is none, in the words of a cell.
struct Answer {
  double number = 0.0;
  std::string reason;

  bool operator==(const Answer& other) const {
    return reason == other.reason && lum::test::IsSameNumber(number, other.number);
  }
};

void PrintTo(const Answer& answer, std::ostream* out) {
  *out << (answer.reason.empty() ? decoding::NumberText(answer.number) : answer.reason);
}

Answer Absent(CellReason reason) { return {0.0, CellReasonName(reason)}; }

Answer AnswerOf(AbsenceReason absence, double number) {
  const std::map<AbsenceReason, CellReason> reasons = {
      {AbsenceReason::None, CellReason::None},
      {AbsenceReason::EmptyInput, CellReason::EmptyInput},
      {AbsenceReason::MissingInput, CellReason::MissingInput},
      {AbsenceReason::NoValue, CellReason::NoValue}};
  return absence == AbsenceReason::None ? Answer{number, ""} : Absent(reasons.at(absence));
}

/// What a cell makes of it: a number that is none is an error there.
Answer AsCell(const Answer& answer) {
  return std::isfinite(answer.number) ? answer : Absent(CellReason::NotANumber);
}

/// A number of JSON or a word for one. A JSON library reads numbers by the C library, whose decimal
/// point follows the process locale.
std::optional<double> ReadNumber(std::string_view text) {
  double number = 0.0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, number);
  return error == std::errc() && end == last ? std::optional(number) : std::nullopt;
}

/// What stands between two texts; empty when they are not there.
std::string_view Between(std::string_view text, std::string_view before, std::string_view behind) {
  const std::size_t begin = text.find(before);
  const std::size_t end = begin == text.npos ? text.npos : text.find(behind, begin + before.size());
  return end == text.npos ? std::string_view()
                          : text.substr(begin + before.size(), end - begin - before.size());
}

// ---- The commands, run as the program does

using AddCommand = std::function<void(const CCommand&, ToolContext&, const EvalLine&)>;

struct ToolAnswer {
  int exitCode = 0;
  std::string out;
  std::string err;
};

ToolAnswer RunCommand(std::vector<std::string> words, const AddCommand& add) {
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  std::ostringstream out;
  std::ostringstream err;
  ToolContext context{out, err};
  EvalLine line = SplitEvalLine(static_cast<int>(argv.size()), argv.data());
  const int exitCode = RunTool(static_cast<int>(line.rest.size()), line.rest.data(), context,
                               [&](const CCommand& app) { add(app, context, line); });
  return {exitCode, out.str(), err.str()};
}

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

Answer AnswerOfEval(const SingleCall& call) {
  std::vector<std::string> words = {"lumattr", "eval", "--json", std::string(call.operation->name)};
  for (const CallArgument& argument : call.arguments) {
    words.push_back(Word(argument));
  }
  if (call.lenient) {
    words.emplace_back("--lenient");
  }
  const ToolAnswer run =
      RunCommand(words, [](const CCommand& app, ToolContext& context, const EvalLine& line) {
        AddEvalCommand(app, context, line.words);
      });
  std::string result(Between(run.out, "\"result\":", ",\"holds\""));
  std::erase(result, '"');
  const std::optional<double> number = ReadNumber(result);
  EXPECT_EQ(run.exitCode, number ? kExitFine : kExitFinding) << run.out << run.err;
  return number ? Answer{*number, ""}
                : Answer{0.0, result == "null" ? CellReasonName(CellReason::NoValue) : result};
}

Answer AnswerInRow(std::string_view row) {
  const std::optional<double> number = ReadNumber(Between(row, "\"V\":", "}"));
  return number ? Answer{*number, ""}
                : Answer{0.0, std::string(Between(row, "\"reason\":\"", "\""))};
}

// ---- A log with a line for each formula

std::string CsvText(std::string_view text) {
  std::string quoted = "\"";
  for (const char ch : text) {
    quoted += ch == '"' ? "\"\"" : std::string(1, ch);
  }
  return quoted + '"';
}

std::string Written(const CTemporaryFolder& folder, const char* name, std::string_view bytes) {
  WriteBytes(folder.File(name), bytes);
  const std::u8string path = folder.File(name).u8string();
  return {path.begin(), path.end()};
}

/// Formulas with the answers they must have, decoded all at once: each is a message of its own,
/// told by the first field.
class CFormulaLog {
 public:
  std::string NextField() const { return std::to_string(m_formulas.size() + 1); }
  std::uint64_t NextNumber() const { return m_formulas.size() + 1; }

  static std::string LineOf(const std::vector<std::string>& fields) {
    std::string line;
    for (const std::string& field : fields) {
      line += (line.empty() ? "" : ",") + CsvText(field);
    }
    return line;
  }

  void Add(const std::string& formula, const std::string& line, const Answer& expected) {
    m_profile += "[Message M" + NextField() + "]\nMatch.Field.0=" + NextField() +
                 "\nV.Formula=" + formula + "\n";
    m_log += line + "\n";
    m_formulas.push_back({formula, AsCell(expected)});
  }

  void Check() const {
    const CTemporaryFolder folder;
    const ToolAnswer run =
        RunCommand({"lumattr", "decode", "--json", "-p",
                    Written(folder, "a.profile", "[Profile]\nFormat=csv\n" + m_profile),
                    Written(folder, "a.csv", m_log)},
                   [](const CCommand& app, ToolContext& context, const EvalLine&) {
                     AddDecodeCommand(app, context);
                   });
    ASSERT_LE(run.exitCode, kExitFinding) << run.err;
    std::istringstream rows(run.out);
    std::string row;
    for (std::size_t i = 0; i < m_formulas.size(); ++i) {
      ASSERT_TRUE(std::getline(rows, row)) << m_formulas[i].text << '\n' << run.err;
      ASSERT_EQ(Between(row, "\"message\":\"M", "\""), std::to_string(i + 1));
      EXPECT_EQ(AnswerInRow(row), m_formulas[i].expected) << m_formulas[i].text << '\n' << row;
    }
    EXPECT_FALSE(std::getline(rows, row)) << row;
  }

 private:
  struct Formula {
    std::string text;
    Answer expected;
  };

  std::string m_profile;
  std::string m_log;
  std::vector<Formula> m_formulas;
};

// ---- Single calls

Answer AnswerInCxx(const SingleCall& call) {
  const std::optional<double> number = lum::test::CallDirectly(call);
  return number ? Answer{*number, ""} : Absent(CellReason::NoValue);
}

Answer AnswerOfExpression(const std::string& formula) {
  decoding::CFormulaInputs inputs;
  const decoding::Evaluation evaluation = lum::test::Compiled(formula).Evaluate(inputs);
  return AnswerOf(evaluation.absence, evaluation.value);
}

/// Once with its texts in the formula, once with them in the log.
void AddCall(CFormulaLog& log, const SingleCall& call, const Answer& expected) {
  log.Add(call.Formula(), CFormulaLog::LineOf({log.NextField()}), expected);
  std::vector<std::string> fields = call.Fields();
  fields.insert(fields.begin(), log.NextField());
  log.Add(call.FormulaOfFields(), CFormulaLog::LineOf(fields), expected);
}

TEST(FormulaWays, GiveOneAnswerToACall) {
  CFormulaLog log;
  int values = 0;
  for (const SingleCall& call : lum::test::SingleCalls()) {
    const std::string formula = call.Formula();
    const Answer expected = AnswerInCxx(call);
    EXPECT_EQ(AnswerOfExpression(formula), expected) << formula;
    EXPECT_EQ(AnswerOfEval(call), expected) << formula;
    AddCall(log, call, expected);
    values += expected.reason.empty() ? 1 : 0;
  }
  EXPECT_GT(values, 400);
  log.Check();
}

// ---- Formulas of many operations, of which eval takes one alone

std::string WithoutLineBreaks(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char ch) { return ch == '\n' || ch == '\r'; }, ' ');
  return text;
}

/// The inputs that a line of CSV gives.
NaiveInputs MakeLine(const CFormulaLog& log, const lum::test::Choose& choose) {
  NaiveInputs inputs;
  inputs.fields = lum::test::MakeInputs(choose).fields;
  inputs.fields.insert(inputs.fields.begin(), log.NextField());
  for (std::string& field : inputs.fields) {
    field = WithoutLineBreaks(field);
  }
  inputs.texts[Input::Line] = CFormulaLog::LineOf(inputs.fields);
  inputs.numbers[Input::Number] = static_cast<double>(log.NextNumber());
  return inputs;
}

Answer AnswerOfExpression(const std::string& formula, const NaiveInputs& line) {
  decoding::CFormulaInputs inputs;
  std::vector<std::string_view> views;
  lum::test::SetInputs(line, inputs, views);
  const decoding::Evaluation evaluation = lum::test::Compiled(formula).Evaluate(inputs);
  return AnswerOf(evaluation.absence, evaluation.value);
}

/// A column without a raw formula has no raw number.
lum::test::NaiveNode MakeTree(const lum::test::Choose& choose, std::string& formula) {
  while (true) {
    lum::test::NaiveNode tree = lum::test::MakeFormula(choose, 4);
    formula = WithoutLineBreaks(lum::test::Print(tree, choose));
    if (!lum::test::Compiled(formula).Uses(Input::Raw)) {
      return tree;
    }
  }
}

TEST(FormulaWays, GiveOneAnswerToAFormulaOfManyOperations) {
  std::mt19937 random(29);
  const lum::test::Choose choose = [&random] { return random(); };
  CFormulaLog log;
  std::map<std::string, int> ends;
  for (int i = 0; i < kComposedFormulas; ++i) {
    std::string formula;
    const lum::test::NaiveNode tree = MakeTree(choose, formula);
    const NaiveInputs line = MakeLine(log, choose);
    const lum::test::NaiveResult result = lum::test::Evaluate(tree, line);
    const Answer expected = AnswerOf(result.absence, result.number);
    EXPECT_EQ(AnswerOfExpression(formula, line), expected) << formula;
    log.Add(formula, line.texts.at(Input::Line), expected);
    ++ends[expected.reason];
  }
  EXPECT_GT(ends[""], kComposedFormulas / 10);
  EXPECT_GT(ends[CellReasonName(CellReason::NoValue)], kComposedFormulas / 40);
  log.Check();
}

}  // namespace
}  // namespace lum::tool
