// A model of FileObject for comparison: the file is a plain list of lines, and everything is looked
// for by searching it.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace lum::testing {

struct ModelLine {
  enum class Kind { Text, Header, Item };

  Kind kind;
  int section;  // What it belongs to; 0 are the lines above all headers.
  std::string key;
  std::string value;
  std::string before;  // An item's bytes before its value, any other line's bytes.
  bool isLoaded;
  bool isRemembered = false;
};

// Sections are numbers: 0 has no name, n is called "Sn". ModelLine ends are LF.
class FileModel {
 public:
  using Items = std::vector<std::pair<std::string, std::string>>;

  void Append(ModelLine line) { m_lines.push_back(std::move(line)); }

  std::string Bytes() const {
    std::string bytes;
    for (const ModelLine& line : m_lines) {
      if (line.isRemembered) {
        continue;
      }
      if (line.kind == ModelLine::Kind::Header && !line.isLoaded && !bytes.empty() &&
          !bytes.ends_with("\n\n") && bytes != "\n") {
        bytes += "\n";
      }
      bytes += line.before + line.value + "\n";
    }
    return bytes;
  }

  Items Walk(int section) const {
    Items items;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
      if (IsLive(i, section) && Counting(section, m_lines[i].key, false) == i) {
        items.emplace_back(m_lines[i].key, m_lines[i].value);
      }
    }
    return items;
  }

  bool Get(int section, const std::string& key, std::string& value) const {
    const std::size_t place = Counting(section, key, false);
    if (place == m_lines.size()) {
      return false;
    }
    value = m_lines[place].value;
    return true;
  }

  void Put(int section, const std::string& key, const std::string& value) {
    EnsureSection(section);
    std::size_t place = Counting(section, key, false);
    if (place != m_lines.size()) {
      m_lines[place].value = value;
      FollowTo(place, section);
      return;
    }
    place = Counting(section, key, true);
    if (place == m_lines.size()) {
      place = InsertionPlace(section);
      Insert(place, {ModelLine::Kind::Item, section, key, value, key + "=", false});
    } else {
      ReviveOlder(section, key);
      place = MoveBehindCursor(place, section);
      m_lines[place].isRemembered = false;
      m_lines[place].value = value;
    }
    if (HasCursor(section)) {
      m_cursors[Index(section)] = place;
    }
  }

  bool Remove(int section, const std::string& key) {
    bool removed = false;
    for (std::size_t i = m_lines.size(); i-- > 0;) {
      if (IsLive(i, section) && m_lines[i].key == key) {
        Erase(i);
        removed = true;
      }
    }
    return removed;
  }

  void Replace(int section, const Items& items) {
    for (ModelLine& line : m_lines) {
      if (line.section == section && line.kind == ModelLine::Kind::Item) {
        line.isRemembered = true;
      }
    }
    StartCursor(section);
    for (const auto& [key, value] : items) {
      Put(section, key, value);
    }
    Forget(section, false);
    StartCursor(section);
  }

  void RemoveSection(int section) {
    for (std::size_t i = m_lines.size(); i-- > 0;) {
      if (m_lines[i].section == section) {
        Erase(i);
      }
    }
    m_cursors[Index(section)] = kNone;
  }

  bool Has(int section) const {
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
      const bool isHeader =
          m_lines[i].section == section && m_lines[i].kind == ModelLine::Kind::Header;
      if (isHeader || IsLive(i, section)) {
        return true;
      }
    }
    return false;
  }

  void EnsureSection(int section) {
    if (section != 0 && !Has(section)) {
      Append(
          {ModelLine::Kind::Header, section, "", "", "[S" + std::to_string(section) + "]", false});
    }
  }

  void Saved() {
    for (int section = 0; section < kSections; ++section) {
      Forget(section, true);
      m_cursors[Index(section)] = kNone;
    }
  }

  static constexpr int kSections = 4;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  // The cursor above all lines.
  static constexpr std::size_t kTop = static_cast<std::size_t>(-2);

  static std::size_t Index(int section) { return static_cast<std::size_t>(section); }
  bool HasCursor(int section) const { return m_cursors[Index(section)] != kNone; }
  // The first place below the cursor.
  std::size_t Below(int section) const {
    const std::size_t cursor = m_cursors[Index(section)];
    return cursor == kTop ? 0 : cursor + 1;
  }

  bool IsLive(std::size_t place, int section) const {
    const ModelLine& line = m_lines[place];
    return line.section == section && line.kind == ModelLine::Kind::Item && !line.isRemembered;
  }

  std::size_t Counting(int section, const std::string& key, bool isRemembered) const {
    for (std::size_t i = m_lines.size(); i-- > 0;) {
      const ModelLine& line = m_lines[i];
      if (line.kind == ModelLine::Kind::Item && line.section == section && line.key == key &&
          line.isRemembered == isRemembered) {
        return i;
      }
    }
    return m_lines.size();
  }

  void ReviveOlder(int section, const std::string& key) {
    const std::size_t counting = Counting(section, key, true);
    for (std::size_t i = 0; i < counting; ++i) {
      if (m_lines[i].section == section && m_lines[i].key == key) {
        m_lines[i].isRemembered = false;
      }
    }
  }

  std::size_t MoveBehindCursor(std::size_t place, int section) {
    if (m_cursors[Index(section)] == kTop || place >= m_cursors[Index(section)]) {
      return place;
    }
    const ModelLine moved = m_lines[place];
    m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(place));
    Shift(place, -1);
    const std::size_t target = Below(section);
    Insert(target, moved);
    return target;
  }

  void FollowTo(std::size_t place, int section) {
    if (HasCursor(section) && place >= Below(section)) {
      m_cursors[Index(section)] = place;
    }
  }

  std::size_t InsertionPlace(int section) const {
    if (HasCursor(section)) {
      return Below(section);
    }
    std::size_t begin = m_lines.size();
    while (begin > 0 && m_lines[begin - 1].section != section) {
      --begin;
    }
    const std::size_t end = begin;
    while (begin > 0 && m_lines[begin - 1].section == section &&
           m_lines[begin - 1].kind != ModelLine::Kind::Header) {
      --begin;
    }
    if (section == 0 && end == 0) {
      return 0;
    }
    for (std::size_t i = end; i > begin; --i) {
      if (m_lines[i - 1].kind == ModelLine::Kind::Item) {
        return i;
      }
    }
    while (begin < end && m_lines[begin].before.find_first_not_of(" \t") != std::string::npos) {
      ++begin;
    }
    return begin;
  }

  // Moves the cursors at or below a place along with the lines.
  void Shift(std::size_t place, int by) {
    for (std::size_t& cursor : m_cursors) {
      if (cursor < kTop && cursor >= place) {
        cursor += static_cast<std::size_t>(by);
      }
    }
  }

  void Insert(std::size_t place, ModelLine line) {
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(place), std::move(line));
    Shift(place, 1);
  }

  // A cursor on the line goes up to the item or header above it.
  void Erase(std::size_t place) {
    std::size_t& cursor = m_cursors[Index(m_lines[place].section)];
    if (cursor == place) {
      const int section = m_lines[place].section;
      do {
        cursor = cursor == 0 ? kTop : cursor - 1;
      } while (cursor != kTop && (m_lines[cursor].section != section ||
                                  m_lines[cursor].kind == ModelLine::Kind::Text));
    }
    m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(place));
    Shift(place, -1);
  }

  void StartCursor(int section) {
    m_cursors[Index(section)] = kNone;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
      if (m_lines[i].section == section && m_lines[i].isRemembered) {
        m_cursors[Index(section)] = i == 0 ? kTop : i - 1;
        return;
      }
    }
  }

  void Forget(int section, bool loadedToo) {
    for (std::size_t i = m_lines.size(); i-- > 0;) {
      const ModelLine& line = m_lines[i];
      if (line.section == section && line.isRemembered && (loadedToo || !line.isLoaded)) {
        Erase(i);
      }
    }
  }

  std::vector<ModelLine> m_lines;
  std::vector<std::size_t> m_cursors = std::vector<std::size_t>(kSections, kNone);
};

}  // namespace lum::testing
