// What the tests of faulty saves share: situations in which a document is saved, and what must hold
// of the folder afterwards.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/portable/FileCalls.h"
#include "platform/portable/FileObjectText.h"
#include "platform/portable/FileSaving.h"
#include "tests/TemporaryFolder.h"
#include "tests/TextPrinting.h"

namespace lum::testing {

/// A document and its file, without a FileObject in between, so that the calls can be chosen.
struct CSavedDocument {
  detail::CFileDocument document;
  detail::CFileOrigin origin;
  CString error;

  void Load(const std::filesystem::path& path) {
    detail::CFileCalls calls;
    const auto bytes = std::make_shared<const std::string>(ReadBytes(path));
    document = detail::ParseFile(bytes);
    origin = {.loaded = {detail::FilePlace(PathText(path), calls), bytes},
              .savedElsewhere = {},
              .unreadPlace = {}};
  }

  void Set(const CString& section, const CString& key, const CString& value) {
    document.PutItem(document.FindOrAddSection(section), detail::CFileTextOf(key),
                     detail::CFileTextOf(value));
  }

  FileSaveResult Save(const std::filesystem::path& path, const FileSaveOptions& options,
                      detail::CFileCalls& calls) {
    error.Empty();
    return detail::SaveDocument(document, origin, PathText(path), options, error, calls);
  }

  std::string Bytes() const {
    std::string bytes;
    CString ignored;
    EXPECT_TRUE(detail::WriteFile(document, bytes, ignored));
    return bytes;
  }
};

/// A situation in which a document is saved.
struct CSituation {
  const char* name;
  bool exists = true;
  bool isLink = false;
  bool othersChanged = false;  ///< Another program has changed the file since it was loaded.
  int versions = 0;
};

inline const CSituation kSituations[] = {
    {"existing"},
    {"new", false},
    {"through links", true, true},
    {"new, through a link", false, true},
    {"three versions", true, false, false, 3},
    {"one version", true, false, false, 1},
    {"merge", true, false, true},
    {"merge, through links, with versions", true, true, true, 3},
};

inline void PrintTo(const CSituation& situation, std::ostream* out) { *out << situation.name; }

/// A folder in a situation, and the document that is to be saved.
class CSituated {
 public:
  explicit CSituated(const CSituation& situation) : m_situation(situation) {
    if (situation.isLink) {
      std::filesystem::create_directory(m_folder.File("links"));
      std::filesystem::create_symlink("../second", m_folder.File("links/first"));
      std::filesystem::create_symlink("file.cfg", m_folder.File("second"));
    }
    for (int version = 1; version <= situation.versions; ++version) {
      WriteBytes(Version(version), VersionBytes(version));
    }
    if (situation.exists) {
      WriteBytes(Target(), kLoaded);
      saved.Load(Path());
    }
    saved.Set(L"S", L"mine", L"1");
    if (situation.othersChanged) {
      WriteBytes(Target(), kTheirs);
    }
    m_mine = saved.Bytes();
  }

  CSavedDocument saved;

  FileSaveOptions Options() const { return {FileConflict::Merge, m_situation.versions}; }
  FileSaveResult Save(detail::CFileCalls& calls) { return saved.Save(Path(), Options(), calls); }

  std::filesystem::path Path() const {
    return m_situation.isLink ? m_folder.File("links/first") : Target();
  }
  std::filesystem::path Target() const { return m_folder.File("file.cfg"); }
  std::filesystem::path Version(int number) const {
    return m_folder.File("file.cfg.bak" + std::to_string(number));
  }

  /// The target's bytes; none when there is no file.
  std::optional<std::string> Content() const {
    return std::filesystem::exists(Target()) ? std::optional(ReadBytes(Target())) : std::nullopt;
  }
  std::optional<std::string> OldContent() const {
    return m_situation.exists
               ? std::optional<std::string>(m_situation.othersChanged ? kTheirs : kLoaded)
               : std::nullopt;
  }
  std::string NewContent() const { return m_situation.othersChanged ? kMerged : m_mine; }
  FileSaveResult Success() const {
    return m_situation.othersChanged ? FileSaveResult::Merged : FileSaveResult::Saved;
  }
  const std::string& Mine() const { return m_mine; }

  /// Files that saving has begun and not finished.
  std::size_t StrayCount() const {
    const std::filesystem::directory_iterator files(m_folder.Path());
    return static_cast<std::size_t>(std::count_if(begin(files), end(files), [](const auto& entry) {
      return entry.path().filename().string().find(".saving-") != std::string::npos;
    }));
  }

  bool LinksStand() const {
    return !m_situation.isLink || (std::filesystem::is_symlink(m_folder.File("links/first")) &&
                                   std::filesystem::is_symlink(m_folder.File("second")));
  }

  /// True when every previous version that must still be there is there, from the newest to the
  /// oldest, and nothing else. With `isReplaced`, the old content is one of them and the oldest may
  /// have gone.
  bool VersionsAreWhole(bool isReplaced) const {
    std::vector<std::string> found;
    for (int number = 1; number <= m_situation.versions + 1; ++number) {
      if (std::filesystem::exists(Version(number))) {
        found.push_back(ReadBytes(Version(number)));
      }
    }
    std::vector<std::string> all;
    if (m_situation.versions > 0) {
      all.push_back(*OldContent());
    }
    for (int version = 1; version <= m_situation.versions; ++version) {
      all.push_back(VersionBytes(version));
    }
    const std::vector<std::string> before(all.begin() + (all.empty() ? 0 : 1), all.end());
    const std::vector<std::string> after(all.begin(), all.end() - (all.empty() ? 0 : 1));
    return isReplaced ? found == after || found == all : found == before || found == all;
  }

  const CTemporaryFolder& Folder() const { return m_folder; }

 private:
  static constexpr const char* kLoaded = "; notes\n[S]\na=1\nb=2\n\n[T]\nc=3\n";
  static constexpr const char* kTheirs = "; other notes\n[S]\na=1\nb=20\ntheirs=5\n\n[T]\nc=3\n";
  static constexpr const char* kMerged =
      "; other notes\n[S]\na=1\nb=20\ntheirs=5\nmine=1\n\n[T]\nc=3\n";

  static std::string VersionBytes(int version) {
    return "[S]\nversion=" + std::to_string(version) + "\n";
  }

  CSituation m_situation;
  CTemporaryFolder m_folder;
  std::string m_mine;
};

}  // namespace lum::testing
