// What a line of a log is, in words: its record, its fault, and which conditions of a message hold.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "decoding/LineReader.h"
#include "decoding/LogReader.h"
#include "decoding/LogRecord.h"
#include "decoding/Profile.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"

namespace lum::tool {

/// UTF-8 of a log or profile, which must not steer a terminal.
inline std::string Shown(std::string_view text) { return Printable(FromUtf8(text)); }

/// Prints what stands at the left once, and text beside it.
class CReport {
 public:
  explicit CReport(ToolContext& context) : m_context(context) {}

  void Line(std::string_view label, const std::string& text) {
    constexpr std::size_t kWidth = 10;
    std::string line(label);
    if (!text.empty()) {
      line.resize(std::max(line.size() + 1, kWidth), ' ');
    }
    m_context.out << line << text << '\n';
  }
  void Text(const std::string& text) { m_context.out << text << '\n'; }

 private:
  ToolContext& m_context;
};

void ReportRecord(const decoding::LogRecord& record, decoding::LogFormat format, CReport& report);
void ReportProblem(const decoding::LogLine& line, const decoding::LineProblem& problem,
                   CReport& report);
/// Each condition and whether it holds.
void ReportMatch(const decoding::MessageRule& message, const decoding::LogRecord& record,
                 CReport& report);

}  // namespace lum::tool
