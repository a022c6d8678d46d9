// FileObject: the interface to a document (FileDocument.h) and its file.
#include "platform/FileObject.h"

#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/portable/AtomicFile.h"
#include "platform/portable/FileBytes.h"
#include "platform/portable/FileDocument.h"
#include "platform/portable/FileObjectText.h"
#include "platform/portable/LineSyntax.h"

using lum::detail::CFileDocument;
using lum::detail::CFileRecord;
using lum::detail::CPoolIndex;
using lum::detail::IsWritableKey;
using lum::detail::IsWritableSectionName;
using lum::detail::IsWritableValue;
using lum::detail::kNoIndex;

// Made when it is first changed: a new object and one that was moved from have none.
struct FileObject::Document {
  CFileDocument content;
  CString lastError;

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
bool CanHold(const CFileDocument& content, CPoolIndex section, const CString& key,
             const CString& value) {
  if (IsWritableKey(key) && IsWritableValue(value)) {
    return true;
  }
  const CFileRecord* item = section == kNoIndex ? nullptr : content.FindItem(section, key);
  return item != nullptr && item->value == value;
}

bool CanHold(const CFileDocument& content, CPoolIndex section, const CFileDocument::Items& items) {
  for (const auto& [key, value] : items) {
    if (!CanHold(content, section, key, value)) {
      return false;
    }
  }
  return true;
}

bool ReadItem(const CFileDocument& content, CPoolIndex item, CString& key, CString& value) {
  if (item == kNoIndex) {
    return false;
  }
  key = content.Record(item).key;
  value = content.Record(item).value;
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
    std::string bytes;
    if (!lum::detail::ReadWholeFile(path, kMaxFileBytes, bytes, reason)) {
      return false;
    }
    document.content =
        lum::detail::ParseFile(std::make_shared<const std::string>(std::move(bytes)));
    return true;
  });
}

bool FileObject::Save(const CString& path) {
  Document& document = Document::Of(*this);
  return Attempt(L"write", path, document.lastError, [&](CString& reason) {
    std::string bytes;
    if (!lum::detail::WriteFile(document.content, bytes, reason) ||
        !lum::detail::WriteFileAtomically(path, bytes, reason)) {
      return false;
    }
    document.content.ForgetPlaces();
    return true;
  });
}

const CString& FileObject::LastError() const noexcept { return Document::Of(*this).lastError; }

TextFileEncoding FileObject::Encoding() const noexcept {
  return Document::Of(*this).content.Encoding();
}

std::vector<FileObjectLine> FileObject::LoadedLines() const {
  const CFileDocument& content = Document::Of(*this).content;
  return lum::detail::DescribeLines(content.LoadedFile(), content.Encoding());
}

// ---- Sections

bool FileObject::CreateSection(const CString& section, bool clear) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  if (found != kNoIndex) {
    if (clear) {
      content.ReplaceItems(found, {});
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
  CFileDocument& content = Document::Of(*this).content;
  const CFileDocument& source = Document::Of(from).content;
  const CPoolIndex sourceSection = source.FindSection(section);
  const CFileDocument::Items items =
      sourceSection == kNoIndex ? CFileDocument::Items() : source.AllItems(sourceSection);
  const CPoolIndex found = content.FindSection(section);
  if ((found == kNoIndex && !IsWritableSectionName(section)) || !CanHold(content, found, items)) {
    return false;
  }
  if (found != kNoIndex || sourceSection != kNoIndex) {
    content.ReplaceItems(content.FindOrAddSection(section), items);
  }
  return true;
}

// ---- Items

bool FileObject::SetItem(const CString& section, const CString& key, const CString& value,
                         bool create) {
  if (!IsWritableKey(key) || !IsWritableValue(value)) {
    return false;
  }
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  if (!create) {
    return found != kNoIndex && content.ReplaceItem(found, key, value);
  }
  if (found == kNoIndex && !IsWritableSectionName(section)) {
    return false;
  }
  content.PutItem(content.FindOrAddSection(section), key, value);
  return true;
}

bool FileObject::GetItem(const CString& section, const CString& key, CString& value) const {
  const CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  const CFileRecord* item = found == kNoIndex ? nullptr : content.FindItem(found, key);
  if (item == nullptr) {
    return false;
  }
  value = item->value;
  return true;
}

bool FileObject::RemoveItem(const CString& section, const CString& key) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  return found != kNoIndex && content.RemoveItem(found, key);
}

bool FileObject::RenameItem(const CString& section, const CString& key, const CString& newKey) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  return found != kNoIndex && IsWritableKey(newKey) && content.RenameItem(found, key, newKey);
}

bool FileObject::InsertItem(const CString& section, const CString& beforeKey, const CString& key,
                            const CString& value) {
  CFileDocument& content = Document::Of(*this).content;
  const CPoolIndex found = content.FindSection(section);
  return found != kNoIndex && IsWritableKey(key) && IsWritableValue(value) &&
         content.InsertItem(found, beforeKey, key, value);
}

bool FileObject::GetFirstMapEntry(FobjSection& walk, const CString& section, CString& key,
                                  CString& value) const {
  const CFileDocument& content = Document::Of(*this).content;
  walk = FobjSection();
  const CPoolIndex found = content.FindSection(section);
  const CPoolIndex item =
      found == kNoIndex ? kNoIndex : content.NextItem(content.FirstHeader(found));
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
