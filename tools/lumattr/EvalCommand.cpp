// lumattr eval: evaluates one operation of formulas.
#include <algorithm>
#include <cmath>
#include <memory>
#include <span>
#include <utility>

#include "decoding/NumberLiteral.h"
#include "decoding/Operations.h"
#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/EvalArguments.h"
#include "tools/lumattr/Json.h"
#include "values/LumType.h"

namespace lum::tool {
namespace {

using decoding::ArgumentForm;
using decoding::ArgumentsText;
using decoding::NumberText;
using decoding::Operation;
using decoding::OperationArgument;
using decoding::Operations;

struct EvalOptions {
  std::vector<std::string> words;
  std::string previous = "0";
  bool lenient = false;
  bool list = false;
  bool json = false;
};

constexpr const char* kFooter =
    "Prints the result. Without one the exit code is 1.\n"
    "A text argument is taken as it is, or as bytes: 'hex:34 12'. Put text: before one that "
    "begins\n"
    "with hex: or text: itself. Only -h and words that begin with -- and a letter are options; "
    "put\n"
    "-- or text: before a text like that.\n"
    "Examples:\n"
    "  lumattr eval CanVal 98FEF1008FFFFFFFFFFFFFFFF 7 0\n"
    "  lumattr eval BinVal 'hex:34 12' -7\n"
    "  lumattr eval BinVal hex:34 2 --lenient --previous 5\n"
    "  lumattr eval NMEAPos 4807.038 S\n"
    "  lumattr eval --list";

// ---- The table of operations

std::string_view FormName(ArgumentForm form) {
  switch (form) {
    case ArgumentForm::kVector:
      return "vector";
    case ArgumentForm::kText:
      return "text";
    default:
      return "number";
  }
}

CJson OperationJson(const Operation& operation) {
  CJson arguments = CJson::Array();
  for (const OperationArgument& argument : operation.Arguments()) {
    CJson entry;
    entry.Set("name", argument.name);
    entry.Set("form", FormName(argument.form));
    arguments.Add(std::move(entry));
  }
  CJson json;
  json.Set("operation", operation.name);
  json.Set("arguments", std::move(arguments));
  json.Set("lenient", operation.takesLenient);
  json.Set("supported", operation.isSupported);
  json.Set("result", operation.result);
  return json;
}

void ListOperations(const EvalOptions& options, ToolContext& context) {
  CJson json = CJson::Array();
  std::vector<TableRow> rows;
  for (const Operation& operation : Operations()) {
    json.Add(OperationJson(operation));
    rows.push_back({std::string(operation.name), ArgumentsText(operation),
                    operation.takesLenient ? "yes" : "", std::string(operation.result)});
  }
  if (options.json) {
    context.out << json.IndentedText() << '\n';
  } else {
    PrintTable(context, {"OPERATION", "ARGUMENTS", "LENIENT", "RESULT"}, rows);
  }
}

// ---- Values

/// A value of one to three numbers.
std::unique_ptr<CLumType> MakeVector(const std::vector<double>& numbers) {
  switch (numbers.size()) {
    case 3:
      return std::make_unique<CLumDouble3D>(numbers[0], numbers[1], numbers[2]);
    case 2:
      return std::make_unique<CLumDouble2D>(numbers[0], numbers[1]);
    default:
      return std::make_unique<CLumDouble>(numbers[0]);
  }
}

/// The numbers a value has: none for a text.
std::vector<double> NumbersOf(const CLumType& value) {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  if (value.GetDouble(x) != 0) {
    return {x};
  }
  if (value.GetDouble2D(x, y) != 0) {
    return {x, y};
  }
  return value.GetDouble3D(x, y, z) != 0 ? std::vector{x, y, z} : std::vector<double>();
}

std::string NumbersText(const std::vector<double>& numbers) {
  std::string text;
  for (const double number : numbers) {
    text += (text.empty() ? "" : ",") + NumberText(number);
  }
  return text;
}

CJson NumberJson(double number) {
  return std::isfinite(number) ? CJson(number) : CJson(NumberText(number));
}

CJson NumbersJson(const std::vector<double>& numbers) {
  if (numbers.size() == 1) {
    return NumberJson(numbers.front());
  }
  CJson json = CJson::Array();
  for (const double number : numbers) {
    json.Add(NumberJson(number));
  }
  return json;
}

// ---- One call

std::unique_ptr<CLumType> MakeArgument(const Operation& operation, std::size_t place,
                                       const std::string& word) {
  const OperationArgument& argument = operation.arguments[place];
  const std::string what = std::string(operation.name) + ": " + std::string(argument.name);
  switch (argument.form) {
    case ArgumentForm::kText:
      return std::make_unique<CLumIoName>(BytesArgument(word, what));
    case ArgumentForm::kVector:
      return MakeVector(VectorArgument(word, what));
    default:
      return std::make_unique<CLumDouble>(NumberArgument(word, what));
  }
}

/// Everything an evaluation needs.
struct Task {
  const Operation& operation;
  std::span<const std::string> words;  ///< The arguments, as many as the operation takes.
  bool lenient = false;
};

struct Outcome {
  int code = 0;
  std::vector<double> held;     ///< What the result holds afterwards.
  std::vector<double> clamped;  ///< What the first argument was set to, if it was.
};

/// Evaluates on a result that holds `previous`.
Outcome Evaluate(const Task& task, double previous) {
  std::vector<std::unique_ptr<CLumType>> arguments;
  std::vector<CLumType*> pointers;
  for (const std::string& word : task.words) {
    arguments.push_back(MakeArgument(task.operation, arguments.size(), word));
    pointers.push_back(arguments.back().get());
  }
  const std::vector<double> before = NumbersOf(*pointers.front());
  const std::unique_ptr<CLumType> result =
      MakeVector(std::vector<double>(std::max<std::size_t>(before.size(), 1), previous));
  Outcome outcome;
  outcome.code = task.operation.call(*result, pointers, task.lenient);
  outcome.held = NumbersOf(*result);
  const std::vector<double> after = NumbersOf(*pointers.front());
  if (NumbersText(after) != NumbersText(before)) {
    outcome.clamped = after;
  }
  return outcome;
}

/// Whether the operation set the result although it has no value. It does so whatever the result
/// held: a second evaluation, on another number, ends with the same one.
bool IsSetAllTheSame(const Task& task, const Outcome& outcome) {
  const std::string held = NumbersText(outcome.held);
  return NumbersText(Evaluate(task, held == "1" ? 2.0 : 1.0).held) == held;
}

void PrintJson(const Task& task, const Outcome& outcome, ToolContext& context) {
  CJson json;
  json.Set("operation", task.operation.name);
  json.Set("code", outcome.code);
  json.Set("result", outcome.code != 0 ? NumbersJson(outcome.held) : CJson());
  json.Set("holds", NumbersJson(outcome.held));
  json.Set("clamped", outcome.clamped.empty() ? CJson() : NumbersJson(outcome.clamped));
  context.out << json.Text() << '\n';
}

std::string NoValueMessage(const Task& task, const Outcome& outcome) {
  const std::string message = "no value: " + std::string(task.operation.name) + " returned 0";
  if (!task.operation.isSupported) {
    return message + "; no kind of value supports it";
  }
  return IsSetAllTheSame(task, outcome)
             ? message + "; the result was set to " + NumbersText(outcome.held) + " all the same"
             : message;
}

void PrintOutcome(const Task& task, const Outcome& outcome, ToolContext& context) {
  if (!outcome.clamped.empty()) {
    context.err << "lumattr: note: " << task.operation.name << " set its argument to "
                << NumbersText(outcome.clamped) << '\n';
  }
  if (outcome.code != 0) {
    context.out << NumbersText(outcome.held) << '\n';
  } else {
    context.err << "lumattr: " << NoValueMessage(task, outcome) << '\n';
  }
}

// ---- The command

void RequireArguments(const Operation& operation, std::size_t given) {
  if (given == operation.argumentCount) {
    return;
  }
  const std::string plural = operation.argumentCount == 1 ? "" : "s";
  throw ToolError(std::string(operation.name) + " takes " +
                  std::to_string(operation.argumentCount) + " argument" + plural + " (" +
                  ArgumentsText(operation) + "), not " + std::to_string(given));
}

void RequireLenient(const Operation& operation) {
  if (operation.takesLenient) {
    return;
  }
  std::string names;
  for (const Operation& other : Operations()) {
    if (other.takesLenient) {
      names += (names.empty() ? "" : ", ") + std::string(other.name);
    }
  }
  throw ToolError(std::string(operation.name) + " takes no --lenient, only these do: " + names);
}

void RunOperation(const EvalOptions& options, ToolContext& context) {
  const Operation& operation = NamedOperation(options.words.front());
  const Task task{operation, std::span(options.words).subspan(1), options.lenient};
  RequireArguments(operation, task.words.size());
  if (options.lenient) {
    RequireLenient(operation);
  }
  const Outcome outcome = Evaluate(task, NumberArgument(options.previous, "--previous"));
  if (options.json) {
    PrintJson(task, outcome, context);
  } else {
    PrintOutcome(task, outcome, context);
  }
  context.exitCode = outcome.code != 0 ? kExitFine : kExitFinding;
}

void Run(const EvalOptions& options, ToolContext& context) {
  if (options.list && !options.words.empty()) {
    throw ToolError("--list takes no operation");
  }
  if (options.list) {
    ListOperations(options, context);
  } else if (options.words.empty()) {
    throw ToolError("eval needs an operation; see lumattr eval --list");
  } else {
    RunOperation(options, context);
  }
}

}  // namespace

void AddEvalCommand(const CCommand& app, ToolContext& context, std::vector<std::string> words) {
  auto options = std::make_shared<EvalOptions>();
  options->words = std::move(words);
  const CCommand command = app.Subcommand("eval", "Evaluate an operation of formulas");
  // Named for the help alone: the words do not come this way.
  command.Option("OPERATION", "Name of the operation");
  command.Option("ARG", "Its arguments: numbers (-1.5, 0x1F, inf, nan) and texts").AnyNumber();
  const COption list = command.Flag("--list", options->list, "List all operations");
  command.Flag("--lenient", options->lenient, "Turn bad input into a result").Excludes(list);
  command.Option("--previous", options->previous, "What the result holds before")
      .TypeName("NUMBER")
      .ShowDefault()
      .Excludes(list);
  command.Flag("--json", options->json, "Print JSON");
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
