// What the libraries and the tool need to be loaded: each other and what every Windows has.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/windows/Library.h"

namespace {

using lum::test::ProgramFolder;

// A file mapped as the loader would map it, but with nothing of it run.
class CImage {
 public:
  explicit CImage(const std::filesystem::path& file)
      : m_module(::LoadLibraryExW(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES)) {}
  ~CImage() {
    if (m_module != nullptr) {
      ::FreeLibrary(m_module);
    }
  }
  CImage(const CImage&) = delete;
  CImage& operator=(const CImage&) = delete;

  bool IsMapped() const { return m_module != nullptr; }

  std::vector<std::string> Imports() const {
    const auto* dos = At<IMAGE_DOS_HEADER>(0);
    const auto* headers = At<IMAGE_NT_HEADERS64>(static_cast<DWORD>(dos->e_lfanew));
    const DWORD start =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    std::vector<std::string> names;
    for (const auto* entry = At<IMAGE_IMPORT_DESCRIPTOR>(start); entry->Name != 0; ++entry) {
      names.emplace_back(At<char>(entry->Name));
    }
    return names;
  }

 private:
  template <typename T>
  const T* At(DWORD offset) const {
    const void* place = reinterpret_cast<const char*>(m_module) + offset;
    return static_cast<const T*>(place);
  }

  HMODULE m_module;
};

struct Imported {
  const wchar_t* file;
  std::vector<std::string> libraries;
};

TEST(Imports, AreEachOtherAndWhatEveryWindowsHas) {
  const Imported rows[] = {
      {L"LumPlatform.dll", {"KERNEL32.dll", "msvcrt.dll"}},
      {L"LumAttributes.dll", {"KERNEL32.dll", "LumPlatform.dll", "msvcrt.dll"}},
      {L"lumattr.exe",
       {"KERNEL32.dll", "LumAttributes.dll", "LumPlatform.dll", "SHELL32.dll", "msvcrt.dll"}},
  };
  for (const Imported& row : rows) {
    const CImage image(ProgramFolder() / row.file);
    ASSERT_TRUE(image.IsMapped()) << ::GetLastError();
    EXPECT_THAT(image.Imports(), testing::UnorderedElementsAreArray(row.libraries));
  }
}

}  // namespace
