#include "tools/lumattr/Progress.h"

#include <cmath>

#include "decoding/NumberText.h"

namespace lum::tool {
namespace {

/// The clock is asked once in so many bytes.
constexpr std::uint64_t kBytesBetweenLooks = 1 << 18;
constexpr std::chrono::milliseconds kInterval{500};
constexpr double kMega = 1e6;

}  // namespace

CProgress::CProgress(std::ostream& stream, bool isShown) : m_stream(stream), m_isShown(isShown) {}

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
  m_stream << '\r' << Text(taken, size, seconds) << "\x1b[K" << std::flush;
  m_isOnScreen = true;
}

void CProgress::Wipe() {
  if (m_isOnScreen) {
    m_stream << "\r\x1b[K" << std::flush;
    m_isOnScreen = false;
  }
}

std::string CProgress::Text(std::uint64_t taken, std::optional<std::uint64_t> size,
                            double seconds) {
  const auto bytes = static_cast<double>(taken);
  const double rate = seconds > 0.0 ? bytes / seconds : 0.0;
  std::string text;
  if (size && *size > 0) {
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
