// Decompresses gzip (RFC 1952), part after part.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "decoding/SystemInput.h"

namespace lum::decoding::detail {

class CGzipStream {
 public:
  /// `begun` is what has been read of the input already.
  CGzipStream(CSystemInput& input, std::string_view begun);
  CGzipStream(const CGzipStream&) = delete;
  CGzipStream& operator=(const CGzipStream&) = delete;
  ~CGzipStream();

  /// At least one byte, at most `room`; 0 at the end. Throws DecodingError, and again when it is
  /// called again; what was decompressed before has been given by then.
  std::size_t Read(char* to, std::size_t room);

 private:
  struct Inflater;

  bool Fill();
  bool BeginPart();
  std::size_t Inflate(char* to, std::size_t room);
  void Fail(const std::string& what);

  CSystemInput& m_input;
  std::unique_ptr<Inflater> m_inflater;
  std::string m_failure;
  bool m_isWithinPart = false;
  bool m_isFirstPart = true;
};

}  // namespace lum::decoding::detail
