// A part must be whole: its end carries a checksum and a length, which inflate verifies. What
// follows it is another part or the end of the file; anything else is damage that nobody should
// overlook.
#include "decoding/GzipStream.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

#include "decoding/DecodingError.h"

namespace lum::decoding::detail {

namespace {

constexpr std::size_t kCompressedBlock = std::size_t{1} << 18;
constexpr unsigned char kFirstOfPart = 0x1F;

}  // namespace

struct CGzipStream::Inflater {
  z_stream stream{};
  std::vector<unsigned char> compressed = std::vector<unsigned char>(kCompressedBlock);
};

CGzipStream::CGzipStream(CSystemInput& input, std::string_view begun)
    : m_input(input), m_inflater(std::make_unique<Inflater>()) {
  // The largest window, and the headers of gzip alone.
  constexpr int kGzip = 15 + 16;
  z_stream& stream = m_inflater->stream;
  if (inflateInit2(&stream, kGzip) != Z_OK) {
    throw std::bad_alloc();
  }
  std::copy(begun.begin(), begun.end(), m_inflater->compressed.begin());
  stream.next_in = m_inflater->compressed.data();
  stream.avail_in = static_cast<uInt>(begun.size());
}

CGzipStream::~CGzipStream() { inflateEnd(&m_inflater->stream); }

std::size_t CGzipStream::Read(char* to, std::size_t room) {
  while (m_failure.empty()) {
    if (m_inflater->stream.avail_in == 0 && !Fill()) {
      if (!m_isWithinPart) {
        return 0;
      }
      Fail("compressed data break off");
    } else if (m_isWithinPart || BeginPart()) {
      const std::size_t count = Inflate(to, room);
      if (count != 0) {
        return count;
      }
    }
  }
  throw DecodingError(m_failure);
}

bool CGzipStream::Fill() {
  std::vector<unsigned char>& compressed = m_inflater->compressed;
  const std::size_t count =
      m_input.Read(reinterpret_cast<char*>(compressed.data()), compressed.size());
  m_inflater->stream.next_in = compressed.data();
  m_inflater->stream.avail_in = static_cast<uInt>(count);
  return count != 0;
}

bool CGzipStream::BeginPart() {
  z_stream& stream = m_inflater->stream;
  if (!m_isFirstPart && *stream.next_in != kFirstOfPart) {
    Fail("something else follows the compressed data");
    return false;
  }
  inflateReset(&stream);
  m_isWithinPart = true;
  m_isFirstPart = false;
  return true;
}

/// How many bytes came of the input that is there.
std::size_t CGzipStream::Inflate(char* to, std::size_t room) {
  z_stream& stream = m_inflater->stream;
  const std::size_t most = std::min<std::size_t>(room, std::numeric_limits<uInt>::max());
  stream.next_out = reinterpret_cast<unsigned char*>(to);
  stream.avail_out = static_cast<uInt>(most);
  const int result = inflate(&stream, Z_NO_FLUSH);
  if (result == Z_STREAM_END) {
    m_isWithinPart = false;
  } else if (result == Z_MEM_ERROR) {
    throw std::bad_alloc();
  } else if (result != Z_OK && result != Z_BUF_ERROR) {
    Fail(std::string("compressed data are damaged (") +
         (stream.msg != nullptr ? stream.msg : "unknown method") + ")");
  }
  return most - stream.avail_out;
}

void CGzipStream::Fail(const std::string& what) {
  const std::uint64_t place = m_input.BytesTaken() - m_inflater->stream.avail_in;
  m_failure = "cannot read " + m_input.Name() + " at byte " + std::to_string(place) + ": " + what;
}

}  // namespace lum::decoding::detail
