// Reads by the calls of POSIX.
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>

#include "decoding/DecodingError.h"
#include "decoding/SystemInput.h"

namespace lum::decoding::detail {

namespace {

std::string DescribeError(int error) {
#if defined(__GLIBC__)
  // Other calls translate into the language of the process locale.
  if (const char* text = ::strerrordesc_np(error)) {
    return text;
  }
#endif
  return std::generic_category().message(error);
}

/// A named pipe is opened before it has a writer: that is waited for where a signal can end it.
int FlagsOfWait(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode) ? O_NONBLOCK : 0;
}

int OpenDescriptor(const std::string& path, const std::string& name) {
  if (path == "-") {
    return STDIN_FILENO;
  }
  int descriptor = -1;
  do {
    descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | FlagsOfWait(path));
  } while (descriptor == -1 && errno == EINTR);
  if (descriptor == -1) {
    throw DecodingError("cannot open " + name + ": " + DescribeError(errno));
  }
  return descriptor;
}

/// Keeps all signals out of this thread, so also the one that sets a flag.
class CSignalsOut {
 public:
  CSignalsOut() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &m_before);
  }
  ~CSignalsOut() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
  CSignalsOut(const CSignalsOut&) = delete;
  CSignalsOut& operator=(const CSignalsOut&) = delete;

  const sigset_t& Before() const { return m_before; }

 private:
  sigset_t m_before = {};
};

/// False when the flag is set before there is a byte, or the end. A signal between the look at the
/// flag and the wait would be missed: signals come in during the wait alone.
bool WaitForBytes(int descriptor, const std::atomic<bool>* isInterrupted) {
  const CSignalsOut signals;
  pollfd wanted{descriptor, POLLIN, 0};
  while (isInterrupted == nullptr || !isInterrupted->load()) {
    if (::ppoll(&wanted, 1, nullptr, &signals.Before()) != -1 || errno != EINTR) {
      return true;
    }
  }
  return false;
}

}  // namespace

CSystemInput::CSystemInput(const std::string& path)
    : m_name(path == "-" ? "standard input" : "'" + path + "'"),
      m_descriptor(OpenDescriptor(path, m_name)) {
  struct stat status {};
  if (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    const off_t place = ::lseek(m_descriptor, 0, SEEK_CUR);
    m_size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size - place, 0));
  }
}

CSystemInput::~CSystemInput() {
  if (m_descriptor != STDIN_FILENO) {
    ::close(m_descriptor);
  }
}

std::size_t CSystemInput::Read(char* to, std::size_t room) {
  ssize_t count = -1;
  do {
    if (!m_size && !WaitForBytes(m_descriptor, m_isInterrupted)) {
      return 0;
    }
    count = ::read(m_descriptor, to, room);
  } while (count == -1 && (errno == EINTR || errno == EAGAIN));
  if (count == -1) {
    throw DecodingError("cannot read " + m_name + " at byte " + std::to_string(m_taken) + ": " +
                        DescribeError(errno));
  }
  m_taken += static_cast<std::uint64_t>(count);
  return static_cast<std::size_t>(count);
}

}  // namespace lum::decoding::detail
