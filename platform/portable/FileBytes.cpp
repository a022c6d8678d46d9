// Reads through the C runtime, whose error numbers tell more than those of the C++ streams.
#include "platform/portable/FileBytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <system_error>
#include <utility>

#include "platform/portable/SystemFile.h"

namespace lum::detail {

namespace {

constexpr std::size_t kChunkBytes = std::size_t{1} << 16;

CString TooLarge(std::size_t limit) {
  CString text;
  text.Format(L"the file is larger than %llu bytes", static_cast<unsigned long long>(limit));
  return text;
}

// Pipes have no size; they are measured while they are read.
std::uintmax_t KnownSize(const CString& path) {
  std::error_code none;
  const std::filesystem::path systemPath = SystemPath(path);
  if (!std::filesystem::is_regular_file(systemPath, none)) {
    return 0;
  }
  const std::uintmax_t size = std::filesystem::file_size(systemPath, none);
  return none ? 0 : size;
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

bool ReadWholeFile(const CString& path, std::size_t limit, std::string& bytes, CString& error) {
  if (path.Find(L'\0') >= 0) {
    error = SystemMessage(ENOENT);
    return false;
  }
  const CFilePointer file = OpenForReading(path, error);
  if (!file) {
    return false;
  }
  const std::uintmax_t size = KnownSize(path);
  if (size > limit) {
    error = TooLarge(limit);
    return false;
  }
  std::string read;
  // The last piece is smaller than what is asked for: that is how the end is seen.
  read.reserve(static_cast<std::size_t>(size) + kChunkBytes);
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
