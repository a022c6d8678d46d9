// Files of logs for one test, compressed data, and a pipe whose other end is written meanwhile.
#pragma once

#include <zlib.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "decoding/LogInput.h"
#include "tests/TemporaryFolder.h"

namespace lum::test {

/// One part of gzip (RFC 1952).
inline std::string Gzip(std::string_view bytes) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("cannot compress");
  }
  std::string compressed(deflateBound(&stream, static_cast<uLong>(bytes.size())) + 32, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(compressed.data());
  stream.avail_out = static_cast<uInt>(compressed.size());
  const int result = deflate(&stream, Z_FINISH);
  compressed.resize(compressed.size() - stream.avail_out);
  deflateEnd(&stream);
  if (result != Z_STREAM_END) {
    throw std::runtime_error("cannot compress");
  }
  return compressed;
}

/// A file in a folder of its own; its name is not ASCII.
class CLogFile {
 public:
  explicit CLogFile(std::string_view bytes) { WriteBytes(m_folder.File("b\u00F6je.log"), bytes); }
  std::string Path() const {
    const std::u8string path = m_folder.File("b\u00F6je.log").u8string();
    return {path.begin(), path.end()};
  }

 private:
  CTemporaryFolder m_folder;
};

/// All that comes, by reads of at most `room` bytes. Throws what the input throws, with `all` set.
inline void ReadAll(decoding::CLogInput& input, std::string& all, std::size_t room = 1000) {
  std::string block(room, '\0');
  while (const std::size_t count = input.Read(block.data(), block.size())) {
    all.append(block, 0, count);
  }
}

}  // namespace lum::test
