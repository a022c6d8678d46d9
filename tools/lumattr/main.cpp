// lumattr: works on configuration files, definition files, the catalogue of names and the
// operations of formulas. The manual is docs/lumattr.md.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "tools/lumattr/Commands.h"
#include "tools/lumattr/EvalArguments.h"
#include "tools/lumattr/RunTool.h"
#include "tools/lumattr/SystemText.h"
#include "tools/lumattr/Terminal.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  lum::tool::PrepareStandardStreams();
  lum::tool::TakeVariableAsUtf8("LUMATTR_DEFS");
  lum::tool::ToolContext context{std::cout, std::cerr, lum::tool::MayColorOutput()};
  context.terminal = lum::tool::IsOutputTerminal();
  std::vector<std::string> arguments = lum::tool::ProgramArguments(argc, argv);
  std::vector<char*> words(arguments.size());
  std::transform(arguments.begin(), arguments.end(), words.begin(),
                 [](std::string& argument) { return argument.data(); });
  lum::tool::EvalLine line = lum::tool::SplitEvalLine(static_cast<int>(words.size()), words.data());
  const auto addCommands = [&context, &line](const lum::tool::CCommand& app) {
    lum::tool::AddCheckCommand(app, context);
    lum::tool::AddConvertCommand(app, context);
    lum::tool::AddDecodeCommand(app, context);
    lum::tool::AddDefsCommand(app, context);
    lum::tool::AddDiffCommand(app, context);
    lum::tool::AddEvalCommand(app, context, line.words);
    lum::tool::AddExplainCommand(app, context);
    lum::tool::AddGetCommand(app, context);
    lum::tool::AddMergeCommand(app, context);
    lum::tool::AddNamesCommand(app, context);
    lum::tool::AddPlotCommand(app, context);
    lum::tool::AddRestoreCommand(app, context);
    lum::tool::AddSetCommand(app, context);
    lum::tool::AddShowCommand(app, context);
    lum::tool::AddUnsetCommand(app, context);
  };
  return lum::tool::RunTool(static_cast<int>(line.rest.size()), line.rest.data(), context,
                            addCommands);
}
