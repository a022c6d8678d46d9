// The bytes of a log: a file or standard input, as they are or gzip-compressed (RFC 1952).
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace lum::decoding {

/// Whether the bytes are compressed is seen from the first two. Several compressed parts one after
/// the other are read as one.
class CLogInput {
 public:
  /// Opens a file by its UTF-8 path; "-" is standard input. Throws DecodingError.
  explicit CLogInput(const std::string& path);
  CLogInput(const CLogInput&) = delete;
  CLogInput& operator=(const CLogInput&) = delete;
  ~CLogInput();

  /// Reads what is there, at least one byte and at most `room`; 0 at the end. A pipe's bytes come
  /// as soon as they are there. Throws DecodingError for a failed read, damaged compressed data,
  /// and compressed data that break off: everything before was delivered by the calls before.
  /// Precondition: `room` is not 0.
  std::size_t Read(char* to, std::size_t room);

  /// A signal to the thread that reads, by which the flag is set, ends its wait for bytes, and that
  /// the input; on Windows the wait goes on. The flag must outlive the input.
  void EndWhen(const std::atomic<bool>& isInterrupted);

  /// Known from the start for files, after the first Read for pipes.
  bool IsCompressed() const;
  /// How many bytes of the file have been read, compressed as they are, and how many it has;
  /// nothing for a pipe. For progress alone.
  std::uint64_t BytesTaken() const;
  std::optional<std::uint64_t> Size() const;

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

}  // namespace lum::decoding
