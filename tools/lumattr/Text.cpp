#include "tools/lumattr/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "tools/lumattr/ToolContext.h"

namespace lum::tool {
namespace {

using decoding::IsContinuation;

struct CodeRange {
  char32_t first;
  char32_t last;
};

constexpr std::array<CodeRange, 9> kCombining = {{{0x0300, 0x036F},
                                                  {0x0483, 0x0489},
                                                  {0x0591, 0x05BD},
                                                  {0x0610, 0x061A},
                                                  {0x064B, 0x065F},
                                                  {0x1AB0, 0x1AFF},
                                                  {0x1DC0, 0x1DFF},
                                                  {0x200B, 0x200F},
                                                  {0xFE00, 0xFE0F}}};

constexpr std::array<CodeRange, 10> kWide = {{{0x1100, 0x115F},
                                              {0x2E80, 0x303E},
                                              {0x3041, 0xA4CF},
                                              {0xAC00, 0xD7A3},
                                              {0xF900, 0xFAFF},
                                              {0xFE30, 0xFE6F},
                                              {0xFF00, 0xFF60},
                                              {0xFFE0, 0xFFE6},
                                              {0x1F300, 0x1FAFF},
                                              {0x20000, 0x3FFFD}}};

template <std::size_t N>
bool IsInRanges(const std::array<CodeRange, N>& ranges, char32_t code) {
  return std::any_of(ranges.begin(), ranges.end(), [code](const CodeRange& range) {
    return range.first <= code && code <= range.last;
  });
}

int WidthOf(char32_t code) {
  if (code < 0x300) {
    return 1;
  }
  if (IsInRanges(kCombining, code)) {
    return 0;
  }
  return IsInRanges(kWide, code) ? 2 : 1;
}

/// How long a sequence of UTF-8 is that begins with this byte.
std::size_t SequenceLength(char first) {
  const auto lead = static_cast<unsigned char>(first);
  return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// The character that begins at `place` of valid UTF-8; `place` moves behind it.
char32_t NextCode(std::string_view text, std::size_t& place) {
  const auto lead = static_cast<unsigned char>(text[place++]);
  char32_t code = lead < 0x80   ? lead
                  : lead < 0xE0 ? lead & 0x1Fu
                  : lead < 0xF0 ? lead & 0x0Fu
                                : lead & 0x07u;
  while (place < text.size() && IsContinuation(text[place])) {
    code = (code << 6) | (static_cast<unsigned char>(text[place++]) & 0x3Fu);
  }
  return code;
}

}  // namespace

CString ArgumentText(const std::string& argument, std::string_view what) {
  CString text = FromUtf8(argument);
  if (ToUtf8(text) != argument) {
    throw ToolError(std::string(what) + " is not valid UTF-8");
  }
  return text;
}

std::string Shown(const ToolContext& context, const CString& text) {
  return context.terminal ? Printable(text) : ToUtf8(text);
}

std::string Counted(std::uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::size_t WholeCharacters(std::string_view bytes) {
  constexpr std::size_t kMostContinuations = 3;
  std::size_t start = bytes.size();
  while (start > 0 && bytes.size() - start < kMostContinuations &&
         IsContinuation(bytes[start - 1])) {
    --start;
  }
  if (start == 0) {
    return bytes.size();
  }
  --start;
  return start + SequenceLength(bytes[start]) > bytes.size() ? start : bytes.size();
}

int DisplayWidth(std::string_view text) {
  int width = 0;
  for (std::size_t place = 0; place < text.size();) {
    width += WidthOf(NextCode(text, place));
  }
  return width;
}

}  // namespace lum::tool
