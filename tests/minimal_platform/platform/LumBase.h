// The base library's part: records, tokeniser, numerics, clock, errors, translations and sectioned
// files.
#pragma once

#include <cstdint>
#include <map>
#include <numbers>
#include <vector>

#include "platform/Framework.h"

// ---- Records

struct Point {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  friend bool operator==(const Point&, const Point&) = default;
};

class CDataId {
 public:
  unsigned short GetDataType() const { return m_dataType; }
  unsigned short GetVesselId() const { return m_vesselId; }
  unsigned short GetGroupId() const { return m_groupId; }
  unsigned short GetDeviceNum() const { return m_deviceNum; }
  void SetDataType(unsigned short value) { m_dataType = value; }
  void SetVesselId(unsigned short value) { m_vesselId = value; }
  void SetGroupId(unsigned short value) { m_groupId = value; }
  void SetDeviceNum(unsigned short value) { m_deviceNum = value; }

  friend bool operator==(const CDataId&, const CDataId&) = default;

 private:
  unsigned short m_dataType = 0;
  unsigned short m_vesselId = 0;
  unsigned short m_groupId = 0;
  unsigned short m_deviceNum = 0;
};

class CDataInfo {
 public:
  CDataInfo() = default;
  CDataInfo(const CDataId& id, unsigned short item, unsigned short channel) {
    SetInfo(id, item, channel);
  }

  const CDataId& GetDataId() const { return m_id; }
  unsigned short GetItem() const { return m_item; }
  unsigned short GetChannel() const { return m_channel; }
  void SetInfo(const CDataId& id, unsigned short item, unsigned short channel) {
    m_id = id;
    m_item = item;
    m_channel = channel;
  }

  /// Six numbers, joined by commas.
  CString GenerateString();
  /// False, with nothing changed, when the text is not exactly six numbers.
  bool SetFromString(const CString& text);

  friend bool operator==(const CDataInfo&, const CDataInfo&) = default;

 private:
  CDataId m_id;
  unsigned short m_item = 0;
  unsigned short m_channel = 0;
};

class CCompOffset {
 public:
  const CString& GetOffsetName() const { return m_name; }
  void SetOffsetName(const CString& name) { m_name = name; }
  void GetOffset(double& x, double& y, double& z) const {
    x = m_offset.x;
    y = m_offset.y;
    z = m_offset.z;
  }
  void SetOffset(double x, double y, double z) { m_offset = {x, y, z}; }
  const CDataId& GetOffsetDataId() const { return m_dataId; }
  void SetOffsetDataId(const CDataId& id) { m_dataId = id; }

  friend bool operator==(const CCompOffset&, const CCompOffset&) = default;

  unsigned int m_nOffsetId = 0;
  unsigned int m_nOffsetType = 0;

 private:
  CString m_name;
  Point m_offset;
  CDataId m_dataId;
};

/// Is told what the library has this platform do while it is loaded and unloaded: a test sets it.
/// Null for none.
extern void (*g_libraryObserver)(const char* event);
void TellLibraryObserver(const char* event);

/// Carried by values for their users; the library does not look into it.
class CLumUnitCnv {
 public:
  CLumUnitCnv() { TellLibraryObserver("unit converter built"); }
  CLumUnitCnv(double factor, double offset) : m_factor(factor), m_offset(offset) {}
  CLumUnitCnv(const CLumUnitCnv&) = default;
  CLumUnitCnv& operator=(const CLumUnitCnv&) = default;
  ~CLumUnitCnv() { TellLibraryObserver("unit converter destroyed"); }

  friend bool operator==(const CLumUnitCnv&, const CLumUnitCnv&) = default;

 private:
  double m_factor = 1.0;
  double m_offset = 0.0;
};

// ---- Texts

/// The items of a separated text.
class CLumString {
 public:
  CLumString(const CString& text, wchar_t separator, bool trim, bool merge)
      : m_separator(separator) {
    LoadStringW(text, trim, merge);
  }
  explicit CLumString(wchar_t separator) : m_separator(separator) {}

  void LoadStringW(const CString& text, bool trim, bool merge);
  int Count() const { return static_cast<int>(m_items.size()); }
  std::vector<CString> Items() const { return m_items; }

  /// False, with the output untouched, when there is no such item or it is not readable as the
  /// type.
  bool GetItem(int index, CString& value) const;
  bool GetItem(int index, bool& value) const;
  bool GetItem(int index, int& value) const;
  bool GetItem(int index, unsigned int& value) const;
  bool GetItem(int index, unsigned short& value) const;
  bool GetItem(int index, float& value) const;
  bool GetItem(int index, double& value) const;

  void Erase(int first, int count);
  CString String() const;

 private:
  std::vector<CString> m_items;
  wchar_t m_separator;
};

CString& operator<<(CString& text, int value);
/// The shortest text that reads back to the same number.
CString& operator<<(CString& text, double value);
CString& operator<<(CString& text, wchar_t value);
CString& operator<<(CString& text, const CString& value);

/// The marks of checksum lines.
inline constexpr const wchar_t* checksumKeys[] = {L"@@CHECKSUM=", L"##CRC32="};

// ---- Numbers and clock

inline constexpr double D_TO_R = std::numbers::pi / 180.0;

double Epsilon(double magnitude);
/// An angle in degrees, normalised to (-180, 180].
double modgeo(double degrees);
/// The value of a hexadecimal digit, or -1.
int HexVal(wchar_t digit);

class CExTime {
 public:
  /// Milliseconds since 1970-01-01 00:00 UTC.
  static double GetCurTime();
  /// UTC minus local time, in milliseconds.
  static long GetTimezone();

  /// For tests; null restores the system's.
  static void SetClock(double (*source)());
  static void SetTimezoneSource(long (*source)());
};

// ---- Errors

class Error {
 public:
  using Reporter = void (*)(const CString& category, const CString& message);

  explicit Error(const CString& message) : m_message(message) {}

  void Report(const char* category) const;
  /// Null restores the default, which writes to standard error. Returns the reporter before.
  static Reporter SetReporter(Reporter reporter);

 private:
  CString m_message;
};

class FileError : public Error {
 public:
  enum CODE { CANNOT_OPEN = 0 };

  FileError(const CString& path, int code);
};

// ---- Translations

class Translator {
 public:
  static Translator& Instance();

  bool IsLanguageForeign() { return m_isForeign; }
  void SetLanguageForeign(bool foreign) { m_isForeign = foreign; }
  /// Empty when there is no translation.
  CString GetAttribDefV2String(const CString& mnemonic) { return m_names[mnemonic]; }
  CString GetAttribDefV2CtrlString(const CString& mnemonic) { return m_ctrlTexts[mnemonic]; }
  void SetString(const CString& mnemonic, const CString& text) { m_names[mnemonic] = text; }
  void SetCtrlString(const CString& mnemonic, const CString& text) { m_ctrlTexts[mnemonic] = text; }
  void Clear() { *this = Translator(); }

 private:
  std::map<CString, CString> m_names;
  std::map<CString, CString> m_ctrlTexts;
  bool m_isForeign = false;
};

// ---- Sectioned files

/// The place of a walk: the item that comes next.
struct FobjSection {
  CString section;
  std::size_t next = 0;
};

/// Sections and their items in order, without comments. Look-ups are linear.
class FileObject {
 public:
  FileObject() = default;
  FileObject(const FileObject&) = default;
  FileObject& operator=(const FileObject&) = default;
  virtual ~FileObject() = default;

  /// False, with nothing changed, when there is no such file.
  bool Load(const CString& path);
  bool Save(const CString& path);

  /// False when the name cannot stand in a file.
  bool CreateSection(const CString& section, bool clear);
  bool HasSection(const CString& section) const;
  int ItemCount(const CString& section) const;
  /// False, with nothing changed, when the item is missing and `create` is false, or when it could
  /// not be read back from a file.
  virtual bool SetItem(const CString& section, const CString& key, const CString& value,
                       bool create);
  /// False, with the output untouched, when there is no such item.
  virtual bool GetItem(const CString& section, const CString& key, CString& value) const;
  /// False at the end, with the outputs untouched.
  bool GetFirstMapEntry(FobjSection& walk, const CString& section, CString& key,
                        CString& value) const;
  bool GetNextMapEntry(FobjSection& walk, CString& key, CString& value) const;
  /// Replaces the section's items by those of the same section of another file.
  bool CopySection(const CString& section, const FileObject& from);

 private:
  struct Item {
    CString name;
    CString value;
  };
  struct Section {
    CString name;
    std::vector<Item> items;
  };

  void ReadLine(CString line, CString& section);

  std::vector<Section> m_sections;
};
