// Ctrl-C while a command works: it ends what it is at and says where to go on. A second one ends
// the program at once.
#pragma once

#include <atomic>

namespace lum::tool {

/// What the shell expects of a program that was interrupted: 128 and the signal's number.
inline constexpr int kExitInterrupted = 130;

/// From now on an interruption sets the flag, which lives as long as the program.
const std::atomic<bool>& WatchInterruption();

}  // namespace lum::tool
