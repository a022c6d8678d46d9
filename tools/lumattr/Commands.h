// The commands of lumattr. Each function adds one command with its options, help and action.
#pragma once

#include <string>
#include <vector>

#include "tools/lumattr/ToolContext.h"

namespace CLI {
class App;
}

namespace lum::tool {

/// `context` must outlive `app`.
void AddCheckCommand(CLI::App& app, ToolContext& context);
void AddConvertCommand(CLI::App& app, ToolContext& context);
void AddDefsCommand(CLI::App& app, ToolContext& context);
void AddDiffCommand(CLI::App& app, ToolContext& context);
/// `words` are the operation and its arguments, which SplitEvalLine takes out of the command line.
void AddEvalCommand(CLI::App& app, ToolContext& context, std::vector<std::string> words);
void AddGetCommand(CLI::App& app, ToolContext& context);
void AddMergeCommand(CLI::App& app, ToolContext& context);
void AddNamesCommand(CLI::App& app, ToolContext& context);
void AddRestoreCommand(CLI::App& app, ToolContext& context);
void AddSetCommand(CLI::App& app, ToolContext& context);
void AddShowCommand(CLI::App& app, ToolContext& context);
void AddUnsetCommand(CLI::App& app, ToolContext& context);

}  // namespace lum::tool
