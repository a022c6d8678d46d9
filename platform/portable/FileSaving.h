// Saving a document over a file that other programs may have changed since it was read.
#pragma once

#include <memory>
#include <string>

#include "platform/FileObject.h"
#include "platform/portable/FileDocument.h"
#include "platform/portable/FileUpdate.h"

namespace lum::detail {

/// A file and the content that a document has last read from it or written to it.
struct CKnownFile {
  CString place;  ///< See FilePlace(). Empty when no file is known.
  std::shared_ptr<const std::string> bytes;
};

/// The files behind a document.
struct CFileOrigin {
  CKnownFile loaded;
  CKnownFile savedElsewhere;  ///< The last one that was not the loaded one.
  CString unreadPlace;        ///< Of a file that was there and could not be loaded.
};

/// Saves as FileObject::Save does. The document and the origin change only when the new file is in
/// place: the document then has other programs' changes as well.
FileSaveResult SaveDocument(CFileDocument& document, CFileOrigin& origin, const CString& path,
                            const FileSaveOptions& options, CString& error, CFileCalls& calls);

}  // namespace lum::detail
