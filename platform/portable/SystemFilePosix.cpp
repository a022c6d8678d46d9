// The implementation for POSIX systems.
#include <cerrno>
#include <cstring>
#include <system_error>

#include "platform/TextEncoding.h"
#include "platform/portable/SystemFile.h"

namespace lum::detail {

std::filesystem::path SystemPath(const CString& path) {
  const CStringA bytes = WideToUtf8(path);
  return std::filesystem::path(
      std::string(bytes.GetString(), static_cast<std::size_t>(bytes.GetLength())));
}

CString PathText(const std::filesystem::path& path) { return Utf8ToWide(CStringA(path.c_str())); }

CString SystemMessage(int error) {
#if defined(__GLIBC__)
  // Other calls translate into the language of the process locale.
  if (const char* text = ::strerrordesc_np(error)) {
    return Utf8ToWide(CStringA(text));
  }
#endif
  return Utf8ToWide(CStringA(std::generic_category().message(error).c_str()));
}

CFilePointer OpenForReading(const CString& path, CString& error) {
  CFilePointer file(std::fopen(SystemPath(path).c_str(), "rbe"));
  if (!file) {
    error = SystemMessage(errno);
  }
  return file;
}

}  // namespace lum::detail
