// CAttribDefMap: the table of attribute definitions and the registry of list-filling functions.
//
// A definition file has one definition a line, comma separated, and may give an attribute the
// control-attribute text of its editing control in a line of its own:
//
//     // mnemonic,id,display name,value type,control type,bitmap,default value
//     DepthLimit,17,Depth limit,103,2,,12.5
//     @DepthLimit,0,100,0.5
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "definitions/AttribDefRec.h"

/// Definitions by mnemonic and by identifier. Copies of a table share its records. Queries that
/// answer through an output leave it unchanged when they return false, except where said.
///
/// Threads: meant to be loaded once and then read; queries, GetAttribDefRec too, may run in several
/// threads while none loads, assigns or registers, and while the translator does not change.
class LUM_ATTRIBUTES_API CAttribDefMap {
 public:
  /// Fills a list with the choices of a list-type control.
  using FillFunction = void (*)(CStringArray&);

  /// No file may exhaust the memory of its host: a definition or control-attribute line of more
  /// characters is left out and counts as one that made no value, and a load ends with false at the
  /// first definition line after so many records. Both are far above what definitions need:
  /// identifiers have 16 bits.
  enum Limits : int {
    kMaxLineLength = 1 << 24,
    kMaxRecords = 1 << 20,
  };

  CAttribDefMap();
  CAttribDefMap(const CAttribDefMap& other);
  CAttribDefMap& operator=(const CAttribDefMap& other);
  virtual ~CAttribDefMap();

  /// The process-wide table, made empty on the first call (thread-safe) and destroyed when the
  /// library is unloaded.
  static CAttribDefMap& GetAttribDefMap();

  /// Replaces the records by those of a definition file; control-attribute texts of earlier loads
  /// stay until the file redefines them, and so do records that callers still hold. With
  /// `translate`, control-attribute texts are replaced by their translations when the language is
  /// foreign. A file that cannot be opened is reported as a FileError under "General", gives false
  /// and changes nothing. Otherwise the result says whether the last definition line's type code
  /// made a value (true when there is no definition line); every record is loaded either way. When
  /// memory runs out midway, std::bad_alloc leaves the records of the lines before.
  bool LoadDefFile(CString fileName, bool translate);

  /// The number of records, definitions that a later line took over included.
  int Count() const noexcept;
  /// The record at a place of the file's order. Precondition: 0 <= index < Count().
  CAttribDefRec const& operator[](int index) const;
  /// Whether a load ever succeeded.
  bool FileInitialised() const noexcept { return m_initialised; }

  /// The display name, translated when the language is foreign and a translation exists (by
  /// mnemonic even when the table does not hold it).
  bool GetAttribName(CString mnemonic, CString& name) const;
  bool GetAttribName(unsigned short id, CString& name) const;
  /// The value type. By mnemonic, `type` becomes TYPE_UNDEFINED when there is no definition, and
  /// "OrderInfo" is always known with that type.
  bool GetAttribType(CString mnemonic, CLumType::LUM_TYPE& type) const;
  bool GetAttribType(unsigned short id, CLumType::LUM_TYPE& type) const;
  bool GetAttribControlType(CString mnemonic, int& controlType) const;
  bool GetAttribControlType(unsigned short id, int& controlType) const;
  bool GetAttribID(CString mnemonic, unsigned short& id) const;
  bool GetAttribMnemo(unsigned short id, CString& mnemonic) const;
  bool GetBitmapFilename(CString const& mnemonic, CString& fileName) const;
  /// The control-attribute text: the translation when the language is foreign and there is one,
  /// else the file's, with the blanks around its items removed. False with `text` emptied when
  /// there is none.
  bool GetCtlAttribs(CString mnemonic, CString& text) const;
  /// The last definition of a key, owned by the table, or null.
  CAttribDefRec* GetAttribDefRec(CString mnemonic);
  CAttribDefRec* GetAttribDefRec(unsigned short id);

  /// Calls the function registered under a name; false, with the list untouched, when there is
  /// none.
  bool FillList(CString const& listName, CStringArray& list);
  /// Registers a function, in place of an earlier one of that name. Always true.
  bool RegisterFunctionListItem(CString const& listName, FillFunction fill);
  bool RemoveFunctionListItem(CString const& listName);

 protected:
  /// Whether a line, taken as it is, is empty or begins with "//".
  bool IsCommentOrBlank(CString line) const;
  /// Whether a line, trimmed, begins with "@".
  bool IsCtlTypeAttrib(CString line) const;
  /// Splits a definition line. An item that cannot be read leaves its output unchanged; `ok` says
  /// whether a default value was made. The caller owns `defaultValue`.
  void GetAttributeItems(CString const& line, CString& mnemonic, unsigned short& id, CString& name,
                         int& type, int& controlType, CString& bitmapFile, CLumType*& defaultValue,
                         bool& ok);
  /// Makes the default value from the items after the sixth. The caller owns `value`, which is null
  /// when the type code makes none; `ok` says whether one was made.
  void GetDefaultValue(CLumString const& items, int type, CLumType*& value, bool& ok);

 private:
  struct LoadState;
  struct Index;

  void LoadLine(const CString& line, LoadState& state);
  void LoadDefinitionLine(const CString& line, LoadState& state);
  void LoadControlLine(const CString& line, bool translate);
  void Retire();
  int NextIndex() const noexcept { return static_cast<int>(m_records.size()); }
  CAttribDefRec* Lookup(const CString& mnemonic) const;
  CAttribDefRec* Lookup(unsigned short id) const;

  std::vector<std::shared_ptr<CAttribDefRec>> m_records;
  std::unique_ptr<Index> m_index;
  std::map<CString, CString> m_ctlAttribs;
  bool m_initialised = false;
  std::map<CString, FillFunction> m_functionLists;
  /// The records of earlier loads: callers may still hold them.
  std::vector<std::shared_ptr<CAttribDefRec>> m_retired;
};
