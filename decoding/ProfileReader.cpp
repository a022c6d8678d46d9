#include "decoding/ProfileReader.h"

#include <algorithm>
#include <utility>

#include "decoding/Utf8Text.h"

namespace lum::decoding {
namespace {

using Kind = FileObjectLine::Kind;

constexpr std::string_view kProfileSection = "Profile";
constexpr std::string_view kMessageMark = "Message";
constexpr std::string_view kSections[] = {kProfileSection, kMessageMark};
constexpr std::string_view kProfileKeys[] = {"Format", "Separator"};
constexpr LogFormat kFormats[] = {LogFormat::Plain, LogFormat::Candump, LogFormat::J1939,
                                  LogFormat::Nmea, LogFormat::Csv};

/// "tab", "blank" or the character itself: none that fields themselves are made of.
std::optional<char> ReadSeparator(std::string_view text) {
  if (text == "tab") {
    return '\t';
  }
  if (text == "blank") {
    return ' ';
  }
  constexpr std::string_view kSeparators = ",;:|!#$%&/*~^_@\t";
  const bool isOne = text.size() == 1 && kSeparators.find(text[0]) != std::string_view::npos;
  return isOne ? std::optional(text[0]) : std::nullopt;
}

std::string FormatNames() {
  std::string names;
  for (const LogFormat format : kFormats) {
    names += (names.empty() ? "" : ", ") + std::string(LogFormatName(format));
  }
  return names;
}

std::string NearestFormat(std::string_view text) {
  std::vector<std::string_view> names;
  for (const LogFormat format : kFormats) {
    names.push_back(LogFormatName(format));
  }
  return Nearest(text, names);
}

/// "Message" is kept apart from the name behind it.
std::string SuggestSection(const PlacedText& name) {
  const std::size_t blank = std::min(name.text.find_first_of(" \t"), name.text.size());
  const std::string nearest = Nearest(name.text.substr(0, blank), kSections);
  return nearest.empty() ? "" : nearest + std::string(name.text.substr(blank));
}

/// What stands behind "Message" and a blank; nothing when it is another section.
std::optional<PlacedText> MessageName(const PlacedText& name) {
  if (!name.text.starts_with(kMessageMark)) {
    return std::nullopt;
  }
  const PlacedText rest = name.From(kMessageMark.size());
  const bool isMark = rest.text.empty() || rest.text[0] == ' ' || rest.text[0] == '\t';
  return isMark ? std::optional(rest.WithoutBlanks()) : std::nullopt;
}

}  // namespace

void CProfileReader::Take(const FileObjectLine& line) {
  const std::string text = ToUtf8(line.text);
  if (line.kind == Kind::Section) {
    const PlacedText header = PlacedText{text, line.number, 1}.WithoutBlanks();
    const std::string name = ToUtf8(line.section);
    const PlacedText inside = {name, line.number, header.column + 1};
    OpenSection(header, inside.WithoutBlanks());
  } else if (line.kind == Kind::Item) {
    const std::string key = ToUtf8(line.key);
    const std::string value = ToUtf8(line.value);
    const PlacedText placed = {value, line.number, line.valueColumn};
    TakeItem({key, line.number, line.keyColumn}, placed.WithoutBlanks());
  }
}

void CProfileReader::OpenSection(const PlacedText& header, const PlacedText& name) {
  CloseMessage();
  m_keys.clear();
  if (const std::optional<PlacedText> message = MessageName(name)) {
    OpenMessage(header, *message);
    return;
  }
  const bool isKnown = name.text == kProfileSection;
  m_section = isKnown ? Section::Profile : Section::Unknown;
  if (!isKnown) {
    m_faults.Add(header, "unknown section " + QuotedPart(name.text), "[Profile] or [Message NAME]",
                 SuggestSection(name));
    return;
  }
  const auto [first, isNew] = m_sections.try_emplace(std::string(name.text), header.line);
  if (!isNew) {
    m_faults.Add(header, "the section [Profile] again",
                 "it once; it stands in line " + std::to_string(first->second));
  }
}

void CProfileReader::OpenMessage(const PlacedText& header, const PlacedText& name) {
  m_section = Section::Message;
  m_hasMessages = true;
  Message& message = m_message.emplace(m_faults);
  message.rule.name = name.text;
  message.rule.line = header.line;
  message.place = header.WithoutText();
  if (name.text.empty()) {
    m_faults.Add(header, "a message without a name", "[Message NAME]");
    message.isKept = false;
    return;
  }
  const auto [first, isNew] =
      m_sections.try_emplace("Message " + std::string(name.text), header.line);
  if (!isNew) {
    m_faults.Add(header, "the message " + QuotedPart(name.text) + " again",
                 "it once; it stands in line " + std::to_string(first->second));
    message.isKept = false;
  } else if (m_profile.messages.size() == kMaxProfileMessages) {
    message.isKept = false;
    if (!std::exchange(m_hasTooMany, true)) {
      m_faults.Add(header, "one message too many",
                   "at most " + std::to_string(kMaxProfileMessages) + " messages");
    }
  }
}

void CProfileReader::CloseMessage() {
  if (!m_message) {
    return;
  }
  Message& message = *m_message;
  if (!message.columns.HasColumns()) {
    m_faults.Add(message.place, "the message " + QuotedPart(message.rule.name) + " has no columns",
                 "an item such as NAME.Formula");
  }
  message.rule.match = message.match.Finish();
  message.rule.columns = message.columns.Finish();
  for (std::size_t i = 0; i < message.rule.match.size(); ++i) {
    const std::string& text = message.rule.match[i].text;
    m_conditions.push_back(
        {message.rule.match[i].part, message.match.Places()[i], text.substr(0, text.find('='))});
  }
  if (message.isKept) {
    m_profile.messages.push_back(std::move(message.rule));
  }
  m_message.reset();
}

void CProfileReader::TakeItem(const PlacedText& key, const PlacedText& value) {
  if (m_section == Section::None) {
    m_faults.Add(key, "the item " + QuotedPart(key.text) + " above the first section",
                 "[Profile] or [Message NAME] above it");
  }
  if (m_section == Section::None || m_section == Section::Unknown || IsRepeated(key)) {
    return;
  }
  if (m_section == Section::Profile) {
    TakeProfileItem(key, value);
  } else if (key.text.starts_with(kMatchMark)) {
    m_message->match.Take(key, value);
  } else {
    m_message->columns.Take(key, value);
  }
}

bool CProfileReader::IsRepeated(const PlacedText& key) {
  const auto [first, isNew] = m_keys.try_emplace(std::string(key.text), key.line);
  if (!isNew) {
    m_faults.Add(key, "the key " + QuotedPart(key.text) + " again",
                 "it once; it stands in line " + std::to_string(first->second));
  }
  return !isNew;
}

void CProfileReader::TakeProfileItem(const PlacedText& key, const PlacedText& value) {
  if (key.text == "Format") {
    TakeFormat(value);
  } else if (key.text == "Separator") {
    TakeSeparator(key, value);
  } else {
    m_faults.Add(key, "unknown key " + QuotedPart(key.text), "Format or Separator",
                 Nearest(key.text, kProfileKeys));
  }
}

void CProfileReader::TakeFormat(const PlacedText& value) {
  m_profile.format = FindLogFormat(value.text);
  if (!m_profile.format) {
    m_faults.Add(value, "unknown format " + QuotedPart(value.text), "one of " + FormatNames(),
                 NearestFormat(value.text));
  }
}

void CProfileReader::TakeSeparator(const PlacedText& key, const PlacedText& value) {
  m_separator = key.WithoutText();
  const std::optional<char> separator = ReadSeparator(value.text);
  if (!separator) {
    m_faults.Add(value, QuotedPart(value.text), "tab, blank or one of , ; : | and the like");
    return;
  }
  m_profile.reader.separator = *separator;
}

void CProfileReader::Finish() {
  CloseMessage();
  if (!m_hasMessages) {
    m_faults.Add({}, "no message", "a section [Message NAME]");
  }
  SettleFormat();
  CheckConditions();
}

void CProfileReader::SettleFormat() {
  const bool needsJ1939 =
      std::any_of(m_conditions.begin(), m_conditions.end(),
                  [](const Condition& condition) { return IsOfJ1939(condition.part); });
  if (!m_profile.format && needsJ1939) {
    m_profile.format = LogFormat::J1939;
  }
}

void CProfileReader::CheckConditions() {
  if (!m_profile.format) {
    return;
  }
  const std::string format = QuotedPart(LogFormatName(*m_profile.format));
  for (const Condition& condition : m_conditions) {
    if (!CanOccur(condition.part, *m_profile.format)) {
      m_faults.Add(condition.place, "the condition " + condition.key,
                   "a condition that lines of the format " + format + " can meet");
    }
  }
  const bool isSeparated =
      *m_profile.format == LogFormat::Plain || *m_profile.format == LogFormat::Csv;
  if (m_separator && !isSeparated) {
    m_faults.Add(*m_separator, "a separator in the format " + format,
                 "one in the formats plain and csv alone");
  }
}

}  // namespace lum::decoding
