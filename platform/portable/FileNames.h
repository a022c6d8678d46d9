// The names of the files that saving makes beside a file.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>

namespace lum::detail {

/// How the names begin that new files have until they replace the file. What comes behind has less
/// than 55 characters: no system takes names of more than 255.
inline std::filesystem::path::string_type TemporaryBeginning(const std::filesystem::path& file) {
  constexpr std::size_t kMostOfName = 192;
  const std::filesystem::path name = file.filename().native().substr(0, std::size_t{kMostOfName});
  return std::filesystem::path(".").concat(name.native()).concat(".saving-").native();
}

/// The name that an old file has for a moment where a system replaces files in two steps.
inline std::filesystem::path ReplacedName(std::filesystem::path temporary) {
  return temporary.concat("-old");
}
inline bool IsReplaced(const std::filesystem::path& leftover) {
  return leftover.native().ends_with(std::filesystem::path("-old").native());
}

/// Where a previous version of a file stands; 1 is the newest.
inline std::filesystem::path VersionOf(std::filesystem::path file, int version) {
  return file.concat(".bak" + std::to_string(version));
}

}  // namespace lum::detail
