// Messages and the reporter that takes them.
#include "platform/Error.h"

#include <atomic>

#include "platform/portable/StandardError.h"

namespace {

void ReportToStandardError(const CString& category, const CString& message) {
  lum::detail::WriteErrorLine(category + L": " + message);
}

std::atomic<Error::Reporter> currentReporter{&ReportToStandardError};

CString FileMessage(const CString& path, int code) {
  const CString quoted = L'"' + path + L'"';
  switch (code) {
    case FileError::CANNOT_OPEN:
      return L"cannot open " + quoted;
    case FileError::CANNOT_READ:
      return L"cannot read " + quoted;
    case FileError::CANNOT_WRITE:
      return L"cannot write " + quoted;
    default:
      return L"cannot access " + quoted;
  }
}

}  // namespace

Error::Error(const CString& message) : m_message(message) {}

Error::~Error() = default;

void Error::Report(const char* category) const {
  currentReporter.load()(CString(category), m_message);
}

Error::Reporter Error::SetReporter(Reporter reporter) {
  return currentReporter.exchange(reporter == nullptr ? &ReportToStandardError : reporter);
}

FileError::FileError(const CString& path, int code)
    : Error(FileMessage(path, code)), m_path(path), m_code(code) {}
