// Reads through the C runtime, whose error numbers tell more than those of the C++ streams.
#include "platform/portable/FileBytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <system_error>

#include "platform/TextEncoding.h"

#if defined(_WIN32)
#include "platform/portable/WindowsApi.h"
#endif

namespace lum::detail {

namespace {

constexpr std::size_t kChunkBytes = std::size_t{1} << 16;

struct CFileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using CFilePointer = std::unique_ptr<std::FILE, CFileCloser>;

CFilePointer OpenForReading(const CString& path) {
#if defined(_WIN32)
  return CFilePointer(::_wfopen(SystemPath(path).c_str(), L"rbN"));
#else
  return CFilePointer(std::fopen(SystemPath(path).c_str(), "rbe"));
#endif
}

CString TooLarge(std::size_t limit) {
  CString text;
  text.Format(L"the file is larger than %llu bytes", static_cast<unsigned long long>(limit));
  return text;
}

// Pipes have no size; they are measured while they are read.
bool IsKnownToBeLarger(const CString& path, std::size_t limit) {
  std::error_code none;
  const std::filesystem::path systemPath = SystemPath(path);
  return std::filesystem::is_regular_file(systemPath, none) &&
         std::filesystem::file_size(systemPath, none) > limit && !none;
}

// Reads until the end or until there is one byte more than the limit. Gives the error number.
int ReadUpTo(std::FILE* file, std::size_t limit, std::string& bytes) {
  while (bytes.size() <= limit) {
    const std::size_t size = bytes.size();
    const std::size_t wanted = std::min(kChunkBytes, limit - size + 1);
    bytes.resize(size + wanted);
    const std::size_t count = std::fread(bytes.data() + size, 1, wanted, file);
    const int error = std::ferror(file) ? errno : 0;
    bytes.resize(size + count);
    if (error == EINTR) {
      std::clearerr(file);
    } else if (error != 0 || count < wanted) {
      return error;
    }
  }
  return 0;
}

}  // namespace

#if defined(_WIN32)

namespace {

// The absolute form of a path, empty when the system has none.
std::wstring FullPath(const std::wstring& path) {
  std::wstring full(path.size() + MAX_PATH, L'\0');
  const DWORD length =
      ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  full.resize(length < full.size() ? length : 0);
  return full;
}

// Only with this prefix does the system take paths of any length.
std::wstring WithLongPrefix(const std::wstring& fullPath) {
  const bool isShare = fullPath.starts_with(L"\\\\");
  return isShare ? L"\\\\?\\UNC" + fullPath.substr(1) : L"\\\\?\\" + fullPath;
}

}  // namespace

#endif

std::filesystem::path SystemPath(const CString& path) {
#if defined(_WIN32)
  // Beside the file there must be room for the name of a temporary one.
  constexpr std::size_t kMostWithoutPrefix = MAX_PATH - 80;
  const std::wstring text(path.GetString(), static_cast<std::size_t>(path.GetLength()));
  const bool hasPrefix = text.starts_with(L"\\\\?\\") || text.starts_with(L"\\\\.\\");
  const std::wstring full = hasPrefix ? L"" : FullPath(text);
  return full.size() > kMostWithoutPrefix ? WithLongPrefix(full) : text;
#else
  const CStringA bytes = WideToUtf8(path);
  return std::filesystem::path(
      std::string(bytes.GetString(), static_cast<std::size_t>(bytes.GetLength())));
#endif
}

CString SystemMessage(int error) {
#if defined(__GLIBC__)
  // Other calls translate into the language of the process locale.
  if (const char* text = ::strerrordesc_np(error)) {
    return Utf8ToWide(CStringA(text));
  }
#endif
  return Utf8ToWide(CStringA(std::generic_category().message(error).c_str()));
}

bool ReadWholeFile(const CString& path, std::size_t limit, std::string& bytes, CString& error) {
  if (path.Find(L'\0') >= 0) {
    error = SystemMessage(ENOENT);
    return false;
  }
  const CFilePointer file = OpenForReading(path);
  if (!file) {
    error = SystemMessage(errno);
    return false;
  }
  if (IsKnownToBeLarger(path, limit)) {
    error = TooLarge(limit);
    return false;
  }
  std::string read;
  if (const int number = ReadUpTo(file.get(), limit, read)) {
    error = SystemMessage(number);
    return false;
  }
  if (read.size() > limit) {
    error = TooLarge(limit);
    return false;
  }
  bytes = std::move(read);
  return true;
}

}  // namespace lum::detail
