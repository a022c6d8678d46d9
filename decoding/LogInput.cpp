// Looks at the first two bytes of a log, then hands over to the file itself or to the
// decompression.
#include "decoding/LogInput.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "decoding/DecodingError.h"
#include "decoding/GzipStream.h"
#include "decoding/SystemInput.h"

namespace lum::decoding {

struct CLogInput::State {
  explicit State(const std::string& path) : file(path) {}

  detail::CSystemInput file;
  std::unique_ptr<detail::CGzipStream> gzip;
  std::array<char, 2> first{};
  std::size_t firstCount = 0;
  std::size_t firstGiven = 0;
  bool isKnown = false;

  void LookAtFirst();
  std::size_t Read(char* to, std::size_t room);
};

/// Waits for the second byte only behind the first of gzip.
void CLogInput::State::LookAtFirst() {
  constexpr std::string_view kGzip = "\x1F\x8B";
  while (!isKnown) {
    const std::size_t count = file.Read(first.data() + firstCount, first.size() - firstCount);
    firstCount += count;
    const std::string_view seen(first.data(), firstCount);
    isKnown = count == 0 || seen.size() == kGzip.size() || seen.front() != kGzip.front();
    if (seen == kGzip) {
      gzip = std::make_unique<detail::CGzipStream>(file, seen);
    }
  }
}

std::size_t CLogInput::State::Read(char* to, std::size_t room) {
  LookAtFirst();
  if (gzip) {
    return gzip->Read(to, room);
  }
  if (firstGiven != firstCount) {
    const std::size_t count = std::min(room, firstCount - firstGiven);
    std::copy_n(first.data() + firstGiven, count, to);
    firstGiven += count;
    return count;
  }
  return file.Read(to, room);
}

CLogInput::CLogInput(const std::string& path) {
  if (path.find('\0') != path.npos) {
    throw DecodingError("cannot open a file whose name has a NUL in it");
  }
  m_state = std::make_unique<State>(path);
  // A pipe may have nothing to say for long.
  if (m_state->file.Size()) {
    m_state->LookAtFirst();
  }
}

CLogInput::~CLogInput() = default;

std::size_t CLogInput::Read(char* to, std::size_t room) { return m_state->Read(to, room); }

void CLogInput::EndWhen(const std::atomic<bool>& isInterrupted) {
  m_state->file.EndWhen(isInterrupted);
}

bool CLogInput::IsCompressed() const { return m_state->gzip != nullptr; }
std::uint64_t CLogInput::BytesTaken() const { return m_state->file.BytesTaken(); }
std::optional<std::uint64_t> CLogInput::Size() const { return m_state->file.Size(); }

}  // namespace lum::decoding
