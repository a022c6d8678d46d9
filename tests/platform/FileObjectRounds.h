// CFileObjectRounds: random files under random calls, side by side with a model of what has to come
// out.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include "platform/portable/EncodedText.h"
#include "tests/platform/FileObjectModel.h"
#include "tests/platform/FileObjectTesting.h"

class CFileObjectRounds : public FileObjectTesting {
 protected:
  using FileModel = lum::testing::FileModel;
  using ModelLine = lum::testing::ModelLine;

  int Random(int count) { return static_cast<int>(m_next() % static_cast<unsigned>(count)); }
  // The keys and values of a round are short or of all sorts. A long value that is replaced again
  // and again leaves much behind.
  std::string RandomKey() {
    static const std::string keys[] = {"Sensor.Offset.Depth", "Sensor(12)", "Größe", "水深.m",
                                       std::string(300, 'k')};
    const int key = Random(5);
    return m_isPlain ? std::string(1, static_cast<char>('a' + key)) : keys[key];
  }
  std::string RandomValue() {
    static const std::string values[] = {"",
                                         "1,37.5",
                                         "0,Outer harbour 12",
                                         "0,21 °C",
                                         std::string(3000, 'v'),
                                         std::string(200, 'v') + "水"};
    return m_isPlain ? std::to_string(Random(3)) : values[Random(6)];
  }
  // Most calls meet in one section, so that they meet each other's traces.
  int RandomSection() { return Random(4) > 0 ? 1 : Random(FileModel::kSections); }

  static CString Name(int section) {
    CString name;
    if (section > 0) {
      name.Format(L"S%d", section);
    }
    return name;
  }
  static CString Wide(const std::string& text) { return Utf8ToWide(CStringA(text.c_str())); }

  ModelLine RandomLine(int& section) {
    static const char* const texts[] = {"", " ", "; note", "// note", "unknown", "[open"};
    const int dice = Random(10);
    if (dice < 2) {
      section = 1 + Random(FileModel::kSections - 1);
      return {ModelLine::Kind::Header, section, "", "", "[S" + std::to_string(section) + "]", true};
    }
    if (dice < 5) {
      return {ModelLine::Kind::Text, section, "", "", texts[Random(6)], true};
    }
    const std::string key = RandomKey();
    return {ModelLine::Kind::Item,
            section,
            key,
            RandomValue(),
            Random(2) ? key + "=" : " " + key + " = ",
            true};
  }

  void LoadRandomFile() {
    m_model = FileModel();
    int section = 0;
    for (int count = Random(25); count > 0; --count) {
      m_model.Append(RandomLine(section));
    }
    m_isEmptyAtFirst = m_model.Bytes().empty();
    m_file = Loaded(Encoded(m_model.Bytes()));
  }

  // The bytes of a UTF-8 text in the encoding of the round.
  std::string Encoded(const std::string& text) const {
    std::string bytes(lum::detail::EncodingMark(m_encoding));
    EXPECT_TRUE(lum::detail::EncodeText(Wide(text), m_encoding, bytes));
    return bytes;
  }

  void StartRound(int round) {
    static constexpr TextFileEncoding kEncodings[] = {
        TextFileEncoding::Utf8, TextFileEncoding::Utf8, TextFileEncoding::Utf8WithMark,
        TextFileEncoding::Utf16LittleEndian, TextFileEncoding::Utf16BigEndian};
    m_isPlain = round % 2 == 0;
    m_encoding = kEncodings[round % 5];
    LoadRandomFile();
  }

  // A file without a line takes the system's way to end lines.
  std::string ExpectedBytes() const {
    const std::string bytes = m_model.Bytes();
    return Encoded(m_isEmptyAtFirst ? WithSystemLineEnds(bytes) : bytes);
  }

  FileModel::Items RandomItems() {
    FileModel::Items items;
    for (int count = Random(6); count > 0; --count) {
      const std::string key = RandomKey();
      if (std::none_of(items.begin(), items.end(),
                       [&](const auto& item) { return item.first == key; })) {
        items.emplace_back(key, RandomValue());
      }
    }
    return items;
  }

  // The items that a real caller keeps: some of those there are, in their order.
  FileModel::Items SomeOf(const FileModel::Items& all) {
    FileModel::Items items;
    for (const auto& item : all) {
      if (Random(2)) {
        items.push_back(item);
      }
    }
    return items;
  }

  void Replace(int section, const FileModel::Items& items) {
    FileObject from;
    from.CreateSection(Name(section), false);
    for (const auto& [key, value] : items) {
      EXPECT_TRUE(from.SetItem(Name(section), Wide(key), Wide(value), true));
    }
    if (from.HasSection(Name(section))) {
      m_model.EnsureSection(section);
    }
    // Without the section on either side nothing happens.
    if (m_model.Has(section) || !items.empty()) {
      m_model.Replace(section, items);
    }
    EXPECT_TRUE(m_file.CopySection(Name(section), from));
  }

  void SetRandomItem() {
    const int section = RandomSection();
    const std::string key = RandomKey();
    const std::string value = RandomValue();
    m_model.Put(section, key, value);
    EXPECT_TRUE(m_file.SetItem(Name(section), Wide(key), Wide(value), true));
  }

  void DoSomething() {
    const int section = RandomSection();
    const int dice = Random(200);
    if (dice < 125) {
      SetRandomItem();
    } else if (dice < 161) {
      const std::string key = RandomKey();
      EXPECT_EQ(m_file.RemoveItem(Name(section), Wide(key)), m_model.Remove(section, key));
    } else if (dice < 176) {
      Replace(section, RandomItems());
    } else if (dice < 191) {
      Replace(section, SomeOf(m_model.Walk(section)));
    } else if (dice < 196) {
      const bool has = m_model.Has(section);
      EXPECT_EQ(m_file.RemoveSection(Name(section)), has);
      if (has) {
        m_model.RemoveSection(section);
      }
    } else if (dice < 199) {
      m_file = FileObject(m_file);
    } else {
      EXPECT_EQ(Saved(m_file), ExpectedBytes());
      m_model.Saved();
    }
  }

  static std::string Text(const FileModel::Items& items) {
    std::string text;
    for (const auto& [key, value] : items) {
      text += key + "=" + value + " ";
    }
    return text;
  }

  void Compare(int section) {
    const CString name = Name(section);
    const FileModel::Items items = m_model.Walk(section);
    ASSERT_EQ(Items(m_file, name), Text(items));
    ASSERT_EQ(m_file.ItemCount(name), static_cast<int>(items.size()));
    ASSERT_EQ(m_file.HasSection(name), m_model.Has(section));
    const std::string key = RandomKey();
    std::string expected = "none";
    CString value = L"none";
    ASSERT_EQ(m_file.GetItem(name, Wide(key), value), m_model.Get(section, key, expected));
    ASSERT_EQ(value, Wide(expected));
  }

  void CompareAll() {
    for (int section = 0; section < FileModel::kSections; ++section) {
      ASSERT_NO_FATAL_FAILURE(Compare(section));
    }
  }

  void CompareSaved() {
    const std::string saved = Saved(m_file);
    ASSERT_EQ(saved, ExpectedBytes());
    m_model.Saved();
    const FileObject again = Loaded(saved);
    for (int section = 0; section < FileModel::kSections; ++section) {
      ASSERT_EQ(Items(again, Name(section)), Text(m_model.Walk(section)));
    }
  }

  /// Where the choices come from: any numbers, one after another.
  std::function<std::uint_fast32_t()> m_next = std::mt19937(71);
  FileModel m_model;
  bool m_isPlain = true;
  TextFileEncoding m_encoding = TextFileEncoding::Utf8;
  bool m_isEmptyAtFirst = true;
  FileObject m_file;
};
