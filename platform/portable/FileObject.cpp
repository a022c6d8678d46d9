// FileObject: the interface to a document (FileDocument.h) and its file.
#include "platform/FileObject.h"

#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include "platform/portable/FileCalls.h"
#include "platform/portable/FileDocument.h"
#include "platform/portable/FileNames.h"
#include "platform/portable/FileObjectText.h"
#include "platform/portable/FileProblems.h"
#include "platform/portable/FileSaving.h"
#include "platform/portable/FileUpdate.h"
#include "platform/portable/LineSyntax.h"
#include "platform/portable/SystemFile.h"

using lum::detail::CFileCalls;
using lum::detail::CFileDocument;
using lum::detail::CFileText;
using lum::detail::CFileTextOf;
using lum::detail::CPoolIndex;
using lum::detail::IsWritableKey;
using lum::detail::IsWritableSectionName;
using lum::detail::IsWritableValue;
using lum::detail::kNoIndex;

// Made when it is first changed: a new object and one that was moved from have none.
struct FileObject::Document {
  CFileDocument content;
  lum::detail::CFileOrigin origin;
  CString lastError;
  FileSaveResult lastSave = FileSaveResult::None;

  static const Document empty;

  static const Document& Of(const FileObject& file) {
    return file.m_document ? *file.m_document : empty;
  }
  static Document& Of(FileObject& file) {
    if (!file.m_document) {
      file.m_document = std::make_unique<Document>();
    }
    return *file.m_document;
  }
};

const FileObject::Document FileObject::Document::empty;

namespace {

// Runs a step that fills in an error text. True, with the text empty, when the step succeeds.
template <typename Step>
bool Attempt(const wchar_t* what, const CString& path, CString& lastError, Step step) {
  CString reason;
  bool done = false;
  try {
    done = step(reason);
  } catch (const std::bad_alloc&) {
    reason = L"not enough memory";
  } catch (const std::length_error&) {
    reason = L"not enough memory";
  }
  lastError = done ? CString() : CString(L"cannot ") + what + L" \"" + path + L"\": " + reason;
  return done;
}

// An item that the file holds already may have been loaded from a line that nobody else could
// write.
bool CanHold(const CFileDocument& content, CPoolIndex section, const CFileText& key,
             const CFileText& value) {
  if (IsWritableKey(key) && IsWritableValue(value)) {
    return true;
  }
  const CPoolIndex item = section == kNoIndex ? kNoIndex : content.FindItem(section, key);
  return item != kNoIndex && content.Value(item) == value;
}

bool CanHoldItems(const CFileDocument& content, CPoolIndex section, const CFileDocument& from,
                  CPoolIndex fromSection) {
  CPoolIndex item = from.FirstItem(fromSection);
  for (; item != kNoIndex; item = from.NextItem(item)) {
    if (!CanHold(content, section, from.Key(item), from.Value(item))) {
      return false;
    }
  }
  return true;
}

bool ReadItem(const CFileDocument& content, CPoolIndex item, CString& key, CString& value) {
  if (item == kNoIndex) {
    return false;
  }
  ReadText(content.Key(item), key);
  ReadText(content.Value(item), value);
  return true;
}

}  // namespace

FileObject::FileObject() = default;
FileObject::FileObject(const FileObject& other)
    : m_document(other.m_document ? std::make_unique<Document>(*other.m_document) : nullptr) {}
FileObject::FileObject(FileObject&& other) noexcept = default;
FileObject& FileObject::operator=(const FileObject& other) {
  if (this != &other) {
    m_document = FileObject(other).m_document;
  }
  return *this;
}
FileObject& FileObject::operator=(FileObject&& other) noexcept = default;
FileObject::~FileObject() = default;

// ---- Files

bool FileObject::Load(const CString& path) {
  Document& document = Document::Of(*this);
  return Attempt(L"read", path, document.lastError, [&](CString& reason) {
    CFileCalls calls;
    const CString place = lum::detail::FilePlace(path, calls);
    std::string bytes;
    if (!lum::detail::ReadSavedFile(path, kMaxFileBytes, bytes, reason, calls)) {
      document.origin.unreadPlace = place;
      return false;
    }
    // Without it a later save could not tell that it replaces this very file.
    if (place.IsEmpty()) {
      reason = L"its folder cannot be examined";
      return false;
    }
    const auto file = std::make_shared<const std::string>(std::move(bytes));
    document.content = lum::detail::ParseFile(file);
    document.origin = {.loaded = {place, file}, .savedElsewhere = {}, .unreadPlace = {}};
    return true;
  });
}

std::vector<FileObjectProblem> FileObject::LoadProblems(std::size_t most) const {
  const CFileDocument& content = Document::Of(*this).content;
  return lum::detail::FindProblems(content.Store().Loaded(), content.Encoding(), most);
}

bool FileObject::Save(const CString& path) { return Save(path, FileSaveOptions()); }

bool FileObject::Save(const CString& path, const FileSaveOptions& options) {
  Document& document = Document::Of(*this);
  document.lastSave = FileSaveResult::Failed;
  return Attempt(L"write", path, document.lastError, [&](CString& reason) {
    CFileCalls calls;
    document.lastSave =
        lum::detail::SaveDocument(document.content, document.origin, path, options, reason, calls);
    return document.lastSave == FileSaveResult::Saved ||
           document.lastSave == FileSaveResult::Merged;
  });
}

FileSaveResult FileObject::LastSave() const noexcept { return Document::Of(*this).lastSave; }

std::vector<FileVersion> FileObject::PreviousVersions(const CString& path) {
  CFileCalls calls;
  const std::filesystem::path file = lum::detail::FileBehindLinks(path, calls);
  std::vector<FileVersion> versions;
  for (int number = 1; number <= kMaxPreviousVersions; ++number) {
    const std::filesystem::path version = lum::detail::VersionOf(file, number);
    std::error_code none;
    if (std::filesystem::is_regular_file(version, none)) {
      versions.push_back({number, lum::detail::PathText(version)});
    }
  }
  return versions;
}

const CString& FileObject::LastError() const noexcept { return Document::Of(*this).lastError; }

TextFileEncoding FileObject::Encoding() const noexcept {
  return Document::Of(*this).content.Encoding();
}

std::vector<FileObjectLine> FileObject::LoadedLines() const {
  const CFileDocument& content = Document::Of(*this).content;
  return lum::detail::DescribeLines(content.Store().Loaded(), content.Encoding());
}

// ---- Sections

bool FileObject::CreateSection(const CString& section, bool clear) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  if (found != kNoIndex) {
    if (clear) {
      content.ReplaceItems(found, Document::empty.content, kNoIndex);
    }
    return true;
  }
  if (!IsWritableSectionName(section)) {
    return false;
  }
  content.FindOrAddSection(section);
  return true;
}

bool FileObject::HasSection(const CString& section) const {
  return Document::Of(*this).content.FindSection(section) != kNoIndex;
}

bool FileObject::RemoveSection(const CString& section) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  if (found == kNoIndex) {
    return false;
  }
  content.RemoveSection(found);
  return true;
}

std::vector<CString> FileObject::SectionNames() const {
  return Document::Of(*this).content.SectionNames();
}

int FileObject::ItemCount(const CString& section) const {
  const CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  return found == kNoIndex ? 0 : static_cast<int>(content.ItemCount(found));
}

bool FileObject::CopySection(const CString& section, const FileObject& from) {
  if (&from == this) {
    return CopySection(section, FileObject(from));
  }
  CFileDocument& content = Document::Of(*this).content;
  const CFileDocument& source = Document::Of(from).content;
  const CPoolIndex sourceSection = source.FindSection(section);
  const CPoolIndex found = content.FindSection(section);
  if ((found == kNoIndex && !IsWritableSectionName(section)) ||
      !CanHoldItems(content, found, source, sourceSection)) {
    return false;
  }
  if (found != kNoIndex || sourceSection != kNoIndex) {
    content.ReplaceItems(content.FindOrAddSection(section), source, sourceSection);
  }
  return true;
}

// ---- Items

bool FileObject::SetItem(const CString& section, const CString& key, const CString& value,
                         bool create) {
  const CFileTextOf keyText(key);
  const CFileTextOf valueText(value);
  if (!IsWritableKey(keyText) || !IsWritableValue(valueText)) {
    return false;
  }
  CFileDocument& content = Document::Of(*this).content;
  CPoolIndex found = content.FindSection(section);
  if (!create) {
    return found != kNoIndex && content.ReplaceItem(found, keyText, valueText);
  }
  if (found == kNoIndex) {
    if (!IsWritableSectionName(section)) {
      return false;
    }
    found = content.FindOrAddSection(section);
  }
  content.PutItem(found, keyText, valueText);
  return true;
}

bool FileObject::GetItem(const CString& section, const CString& key, CString& value) const {
  const CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  const CPoolIndex item = found == kNoIndex ? kNoIndex : content.FindItem(found, CFileTextOf(key));
  if (item == kNoIndex) {
    return false;
  }
  ReadText(content.Value(item), value);
  return true;
}

bool FileObject::RemoveItem(const CString& section, const CString& key) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  return found != kNoIndex && content.RemoveItem(found, CFileTextOf(key));
}

bool FileObject::RenameItem(const CString& section, const CString& key, const CString& newKey) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  const CFileTextOf newText(newKey);
  return found != kNoIndex && IsWritableKey(newText) &&
         content.RenameItem(found, CFileTextOf(key), newText);
}

bool FileObject::InsertItem(const CString& section, const CString& beforeKey, const CString& key,
                            const CString& value) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  const CFileTextOf keyText(key);
  const CFileTextOf valueText(value);
  return found != kNoIndex && IsWritableKey(keyText) && IsWritableValue(valueText) &&
         content.InsertItem(found, CFileTextOf(beforeKey), keyText, valueText);
}

bool FileObject::GetFirstMapEntry(FobjSection& walk, const CString& section, CString& key,
                                  CString& value) const {
  const CFileDocument& content = Document::Of(*this).content;
  walk = FobjSection();
  const CPoolIndex found = content.FindSection(section);
  const CPoolIndex item = content.FirstItem(found);
  if (!ReadItem(content, item, key, value)) {
    return false;
  }
  walk.m_section = found;
  walk.m_line = item;
  return true;
}

bool FileObject::GetNextMapEntry(FobjSection& walk, CString& key, CString& value) const {
  // The first record is a header: a walk that stands there has not begun.
  if (walk.m_line == 0) {
    return false;
  }
  const CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex item = content.NextItem(static_cast<CPoolIndex>(walk.m_line));
  if (!ReadItem(content, item, key, value)) {
    return false;
  }
  walk.m_line = item;
  return true;
}
