// What the tests of WriteFileAtomically share: a folder to write into and the error of the last
// write.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/portable/AtomicFile.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

class AtomicFileTesting : public testing::Test {
 protected:
  bool Write(const std::filesystem::path& path, std::string_view bytes) {
    m_error = L"untouched";
    return lum::detail::WriteFileAtomically(PathText(path), bytes, m_error);
  }

  std::string Why() const { return CStringA(m_error).GetString(); }

  CTemporaryFolder m_folder;
  CString m_error;
};
