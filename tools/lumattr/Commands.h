// The commands of lumattr. Each function adds one command with its options, help and action.
#pragma once

#include <string>
#include <vector>

#include "tools/lumattr/CommandLine.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

/// `context` must outlive `app`.
void AddCheckCommand(const CCommand& app, ToolContext& context);
void AddConvertCommand(const CCommand& app, ToolContext& context);
void AddDecodeCommand(const CCommand& app, ToolContext& context);
void AddDefsCommand(const CCommand& app, ToolContext& context);
void AddDiffCommand(const CCommand& app, ToolContext& context);
/// `words` are the operation and its arguments, which SplitEvalLine takes out of the command line.
void AddEvalCommand(const CCommand& app, ToolContext& context, std::vector<std::string> words);
void AddExplainCommand(const CCommand& app, ToolContext& context);
void AddGetCommand(const CCommand& app, ToolContext& context);
void AddMergeCommand(const CCommand& app, ToolContext& context);
void AddNamesCommand(const CCommand& app, ToolContext& context);
void AddPlotCommand(const CCommand& app, ToolContext& context);
void AddRestoreCommand(const CCommand& app, ToolContext& context);
void AddSetCommand(const CCommand& app, ToolContext& context);
void AddShowCommand(const CCommand& app, ToolContext& context);
void AddUnsetCommand(const CCommand& app, ToolContext& context);

}  // namespace lum::tool
