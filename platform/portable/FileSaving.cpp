#include "platform/portable/FileSaving.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/portable/FileMerge.h"
#include "platform/portable/FileObjectText.h"

namespace lum::detail {

namespace {

class CSave {
 public:
  CSave(CFileDocument& document, CFileOrigin& origin, const FileSaveOptions& options)
      : m_document(document), m_origin(origin), m_options(options) {}

  FileSaveResult Run(const CString& path, CString& error, CFileCalls& calls) {
    const int versions =
        std::clamp(m_options.previousVersions, 0, int{FileObject::kMaxPreviousVersions});
    const FileUpdateResult result = UpdateFile(
        path, versions,
        [this](const CCurrentFile& file, CString& reason) { return Make(file, reason); }, error,
        calls);
    if (result != FileUpdateResult::Failed) {
      TakeOver();
    }
    if (result != FileUpdateResult::Done) {
      return m_isConflict ? FileSaveResult::Conflict : FileSaveResult::Failed;
    }
    return m_isMerged ? FileSaveResult::Merged : FileSaveResult::Saved;
  }

 private:
  std::shared_ptr<const std::string> Make(const CCurrentFile& file, CString& error) {
    m_merged.reset();
    m_isConflict = false;
    m_place = file.Place(error);
    // A file that is not recognised would be replaced with all that others have changed.
    if (m_place.IsEmpty() || !Reconcile(file, error)) {
      return nullptr;
    }
    auto bytes = std::make_shared<std::string>();
    if (!WriteFile(m_merged ? *m_merged : m_document, *bytes, error)) {
      return nullptr;
    }
    m_bytes = std::move(bytes);
    return m_bytes;
  }

  // Decides what is to be written over the file as it is now.
  bool Reconcile(const CCurrentFile& file, CString& error) {
    if (m_options.onConflict == FileConflict::Overwrite) {
      return true;
    }
    if (m_place == m_origin.unreadPlace && file.Exists()) {
      return Refuse(L"it could not be read before, so its content is not known", error);
    }
    const CKnownFile* known = FindKnown();
    return known == nullptr || ReconcileWith(*known, file, error);
  }

  bool ReconcileWith(const CKnownFile& known, const CCurrentFile& file, CString& error) {
    std::string now;
    if (file.Exists() && !file.Read(FileObject::kMaxFileBytes, now, error)) {
      return false;
    }
    if (file.Exists() && now == *known.bytes) {
      return true;
    }
    if (m_options.onConflict == FileConflict::Refuse) {
      return Refuse(L"another program has changed it meanwhile", error);
    }
    CFileDocument theirs = ParseFile(std::make_shared<const std::string>(std::move(now)));
    // Nothing is left in a file that is missing, empty or ruined: that is no change to keep.
    if (HasItems(theirs)) {
      MergeChanges(ParseFile(known.bytes), m_document, theirs);
      m_merged = std::move(theirs);
    }
    return true;
  }

  bool Refuse(const wchar_t* reason, CString& error) {
    m_isConflict = true;
    error = reason;
    return false;
  }

  const CKnownFile* FindKnown() const {
    for (const CKnownFile* known : {&m_origin.loaded, &m_origin.savedElsewhere}) {
      if (known->place == m_place) {
        return known;
      }
    }
    return nullptr;
  }

  void TakeOver() {
    m_isMerged = m_merged.has_value();
    if (m_isMerged) {
      m_document = *std::move(m_merged);
    } else {
      m_document.ForgetPlaces();
    }
    CKnownFile& known =
        m_origin.loaded.place == m_place ? m_origin.loaded : m_origin.savedElsewhere;
    known = {m_place, std::move(m_bytes)};
    if (m_origin.unreadPlace == m_place) {
      m_origin.unreadPlace.Empty();
    }
  }

  CFileDocument& m_document;
  CFileOrigin& m_origin;
  const FileSaveOptions& m_options;
  CString m_place;
  std::optional<CFileDocument> m_merged;
  std::shared_ptr<const std::string> m_bytes;
  bool m_isConflict = false;
  bool m_isMerged = false;
};

}  // namespace

FileSaveResult SaveDocument(CFileDocument& document, CFileOrigin& origin, const CString& path,
                            const FileSaveOptions& options, CString& error, CFileCalls& calls) {
  return CSave(document, origin, options).Run(path, error, calls);
}

}  // namespace lum::detail
