#include "tools/lumattr/Progress.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "decoding/NumberText.h"

namespace lum::tool {
namespace {

/// The clock is asked once in so many bytes.
constexpr std::uint64_t kBytesBetweenLooks = 1 << 18;
constexpr std::chrono::milliseconds kInterval{500};
constexpr double kMega = 1e6;

}  // namespace

CProgress::CProgress(std::ostream& stream, bool isShown) : m_stream(stream), m_isShown(isShown) {}

void CProgress::Begin(std::uint64_t taken) {
  m_first = taken;
  m_nextLook = taken;
  m_start = m_last = Clock::now();
}

void CProgress::Show(std::uint64_t taken, std::optional<std::uint64_t> size) {
  if (!m_isShown || taken < m_nextLook) {
    return;
  }
  m_nextLook = taken + kBytesBetweenLooks;
  const Clock::time_point now = Clock::now();
  if (now - m_last < kInterval) {
    return;
  }
  m_last = now;
  const double seconds = std::chrono::duration<double>(now - m_start).count();
  const std::string text = Text(taken, taken - m_first, size, seconds);
  const std::size_t width = std::exchange(m_width, text.size());
  // Blanks wipe what was longer on any terminal, also on one without control sequences.
  m_stream << '\r' << text << std::string(width - std::min(width, m_width), ' ') << std::flush;
}

void CProgress::Wipe() {
  if (m_width > 0) {
    m_stream << '\r' << std::string(m_width, ' ') << '\r' << std::flush;
    m_width = 0;
  }
}

std::string CProgress::Text(std::uint64_t taken, std::uint64_t takenInTime,
                            std::optional<std::uint64_t> size, double seconds) {
  const auto bytes = static_cast<double>(taken);
  const double rate = seconds > 0.0 ? static_cast<double>(takenInTime) / seconds : 0.0;
  std::string text;
  // A log that is being written outgrows the size that it had.
  if (size && *size > 0 && taken <= *size) {
    decoding::AppendFixed(text, std::floor(100.0 * bytes / static_cast<double>(*size)), 0);
    text += " %, ";
  }
  decoding::AppendFixed(text, bytes / kMega, 1);
  text += " MB, ";
  decoding::AppendFixed(text, rate / kMega, 1);
  text += " MB/s";
  if (size && *size >= taken && rate > 0.0) {
    text += ", ";
    decoding::AppendFixed(text, std::ceil(static_cast<double>(*size - taken) / rate), 0);
    text += " s left";
  }
  return text;
}

}  // namespace lum::tool
