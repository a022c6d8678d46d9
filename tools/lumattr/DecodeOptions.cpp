#include "tools/lumattr/DecodeOptions.h"

#include "decoding/LogRecord.h"
#include "definitions/AttribDefMap.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

using decoding::LogFormat;
using decoding::Profile;
using decoding::ProfileFault;

std::string FormulaFault(const DecodeOptions& options, const ProfileFault& fault) {
  const bool isOne = options.formulas.size() == 1;
  return FaultText(isOne ? "--formula" : "--formula " + std::to_string(fault.line),
                   {1, fault.column, fault.found, fault.expected, fault.suggestion});
}

[[noreturn]] void Refuse(const DecodeOptions& options, const std::vector<ProfileFault>& faults,
                         ToolContext& context) {
  const bool hasProfile = !options.profile.empty();
  for (const ProfileFault& fault : faults) {
    context.err << "lumattr: "
                << (hasProfile ? FaultText(options.profile, fault) : FormulaFault(options, fault))
                << '\n';
  }
  throw ToolError(hasProfile ? "the profile cannot be used; see lumattr decode --check-profile"
                             : "the formula cannot be used; see docs/formula-expressions.md");
}

}  // namespace

void AddDecodeOptions(const CCommand& command, DecodeOptions& options) {
  const COption formula =
      command.Option("-f,--formula", options.formulas, "A column: a formula, or NAME=FORMULA");
  formula.OneEach().TypeName("F");
  command.Option("-p,--profile", options.profile, "Decode profile: messages and their columns")
      .TypeName("FILE")
      .Excludes(formula);
  command
      .Option("--format", options.format,
              "Of the log: plain, candump, j1939, nmea, csv; found out without")
      .OneOf({"plain", "candump", "j1939", "nmea", "csv"});
  command.Flag("--allow-missing-checksum", options.allowMissingChecksum,
               "Take NMEA 0183 sentences that have none");
  AddDefinitionOptions(command, options.definitions);
}

std::optional<LogFormat> FormatOf(const DecodeOptions& options) {
  return options.format.empty() ? std::nullopt : decoding::FindLogFormat(options.format);
}

Profile ProfileOf(const DecodeOptions& options, const std::string& command, ToolContext& context) {
  if (options.profile.empty() && options.formulas.empty()) {
    throw ToolError("needs --formula or --profile; see lumattr " + command + " --help");
  }
  std::vector<ProfileFault> faults;
  Profile profile = options.profile.empty() ? decoding::ProfileOfFormulas(options.formulas, faults)
                                            : decoding::LoadProfile(options.profile, faults);
  if (!faults.empty()) {
    Refuse(options, faults, context);
  }
  profile.reader.allowMissingChecksum |= options.allowMissingChecksum;
  if (LoadDefinitions(options.definitions, context)) {
    decoding::ApplyDisplayNames(profile, CAttribDefMap::GetAttribDefMap());
  }
  return profile;
}

std::string FaultText(const std::string& file, const ProfileFault& fault) {
  std::string text = Printable(FromUtf8(file)) + ":" + std::to_string(fault.line) + ":" +
                     std::to_string(fault.column) + ": " + fault.found;
  if (!fault.expected.empty()) {
    text += "; expected " + fault.expected;
  }
  if (!fault.suggestion.empty()) {
    text += "; did you mean " + Quoted(FromUtf8(fault.suggestion)) + "?";
  }
  return text;
}

}  // namespace lum::tool
