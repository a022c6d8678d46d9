// lumattr restore: lists the previous versions of a file and brings one of them back.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/lumattr/Columns.h"
#include "tools/lumattr/Commands.h"
#include "tools/lumattr/ConfigFile.h"
#include "tools/lumattr/Json.h"
#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

constexpr const char* kFooter =
    "Without --to, lists the contents that the file had before, the newest first, with the\n"
    "number of items in which each differs from the file as it is.\n"
    "What is in the file when a version is restored becomes version 1.\n"
    "Examples:\n"
    "  lumattr restore survey.cfg\n"
    "  lumattr restore survey.cfg --to 2";

struct RestoreOptions {
  std::string file;
  int version = 0;
  bool json = false;
};

struct VersionInfo {
  FileVersion version;
  std::string time;
  std::uintmax_t size = 0;
  std::string differences;  ///< Empty when it or the file itself cannot be read.
};

using ItemMap = std::map<std::pair<std::string, std::string>, std::string>;

ItemMap ItemsOf(const FileObject& file) {
  ItemMap items;
  for (const CString& section : file.SectionNames()) {
    FobjSection walk;
    CString key;
    CString value;
    for (bool found = file.GetFirstMapEntry(walk, section, key, value); found;
         found = file.GetNextMapEntry(walk, key, value)) {
      items[{ToUtf8(section), ToUtf8(key)}] = ToUtf8(value);
    }
  }
  return items;
}

int CountDifferences(const ItemMap& a, const ItemMap& b) {
  int count = 0;
  for (const auto& [key, value] : a) {
    const auto other = b.find(key);
    count += other == b.end() || other->second != value ? 1 : 0;
  }
  for (const auto& [key, value] : b) {
    count += a.contains(key) ? 0 : 1;
  }
  return count;
}

std::filesystem::path ToPath(const CString& path) {
  const std::string text = ToUtf8(path);
  return std::u8string(text.begin(), text.end());
}

std::string TwoDigits(long long number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

// In UTC, as in ISO 8601.
std::string TimeText(std::filesystem::file_time_type fileTime) {
  using std::chrono::floor;
  const auto time = floor<std::chrono::seconds>(std::chrono::file_clock::to_sys(fileTime));
  const auto day = floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  return std::to_string(static_cast<int>(date.year())) + '-' +
         TwoDigits(static_cast<unsigned int>(date.month())) + '-' +
         TwoDigits(static_cast<unsigned int>(date.day())) + ' ' + TwoDigits(clock.hours().count()) +
         ':' + TwoDigits(clock.minutes().count()) + ':' + TwoDigits(clock.seconds().count());
}

VersionInfo Describe(const FileVersion& version, const FileObject* current) {
  VersionInfo info{.version = version, .time = {}, .size = 0, .differences = {}};
  std::error_code error;
  const std::filesystem::path path = ToPath(version.path);
  if (const auto time = std::filesystem::last_write_time(path, error); !error) {
    info.time = TimeText(time);
  }
  if (const auto size = std::filesystem::file_size(path, error); !error) {
    info.size = size;
  }
  FileObject content;
  if (current != nullptr && content.Load(version.path)) {
    info.differences = std::to_string(CountDifferences(ItemsOf(content), ItemsOf(*current)));
  }
  return info;
}

std::vector<VersionInfo> DescribeAll(const std::string& path,
                                     const std::vector<FileVersion>& versions) {
  FileObject current;
  const bool isThere = current.Load(ArgumentText(path, "the file name"));
  std::vector<VersionInfo> infos;
  infos.reserve(versions.size());
  for (const FileVersion& version : versions) {
    infos.push_back(Describe(version, isThere ? &current : nullptr));
  }
  return infos;
}

void PrintJson(const std::string& file, const std::vector<VersionInfo>& infos,
               ToolContext& context) {
  CJson list = CJson::Array();
  for (const VersionInfo& info : infos) {
    CJson entry;
    entry.Set("version", info.version.number);
    entry.Set("path", ToUtf8(info.version.path));
    entry.Set("saved", info.time);
    entry.Set("bytes", info.size);
    entry.Set("differences",
              info.differences.empty() ? CJson() : CJson(std::stoi(info.differences)));
    list.Add(std::move(entry));
  }
  CJson json;
  json.Set("file", ToUtf8(FromUtf8(file)));
  json.Set("versions", std::move(list));
  context.out << json.Text() << '\n';
}

void PrintText(const RestoreOptions& options, const std::vector<VersionInfo>& infos,
               ToolContext& context) {
  if (infos.empty()) {
    context.out << "no previous versions of \"" << Printable(FromUtf8(options.file)) << "\"\n";
    return;
  }
  std::vector<TableRow> rows;
  rows.reserve(infos.size());
  for (const VersionInfo& info : infos) {
    rows.push_back({std::to_string(info.version.number), info.time, std::to_string(info.size),
                    info.differences.empty() ? "-" : info.differences});
  }
  PrintTable(context, {"VERSION", "SAVED (UTC)", "BYTES", "DIFFERENT ITEMS"}, rows);
}

FileVersion RequireVersion(const RestoreOptions& options,
                           const std::vector<FileVersion>& versions) {
  const auto found =
      std::find_if(versions.begin(), versions.end(),
                   [&](const FileVersion& version) { return version.number == options.version; });
  if (found != versions.end()) {
    return *found;
  }
  throw ToolError("no version " + std::to_string(options.version) + " of \"" +
                  Printable(FromUtf8(options.file)) + "\"; see lumattr restore without --to");
}

// One version more is kept than there are, so that restoring loses none.
void Restore(const RestoreOptions& options, const std::vector<FileVersion>& versions,
             ToolContext& context) {
  const FileVersion version = RequireVersion(options, versions);
  FileObject content;
  if (!content.Load(version.path)) {
    throw ToolError(Printable(content.LastError()));
  }
  const int keep = std::min(versions.back().number + 1, int{FileObject::kMaxPreviousVersions});
  SaveConfigFile(content, options.file, {.keep = keep}, FileConflict::Overwrite);
  context.out << "restored version " << options.version << " of \""
              << Printable(FromUtf8(options.file)) << "\"\n";
}

void Run(const RestoreOptions& options, ToolContext& context) {
  const std::vector<FileVersion> versions =
      FileObject::PreviousVersions(ArgumentText(options.file, "the file name"));
  if (options.version > 0) {
    Restore(options, versions, context);
    return;
  }
  const std::vector<VersionInfo> infos = DescribeAll(options.file, versions);
  if (options.json) {
    PrintJson(options.file, infos, context);
  } else {
    PrintText(options, infos, context);
  }
}

}  // namespace

void AddRestoreCommand(const CCommand& app, ToolContext& context) {
  auto options = std::make_shared<RestoreOptions>();
  const CCommand command =
      app.Subcommand("restore", "List previous versions of a file, bring one back");
  command.Option("FILE", options->file, "The file, which may be missing").Required();
  command.Option("--to", options->version, "The version to bring back")
      .TypeName("N")
      .Within(1, int{FileObject::kMaxPreviousVersions});
  command.Flag("--json", options->json, "List as JSON");
  command.Footer(kFooter);
  command.Action([options, &context] { Run(*options, context); });
}

}  // namespace lum::tool
