// The arguments of lumattr eval: told apart from its options, and read as numbers and texts.
#pragma once

#include <string>
#include <vector>

#include "decoding/Operations.h"
#include "platform/Framework.h"

namespace lum::tool {

/// A command line in two parts.
struct EvalLine {
  std::vector<char*> rest;         ///< What the parser gets: the tool, eval and its options.
  std::vector<std::string> words;  ///< The operation and its arguments.
};

/// Takes the words of an eval command out of the command line; that of any other command comes back
/// whole. The parser would take words like "-inf" for options and words like "[1,2]" apart. Options
/// are "-h", what begins with "--" and a letter, and the word after "--previous"; behind "--" there
/// are none.
EvalLine SplitEvalLine(int argc, char** argv);

/// Throws ToolError, with a likely meaning, when there is no operation of that name.
const decoding::Operation& NamedOperation(const std::string& name);

/// An argument that is a number as a whole: decimal, hexadecimal digits after 0x, "inf" or "nan",
/// with a sign or without. Throws ToolError, naming the argument by `what`, for anything else.
double NumberArgument(const std::string& argument, const std::string& what);

/// One to three such numbers, joined by commas.
std::vector<double> VectorArgument(const std::string& argument, const std::string& what);

/// The bytes of a text argument: what follows "hex:" in hexadecimal, what follows "text:", or the
/// argument itself. Throws ToolError when the hexadecimal form has anything but pairs of digits and
/// blanks between them.
CStringA BytesArgument(const std::string& argument, const std::string& what);

}  // namespace lum::tool
