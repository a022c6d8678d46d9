// Reads by the calls of the C runtime, in which paths are wide and standard input is text at first.
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "decoding/DecodingError.h"
#include "decoding/SystemInput.h"
#include "platform/TextEncoding.h"

namespace lum::decoding::detail {

namespace {

constexpr int kStandardInput = 0;

std::string DescribeError(int error) { return std::generic_category().message(error); }

int OpenDescriptor(const std::string& path, const std::string& name) {
  if (path == "-") {
    ::_setmode(kStandardInput, _O_BINARY);
    return kStandardInput;
  }
  const CString wide = Utf8ToWide(CStringA(path.data(), static_cast<int>(path.size())));
  const int descriptor = ::_wopen(wide.GetString(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
  if (descriptor == -1) {
    throw DecodingError("cannot open " + name + ": " + DescribeError(errno));
  }
  return descriptor;
}

}  // namespace

CSystemInput::CSystemInput(const std::string& path)
    : m_name(path == "-" ? "standard input" : "'" + path + "'"),
      m_descriptor(OpenDescriptor(path, m_name)) {
  struct _stat64 status {};
  if (::_fstat64(m_descriptor, &status) == 0 && (status.st_mode & _S_IFMT) == _S_IFREG) {
    const __int64 place = ::_lseeki64(m_descriptor, 0, SEEK_CUR);
    m_size = static_cast<std::uint64_t>(std::max<__int64>(status.st_size - place, 0));
  }
}

CSystemInput::~CSystemInput() {
  if (m_descriptor != kStandardInput) {
    ::_close(m_descriptor);
  }
}

std::size_t CSystemInput::Read(char* to, std::size_t room) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
  const auto wanted = static_cast<unsigned int>(std::min(room, kMostAtOnce));
  const int count = ::_read(m_descriptor, to, wanted);
  // A pipe whose writer has gone is at its end.
  if (count == -1 && errno != EPIPE) {
    throw DecodingError("cannot read " + m_name + " at byte " + std::to_string(m_taken) + ": " +
                        DescribeError(errno));
  }
  m_taken += static_cast<std::uint64_t>(std::max(count, 0));
  return static_cast<std::size_t>(std::max(count, 0));
}

}  // namespace lum::decoding::detail
