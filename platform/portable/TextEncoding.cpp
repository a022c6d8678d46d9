// UTF-8 is written and read here, for 16-bit and 32-bit wide characters; the Windows code page is
// the system's business.
#include "platform/TextEncoding.h"

#include <limits>
#include <stdexcept>
#include <type_traits>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace {

using Scalar = char32_t;
// Takes wide characters of any signedness to their code without sign extension.
using WideCode = std::make_unsigned_t<wchar_t>;

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;
constexpr Scalar kReplacement = 0xFFFD;
constexpr Scalar kLastScalar = 0x10FFFF;

constexpr bool IsHighSurrogate(Scalar code) { return code >= 0xD800 && code <= 0xDBFF; }
constexpr bool IsLowSurrogate(Scalar code) { return code >= 0xDC00 && code <= 0xDFFF; }
constexpr bool IsScalar(Scalar code) {
  return code <= kLastScalar && !IsHighSurrogate(code) && !IsLowSurrogate(code);
}

int CheckedLength(std::size_t length) {
  if (length >= static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw std::length_error("text too long");
  }
  return static_cast<int>(length);
}

// ---- Wide text to UTF-8

Scalar CodeAt(const CString& text, int place) {
  return static_cast<Scalar>(static_cast<WideCode>(text.GetAt(place)));
}

// Reads the scalar value at `place` and steps over it.
Scalar NextScalar(const CString& text, int& place) {
  const Scalar code = CodeAt(text, place++);
  if constexpr (kWideIsUtf16) {
    // The terminating NUL may be looked at: it is no low surrogate.
    if (IsHighSurrogate(code) && IsLowSurrogate(CodeAt(text, place))) {
      const Scalar low = CodeAt(text, place++);
      return 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    }
  }
  return IsScalar(code) ? code : kReplacement;
}

int Utf8Size(Scalar scalar) {
  if (scalar < 0x80) {
    return 1;
  }
  if (scalar < 0x800) {
    return 2;
  }
  return scalar < 0x10000 ? 3 : 4;
}

// The bits that a lead byte of a sequence of 1 to 4 bytes begins with.
constexpr Scalar kLeadBits[] = {0, 0x00, 0xC0, 0xE0, 0xF0};

char* WriteUtf8(Scalar scalar, char* out) {
  const int size = Utf8Size(scalar);
  for (int i = size - 1; i > 0; --i) {
    out[i] = static_cast<char>(0x80 | (scalar & 0x3F));
    scalar >>= 6;
  }
  out[0] = static_cast<char>(kLeadBits[size] | scalar);
  return out + size;
}

std::size_t Utf8Size(const CString& text) {
  std::size_t size = 0;
  for (int place = 0; place < text.GetLength();) {
    size += static_cast<std::size_t>(Utf8Size(NextScalar(text, place)));
  }
  return size;
}

// ---- UTF-8 to wide text

// What may follow a lead byte: how many bytes, and the range of the first of them, which keeps out
// overlong forms, surrogates and codes beyond Unicode.
struct Sequence {
  int length;
  unsigned char firstLow;
  unsigned char firstHigh;
};

Sequence SequenceOf(unsigned char lead) {
  if (lead < 0xC2 || lead > 0xF4) {
    return {1, 0, 0};
  }
  if (lead < 0xE0) {
    return {2, 0x80, 0xBF};
  }
  if (lead < 0xF0) {
    return {3, static_cast<unsigned char>(lead == 0xE0 ? 0xA0 : 0x80),
            static_cast<unsigned char>(lead == 0xED ? 0x9F : 0xBF)};
  }
  return {4, static_cast<unsigned char>(lead == 0xF0 ? 0x90 : 0x80),
          static_cast<unsigned char>(lead == 0xF4 ? 0x8F : 0xBF)};
}

unsigned char ByteAt(const CStringA& text, int place) {
  return static_cast<unsigned char>(text.GetAt(place));
}

bool HasWholeSequence(const CStringA& text, int place, const Sequence& sequence) {
  if (sequence.length > text.GetLength() - place) {
    return false;
  }
  const unsigned char first = ByteAt(text, place + 1);
  if (first < sequence.firstLow || first > sequence.firstHigh) {
    return false;
  }
  for (int i = 2; i < sequence.length; ++i) {
    if ((ByteAt(text, place + i) & 0xC0) != 0x80) {
      return false;
    }
  }
  return true;
}

// Reads the scalar value at `place`, or one byte as Latin-1, and steps over it.
Scalar NextScalar(const CStringA& text, int& place) {
  const unsigned char lead = ByteAt(text, place);
  const Sequence sequence = SequenceOf(lead);
  if (sequence.length == 1 || !HasWholeSequence(text, place, sequence)) {
    ++place;
    return lead;
  }
  Scalar scalar = lead & (0xFFU >> (sequence.length + 1));
  for (int i = 1; i < sequence.length; ++i) {
    scalar = (scalar << 6) | (ByteAt(text, place + i) & 0x3FU);
  }
  place += sequence.length;
  return scalar;
}

wchar_t* WriteWide(Scalar scalar, wchar_t* out) {
  if constexpr (kWideIsUtf16) {
    if (scalar >= 0x10000) {
      *out++ = static_cast<wchar_t>(0xD800 + ((scalar - 0x10000) >> 10));
      *out++ = static_cast<wchar_t>(0xDC00 + ((scalar - 0x10000) & 0x3FF));
      return out;
    }
  }
  *out++ = static_cast<wchar_t>(scalar);
  return out;
}

constexpr int WideSize(Scalar scalar) { return kWideIsUtf16 && scalar >= 0x10000 ? 2 : 1; }

int WideSize(const CStringA& text) {
  int size = 0;
  for (int place = 0; place < text.GetLength();) {
    size += WideSize(NextScalar(text, place));
  }
  return size;
}

}  // namespace

CStringA WideToUtf8(const CString& text) {
  const int size = CheckedLength(Utf8Size(text));
  CStringA bytes;
  if (size == 0) {
    return bytes;
  }
  char* out = bytes.GetBuffer(size);
  for (int place = 0; place < text.GetLength();) {
    out = WriteUtf8(NextScalar(text, place), out);
  }
  bytes.ReleaseBuffer(size);
  return bytes;
}

CString Utf8ToWide(const CStringA& text) {
  const int size = WideSize(text);
  CString wide;
  if (size == 0) {
    return wide;
  }
  wchar_t* out = wide.GetBuffer(size);
  for (int place = 0; place < text.GetLength();) {
    out = WriteWide(NextScalar(text, place), out);
  }
  wide.ReleaseBuffer(size);
  return wide;
}

#if defined(_WIN32)

CStringA WideToAnsi(const CString& text) {
  CStringA bytes;
  const int size = ::WideCharToMultiByte(CP_ACP, 0, text.GetString(), text.GetLength(), nullptr, 0,
                                         nullptr, nullptr);
  if (size > 0) {
    ::WideCharToMultiByte(CP_ACP, 0, text.GetString(), text.GetLength(), bytes.GetBuffer(size),
                          size, nullptr, nullptr);
    bytes.ReleaseBuffer(size);
  }
  return bytes;
}

CString AnsiToWide(const CStringA& text) {
  CString wide;
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text.GetString(), text.GetLength(), nullptr, 0);
  if (size > 0) {
    ::MultiByteToWideChar(CP_ACP, 0, text.GetString(), text.GetLength(), wide.GetBuffer(size),
                          size);
    wide.ReleaseBuffer(size);
  }
  return wide;
}

#else

CStringA WideToAnsi(const CString& text) { return WideToUtf8(text); }

CString AnsiToWide(const CStringA& text) { return Utf8ToWide(text); }

#endif
