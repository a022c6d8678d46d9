// What the tests of ReadWholeFile share: a folder, and what the last read gave.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/portable/FileBytes.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

class FileBytesTesting : public testing::Test {
 protected:
  bool Read(const std::filesystem::path& path, std::size_t limit) {
    m_bytes = "untouched";
    m_error = L"";
    return lum::detail::ReadWholeFile(PathText(path), limit, m_bytes, m_error);
  }

  CTemporaryFolder m_folder;
  std::string m_bytes;
  CString m_error;
};
