// What the tests of UpdateFile share: a folder to write into and the error of the last
// write.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "platform/portable/FileCalls.h"
#include "platform/portable/FileUpdate.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

class FileUpdateTesting : public testing::Test {
 protected:
  bool Write(const std::filesystem::path& path, std::string_view bytes) {
    return Write(PathText(path), bytes);
  }
  bool Write(const CString& path, std::string_view bytes) {
    m_error = L"untouched";
    lum::detail::CFileCalls calls;
    const auto content = std::make_shared<const std::string>(bytes);
    return lum::detail::UpdateFile(
               path, 0, [&](const lum::detail::CCurrentFile&, CString&) { return content; },
               m_error, calls) == lum::detail::FileUpdateResult::Done;
  }

  std::string Why() const { return CStringA(m_error).GetString(); }

  CTemporaryFolder m_folder;
  CString m_error;
};
