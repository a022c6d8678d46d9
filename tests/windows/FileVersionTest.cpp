// The version resources of the libraries and the tool, as the system reads them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/windows/Library.h"

namespace {

using lum::test::ProgramFolder;

class FileVersion : public testing::TestWithParam<const wchar_t*> {
 protected:
  void SetUp() override {
    const std::filesystem::path file = ProgramFolder() / GetParam();
    m_data.resize(::GetFileVersionInfoSizeW(file.c_str(), nullptr));
    ASSERT_FALSE(m_data.empty()) << "no version resource";
    ASSERT_TRUE(
        ::GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(m_data.size()), m_data.data()));
  }

  template <typename T>
  const T* Query(const std::wstring& path) {
    void* found = nullptr;
    UINT size = 0;
    return ::VerQueryValueW(m_data.data(), path.c_str(), &found, &size) != 0
               ? static_cast<const T*>(found)
               : nullptr;
  }

  // In US English, in Unicode.
  std::wstring Text(const std::wstring& name) {
    const wchar_t* text = Query<wchar_t>(L"\\StringFileInfo\\040904b0\\" + name);
    return text == nullptr ? L"none" : text;
  }

  std::vector<char> m_data;
};

TEST_P(FileVersion, IsThatOfTheProject) {
  const auto* info = Query<VS_FIXEDFILEINFO>(L"\\");
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->dwSignature, 0xFEEF04BDu);
  EXPECT_EQ(info->dwFileVersionMS, 0x00050005u);
  EXPECT_EQ(info->dwFileVersionLS, 0x00010000u);
  EXPECT_EQ(info->dwProductVersionMS, 0x00050005u);
  EXPECT_EQ(info->dwProductVersionLS, 0x00010000u);
  EXPECT_EQ(Text(L"FileVersion"), L"5.5.1.0");
  EXPECT_EQ(Text(L"ProductVersion"), L"5.5.1.0");
}

TEST_P(FileVersion, NamesTheFileAndTheProduct) {
  EXPECT_EQ(Text(L"OriginalFilename"), GetParam());
  EXPECT_EQ(Text(L"ProductName"), L"LumAttributes");
  EXPECT_NE(Text(L"FileDescription"), L"none");
}

INSTANTIATE_TEST_SUITE_P(Files, FileVersion,
                         testing::Values(L"LumPlatform.dll", L"LumAttributes.dll", L"lumattr.exe"));

}  // namespace
