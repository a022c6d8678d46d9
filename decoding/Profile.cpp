#include "decoding/Profile.h"

#include <filesystem>
#include <system_error>

#include "decoding/DecodingError.h"
#include "decoding/ProfileReader.h"
#include "decoding/Utf8Text.h"
#include "definitions/AttribDefMap.h"

namespace lum::decoding {
namespace {

/// Before it is read: what is made of its lines takes many times its size.
void CheckSize(const std::string& path) {
  const std::filesystem::path file(std::u8string(path.begin(), path.end()));
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (!error && size > kMaxProfileBytes) {
    throw DecodingError("the profile " + Quoted(FromUtf8(path)) + " has " + std::to_string(size) +
                        " bytes; expected at most " + std::to_string(kMaxProfileBytes));
  }
}

FileObject LoadFile(const std::string& path) {
  CheckSize(path);
  FileObject file;
  if (!file.Load(FromUtf8(path))) {
    throw DecodingError(Printable(file.LastError()));
  }
  return file;
}

/// Lines that mean nothing, and bytes that are no text.
void AddLoadProblems(const FileObject& file, CProfileFaults& faults) {
  for (const FileObjectProblem& problem : file.LoadProblems(kMaxProfileFaults + 1)) {
    faults.Add({{}, problem.line, problem.column}, ToUtf8(problem.reason), "");
  }
}

}  // namespace

Profile LoadProfile(const std::string& path, std::vector<ProfileFault>& faults) {
  Profile profile;
  profile.path = path;
  CProfileFaults found(faults);
  const FileObject file = LoadFile(path);
  AddLoadProblems(file, found);
  CProfileReader reader(profile, found);
  for (const FileObjectLine& line : file.LoadedLines()) {
    if (found.IsFull()) {
      found.CutOff();
      break;
    }
    reader.Take(line);
  }
  reader.Finish();
  found.Finish();
  return profile;
}

void ApplyDisplayNames(Profile& profile, const CAttribDefMap& definitions) {
  for (MessageRule& message : profile.messages) {
    for (ColumnRule& column : message.columns) {
      CString name;
      if (definitions.GetAttribName(FromUtf8(column.name), name)) {
        column.displayName = ToUtf8(name);
      }
    }
  }
}

}  // namespace lum::decoding
