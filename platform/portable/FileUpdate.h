// Replacing a file as a whole by what is made of it: under a lock that other savers respect, so
// that no change is lost, and so that a crash at any moment leaves the old file or the new one.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/FrameworkString.h"

namespace lum::detail {

class CFileCalls;

/// The file that is to be replaced, as it is while the lock is held.
class CCurrentFile {
 public:
  virtual ~CCurrentFile() = default;

  /// See FilePlace(). When it is empty, `error` says why.
  virtual CString Place(CString& error) const = 0;
  virtual bool Exists() const = 0;
  /// Reads the whole file. False, with `bytes` untouched, when that fails or when there are more
  /// than `limit` bytes; `error` then says why.
  virtual bool Read(std::size_t limit, std::string& bytes, CString& error) const = 0;
};

/// Makes what the file shall hold. Null, with the reason in `error`, leaves the file as it is. It
/// is called again when another program got in between.
using CMakeContent =
    std::function<std::shared_ptr<const std::string>(const CCurrentFile& file, CString& error)>;

/// What a step of a save came to. After Failed, WhyFailed() tells the reason.
enum class SaveStep {
  Done,
  Failed,
  Again,  ///< Another program was there: start from the beginning.
};

enum class FileUpdateResult {
  Done,
  Failed,  ///< The old file is whole, and nothing new is left beside it.
  InPlace  ///< The new file is there, but the system could not make its name durable.
};

/// Follows symbolic links, locks the file, lets its content be made, writes that into a new file
/// beside it, flushes it to disk, gives it the old one's permissions (and owner, as far as
/// allowed), renames it over the old one and flushes the folder. Only a regular file that may be
/// written is replaced. A new file appears whole under its name; one that another program made
/// meanwhile is not replaced unseen. With `versions` above 0 the old file stays as version 1, see
/// VersionOf(), and as many are kept. What killed savers of the same file left behind is removed.
///
/// Waits about ten seconds for another saver. On a file system without locks there is none. Unless
/// the result is Done, `error` says why.
FileUpdateResult UpdateFile(const CString& path, int versions, const CMakeContent& make,
                            CString& error, CFileCalls& calls);

/// ReadWholeFile() of a file that others may save meanwhile. Where a system replaces a file in two
/// steps it has no name between them: waits for a saver that is there, and takes the old file back
/// from one that was killed there.
bool ReadSavedFile(const CString& path, std::size_t limit, std::string& bytes, CString& error,
                   CFileCalls& calls);

/// Which file a path names, whatever the path's form: the folder and the name behind symbolic
/// links. Equal for two paths of one file, whether it exists or not. Empty when that cannot be
/// told.
CString FilePlace(const CString& path, CFileCalls& calls);

/// The file behind symbolic links, which may be missing.
std::filesystem::path FileBehindLinks(const CString& path, CFileCalls& calls);

}  // namespace lum::detail
