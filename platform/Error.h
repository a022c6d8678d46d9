// Error and FileError: messages to the user, through a reporter that a host may replace.
#pragma once

#include "platform/FrameworkString.h"

/// A message that can be reported under a category.
///
/// Threads: any thread may report, and the reporter runs in it, perhaps in several at once; it may
/// be set at any time, but a report that has begun still goes to the one before.
class LUM_PLATFORM_API Error {
 public:
  /// Receives a category and a message, both valid during the call only.
  using Reporter = void (*)(const CString& category, const CString& message);

  explicit Error(const CString& message);
  virtual ~Error();
  Error(const Error&) = default;
  Error& operator=(const Error&) = default;

  const CString& Message() const noexcept { return m_message; }

  /// Hands the message to the reporter; the default one writes "category: message" as one line to
  /// standard error.
  void Report(const char* category) const;

  /// Takes reporting over; null restores the default. Returns the reporter in force before.
  static Reporter SetReporter(Reporter reporter);

 private:
  CString m_message;
};

/// A failed access to a file. Threads: as Error says.
class LUM_PLATFORM_API FileError : public Error {
 public:
  enum CODE {
    CANNOT_OPEN = 0,
    CANNOT_READ = 1,
    CANNOT_WRITE = 2,
  };

  /// The message names the file and what could not be done with it. A code outside CODE is kept
  /// and reads as an unspecified failure.
  FileError(const CString& path, int code);

  const CString& Path() const noexcept { return m_path; }
  int Code() const noexcept { return m_code; }

 private:
  CString m_path;
  int m_code;
};
