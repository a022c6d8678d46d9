// The framework's part: strings, string arrays, text files and the registration of modules.
#pragma once

#include <vector>

#include "platform/MemoryFiles.h"
#include "platform/MinimalString.h"

class CStringArray {
 public:
  int GetSize() const noexcept { return static_cast<int>(m_texts.size()); }
  bool IsEmpty() const noexcept { return m_texts.empty(); }
  const CString& GetAt(int index) const { return m_texts[static_cast<std::size_t>(index)]; }
  const CString& operator[](int index) const { return GetAt(index); }
  int Add(const CString& text) {
    m_texts.push_back(text);
    return GetSize() - 1;
  }
  void RemoveAll() { m_texts.clear(); }

 private:
  std::vector<CString> m_texts;
};

/// Reads a file in memory line by line.
class CStdioFile {
 public:
  enum OpenFlags : unsigned int {
    modeRead = 0x0000,
    shareDenyWrite = 0x0020,
    typeText = 0x4000,
  };

  /// False when there is no such file.
  bool Open(const wchar_t* path, unsigned int flags);
  bool ReadString(CString& line) { return m_lines.Next(line); }
  void Close() { m_lines = MemoryFileLines(); }

 private:
  MemoryFileLines m_lines;
};

struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;

struct AFX_EXTENSION_MODULE {
  bool bInitialized;
  HINSTANCE hModule;
};

/// False when the module is registered already.
bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance);
/// Deletes the module's CDynLinkLibrary objects.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, bool all);

class CDynLinkLibrary {
 public:
  explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& module);

  const AFX_EXTENSION_MODULE& Module() const noexcept { return m_module; }
  static int Count();

 private:
  AFX_EXTENSION_MODULE& m_module;
};
