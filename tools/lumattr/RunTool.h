// Runs the command that the arguments name, and turns everything that can go wrong into one line
// and an exit code.
#pragma once

#include <functional>

#include "tools/lumattr/CommandLine.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

/// Returns the exit code. Never throws.
int RunTool(int argc, char** argv, ToolContext& context,
            const std::function<void(const CCommand&)>& addCommands);

}  // namespace lum::tool
