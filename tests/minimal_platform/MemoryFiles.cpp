// The process-wide map of files, and reading them by lines.
#include "platform/MemoryFiles.h"

#include <map>
#include <utility>

#include "platform/Framework.h"
#include "platform/TextEncoding.h"

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::map<CString, std::string>& Files() {
  static std::map<CString, std::string> files;
  return files;
}

}  // namespace

void MemoryFiles::Write(const CString& path, std::string bytes) {
  Files()[path] = std::move(bytes);
}

const std::string* MemoryFiles::Find(const CString& path) {
  const auto found = Files().find(path);
  return found == Files().end() ? nullptr : &found->second;
}

void MemoryFiles::RemoveAll() { Files().clear(); }

MemoryFileLines::MemoryFileLines(const std::string& bytes)
    : m_bytes(bytes), m_next(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0) {}

bool MemoryFileLines::Next(CString& line) {
  line.Empty();
  if (m_next >= m_bytes.size()) {
    return false;
  }
  const std::size_t end = std::min(m_bytes.find('\n', m_next), m_bytes.size());
  std::string bytes = m_bytes.substr(m_next, end - m_next);
  if (bytes.ends_with('\r')) {
    bytes.pop_back();
  }
  m_next = end + 1;
  line = Utf8ToWide(CStringA(bytes.data(), static_cast<int>(bytes.size())));
  return true;
}

bool CStdioFile::Open(const wchar_t* path, unsigned int /*flags*/) {
  const std::string* bytes = MemoryFiles::Find(path);
  if (bytes != nullptr) {
    m_lines = MemoryFileLines(*bytes);
  }
  return bytes != nullptr;
}
