// What the tests of FileObject share: loading bytes, the bytes a save gives, and a section's items
// as one text.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/FileObject.h"
#include "platform/TextEncoding.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

/// How lines end in files that are made anew.
#if defined(_WIN32)
inline constexpr const char* kSystemLineEnd = "\r\n";
#else
inline constexpr const char* kSystemLineEnd = "\n";
#endif

/// The text with the system's line ends for its line feeds.
inline std::string WithSystemLineEnds(std::string_view text) {
  std::string result;
  for (const char ch : text) {
    result += ch == '\n' ? kSystemLineEnd : std::string(1, ch);
  }
  return result;
}

/// The text in the ANSI code page.
inline std::string AnsiBytes(const CString& text) { return WideToAnsi(text).GetString(); }

class FileObjectTesting : public testing::Test {
 protected:
  FileObject Loaded(std::string_view bytes) {
    WriteBytes(m_folder.File("loaded"), bytes);
    FileObject file;
    EXPECT_TRUE(file.Load(PathText(m_folder.File("loaded"))));
    return file;
  }

  std::string Saved(FileObject& file) {
    EXPECT_TRUE(file.Save(PathText(m_folder.File("saved")), {FileConflict::Overwrite}));
    EXPECT_EQ(file.LastError(), L"");
    return ReadBytes(m_folder.File("saved"));
  }

  /// "key=value" of every item of the walk, each followed by a blank.
  static std::string Items(const FileObject& file, const CString& section) {
    FobjSection walk;
    CString key = L"untouched";
    CString value = L"untouched";
    CString text;
    for (bool found = file.GetFirstMapEntry(walk, section, key, value); found;
         found = file.GetNextMapEntry(walk, key, value)) {
      text += key + L"=" + value + L" ";
    }
    return WideToUtf8(text).GetString();
  }

  static CString Value(const FileObject& file, const CString& section, const CString& key) {
    CString value = L"untouched";
    const bool found = file.GetItem(section, key, value);
    EXPECT_EQ(found, value != L"untouched");
    return value;
  }

  CTemporaryFolder m_folder;
};
