// What keeps a log from being decoded at all: a file that cannot be read, compressed data that
// break off. Bad lines and bad frames are no errors of this kind; they are counted.
#pragma once

#include <stdexcept>

namespace lum::decoding {

/// The message is one line of UTF-8 that says what failed, where, and what was expected.
class DecodingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace lum::decoding
