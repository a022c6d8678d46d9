// Files of the harnesses: one that takes the bytes of the input and one for what is saved.
#pragma once

#include <string>
#include <string_view>

#include "tests/TemporaryFolder.h"

namespace lum::fuzz {

class CFuzzFiles {
 public:
  /// The process's own, in the folder for temporary files.
  static const CFuzzFiles& Instance() {
    static const CFuzzFiles files;
    return files;
  }

  void WriteInput(std::string_view bytes) const { WriteBytes(m_folder.File("input"), bytes); }
  CString Input() const { return PathText(m_folder.File("input")); }
  CString Saved() const { return PathText(m_folder.File("saved")); }
  std::string ReadSaved() const { return ReadBytes(m_folder.File("saved")); }

 private:
  CTemporaryFolder m_folder;
};

}  // namespace lum::fuzz
