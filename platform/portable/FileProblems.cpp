#include "platform/portable/FileProblems.h"

#include <algorithm>
#include <string_view>

#include "platform/TextEncoding.h"
#include "platform/portable/EncodedText.h"
#include "platform/portable/LineSyntax.h"

namespace lum::detail {

namespace {

CString ReadAsUtf8(std::string_view bytes) { return DecodeText(bytes, TextFileEncoding::Utf8); }

bool IsLeadByte(char byte) { return static_cast<unsigned char>(byte) >= 0xC2; }

// Where the text and what it reads as part: a stray byte is another character in valid UTF-8, which
// can begin with the very same byte.
std::size_t FirstInvalidByte(std::string_view line) {
  const CStringA valid = WideToUtf8(ReadAsUtf8(line));
  const std::string_view bytes(valid.GetString(), static_cast<std::size_t>(valid.GetLength()));
  const auto parting = std::mismatch(line.begin(), line.end(), bytes.begin(), bytes.end()).first;
  const auto place = static_cast<std::size_t>(parting - line.begin());
  return place > 0 && IsLeadByte(line[place - 1]) ? place - 1 : place;
}

int ColumnOfInvalidByte(std::string_view line) {
  return 1 + ReadAsUtf8(line.substr(0, FirstInvalidByte(line))).GetLength();
}

int ColumnOfInvalidUnit(std::string_view line, TextFileEncoding encoding) {
  const std::size_t unit = FirstInvalidUnit(CCodeUnits(line, encoding));
  return 1 + DecodeText(line.substr(0, 2 * unit), encoding).GetLength();
}

// Why a line that is neither blank, a comment, a section nor an item is none of them.
const wchar_t* WhyUnknown(std::string_view line, std::size_t first, TextFileEncoding encoding) {
  const CCodeUnits units(line, encoding);
  switch (units[first]) {
    case u'[':
      return L"a section's name must end with \"]\"";
    case u'=':
      return L"there is no key before \"=\"";
    default:
      return L"expected key=value, [section] or a comment after \";\" or \"//\"";
  }
}

std::size_t FirstNonBlank(std::string_view line, TextFileEncoding encoding) {
  const CCodeUnits units(line, encoding);
  std::size_t index = 0;
  while (units[index] == u' ' || units[index] == u'\t') {
    ++index;
  }
  return index;
}

class CProblems {
 public:
  CProblems(TextFileEncoding encoding, std::size_t most) : m_encoding(encoding), m_most(most) {}

  void Check(std::string_view line) {
    ++m_line;
    if (!IsValidText(line, m_encoding)) {
      if (UnitSize(m_encoding) == 2) {
        Add(ColumnOfInvalidUnit(line, m_encoding), L"half a UTF-16 pair");
      } else {
        Add(ColumnOfInvalidByte(line), L"a byte that is no UTF-8");
      }
    }
    if (ParseLine(line, m_encoding).kind == FileObjectLine::Kind::Unknown) {
      const std::size_t first = FirstNonBlank(line, m_encoding);
      Add(1 + static_cast<int>(first), WhyUnknown(line, first, m_encoding));
    }
  }

  void CheckOddByte(std::size_t size) {
    if (size % UnitSize(m_encoding) != 0) {
      ++m_line;
      Add(1, L"half a UTF-16 character at the end of the file");
    }
  }

  bool IsFull() const { return m_found.size() >= m_most; }
  std::vector<FileObjectProblem> Take() && { return std::move(m_found); }

 private:
  void Add(int column, const wchar_t* reason) {
    if (!IsFull()) {
      m_found.push_back({m_line, column, reason});
    }
  }

  TextFileEncoding m_encoding;
  std::size_t m_most;
  int m_line = 0;
  std::vector<FileObjectProblem> m_found;
};

}  // namespace

std::vector<FileObjectProblem> FindProblems(const std::string& file, TextFileEncoding encoding,
                                            std::size_t most) {
  const std::size_t begin = EncodingMark(encoding).size();
  const std::size_t size = file.size() < begin ? 0 : file.size() - begin;
  const std::string_view lines =
      std::string_view(file).substr(0, file.size() - size % UnitSize(encoding));
  CProblems problems(encoding, most);
  for (std::size_t place = begin; place < lines.size() && !problems.IsFull();) {
    const CLineBounds line = LineAt(lines, place, encoding);
    problems.Check(lines.substr(place, line.end - place));
    place = line.next;
  }
  problems.CheckOddByte(size);
  return std::move(problems).Take();
}

}  // namespace lum::detail
