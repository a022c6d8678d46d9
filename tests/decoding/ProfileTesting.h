// Profiles from texts, and what tests ask of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "decoding/Profile.h"
#include "platform/TextEncoding.h"
#include "tests/TemporaryFolder.h"

namespace lum::decoding {

inline Profile LoadText(std::string_view text, std::vector<ProfileFault>& faults) {
  const CTemporaryFolder folder;
  const std::filesystem::path file = folder.File("test.profile");
  WriteBytes(file, text);
  const std::u8string path = file.u8string();
  return LoadProfile(std::string(path.begin(), path.end()), faults);
}

/// "3:7: found | expected | suggestion"
inline std::string FaultLine(const ProfileFault& fault) {
  return std::to_string(fault.line) + ":" + std::to_string(fault.column) + ": " + fault.found +
         " | " + fault.expected + " | " + fault.suggestion;
}

inline std::vector<std::string> FaultLines(const std::vector<ProfileFault>& faults) {
  std::vector<std::string> lines;
  for (const ProfileFault& fault : faults) {
    lines.push_back(FaultLine(fault));
  }
  return lines;
}

/// A profile without faults; an exception otherwise.
inline Profile GoodProfile(std::string_view text) {
  std::vector<ProfileFault> faults;
  Profile profile = LoadText(text, faults);
  if (!faults.empty()) {
    throw std::runtime_error(FaultLine(faults.front()));
  }
  return profile;
}

}  // namespace lum::decoding
