// Error, FileError and their reporter.
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/TextPrinting.h"

namespace {

std::vector<CString> reported;

void Record(const CString& category, const CString& message) {
  reported.push_back(category);
  reported.push_back(message);
}

// Takes reporting over for one scope.
class CRecording {
 public:
  CRecording() : m_previous(Error::SetReporter(&Record)) { reported.clear(); }
  ~CRecording() { Error::SetReporter(m_previous); }
  CRecording(const CRecording&) = delete;
  CRecording& operator=(const CRecording&) = delete;

 private:
  Error::Reporter m_previous;
};

std::string StandardErrorOf(const Error& error, const char* category) {
  testing::internal::CaptureStderr();
  error.Report(category);
  return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(Error, ReportsOneLineToStandardError) {
  EXPECT_EQ(StandardErrorOf(Error(L"gone"), "General"), "General: gone\n");
  EXPECT_EQ(StandardErrorOf(Error(L"a\r\nb\n"), "General"), "General: a  b \n");
  EXPECT_EQ(StandardErrorOf(Error(L""), nullptr), ": \n");
}

TEST(Error, StandardErrorGetsNoControlCharacters) {
  EXPECT_EQ(StandardErrorOf(FileError(L"a\x1b[2J\tb\x07\x7f\x9b"
                                      L"1m\u00A0.def",
                                      0),
                            "General"),
            "General: cannot open \"a [2J b   1m\xC2\xA0.def\"\n");
}

TEST(Error, StandardErrorIsUtf8) {
  EXPECT_EQ(StandardErrorOf(Error(L"\u00E4\u20AC"), "General"), "General: \xC3\xA4\xE2\x82\xAC\n");
}

TEST(Error, ReporterTakesTheMessageOver) {
  const CRecording recording;
  EXPECT_EQ(StandardErrorOf(Error(L"gone"), "General"), "");
  EXPECT_EQ(reported, (std::vector<CString>{L"General", L"gone"}));
}

TEST(Error, NullRestoresTheDefaultReporter) {
  const Error::Reporter standard = Error::SetReporter(&Record);
  EXPECT_EQ(Error::SetReporter(nullptr), &Record);
  EXPECT_EQ(Error::SetReporter(nullptr), standard);
  EXPECT_EQ(StandardErrorOf(Error(L"m"), "c"), "c: m\n");
}

TEST(Error, FileErrorsSayWhatCouldNotBeDone) {
  const struct {
    int code;
    const wchar_t* message;
  } rows[] = {
      {FileError::CANNOT_OPEN, L"cannot open \"a/b.def\""},
      {FileError::CANNOT_READ, L"cannot read \"a/b.def\""},
      {FileError::CANNOT_WRITE, L"cannot write \"a/b.def\""},
      {3, L"cannot access \"a/b.def\""},
      {-1, L"cannot access \"a/b.def\""},
  };
  for (const auto& row : rows) {
    const FileError error(L"a/b.def", row.code);
    EXPECT_EQ(error.Message(), row.message);
    EXPECT_EQ(error.Path(), L"a/b.def");
    EXPECT_EQ(error.Code(), row.code);
  }
}

TEST(Error, FileErrorsReportLikeOthers) {
  EXPECT_EQ(FileError::CANNOT_OPEN, 0);
  EXPECT_EQ(StandardErrorOf(FileError(L"x.def", 0), "General"), "General: cannot open \"x.def\"\n");
}
