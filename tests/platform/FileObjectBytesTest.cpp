// The bytes of a saved file: what was not changed stays as it was, in every encoding; and what Load
// and Save refuse.
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/platform/FileObjectTesting.h"

namespace {

using FileObjectBytes = FileObjectTesting;

// UTF-16 bytes of an ASCII text with a mark.
std::string Utf16(const std::string& ascii, bool lowFirst) {
  std::string bytes = lowFirst ? "\xFF\xFE" : "\xFE\xFF";
  for (const char ch : ascii) {
    bytes += lowFirst ? ch : '\0';
    bytes += lowFirst ? '\0' : ch;
  }
  return bytes;
}

std::string RandomBytes(std::size_t count) {
  std::mt19937 random(20240229);
  std::string bytes(count, '\0');
  for (char& byte : bytes) {
    byte = static_cast<char>(random() & 0xFF);
  }
  return bytes;
}

struct Unchanged {
  const char* note;
  std::string bytes;
  TextFileEncoding encoding;
};

TEST_F(FileObjectBytes, SavesAnUnchangedFileByteForByte) {
  using E = TextFileEncoding;
  const Unchanged cases[] = {
      {"empty", "", E::Utf8},
      {"only UTF-8 mark", "\xEF\xBB\xBF", E::Utf8WithMark},
      {"only UTF-16 marks", "\xFF\xFE", E::Utf16LittleEndian},
      {"only UTF-16 marks", "\xFE\xFF", E::Utf16BigEndian},
      {"one line feed", "\n", E::Utf8},
      {"no line feed at the end", "[S]\na=1", E::Utf8},
      {"UTF-8", "[S\xC3\xA4]\nk\xE2\x82\xAC=\xF0\x9F\x98\x80\n", E::Utf8},
      {"UTF-8 with mark", "\xEF\xBB\xBF[S]\na=\xC3\xA4\r\n", E::Utf8WithMark},
      {"UTF-8 with mark and stray bytes", "\xEF\xBB\xBF[S]\na=\xE4\xFF\n", E::Utf8WithMark},
      {"Latin-1", "[S]\na=\xE4\xF6\xFC\nb=\xDF\n", E::Ansi},
      {"UTF-16 low first", Utf16("[S]\r\na=1\r\n;x", true), E::Utf16LittleEndian},
      {"UTF-16 high first", Utf16("[S]\na=1\n\n", false), E::Utf16BigEndian},
      {"UTF-16 of odd size", Utf16("[S]\na=1", true) + "x", E::Utf16LittleEndian},
      {"UTF-16 mark and one byte", "\xFE\xFF\n", E::Utf16BigEndian},
      {"lone surrogates",
       std::string("\xFF\xFE"
                   "a\0=\0\x00\xDC\x00\xD8",
                   10),
       E::Utf16LittleEndian},
      {"mixed line ends", "[S]\r\na=1\nb=2\r\n\r\r\n\rc=3\r", E::Utf8},
      {"NULs", std::string("\0[S]\n\0=\0\na\0=\n\0", 14), E::Utf8},
      {"overlong and truncated", "a=\xC0\xAF\nb=\xE2\x82", E::Ansi},
      {"random", RandomBytes(100000), E::Ansi},
      {"random after a UTF-8 mark", "\xEF\xBB\xBF" + RandomBytes(100000), E::Utf8WithMark},
      {"random after a UTF-16 mark", "\xFF\xFE" + RandomBytes(100001), E::Utf16LittleEndian},
      {"one long line", "a=" + std::string(5 << 20, 'x'), E::Utf8},
  };
  for (const Unchanged& test : cases) {
    FileObject file = Loaded(test.bytes);
    EXPECT_EQ(file.Encoding(), test.encoding) << test.note;
    EXPECT_TRUE(Saved(file) == test.bytes) << test.note;
    FileObject copy(file);
    EXPECT_TRUE(Saved(copy) == test.bytes) << test.note;
  }
}

struct Edit {
  const char* note;
  std::string bytes;
  const wchar_t* key;
  const wchar_t* value;
  std::string saved;
};

TEST_F(FileObjectBytes, ChangesNoByteButThoseOfTheValue) {
  const Edit cases[] = {
      {"equal value", " k \t=\t v \r\nrest", L"k", L"v ", " k \t=\t v \r\nrest"},
      {"blanks and line end stay", " k \t=\t v \r\nrest\n", L"k", L"w", " k \t=\t w\r\nrest\n"},
      {"emptied", "k= v\n", L"k", L"", "k= \n"},
      {"filled", "k=\r\n", L"k", L"v", "k=v\r\n"},
      {"last line", "x=1\nk=v", L"k", L"w", "x=1\nk=w"},
      {"stray bytes elsewhere", "x\xFF=\xE4\nk\xE4=v\n\xFF", L"k\u00E4", L"w",
       "x\xFF=\xE4\nk\xE4=w\n\xFF"},
      {"equal to a stray byte", "k=\xE4\n", L"k", L"\u00E4", "k=\xE4\n"},
      {"UTF-16", Utf16("k = v\r\nx\n", true), L"k", L"w2", Utf16("k = w2\r\nx\n", true)},
      {"UTF-16 of odd size", Utf16("k=v", false) + "x", L"k", L"w2", Utf16("k=w2", false) + "x"},
      {"beyond 16 bits", Utf16("k=v\n", true), L"k", L"\U0001F600",
       Utf16("k=", true) + std::string("\x3D\xD8\x00\xDE\n\0", 6)},
  };
  for (const Edit& test : cases) {
    FileObject file = Loaded(test.bytes);
    EXPECT_TRUE(file.SetItem(L"", test.key, test.value, false)) << test.note;
    EXPECT_EQ(Saved(file), test.saved) << test.note;
  }
}

TEST_F(FileObjectBytes, SettingAValueBackBringsItsBytesBack) {
  FileObject file = Loaded("k=\xE4\n");
  EXPECT_TRUE(file.SetItem(L"", L"k", L"other", false));
  EXPECT_TRUE(file.SetItem(L"", L"k", L"\u00E4", false));
  EXPECT_EQ(Saved(file), "k=\xE4\n");
}

const Edit kAdditions[] = {
    {"after the last item", "[S]\na=1\n\n; about T\n[T]\n", L"n", L"0",
     "[S]\na=1\nn=0\n\n; about T\n[T]\n"},
    {"no item, no comment", "[S]\n\n[T]\n", L"n", L"0", "[S]\nn=0\n\n[T]\n"},
    {"no item, a comment", "[S]\n; about S\nunknown\n \n; about T\n[T]\n", L"n", L"0",
     "[S]\n; about S\nunknown\nn=0\n \n; about T\n[T]\n"},
    {"line end of the first line", "[S]\r\na=1\n", L"n", L"0", "[S]\r\na=1\nn=0\r\n"},
    {"line end of the first line", "[S]\na=1\r\n", L"n", L"0", "[S]\na=1\r\nn=0\n"},
    {"last line without end", "[S]\r\na=1", L"n", L"0", "[S]\r\na=1\r\nn=0\r\n"},
    {"header without end", "[S]", L"n", L"0", WithSystemLineEnds("[S]\nn=0\n")},
    {"last line with a lone return", "[S]\na=1\r", L"n", L"0", "[S]\na=1\r\r\nn=0\n"},
    {"new section", "[T]\nx=1\n", L"n", L"0", "[T]\nx=1\n\n[S]\nn=0\n"},
    {"new section after a blank line", "[T]\r\n\r\n", L"n", L"0", "[T]\r\n\r\n[S]\r\nn=0\r\n"},
    {"new section after a blank line", "[T]\n\n", L"n", L"0", "[T]\n\n[S]\nn=0\n"},
    {"new section after a blank line", "\n", L"n", L"0", "\n[S]\nn=0\n"},
    {"new section after a line without end", "; x", L"n", L"0",
     WithSystemLineEnds("; x\n\n[S]\nn=0\n")},
    {"empty file", "", L"n", L"0", WithSystemLineEnds("[S]\nn=0\n")},
    {"only a mark", "\xEF\xBB\xBF", L"n", L"\u00E4",
     WithSystemLineEnds("\xEF\xBB\xBF[S]\nn=\xC3\xA4\n")},
    {"UTF-8", "[S]\n", L"k\u00E4", L"\u20AC", "[S]\nk\xC3\xA4=\xE2\x82\xAC\n"},
    {"UTF-16", Utf16("[S]\r\n", true), L"n", L"0", Utf16("[S]\r\nn=0\r\n", true)},
    {"UTF-16 without end", Utf16("x", false), L"n", L"0",
     Utf16(WithSystemLineEnds("x\n\n[S]\nn=0\n"), false)},
    {"UTF-16 of odd size", Utf16("[S]", true) + "x", L"n", L"0",
     Utf16(WithSystemLineEnds("[S]\nn=0\n"), true) + "x"},
};

TEST_F(FileObjectBytes, WritesNewLinesInTheStyleOfTheFile) {
  for (const Edit& test : kAdditions) {
    FileObject file = Loaded(test.bytes);
    EXPECT_TRUE(file.SetItem(L"S", test.key, test.value, true)) << test.note;
    EXPECT_EQ(Saved(file), test.saved) << test.note;
    FileObject again = Loaded(test.saved);
    EXPECT_EQ(Value(again, L"S", test.key), CString(test.value)) << test.note;
    EXPECT_EQ(Saved(again), test.saved) << test.note;
  }
}

TEST_F(FileObjectBytes, AReturnThatEndsTheFileStaysPartOfItsValue) {
  FileObject file = Loaded("[S]\na=1\r");
  EXPECT_TRUE(file.SetItem(L"S", L"n", L"0", true));
  EXPECT_EQ(Value(Loaded(Saved(file)), L"S", L"a"), L"1\r");
}

TEST_F(FileObjectBytes, SavesAgainAndAgain) {
  FileObject file;
  EXPECT_TRUE(file.SetItem(L"A", L"a", L"1", true));
  EXPECT_EQ(Saved(file), WithSystemLineEnds("[A]\na=1\n"));
  EXPECT_TRUE(file.SetItem(L"B", L"b", L"2", true));
  EXPECT_EQ(Saved(file), WithSystemLineEnds("[A]\na=1\n\n[B]\nb=2\n"));
  EXPECT_TRUE(file.SetItem(L"A", L"c", L"3", true));
  EXPECT_EQ(Saved(file), WithSystemLineEnds("[A]\na=1\nc=3\n\n[B]\nb=2\n"));
  EXPECT_EQ(file.Encoding(), TextFileEncoding::Utf8);
}

// ---- Texts that an encoding cannot hold

TEST_F(FileObjectBytes, RefusesToSaveWhatTheEncodingCannotHold) {
  const CString lone(L"x\xD800");
  FileObject file = Loaded("[S]\na=1\n");
  WriteBytes(m_folder.File("target"), "old");
  EXPECT_TRUE(file.SetItem(L"S", L"a", lone, true));
  EXPECT_FALSE(file.Save(PathText(m_folder.File("target"))));
  EXPECT_EQ(ReadBytes(m_folder.File("target")), "old");
  EXPECT_EQ(m_folder.EntryCount(), 2u);
  EXPECT_EQ(file.LastError(),
            L"cannot write \"" + PathText(m_folder.File("target")) +
                L"\": section \"S\", key \"a\": the text has characters that the file's encoding "
                L"cannot hold");
  EXPECT_EQ(Value(file, L"S", L"a"), lone);
  EXPECT_TRUE(file.SetItem(L"S", L"a", L"2", true));
  EXPECT_EQ(Saved(file), "[S]\na=2\n");
}

TEST_F(FileObjectBytes, RefusesToSaveWhereverATextCannotBeHeld) {
  static const CString lone(L"x\xD800");
  const struct {
    const char* note;
    std::function<bool(FileObject&)> change;
    CString place;
  } rows[] = {
      {"a loaded value", [](auto& file) { return file.SetItem(L"S", L"a", lone, true); },
       L"section \"S\", key \"a\""},
      {"a loaded key", [](auto& file) { return file.RenameItem(L"S", L"a", lone); },
       L"section \"S\", key \"" + lone + L"\""},
      {"a new value", [](auto& file) { return file.SetItem(L"S", L"n", lone, true); },
       L"section \"S\", key \"n\""},
      {"a new key", [](auto& file) { return file.SetItem(L"S", lone, L"1", true); },
       L"section \"S\", key \"" + lone + L"\""},
      {"a new section", [](auto& file) { return file.CreateSection(lone, false); },
       L"section \"" + lone + L"\""},
  };
  WriteBytes(m_folder.File("target"), "old");
  for (const auto& row : rows) {
    FileObject file = Loaded("[S]\na=1\n");
    EXPECT_TRUE(row.change(file)) << row.note;
    EXPECT_FALSE(file.Save(PathText(m_folder.File("target")))) << row.note;
    EXPECT_NE(file.LastError().Find(L": " + row.place + L": the text"), -1) << row.note;
    EXPECT_EQ(ReadBytes(m_folder.File("target")), "old") << row.note;
  }
}

TEST_F(FileObjectBytes, KeepsLoneSurrogatesInUtf16) {
  FileObject file = Loaded(Utf16("k=v\n", true));
  EXPECT_TRUE(file.SetItem(L"", L"k", L"\xD800", true));
  const std::string saved = Saved(file);
  EXPECT_EQ(saved, Utf16("k=", true) + std::string("\x00\xD8\n\0", 4));
  EXPECT_EQ(Value(Loaded(saved), L"", L"k"), L"\xD800");
}

TEST_F(FileObjectBytes, RefusesToSaveWhatReadsBackInAnotherEncoding) {
  FileObject file;
  EXPECT_TRUE(file.SetItem(L"", L"\uFEFFk", L"1", true));
  EXPECT_FALSE(file.Save(PathText(m_folder.File("target"))));
  EXPECT_NE(file.LastError().Find(L"another encoding"), -1);
  EXPECT_EQ(m_folder.EntryCount(), 0u);
}

// ---- Failing loads

TEST_F(FileObjectBytes, LeavesEverythingWhenLoadingFails) {
  FileObject file = Loaded("[S]\na=1\n");
  const CString missing = PathText(m_folder.File("missing"));
  EXPECT_FALSE(file.Load(missing));
  EXPECT_EQ(file.LastError(), L"cannot read \"" + missing + L"\": No such file or directory");
  const CString folder = PathText(m_folder.Path());
  EXPECT_FALSE(file.Load(folder));
  EXPECT_EQ(file.LastError(), L"cannot read \"" + folder + L"\": Is a directory");
  EXPECT_FALSE(file.Load(L""));
  EXPECT_FALSE(file.Load(CString(L"loaded\0x", 8)));
  EXPECT_EQ(Items(file, L"S"), "a=1 ");
  EXPECT_EQ(file.LoadedLines().size(), 2u);
  EXPECT_EQ(Saved(file), "[S]\na=1\n");
}

TEST_F(FileObjectBytes, RefusesFilesAboveTheLimit) {
  const std::filesystem::path path = m_folder.File("large");
  WriteBytes(path, "a=1\n");
  std::filesystem::resize_file(path, FileObject::kMaxFileBytes + 1);
  FileObject file;
  EXPECT_FALSE(file.Load(PathText(path)));
  EXPECT_EQ(file.LastError(),
            L"cannot read \"" + PathText(path) + L"\": the file is larger than 1073741824 bytes");
  EXPECT_TRUE(file.SectionNames().empty());
}

TEST_F(FileObjectBytes, LoadingReplacesEverything) {
  FileObject file = Loaded(Utf16("[A]\r\na=1\r\n", true));
  WriteBytes(m_folder.File("other"), "[B]\nb=2\n");
  EXPECT_TRUE(file.Load(PathText(m_folder.File("other"))));
  EXPECT_EQ(file.SectionNames(), std::vector<CString>{L"B"});
  EXPECT_EQ(file.Encoding(), TextFileEncoding::Utf8);
  EXPECT_EQ(file.LastError(), L"");
  EXPECT_TRUE(file.SetItem(L"C", L"c", L"3", true));
  EXPECT_EQ(Saved(file), "[B]\nb=2\n\n[C]\nc=3\n");
}

}  // namespace
