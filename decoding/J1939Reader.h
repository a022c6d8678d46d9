// Reads the logs of J1939 buses: candump's, with the messages of several frames put together.
#pragma once

#include "decoding/CandumpReader.h"
#include "decoding/J1939.h"

namespace lum::decoding::detail {

class CJ1939Reader final : public CLogReader {
 public:
  LineOutcome Take(const LogLine& line, LogRecord& record, LineProblem& problem) override;
  bool Finish(LineProblem& problem) override;

 private:
  void Describe(const J1939Message& message, LogRecord& record);

  CCandumpReader m_frames;
  CJ1939Assembler m_assembler;
  std::array<char, MessageLength(CJ1939Assembler::kMaxBytes)> m_message{};
};

}  // namespace lum::decoding::detail
