// What the commands on logs have in common: formulas or a profile, the format, display names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "decoding/Profile.h"
#include "tools/lumattr/CommandLine.h"
#include "tools/lumattr/Definitions.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

struct DecodeOptions {
  std::vector<std::string> formulas;
  std::string profile;
  std::string format;
  bool allowMissingChecksum = false;
  DefinitionOptions definitions;
};

void AddDecodeOptions(const CCommand& command, DecodeOptions& options);

/// The format that was asked for; nothing when it is to be found out. Throws ToolError for a word
/// that is none.
std::optional<decoding::LogFormat> FormatOf(const DecodeOptions& options);

/// The profile, or one made of the formulas, with display names. Its faults are printed to
/// `context.err`, one a line, and then ToolError is thrown; as it is, with the way to the help of
/// `command`, when there is neither.
decoding::Profile ProfileOf(const DecodeOptions& options, const std::string& command,
                            ToolContext& context);

/// A fault as one line: "engine.profile:5:15: found; expected …; did you mean 'Speed'?".
std::string FaultText(const std::string& file, const decoding::ProfileFault& fault);

}  // namespace lum::tool
