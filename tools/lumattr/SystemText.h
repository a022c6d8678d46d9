// What the system hands to the program, as UTF-8. Windows hands it over as UTF-16, and in the ANSI
// code page only for those who ask no better.
#pragma once

#include <string>
#include <vector>

namespace lum::tool {

/// The program's arguments, its own name first. Patterns are left as they were typed. What
/// holds half a character becomes bytes that are no valid UTF-8.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// Lets std::getenv answer the variable as UTF-8.
void TakeVariableAsUtf8(const char* name);

}  // namespace lum::tool
