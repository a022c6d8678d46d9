// FileObject: a sectioned configuration file in memory; FobjSection: a walk over one section.
//
//     ; a comment
//     [Survey]
//     Unit=1,m
//     Sensor.Offset = 0,1.5
//
// Grammar, line by line: "[name]" opens a section; "key=value" is an item of the section above it
// (blanks and tabs around the key and before the value do not count, those after the value do); a
// line whose first character after blanks is ";" or that starts with "//" there is a comment;
// anything else is kept as it stands and has no meaning. Names and keys are compared exactly.
//
// Duplicates: a section that appears again continues the first; of a key that appears again the
// last line counts, a change writes that line, a removal takes every line of the key.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/FrameworkString.h"

class FileObject;

/// The place of a walk over a section. Valid while the FileObject lives and is not changed, other
/// than by setting values of keys that exist.
class FobjSection {
 private:
  friend class FileObject;
  std::size_t m_section = 0;
  std::size_t m_line = 0;
};

/// How a file's characters are written as bytes.
enum class TextFileEncoding {
  Utf8,
  Utf8WithMark,
  Utf16LittleEndian,
  Utf16BigEndian,
  Ansi,
};

/// One line of a loaded file, as it was read: for tools that report places.
struct FileObjectLine {
  enum class Kind { Blank, Comment, Section, Item, Unknown };

  Kind kind = Kind::Unknown;
  int number = 0;         ///< 1-based line in the file.
  CString section;        ///< The section the line stands in or opens; empty above the first.
  CString key;            ///< Of an item.
  CString value;          ///< Of an item.
  CString text;           ///< The whole line without its terminator.
  int keyColumn = 0;      ///< 1-based column of the key; 0 when it is no item.
  int valueColumn = 0;    ///< 1-based column of the value (one past the line when it is empty).
  bool validText = true;  ///< False when the line held bytes that its encoding does not allow.
};

/// A place in a loaded file that could not be read as what it should be. The line is kept all the
/// same.
struct FileObjectProblem {
  int line = 0;    ///< 1-based.
  int column = 0;  ///< 1-based, in characters.
  CString reason;
};

/// What a save does about a file that is not as this object last read or wrote it.
enum class FileConflict {
  /// Keeps the other program's changes and makes this object's own, item by item. Of an item that
  /// both changed, this object's is written.
  Merge,
  Refuse,     ///< Fails, with the file as it is.
  Overwrite,  ///< Replaces whatever is there.
};

struct FileSaveOptions {
  FileConflict onConflict = FileConflict::Merge;
  /// How many contents that the file had before are kept beside it, see PreviousVersions.
  int previousVersions = 0;
};

/// What became of a save.
enum class FileSaveResult {
  None,      ///< There was none.
  Saved,     ///< The file holds this object's content.
  Merged,    ///< As well, and this object has got another program's changes.
  Conflict,  ///< Refused: the file's content is not what this object knows.
  Failed,
};

/// A content that a file had before.
struct FileVersion {
  int number = 0;  ///< 1 is the newest.
  CString path;
};

/// An ordered set of sections, each an ordered set of items with constant-time look-up. Copies are
/// deep. Not synchronised.
class LUM_PLATFORM_API FileObject {
 public:
  /// A file larger than this is refused by Load: no input may exhaust its host's memory.
  static constexpr std::size_t kMaxFileBytes = std::size_t{1} << 30;
  /// Saving keeps no more previous versions than these.
  static constexpr int kMaxPreviousVersions = 99;

  FileObject();
  FileObject(const FileObject& other);
  FileObject(FileObject&& other) noexcept;
  FileObject& operator=(const FileObject& other);
  FileObject& operator=(FileObject&& other) noexcept;
  virtual ~FileObject();

  /// Replaces the content by a file's. False, with nothing changed, when the file cannot be read
  /// (missing, a directory, no permission, larger than kMaxFileBytes); LastError() says why.
  bool Load(const CString& path);

  /// Where the file that was loaded could not be read as text of its encoding or as a section, an
  /// item or a comment: the first `most` places.
  std::vector<FileObjectProblem> LoadProblems(std::size_t most = 100) const;

  /// Writes the file atomically and durably: a sibling file is written, flushed to disk and renamed
  /// over the old one, then the folder is flushed. A crash leaves the old file or the new one,
  /// whole. A symbolic link keeps pointing where it did; permissions stay. Encoding, byte order
  /// mark, line ends, comments, blank and unknown lines are those that were loaded, and a line that
  /// was not changed keeps its very bytes. A file that was not loaded is written as UTF-8 with the
  /// system's line ends.
  ///
  /// Savers of one file wait for each other, for ten seconds at most. When another program changed
  /// the file after this object loaded or saved it, `onConflict` decides. That holds for the file
  /// that was loaded and for the last other one that was saved; anything else that stands there is
  /// replaced. With Merge, a file that is missing, empty or ruined by now is written whole. After a
  /// merge, walks through the sections begin anew. A file of which Load could make nothing is only
  /// replaced with Overwrite.
  ///
  /// False, with the old file untouched, on any failure (also when a text cannot be written in the
  /// file's encoding); LastError() says why, LastSave() tells a conflict from the rest. Only when
  /// the system could not flush the folder is the new file already in place.
  bool Save(const CString& path, const FileSaveOptions& options);
  /// With the default options.
  bool Save(const CString& path);

  FileSaveResult LastSave() const noexcept;

  /// The contents of a file that saving has kept, the newest first. They stand beside the file that
  /// the path leads to, as "NAME.bak1", "NAME.bak2", and can be loaded like any other.
  static std::vector<FileVersion> PreviousVersions(const CString& path);

  /// Why the last Load or Save failed, as a text for the user; empty after a success.
  const CString& LastError() const noexcept;

  TextFileEncoding Encoding() const noexcept;

  /// Makes an empty section when it is not there; with `clear`, empties one that is. False when the
  /// name cannot stand in a file (line breaks, "]").
  bool CreateSection(const CString& section, bool clear);
  bool HasSection(const CString& section) const;
  /// Removes the section and all its lines. False when it is not there.
  bool RemoveSection(const CString& section);
  /// The names of all sections in order, each once.
  std::vector<CString> SectionNames() const;
  /// How many items the section has; 0 when it is not there.
  int ItemCount(const CString& section) const;

  /// Replaces an item's value. With `create`, a missing section or item is made: the item at the
  /// end of the section, or, after CopySection, in the place its line had in the loaded file as
  /// far as the order of the calls allows. False, with nothing changed, when it is missing and
  /// `create` is false, or when the text could not be read back from a file: a key that is empty,
  /// begins with "[", ";" or "//", holds "=" or a line break, or has blanks around it; a value with
  /// a line break. Blanks at the beginning of a value are kept until the file is loaded again.
  virtual bool SetItem(const CString& section, const CString& key, const CString& value,
                       bool create);
  /// Reads an item. False, with the output untouched, when there is none.
  virtual bool GetItem(const CString& section, const CString& key, CString& value) const;
  /// Removes an item. False when there is none.
  bool RemoveItem(const CString& section, const CString& key);

  /// Gives an item another key; its line keeps its place and every other byte. False when there is
  /// no such item, the new key exists or could not be read back.
  bool RenameItem(const CString& section, const CString& key, const CString& newKey);
  /// Makes an item right before another one. False when that one is missing, the key exists or the
  /// text could not be read back.
  bool InsertItem(const CString& section, const CString& beforeKey, const CString& key,
                  const CString& value);

  /// Walks the items of a section in order: false at the end, outputs then untouched.
  bool GetFirstMapEntry(FobjSection& walk, const CString& section, CString& key,
                        CString& value) const;
  bool GetNextMapEntry(FobjSection& walk, CString& key, CString& value) const;

  /// Replaces the section's items by those of the same section of another file (by none when it has
  /// no such section). Comments and blank lines stay, and a loaded line whose item is gone keeps
  /// its place for an item of that key until the next Save.
  bool CopySection(const CString& section, const FileObject& from);

  /// The lines of the file as it was loaded, whatever was changed since.
  std::vector<FileObjectLine> LoadedLines() const;

 private:
  struct Document;
  std::unique_ptr<Document> m_document;
};
