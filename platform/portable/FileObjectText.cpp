// A file is read line by line into a document and written record by record. The last byte of a
// UTF-16 file of odd size belongs to no line and stays at the end of the file.
#include "platform/portable/FileObjectText.h"

#include <string_view>
#include <utility>

#include "platform/portable/EncodedText.h"
#include "platform/portable/LineSyntax.h"

namespace lum::detail {

namespace {

using LineKind = FileObjectLine::Kind;

/// A loaded file: its lines stand in [begin, end) of the bytes.
struct CTextFile {
  explicit CTextFile(const std::string& file, TextFileEncoding fileEncoding)
      : encoding(fileEncoding), begin(EncodingMark(encoding).size()) {
    const std::size_t size = file.size() - begin;
    end = begin + size - size % UnitSize(encoding);
    lines = std::string_view(file).substr(0, end);
  }

  TextFileEncoding encoding;
  std::size_t begin;
  std::size_t end;
  std::string_view lines;
};

CByteSpan Span(std::size_t begin, std::size_t end) {
  return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end)};
}

// ---- Reading

// The first line says how the file's lines end; without one, the system does.
bool EndsLinesWithReturn(const CTextFile& file, bool systemDoes) {
  if (file.begin == file.end) {
    return systemDoes;
  }
  const CLineBounds line = LineAt(file.lines, file.begin, file.encoding);
  const std::size_t units = (line.next - line.end) / UnitSize(file.encoding);
  return units == 0 ? systemDoes : units == 2;
}

void AddLine(const CTextFile& file, const CLineBounds& line, CFileDocument& document) {
  const std::string_view text = file.lines.substr(line.begin, line.end - line.begin);
  const CLineSyntax syntax = ParseLine(text, file.encoding);
  const CByteSpan span = Span(line.begin, line.next);
  if (syntax.kind != LineKind::Section && syntax.kind != LineKind::Item) {
    document.AddLoadedText(span);
    return;
  }
  const CByteSpan name = Span(line.begin + syntax.nameBegin, line.begin + syntax.nameEnd);
  if (syntax.kind == LineKind::Section) {
    document.AddLoadedHeader(DecodeText(document.Store().Bytes(name), file.encoding), span);
  } else {
    document.AddLoadedItem(name, Span(line.begin + syntax.valueBegin, line.end), span);
  }
}

// ---- Writing

class CFileWriter {
 public:
  CFileWriter(const CFileDocument& document, std::string& file, CString& error)
      : m_document(document),
        m_store(document.Store()),
        m_encoding(document.Encoding()),
        m_file(file),
        m_error(error) {
    m_file = EncodingMark(m_encoding);
    m_begin = m_file.size();
  }

  bool Write() {
    m_file.reserve(m_store.Loaded().size() + m_store.AddedSize());
    CPoolIndex block = m_document.FirstBlock();
    for (; block != kNoIndex; block = m_document.Block(block).next) {
      CPoolIndex record = m_document.Block(block).header;
      for (; record != kNoIndex; record = m_document.Record(record).next) {
        if (!WriteRecord(m_document.Record(record))) {
          return false;
        }
      }
    }
    FlushLines();
    const CTextFile loaded(m_store.Loaded(), m_encoding);
    m_file += std::string_view(m_store.Loaded()).substr(loaded.end);
    return CheckReadsBack();
  }

 private:
  bool WriteRecord(const CFileRecord& record) {
    if (record.isRemembered || (record.isLoaded && record.line.begin == record.line.end)) {
      return true;
    }
    if (!record.line.IsEmpty() && !record.isChanged && !record.isRenamed) {
      WriteLines(record.line);
      return true;
    }
    FlushLines();
    EndLine();
    if (!record.isLoaded) {
      return record.kind == CFileRecord::Kind::Header ? WriteNewHeader(record)
                                                      : WriteNewItem(record);
    }
    return WriteLoadedKey(record) && WriteLoadedValue(record);
  }

  // Lines that follow each other in the store, too, are written at once. Each of them but the last
  // has its terminator then.
  void WriteLines(CByteSpan lines) {
    if (!m_lines.IsEmpty() && lines.begin == m_lines.end) {
      m_lines.end = lines.end;
      return;
    }
    FlushLines();
    EndLine();
    m_lines = lines;
  }

  void FlushLines() {
    m_file += m_store.Bytes(m_lines);
    m_lines = {};
  }

  // The line up to its value.
  bool WriteLoadedKey(const CFileRecord& item) {
    const std::string_view line = m_store.Bytes({item.line.begin, item.loadedValue.begin});
    if (!item.isRenamed) {
      m_file += line;
      return true;
    }
    const CLineSyntax syntax = ParseLine(line, m_encoding);
    m_file += line.substr(0, syntax.nameBegin);
    if (!WriteText(m_store.Text(item.key), item)) {
      return false;
    }
    m_file += line.substr(syntax.nameEnd);
    return true;
  }

  // The line from its value on.
  bool WriteLoadedValue(const CFileRecord& item) {
    if (!item.isChanged) {
      m_file += m_store.Bytes({item.loadedValue.begin, item.line.end});
      return true;
    }
    if (!WriteText(m_store.Text(item.value), item)) {
      return false;
    }
    m_file += m_store.Bytes({item.loadedValue.end, item.line.end});
    return true;
  }

  // A blank line sets a new section off from what stands above it.
  bool WriteNewHeader(const CFileRecord& header) {
    if (!EndsWithBlankLine()) {
      WriteLineEnd(m_document.EndsLinesWithReturn());
    }
    const CString line = L"[" + SectionName(header) + L"]";
    if (!WriteText(CFileTextOf(line), header)) {
      return false;
    }
    WriteLineEnd(m_document.EndsLinesWithReturn());
    return true;
  }

  bool WriteNewItem(const CFileRecord& item) {
    if (!WriteText(m_store.Text(item.key), item) || !WriteText({"="}, item) ||
        !WriteText(m_store.Text(item.value), item)) {
      return false;
    }
    WriteLineEnd(m_document.EndsLinesWithReturn());
    return true;
  }

  bool WriteText(const CFileText& text, const CFileRecord& record) {
    if (!text.isWide && UnitSize(m_encoding) == 1) {
      m_file += text.bytes;
      return true;
    }
    if (EncodeText(ToCString(text), m_encoding, m_file)) {
      return true;
    }
    m_error = L"section \"" + SectionName(record) + L"\"";
    if (record.kind == CFileRecord::Kind::Item) {
      m_error += L", key \"" + ToCString(m_store.Text(record.key)) + L"\"";
    }
    m_error += L": the text has characters that the file's encoding cannot hold";
    return false;
  }

  const CString& SectionName(const CFileRecord& record) const {
    return m_document.Section(m_document.Block(record.block).section).name;
  }

  // Only the file's loaded last line can lack its terminator. A CR at its end must not become part
  // of the terminator that it gets.
  void EndLine() {
    if (UnitFromEnd(0) != u'\n') {
      WriteLineEnd(m_document.EndsLinesWithReturn() || UnitFromEnd(0) == u'\r');
    }
  }

  // Precondition: the file ends with a line end.
  bool EndsWithBlankLine() const {
    const std::size_t place = UnitFromEnd(1) == u'\r' ? 2 : 1;
    return UnitFromEnd(place) == u'\n';
  }

  void WriteLineEnd(bool withReturn) {
    EncodeText(withReturn ? L"\r\n" : L"\n", m_encoding, m_file);
  }

  // The code unit so many places before the end; what stands before the first line is a line end.
  char16_t UnitFromEnd(std::size_t place) const {
    const CCodeUnits units(std::string_view(m_file).substr(m_begin), m_encoding);
    return place < units.Count() ? units[units.Count() - 1 - place] : u'\n';
  }

  bool CheckReadsBack() {
    if (ReadsBackAs(m_file, m_encoding)) {
      return true;
    }
    m_error = L"the text would be read back in another encoding";
    return false;
  }

  const CFileDocument& m_document;
  const CFileStore& m_store;
  TextFileEncoding m_encoding;
  std::string& m_file;
  CString& m_error;
  std::size_t m_begin = 0;
  CByteSpan m_lines;  ///< Still to be written.
};

// ---- Describing

int Column(std::string_view text, std::size_t place, TextFileEncoding encoding) {
  return 1 + DecodeText(text.substr(0, place), encoding).GetLength();
}

FileObjectLine DescribeLine(std::string_view text, TextFileEncoding encoding,
                            const CString& section) {
  const CLineSyntax syntax = ParseLine(text, encoding);
  FileObjectLine line;
  line.kind = syntax.kind;
  line.text = DecodeText(text, encoding);
  line.validText = IsValidText(text, encoding);
  line.section = section;
  const CString name =
      DecodeText(text.substr(syntax.nameBegin, syntax.nameEnd - syntax.nameBegin), encoding);
  if (syntax.kind == LineKind::Section) {
    line.section = name;
  } else if (syntax.kind == LineKind::Item) {
    line.key = name;
    line.value = DecodeText(text.substr(syntax.valueBegin), encoding);
    line.keyColumn = Column(text, syntax.nameBegin, encoding);
    line.valueColumn = Column(text, syntax.valueBegin, encoding);
  }
  return line;
}

}  // namespace

CFileDocument ParseFile(const std::shared_ptr<const std::string>& bytes) {
  const CTextFile file(*bytes, DetectEncoding(*bytes));
  CFileDocument document;
  document.StartLoading(bytes, file.encoding,
                        EndsLinesWithReturn(file, document.EndsLinesWithReturn()));
  for (std::size_t begin = file.begin; begin < file.end;) {
    const CLineBounds line = LineAt(file.lines, begin, file.encoding);
    AddLine(file, line, document);
    begin = line.next;
  }
  document.FinishLoading();
  return document;
}

bool WriteFile(const CFileDocument& document, std::string& file, CString& error) {
  return CFileWriter(document, file, error).Write();
}

std::vector<FileObjectLine> DescribeLines(const std::string& bytes, TextFileEncoding encoding) {
  const CTextFile file(bytes, encoding);
  std::vector<FileObjectLine> lines;
  CString section;
  for (std::size_t begin = file.begin; begin < file.end;) {
    const CLineBounds bounds = LineAt(file.lines, begin, encoding);
    lines.push_back(DescribeLine(file.lines.substr(begin, bounds.end - begin), encoding, section));
    lines.back().number = static_cast<int>(lines.size());
    section = lines.back().section;
    begin = bounds.next;
  }
  return lines;
}

}  // namespace lum::detail
