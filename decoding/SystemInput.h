// A file or standard input as the system reads it, without a buffer.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace lum::decoding::detail {

class CSystemInput {
 public:
  /// Opens a file by its UTF-8 path; "-" is standard input. Throws DecodingError.
  explicit CSystemInput(const std::string& path);
  CSystemInput(const CSystemInput&) = delete;
  CSystemInput& operator=(const CSystemInput&) = delete;
  ~CSystemInput();

  /// As CLogInput.
  void EndWhen(const std::atomic<bool>& isInterrupted) { m_isInterrupted = &isInterrupted; }
  /// Waits for one byte at least; 0 at the end. Throws DecodingError.
  std::size_t Read(char* to, std::size_t room);

  /// "'log.txt'" or "standard input", for messages.
  const std::string& Name() const { return m_name; }
  std::uint64_t BytesTaken() const { return m_taken; }
  /// Counted from where reading began; nothing for what is no file.
  std::optional<std::uint64_t> Size() const { return m_size; }

 private:
  std::string m_name;
  int m_descriptor = 0;
  std::uint64_t m_taken = 0;
  const std::atomic<bool>* m_isInterrupted = nullptr;
  std::optional<std::uint64_t> m_size;
};

}  // namespace lum::decoding::detail
