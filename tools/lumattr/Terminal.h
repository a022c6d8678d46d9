// The terminal or console the program writes to.
#pragma once

namespace lum::tool {

/// Lets std::cout and std::cerr take UTF-8: a Windows console shows it whatever its code page is,
/// and a file or a pipe gets it byte for byte. Call once, before anything is written. Nothing need
/// be done elsewhere.
void PrepareStandardStreams();

/// Whether a write failed with this error number because nobody reads the pipe any more.
bool IsClosedPipe(int error);

/// Whether standard output is a terminal or console.
bool IsOutputTerminal();
/// Whether standard error is.
bool IsErrorTerminal();

/// Whether standard output is a terminal that shows colours. NO_COLOR=1 and TERM=dumb forbid them.
bool MayColorOutput();

}  // namespace lum::tool
