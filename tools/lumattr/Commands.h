// The commands of lumattr. Each function adds one command with its options, help and action.
#pragma once

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
void AddGetCommand(CLI::App& app, ToolContext& context);
void AddMergeCommand(CLI::App& app, ToolContext& context);
void AddNamesCommand(CLI::App& app, ToolContext& context);
void AddSetCommand(CLI::App& app, ToolContext& context);
void AddShowCommand(CLI::App& app, ToolContext& context);
void AddUnsetCommand(CLI::App& app, ToolContext& context);

}  // namespace lum::tool
