// Runs the command that the arguments name, and turns everything that can go wrong into one line
// and an exit code.
#pragma once

#include <functional>

#include "tools/lumattr/ToolContext.h"

namespace CLI {
class App;
}

namespace lum::tool {

/// Returns the exit code. Never throws.
int RunTool(int argc, char** argv, ToolContext& context,
            const std::function<void(CLI::App&)>& addCommands);

}  // namespace lum::tool
